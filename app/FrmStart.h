#pragma once

#include <QMainWindow>

#include "platform/RichTextBox.h"

#include <memory>

class Anteprima;
class clsUndo;
class Comandi;
class Frammenti;
class FrmAnteprima;
class FrmControlloSintassi;
class FrmPaginaHTML;
class FrmTrova;
class PaginaCorrente;
class PannelloStato;
class PostoAnteprima;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QTimer;
class Recupero;

/// The main window: a frame around the document window, the results and the preview. It arranges; what the commands do
/// stands with the objects that it holds.
class FrmStart : public QMainWindow
{
    Q_OBJECT

public:
    /// \a pagina: a page to open in place of a new one; empty: none.
    explicit FrmStart(const QString &pagina = {});
    ~FrmStart() override;

    /// The open command. True when a page was loaded.
    bool ApriPaginaWeb();
    /// The new command.
    void Nuovo();
    /// Brings the edit commands in line with what the control can do now; keeps still while a check runs.
    void AggiornaMenuModifica(Hwnd hwnd);
    /// The host ends the program: what is not saved is left to be recovered, nothing is asked.
    void FineDalSistema();

    [[nodiscard]] FrmPaginaHTML *Documento() const { return m_documento; }
    [[nodiscard]] RichTextBox *PadCorrente() const { return m_pad; }
    [[nodiscard]] Hwnd HwndPad() const { return m_hwndPad; }
    [[nodiscard]] clsUndo *UndoRTB() const { return m_undo; }
    [[nodiscard]] Comandi &ElencoComandi() const { return *m_comandi; }

signals:
    /// The window is on the screen with everything in it.
    void Mostrata();

protected:
    void closeEvent(QCloseEvent *evento) override;
    bool eventFilter(QObject *oggetto, QEvent *evento) override;

private:
    void CostruisciFinestra();
    void CostruisciFinestreInterne();
    void CostruisciStato();
    void CollegaAnteprima(FrmAnteprima &finestra);
    void CollegaComandi();
    void CollegaFrammenti();
    void CollegaPagina();
    void CollegaModifica();
    void CollegaControllo();
    void Disponi(bool ancheDocumento);
    void Rivela();
    void Avvia();
    void ApriOInizia();
    void ForseMostrata();
    void EseguiComandoModifica(int indice, Hwnd hwnd);
    void MostraTempoCaricamento(const QString &file);
    void MostraPosizione();
    void AggiornaTitolo();
    void AggiornaAnteprima(bool nascondi);
    void VaiARiga();
    void Esci();
    void ControllaSintassi();
    void DiVerifica(bool finita, int falli);
    void Trova(quint8 modalita);
    bool OffriRecupero();

    Comandi *m_comandi = nullptr;
    PaginaCorrente *m_pagina = nullptr;
    Frammenti *m_frammenti = nullptr;
    FrmPaginaHTML *m_documento = nullptr;
    FrmControlloSintassi *m_risultati = nullptr;
    clsUndo *m_undo = nullptr;
    FrmTrova *m_trova = nullptr;
    Recupero *m_recupero = nullptr;
    Anteprima *m_anteprima = nullptr;
    std::unique_ptr<PostoAnteprima> m_postoAnteprima;
    RichTextBox *m_pad = nullptr;
    Hwnd m_hwndPad = 0;
    QMdiArea *m_area = nullptr;
    QMdiSubWindow *m_finestraDocumento = nullptr;
    QMdiSubWindow *m_finestraRisultati = nullptr;
    QMdiSubWindow *m_finestraAnteprima = nullptr;
    QMenu *m_popUp = nullptr;
    PannelloStato *m_stato = nullptr; ///< of the first panel
    QLabel *m_pannello2 = nullptr;
    QLabel *m_pannelloPosizione = nullptr;
    QLabel *m_pannelloCodifica = nullptr;
    QTimer *m_rivelazione = nullptr;
    QString m_daAprire;
    int m_falliDetti = -1; ///< how many the status bar told of after the last check; -1: none
    bool m_inDisposizione = false;
    bool m_puoIncollare = false; ///< asked when the clipboard changes: the host's answer may take its time
    bool m_avviata = false;      ///< the first page is in the editor
    bool m_daChiudere = false;   ///< somebody closed the window while a check was under way
    bool m_rivelata = false;     ///< the window is on the screen
};
