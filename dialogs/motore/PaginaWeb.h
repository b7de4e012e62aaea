#pragma once

#include <QDeadlineTimer>
#include <QWebEnginePage>

/// One page that shows nothing but what it is told to: it asks the user nothing, saves nothing, opens no window and
/// goes nowhere by itself.
class PaginaWeb : public QWebEnginePage
{
    Q_OBJECT

public:
    PaginaWeb(QWebEngineProfile *profilo, QObject *parent);

    /// Shows \a indirizzo, or loads it again. Links to a place in \a conNome, its own other address, lead to that
    /// place.
    void Mostra(const QUrl &indirizzo, const QUrl &conNome);
    /// True when the page tried to go elsewhere or to load itself again: it could cross the next navigation too.
    [[nodiscard]] bool Irrequieta() const { return m_irrequieta; }
    /// The user released a mouse button over the page: the next link counts as clicked.
    void AnnotaClic();

signals:
    void CollegamentoScelto(const QUrl &indirizzo);

protected:
    bool acceptNavigationRequest(const QUrl &indirizzo, NavigationType tipo, bool principale) override;
    void javaScriptAlert(const QUrl &, const QString &) override {}
    bool javaScriptConfirm(const QUrl &, const QString &) override;
    bool javaScriptPrompt(const QUrl &, const QString &, const QString &, QString *) override { return false; }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString &, int, const QString &) override {}
    QStringList chooseFiles(FileSelectionMode, const QStringList &, const QStringList &) override { return {}; }

private:
    void Rifiuta();
    void Segui(const QUrl &indirizzo);

    QUrl m_indirizzo;
    QUrl m_conNome;
    QDeadlineTimer m_clic{0};
    bool m_attesa = false;
    bool m_irrequieta = false;
};
