#include "IndirizziPagina.h"

#include <QDir>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Iniziale = u'p';   // a host makes relative addresses work as on the web, and may not look like a number
constexpr qsizetype Livelli = 24; // the same for all pages but those that lie still deeper

QByteArray Caso(int numeri)
{
    QList<quint32> caso(numeri);
    QRandomGenerator::system()->fillRange(caso.data(), caso.size());
    return {reinterpret_cast<const char *>(caso.constData()), qsizetype(sizeof(quint32)) * caso.size()};
}

QString Cartella(const QString &percorso)
{
    return percorso.left(percorso.lastIndexOf(u'/') + 1);
}

} // namespace

IndirizziPagina::IndirizziPagina(QString radice)
    : m_radice(std::move(radice)), m_chiave(Caso(8)), m_parola(u'_' + QString::fromLatin1(Caso(1).toHex()))
{
    Imposta(u"/test.html"_s);
}

const QByteArray &IndirizziPagina::Schema()
{
    static const QByteArray nome = "velloro";
    return nome;
}

void IndirizziPagina::Imposta(const QString &posto)
{
    m_posto = posto;
    m_livelli = std::max(Livelli, posto.count(u'/'));
}

QUrl IndirizziPagina::Componi(const QString &percorso, const QString &nome) const
{
    QMessageAuthenticationCode casa(QCryptographicHash::Sha256, m_chiave);
    casa.addData(percorso.toUtf8());
    QUrl indirizzo;
    indirizzo.setScheme(QString::fromLatin1(Schema()));
    indirizzo.setHost(Iniziale + QString::fromLatin1(casa.result().toHex().left(32)));
    indirizzo.setPath(nome, QUrl::DecodedMode);
    return indirizzo;
}

QUrl IndirizziPagina::Pagina() const
{
    return Componi(m_posto, (u'/' + m_parola).repeated(m_livelli + 1));
}

QUrl IndirizziPagina::PaginaConNome() const
{
    return Componi(m_posto, (u'/' + m_parola).repeated(m_livelli) + m_posto.mid(m_posto.lastIndexOf(u'/')));
}

QString IndirizziPagina::Nome(const QUrl &indirizzo)
{
    // Names with an encoded slash may lead up: they are cut short here.
    return QDir::cleanPath(u'/' + indirizzo.path(QUrl::FullyDecoded));
}

QString IndirizziPagina::Percorso(const QString &nome) const
{
    QStringList parti = nome.mid(1).split(u'/');
    qsizetype parole = 0;
    while (parole < parti.size() && parti.at(parole) == m_parola)
        ++parole;
    if (parole == 0)
        return nome;
    if (parole == parti.size() && parole == m_livelli + 1)
        return m_posto;
    QString salita = Cartella(m_posto);
    for (qsizetype i = std::min(parole, m_livelli); i < m_livelli && salita.size() > 1; ++i)
        salita = Cartella(salita.chopped(1));
    return salita + parti.sliced(parole).join(u'/');
}

QUrl IndirizziPagina::AFile(const QUrl &indirizzo) const
{
    QString nome;
    if (indirizzo.scheme() == QLatin1StringView(Schema()))
        nome = Nome(indirizzo);
    else if (indirizzo.isLocalFile() && indirizzo.path(QUrl::FullyDecoded).startsWith(m_radice + u'/'))
        nome = QDir::cleanPath(indirizzo.path(QUrl::FullyDecoded)).mid(m_radice.size());
    else
        return indirizzo;
    QUrl locale = QUrl::fromLocalFile(Percorso(nome));
    if (indirizzo.hasQuery())
        locale.setQuery(indirizzo.query(QUrl::FullyEncoded));
    if (indirizzo.hasFragment())
        locale.setFragment(indirizzo.fragment(QUrl::FullyEncoded));
    return locale;
}

QUrl IndirizziPagina::OrigineSua(const QUrl &indirizzo) const
{
    const QUrl locale = AFile(indirizzo);
    if (!locale.isLocalFile())
        return {};
    const QString percorso = QDir::cleanPath(locale.toLocalFile());
    QString nome = percorso;
    if (locale != indirizzo)
        nome = indirizzo.isLocalFile() ? QDir::cleanPath(indirizzo.path(QUrl::FullyDecoded)).mid(m_radice.size())
                                       : Nome(indirizzo);
    else if (const QString sua = Cartella(m_posto); sua.size() > 1 && percorso.startsWith(sua))
        nome = (u'/' + m_parola).repeated(m_livelli) + u'/' + percorso.mid(sua.size());
    QUrl suo = Componi(percorso, nome);
    if (suo.scheme() == indirizzo.scheme() && suo.host() == indirizzo.host())
        return {};
    if (locale.hasQuery())
        suo.setQuery(locale.query(QUrl::FullyEncoded));
    if (locale.hasFragment())
        suo.setFragment(locale.fragment(QUrl::FullyEncoded));
    return suo;
}
