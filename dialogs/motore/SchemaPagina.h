#pragma once

#include <QMimeDatabase>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

class QFileInfo;

/// The addresses under which the engine sees local files: so the page can lie at its own place while its bytes come
/// from the temporary file, and every page is a stranger to every other. What the engine gets from a scheme like this
/// one it lets every script read, down to the pixels of a picture. So pictures, style sheets, media and scripts are
/// sent on to their file addresses, where the engine keeps their bytes to itself; only this class can send them there,
/// and what asks for a file address comes by here first. Pages, fonts and modules are answered here: of them a script
/// can read what a module exports or complains of, and no more.
class SchemaPagina : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;

    /// Before the engine starts.
    static void Registra();
    static const QByteArray &Nome();

    /// The address of a local file in this scheme, and back. What is not in it stays as it is.
    [[nodiscard]] static QUrl DaPercorso(const QString &percorso);
    [[nodiscard]] static QUrl AFile(const QUrl &indirizzo);

    /// The address in this scheme at which a local file has its own origin; empty when \a indirizzo is that already, or
    /// no local file.
    [[nodiscard]] static QUrl OrigineSua(const QUrl &indirizzo);

    /// True when this class sent a request on to that file address; true only once.
    [[nodiscard]] bool Lascia(const QUrl &indirizzo);

    /// From now on \a posto is answered with the bytes of \a percorso.
    void Imposta(const QString &percorso, const QString &posto);

    void requestStarted(QWebEngineUrlRequestJob *richiesta) override;

private:
    void Rispondi(QWebEngineUrlRequestJob *richiesta, const QFileInfo &info);

    QUrl Lasciapassare(const QString &percorso);

    QSet<QString> m_lasciapassare;
    QMimeDatabase m_tipi;
    QString m_percorso;
    QString m_posto;
};
