#pragma once

#include <QMimeDatabase>
#include <QString>
#include <QUrl>
#include <QWebEngineUrlSchemeHandler>

/// The addresses under which the engine sees local files. Unlike file addresses they let a page load what it names
/// without letting its scripts read it: every page and file of this scheme is a stranger to every other. And the page
/// can lie at its own place while its bytes come from the temporary file.
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

    /// From now on \a posto is answered with the bytes of \a percorso.
    void Imposta(const QString &percorso, const QString &posto);

    void requestStarted(QWebEngineUrlRequestJob *richiesta) override;

private:
    QMimeDatabase m_tipi;
    QString m_percorso;
    QString m_posto;
};
