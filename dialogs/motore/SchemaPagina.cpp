#include "SchemaPagina.h"

#include <QBuffer>
#include <QByteArrayMatcher>
#include <QFile>
#include <QFileInfo>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Casa = "pagina"_L1; // a host makes relative addresses work as on the web

/// True when at \a i of the page there begins the value of an attribute or an address of a style.
bool IniziaIndirizzo(const QByteArray &pagina, qsizetype i)
{
    const auto prima = [&] {
        while (i > 0 && (pagina[i - 1] == ' ' || pagina[i - 1] == '\t'))
            --i;
        return i > 0 ? pagina[i - 1] : '\0';
    };
    char segno = prima();
    if (segno == '"' || segno == '\'') {
        --i;
        segno = prima();
    }
    return segno == '=' || segno == '(';
}

/// The page with "/" for "file:///" where an address begins: what it names by its full path is then asked for in this
/// scheme. The engine shows file addresses to no page of a foreign scheme.
QByteArray ConIndirizziLocali(const QByteArray &pagina)
{
    static const QByteArrayMatcher resto("ile:///");
    constexpr qsizetype Lunghezza = 8; // with the "f"
    QByteArray nuova;
    qsizetype copiati = 0;
    for (qsizetype i = resto.indexIn(pagina); i > 0; i = resto.indexIn(pagina, i + 1)) {
        if ((pagina[i - 1] | 0x20) != 'f' || !IniziaIndirizzo(pagina, i - 1))
            continue;
        nuova.append(pagina.constData() + copiati, i - 1 - copiati);
        nuova.append('/');
        copiati = i - 1 + Lunghezza;
    }
    if (copiati == 0)
        return pagina;
    return nuova.append(pagina.constData() + copiati, pagina.size() - copiati);
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
    // Not a local scheme: the engine would keep such files from pages whose origin is nobody's.
    schema.setFlags(QWebEngineUrlScheme::NoAccessAllowed);
    QWebEngineUrlScheme::registerScheme(schema);
}

QUrl SchemaPagina::DaPercorso(const QString &percorso)
{
    QUrl indirizzo = QUrl::fromLocalFile(percorso);
    indirizzo.setScheme(QString::fromLatin1(Nome()));
    indirizzo.setHost(Casa);
    return indirizzo;
}

QUrl SchemaPagina::AFile(const QUrl &indirizzo)
{
    if (indirizzo.scheme() != QLatin1StringView(Nome()) || indirizzo.host() != Casa)
        return indirizzo;
    QUrl locale = indirizzo;
    locale.setHost({});
    locale.setScheme(u"file"_s);
    return locale;
}

void SchemaPagina::Imposta(const QString &percorso, const QString &posto)
{
    m_percorso = percorso;
    m_posto = posto;
}

void SchemaPagina::requestStarted(QWebEngineUrlRequestJob *richiesta)
{
    const QString chiesto = AFile(richiesta->requestUrl()).toLocalFile();
    const bool pagina = chiesto == m_posto;
    const QFileInfo info(pagina ? m_percorso : chiesto);
    // Anything but a file, a pipe for one, could keep the engine waiting for good.
    if (!info.isFile()) {
        richiesta->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    QFile *file = nullptr;
    if (info.size() > 0) { // files of the system may say 0 and then keep a reader waiting
        file = new QFile(info.filePath(), richiesta);
        if (!file->open(QIODevice::ReadOnly)) {
            richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
            return;
        }
    }
    QIODevice *byte = file;
    if (pagina || !file) {
        auto *copia = new QBuffer(richiesta);
        copia->setData(file ? ConIndirizziLocali(file->readAll()) : QByteArray());
        copia->open(QIODevice::ReadOnly);
        byte = copia;
    }
    const QString tipo = pagina ? u"text/html"_s : m_tipi.mimeTypeForFile(info, QMimeDatabase::MatchExtension).name();
    richiesta->reply(tipo.toLatin1(), byte);
}
