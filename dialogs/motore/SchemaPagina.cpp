#include "SchemaPagina.h"

#include <QFile>
#include <QFileInfo>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto Casa = "pagina"_L1; // a host makes relative addresses work as on the web

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
    auto *file = new QFile(info.filePath(), richiesta);
    if (!file->open(QIODevice::ReadOnly)) {
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    const QString tipo = pagina ? u"text/html"_s : m_tipi.mimeTypeForFile(info, QMimeDatabase::MatchExtension).name();
    richiesta->reply(tipo.toLatin1(), file);
}
