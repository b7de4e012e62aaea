#include "SchemaPagina.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QUuid>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Iniziale = u'p'; // a host makes relative addresses work as on the web, and may not look like a number

bool HaEstensione(const QString &percorso, const QStringList &estensioni)
{
    return estensioni.contains(QFileInfo(percorso).suffix().toLower());
}

/// What is answered here when a page asks for it with the right to read it: modules and fonts are asked for no other
/// way.
bool Leggibile(const QString &percorso)
{
    return HaEstensione(percorso, {u"js"_s, u"mjs"_s, u"woff2"_s, u"woff"_s, u"ttf"_s, u"otf"_s, u"ttc"_s});
}

/// Each file is an origin of its own, so that a page cannot read the pages in its frames.
QString CasaDi(const QString &percorso)
{
    return Iniziale + QString::fromLatin1(QCryptographicHash::hash(percorso.toUtf8(), QCryptographicHash::Md5).toHex());
}

} // namespace

const QByteArray &SchemaPagina::Nome()
{
    static const QByteArray nome = "velloro";
    return nome;
}

void SchemaPagina::Registra()
{
    QWebEngineUrlScheme schema(Nome());
    schema.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // No flag opens these files to scripts; that file addresses may be shown is limited by each request's kind.
    schema.setFlags(QWebEngineUrlScheme::LocalAccessAllowed);
    QWebEngineUrlScheme::registerScheme(schema);
}

QUrl SchemaPagina::DaPercorso(const QString &percorso)
{
    QUrl indirizzo = QUrl::fromLocalFile(percorso);
    indirizzo.setScheme(QString::fromLatin1(Nome()));
    indirizzo.setHost(CasaDi(percorso));
    return indirizzo;
}

QUrl SchemaPagina::AFile(const QUrl &indirizzo)
{
    if (indirizzo.scheme() != QLatin1StringView(Nome()))
        return indirizzo;
    QUrl locale = indirizzo;
    locale.setHost({});
    locale.setScheme(u"file"_s);
    return locale;
}

QUrl SchemaPagina::OrigineSua(const QUrl &indirizzo)
{
    const QUrl locale = AFile(indirizzo);
    if (!locale.isLocalFile())
        return {};
    QUrl suo = locale;
    suo.setScheme(QString::fromLatin1(Nome()));
    suo.setHost(CasaDi(locale.toLocalFile()));
    return suo == indirizzo ? QUrl() : suo;
}

void SchemaPagina::Imposta(const QString &percorso, const QString &posto)
{
    m_percorso = percorso;
    m_posto = posto;
}

void SchemaPagina::requestStarted(QWebEngineUrlRequestJob *richiesta)
{
    const QString chiesto = AFile(richiesta->requestUrl()).toLocalFile();
    const auto intestazioni = richiesta->requestHeaders();
    const QByteArray origine = intestazioni.value(QByteArrayLiteral("Origin"));
    const bool pagina = intestazioni.value(QByteArrayLiteral("Accept")).startsWith("text/html") && origine.isEmpty();
    const QFileInfo info(chiesto == m_posto ? m_percorso : chiesto);
    // Anything but a file, a pipe for one, could keep the engine waiting for good.
    if (!info.isFile()) {
        richiesta->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    if (pagina || (origine.startsWith(Nome()) && Leggibile(chiesto)))
        Rispondi(richiesta, info);
    else if (origine.isEmpty())
        richiesta->redirect(Lasciapassare(chiesto));
    else
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
}

QUrl SchemaPagina::Lasciapassare(const QString &percorso)
{
    constexpr qsizetype massimo = 10000; // of requests given up before they were sent on
    if (m_lasciapassare.size() >= massimo)
        m_lasciapassare.clear();
    const QString parola = QUuid::createUuid().toString(QUuid::Id128);
    m_lasciapassare.insert(parola);
    QUrl indirizzo = QUrl::fromLocalFile(percorso);
    indirizzo.setQuery(parola);
    return indirizzo;
}

bool SchemaPagina::Lascia(const QUrl &indirizzo)
{
    return m_lasciapassare.remove(indirizzo.query());
}

void SchemaPagina::Rispondi(QWebEngineUrlRequestJob *richiesta, const QFileInfo &info)
{
    auto *file = new QFile(info.filePath(), richiesta);
    if (!file->open(QIODevice::ReadOnly)) {
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    const bool pagina = info.filePath() == m_percorso;
    QIODevice *byte = file;
    // The page is taken in one piece: the next key writes it anew. Files of the system may say 0 and then keep a reader
    // waiting.
    if (pagina || info.size() == 0) {
        auto *copia = new QBuffer(richiesta);
        copia->setData(info.size() == 0 ? QByteArray() : file->readAll());
        copia->open(QIODevice::ReadOnly);
        byte = copia;
    }
    const QString tipo = pagina ? u"text/html"_s : m_tipi.mimeTypeForFile(info, QMimeDatabase::MatchExtension).name();
    richiesta->reply(tipo.toLatin1(), byte);
}
