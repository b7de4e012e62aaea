#pragma once

#include "IndirizziPagina.h"
#include "Lasciapassare.h"

#include "dialogs/MotoreAnteprima.h"

#include <QMimeDatabase>
#include <QWebEngineUrlSchemeHandler>

/// Answers for the addresses under which the engine sees local files: so the page can lie at its own place while its
/// bytes come from the temporary file, and every page is a stranger to every other. What the engine gets from a scheme
/// like this one it lets every script read, down to the pixels of a picture. So pictures, style sheets, media and
/// scripts are sent on to file addresses, where the engine keeps their bytes to itself; only this class can send them
/// there, and what asks for a file address comes by here first. Pages, fonts and modules are answered here: of them a
/// script can read what a module exports or complains of, and no more. What is given is judged when it has been opened.
class SchemaPagina : public QWebEngineUrlSchemeHandler
{
    Q_OBJECT

public:
    SchemaPagina(const OspiteMotore &ospite, QObject *parent);

    /// Before the engine starts.
    static void Registra();
    /// The header by which a request says its kind, as the engine tells it and not the page.
    static const QByteArray &Intestazione();

    [[nodiscard]] const IndirizziPagina &Indirizzi() const { return m_indirizzi; }

    /// True when this class sent a request on to that file address; true only once.
    [[nodiscard]] bool Lascia(const QUrl &indirizzo) { return m_lasciapassare.Riscuoti(indirizzo); }

    /// From now on the page at \a posto is answered with the bytes of \a percorso.
    void Imposta(const QString &percorso, const QString &posto);

    void requestStarted(QWebEngineUrlRequestJob *richiesta) override;

private:
    void RispondiPagina(QWebEngineUrlRequestJob *richiesta) const;
    void Rispondi(QWebEngineUrlRequestJob *richiesta, int descrittore, const QString &vero) const;

    const OspiteMotore &m_ospite;
    Lasciapassare m_lasciapassare;
    IndirizziPagina m_indirizzi;
    QMimeDatabase m_tipi;
    QString m_percorso;
};
