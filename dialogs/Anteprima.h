#pragma once

#include "dialogs/CicloAnteprima.h"
#include "dialogs/MotoreAnteprima.h"
#include "platform/FormatoPagina.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class FrmAnteprima;
class RichTextBox;

/// The preview: writes the page to FileAnteprima and has the engine in the preview window show it. The engine is loaded
/// after that window is on the screen; until then, and without one, only the file is kept up to date.
class Anteprima : public QObject, private OspiteMotore
{
    Q_OBJECT

public:
    /// Makes the engine; null with the reason in the last argument when there is none.
    using Caricatore = std::function<std::unique_ptr<MotoreAnteprima>(OspiteMotore &, QWidget &, QString &)>;
    /// Says how the page stands in its file.
    using Formato = std::function<FormatoPagina()>;

    /// \a finestra outlives the preview.
    Anteprima(FrmAnteprima &finestra, Formato formato, Caricatore caricatore, QObject *parent = nullptr);
    ~Anteprima() override;

    /// Writes the text of \a controllo; then hides the browser, or shows it and has it show the file. A file that does
    /// not exist changes nothing, one under 50 bytes is not shown. The cost is that of the write, the page appears
    /// later.
    void AggiornaAnteprima(const RichTextBox *controllo, bool nascondi);

signals:
    /// A text for the status bar: the link under the mouse, else the title of the page.
    void TestoStato(const QString &testo);
    /// The page or the user's choice cannot be written, and why; empty when the page can again.
    void Guasto(const QString &testo);
    /// The page was sent to the browser, or the mouse was used there: whoever edits takes the focus.
    void FuocoAllaPagina();

private:
    bool Concede(const RichiestaMotore &richiesta) const override;
    void NavigazioneFinita() override;
    void DisegnoPerduto() override;
    void TitoloCambiato(const QString &titolo) override;
    void CollegamentoIndicato(const QUrl &indirizzo) override;
    void CollegamentoScelto(const QUrl &indirizzo) override;
    void PaginaToccata() override;
    void MenuChiesto(QPoint dove) override;
    void MemoriaSuperata() override;

    bool Scrivi(const RichTextBox &controllo);
    void CaricaMotore();
    void Esegui(CicloAnteprima::Azione azione);
    void Interroga();
    void MostraStato();
    void Cambia(PermessiAnteprima permessi);

    FrmAnteprima &m_finestra;
    Formato m_formato;
    Caricatore m_caricatore;
    std::unique_ptr<MotoreAnteprima> m_motore;
    CicloAnteprima m_ciclo;
    PermessiAnteprima m_permessi;
    QTimer m_partenza;
    QTimer m_limite;
    QTimer m_silenzio;
    QString m_codifica; ///< of the page in the file
    QString m_titolo;
    QString m_collegamento;
    QString m_stato;
    quint64 m_domanda = 0;
    bool m_scritturaFallita = false;
};
