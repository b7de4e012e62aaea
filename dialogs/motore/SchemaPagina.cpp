#include "SchemaPagina.h"

#include <QBuffer>
#include <QFile>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Tipo = RichiestaMotore::Tipo;

SchemaPagina::SchemaPagina(const OspiteMotore &ospite, QObject *parent)
    : QWebEngineUrlSchemeHandler(parent), m_ospite(ospite), m_indirizzi(m_lasciapassare.Radice())
{
}

void SchemaPagina::Registra()
{
    QWebEngineUrlScheme schema(IndirizziPagina::Schema());
    schema.setSyntax(QWebEngineUrlScheme::Syntax::Host);
    // No flag opens these files to scripts; that file addresses may be shown is limited by each request's kind.
    schema.setFlags(QWebEngineUrlScheme::LocalAccessAllowed);
    QWebEngineUrlScheme::registerScheme(schema);
}

const QByteArray &SchemaPagina::Intestazione()
{
    static const QByteArray nome = "X-Velloro-Tipo";
    return nome;
}

void SchemaPagina::Imposta(const QString &percorso, const QString &posto)
{
    m_percorso = percorso;
    m_indirizzi.Imposta(posto);
}

void SchemaPagina::requestStarted(QWebEngineUrlRequestJob *richiesta)
{
    const QUrl indirizzo = richiesta->requestUrl();
    const auto intestazioni = richiesta->requestHeaders();
    const auto tipo = Tipo(intestazioni.value(Intestazione(), QByteArray::number(int(Tipo::Contenuto))).toInt());
    if (tipo == Tipo::Pagina) {
        RispondiPagina(richiesta);
        return;
    }
    const int descrittore = Lasciapassare::Apri(m_indirizzi.AFile(indirizzo).toLocalFile());
    const QString vero = Lasciapassare::Vero(descrittore);
    if (descrittore < 0 || !m_ospite.Concede({QUrl::fromLocalFile(vero), tipo, false})) {
        if (descrittore >= 0)
            ::close(descrittore);
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    // Modules and fonts are asked for in this way only.
    const QByteArray origine = intestazioni.value(QByteArrayLiteral("Origin"));
    const bool leggibile = tipo == Tipo::Script || tipo == Tipo::Carattere;
    if (tipo == Tipo::Cornice || (leggibile && origine.startsWith(IndirizziPagina::Schema()))) {
        Rispondi(richiesta, descrittore, vero);
    } else if (const QUrl altrove = m_lasciapassare.Concedi(descrittore, IndirizziPagina::Nome(indirizzo));
               !altrove.isEmpty() && origine.isEmpty()) {
        richiesta->redirect(altrove);
    } else {
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
    }
}

void SchemaPagina::RispondiPagina(QWebEngineUrlRequestJob *richiesta) const
{
    // The page is taken in one piece: the next key writes it anew.
    const int descrittore = Lasciapassare::Apri(m_percorso);
    QFile file;
    auto *copia = new QBuffer(richiesta);
    if (descrittore < 0 || !file.open(descrittore, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        richiesta->fail(QWebEngineUrlRequestJob::UrlNotFound);
        return;
    }
    copia->setData(file.readAll());
    copia->open(QIODevice::ReadOnly);
    richiesta->reply(QByteArrayLiteral("text/html"), copia);
}

void SchemaPagina::Rispondi(QWebEngineUrlRequestJob *richiesta, int descrittore, const QString &vero) const
{
    auto *file = new QFile(richiesta);
    if (!file->open(descrittore, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        richiesta->fail(QWebEngineUrlRequestJob::RequestDenied);
        return;
    }
    QIODevice *byte = file;
    // Files of the system may say 0 and then keep a reader waiting.
    if (file->size() == 0) {
        byte = new QBuffer(richiesta);
        byte->open(QIODevice::ReadOnly);
    }
    richiesta->reply(m_tipi.mimeTypeForFile(vero, QMimeDatabase::MatchExtension).name().toLatin1(), byte);
}
