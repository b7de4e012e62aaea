#include "app/FrmStart.h"

#include "app/AvanzamentoFinestra.h"
#include "app/Comandi.h"
#include "app/Frammenti.h"
#include "app/GuardiaFile.h"
#include "app/ModuloDichiarazioni.h"
#include "app/NuovaPagina.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaLingua.h"
#include "chrome/PannelloStato.h"
#include "chrome/frmAbout.h"
#include "dialogs/Anteprima.h"
#include "dialogs/CaricaMotore.h"
#include "dialogs/FrmAnteprima.h"
#include "dialogs/FrmTrova.h"
#include "dialogs/ModuloStampa.h"
#include "editor/Recupero.h"
#include "editor/clsUndo.h"
#include "html/FrmComplete.h"
#include "html/FrmControlloSintassi.h"
#include "html/Risultati.h"
#include "html/VerificaSintassi.h"
#include "platform/NomiFile.h"
#include "platform/Dialoghi.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QShortcut>

// Who is told what: the signals between the windows, and what each command does.

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int PausaAnnulla = 250; // ms

} // namespace

void FrmStart::CollegaAnteprima(FrmAnteprima &finestra)
{
    m_anteprima = new Anteprima(
        finestra, [this] { return m_pagina->Formato(); }, CaricaMotore::DalModulo, this);
    connect(m_anteprima, &Anteprima::TestoStato, m_stato, &PannelloStato::DiPassaggio);
    connect(m_anteprima, &Anteprima::Guasto, m_stato,
            [this](const QString &testo) { m_stato->Fatto(testo, PannelloStato::Argomento::Anteprima); });
    connect(m_anteprima, &Anteprima::FuocoAllaPagina, this, [this] {
        if (m_pad->hasFocus() || !isVisible())
            return;
        // Under a menu or a dialog, too: that keeps the keys, and gives them to the editor when it closes.
        m_area->setActiveSubWindow(m_finestraDocumento);
        m_pad->setFocus();
    });
}

void FrmStart::CollegaPagina()
{
    m_pagina = new PaginaCorrente(m_pad, this);
    connect(m_pagina, &PaginaCorrente::TitoloCambiato, this, &FrmStart::AggiornaTitolo);
    connect(m_pagina, &PaginaCorrente::Avviso, m_stato, [this](const QString &testo) { m_stato->Fatto(testo); });
    connect(m_pagina, &PaginaCorrente::AvvisoLettura, m_stato,
            [this](const QString &testo) { m_stato->Fatto(testo, PannelloStato::Argomento::Lettura); });
    connect(m_pagina, &PaginaCorrente::AvvisoRicarica, m_stato,
            [this](const QString &testo) { m_stato->Fatto(testo, PannelloStato::Argomento::Ricarica); });
    // What was told of the page before holds no longer.
    const auto altraPagina = [this] {
        m_stato->Fatto({}, PannelloStato::Argomento::Lettura);
        m_stato->Fatto({}, PannelloStato::Argomento::Ricarica);
    };
    connect(m_pagina, &PaginaCorrente::InApertura, m_stato, altraPagina);
    connect(m_pagina, &PaginaCorrente::Tornata, m_stato, altraPagina);
    connect(m_pagina, &PaginaCorrente::NascondiAnteprima, this, [this] { AggiornaAnteprima(true); });
    connect(m_pagina, &PaginaCorrente::InApertura, this, [this] {
        ModuloVerificaSintassi::AzzeraRisultati();
        m_risultati->Svuota();
    });
    connect(m_pagina, &PaginaCorrente::Caricata, this, [this] { ControllaSintassi(); });
    connect(m_pagina, &PaginaCorrente::FormatoCambiato, this, [this] {
        const QString &codifica = m_pagina->Formato().codifica;
        m_pannelloCodifica->setText(codifica);
        m_pannelloCodifica->setToolTip(codifica.isEmpty() ? QString() : Messaggio(219).arg(codifica));
        m_recupero->ImpostaCodifica(codifica);
        m_recupero->ImpostaConFile(m_pagina->ConFile());
    });
    connect(m_pagina, &PaginaCorrente::Abbandonata, this, [this] { m_recupero->Deponi(); });
    const auto confronta = [this] { m_recupero->ImpostaSalvato(m_pagina->TestoSuDisco()); };
    connect(m_pagina, &PaginaCorrente::DiscoCambiato, this, confronta);
    connect(m_pagina, &PaginaCorrente::Tornata, this, [this, confronta] {
        confronta();
        AggiornaAnteprima(false);
    });
    connect(m_pagina, &PaginaCorrente::InVista, this, [this] { AggiornaAnteprima(false); });
    connect(m_pagina, &PaginaCorrente::Salvata, this, [this] { m_recupero->Salvata(); });
    connect(m_pagina, &PaginaCorrente::Aperta, this, [this](const QString &percorso) {
        MostraTempoCaricamento(percorso);
        m_recupero->Salvata();
    });
    auto *guardia = new GuardiaFile(this, [] { return Stato().ControlloInCorso || FrmComplete::Corrente(); });
    connect(guardia, &GuardiaFile::DaGuardare, m_pagina, &PaginaCorrente::GuardaFile);
    connect(m_pagina, &PaginaCorrente::DaRicaricare, guardia, &GuardiaFile::Guarda);
}

void FrmStart::CollegaModifica()
{
    m_undo = new clsUndo(this);
    m_undo->Attach(this, m_pad, PausaAnnulla);
    connect(m_undo, &clsUndo::StatoCambiato, this, [this] { AggiornaMenuModifica(m_hwndPad); });
    connect(m_undo, &clsUndo::SegnoCambiato, m_pagina, &PaginaCorrente::Torna);
    connect(m_pagina, &PaginaCorrente::Segnata, m_undo, &clsUndo::ImpostaSegno);
    // The page that is opened is a step of its own.
    connect(m_pagina, &PaginaCorrente::InApertura, m_undo, &clsUndo::TakeUndoSnapShot);
    connect(m_pagina, &PaginaCorrente::Aperta, m_undo, &clsUndo::TakeUndoSnapShot);
    m_recupero = new Recupero(m_pad, {}, Recupero::Pausa, this);
    const auto appunti = [this] {
        m_puoIncollare = m_pad->PuoIncollare();
        AggiornaMenuModifica(m_hwndPad);
    };
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, appunti);
    // Not every host tells of a change while another program has the focus.
    connect(m_comandi, &Comandi::MenuAperto, this, [appunti](const QString &menu) {
        if (menu == u"Medit")
            appunti();
    });
    appunti();
    m_comandi->Collega(u"MenuEdit(0)"_s, [this] {
        m_undo->AnnullaComando();
        m_pad->setFocus();
        AggiornaMenuModifica(m_hwndPad);
    });
    m_comandi->Collega(u"MenuEdit(1)"_s, [this] {
        m_undo->RipristinaComando();
        m_pad->setFocus();
        AggiornaMenuModifica(m_hwndPad);
    });
    m_comandi->Collega(u"MenuEdit(10)"_s, [this] { Trova(FrmTrova::Trova); });
    m_comandi->Collega(u"MenuEdit(11)"_s, [this] { Trova(FrmTrova::RipetiTrova); });
    m_comandi->Collega(u"MenuEdit(12)"_s, [this] { Trova(FrmTrova::Sostituisci); });
}

void FrmStart::CollegaControllo()
{
    ModuloVerificaSintassi::ImpostaAvanzamento(
        [questo = QPointer<FrmStart>(this)](const QString &etichetta, qsizetype massimo) {
            return std::make_unique<AvanzamentoFinestra>(questo, etichetta, massimo);
        });
    connect(m_risultati, &FrmControlloSintassi::RisultatoScelto, this,
            [this](qint32 posizione) { m_risultati->Vai_A_Pos(posizione, *m_pad); });
    ModuloVerificaSintassi::ImpostaDopoVerifica([questo = QPointer<FrmStart>(this)](bool finita, int falli) {
        if (questo)
            questo->DiVerifica(finita, falli);
    });
    // What it told holds no longer.
    connect(m_risultati, &FrmControlloSintassi::NumeroCambiato, this, [this](int falli) {
        if (falli != m_falliDetti && !Stato().ControlloInCorso)
            m_stato->Fatto({}, PannelloStato::Argomento::Verifica);
    });
    connect(m_risultati, &FrmControlloSintassi::FalloNonVisto, this, [this] {
        if (!Stato().ControlloInCorso)
            m_stato->Fatto({}, PannelloStato::Argomento::Verifica);
    });
    m_comandi->Collega(u"MenuStrumenti(0)"_s, [this] { ControllaSintassi(); });
    // While a check lets events run, no command may touch the page under it.
    m_comandi->ImpostaFreno([this] {
        if (Stato().ControlloInCorso)
            m_stato->Fatto(Messaggio(342), PannelloStato::Argomento::Verifica);
        return Stato().ControlloInCorso;
    });
}

void FrmStart::CollegaComandi()
{
    m_comandi->Collega(u"MenuFile(0)"_s, [this] { Nuovo(); });
    m_comandi->Collega(u"MenuFile(1)"_s, [this] { ApriPaginaWeb(); });
    m_comandi->Collega(u"MenuFile(4)"_s, [this] { m_pagina->Salva(); });
    m_comandi->Collega(u"MenuFile(5)"_s, [this] { m_pagina->SalvaConNome(); });
    m_comandi->Collega(u"MenuFile(7)"_s, [this] {
        const QString file = ModuloDichiarazioni::PostoPagina();
        ModuloStampa::Stampa(*m_pad, file.isEmpty() ? m_pagina->Nome() : NomiFile::Leggibile(file));
        m_pad->setFocus();
    });
    m_comandi->Collega(u"MenuFile(9)"_s, [] {
        if (QFileInfo(Stato().FileAnteprima).size() >= 2)
            ModuloPrincipale::ApriConShell(Stato().FileAnteprima);
    });
    m_comandi->Collega(u"MenuStrumenti(2)"_s, [this] { AggiornaAnteprima(false); });
    m_comandi->Collega(u"MenuFile(11)"_s, [this] { Esci(); });
    m_comandi->Collega(u"MenuHelp(0)"_s, [this] { frmAbout(this).exec(); });
    for (const int indice : {3, 4, 5, 6, 8})
        m_comandi->Collega(u"MenuEdit(%1)"_s.arg(indice), [this, indice] { EseguiComandoModifica(indice, m_hwndPad); });
    auto *vai = new QShortcut(QKeySequence(u"Ctrl+G"_s), this);
    connect(vai, &QShortcut::activated, this, &FrmStart::VaiARiga);
}

void FrmStart::CollegaFrammenti()
{
    m_frammenti = new Frammenti(m_pad, this);
    m_frammenti->Collega(*m_comandi);
    connect(m_frammenti, &Frammenti::AnteprimaRichiesta, this, [this] { AggiornaAnteprima(false); });
    connect(m_frammenti, &Frammenti::InCambiamento, m_undo, &clsUndo::TakeUndoSnapShot);
    connect(m_frammenti, &Frammenti::Cambiato, m_undo, &clsUndo::TakeUndoSnapShot);
    connect(m_frammenti, &Frammenti::VerificaRichiesta, this,
            [this](int primaFine) { ModuloVerificaSintassi::VerificaSintassi(*m_pad, primaFine, false); });
    NuovaPagina::CollegaComando(*m_comandi, *this);
}

void FrmStart::EseguiComandoModifica(int indice, Hwnd hwnd)
{
    RichTextBox *controllo = RichTextBox::DaHandle(hwnd);
    if (!controllo)
        return;
    switch (indice) {
    case 3:
        controllo->Taglia();
        break;
    case 4:
        controllo->Copia();
        break;
    case 5:
        controllo->Incolla();
        break;
    case 6:
        controllo->Elimina();
        break;
    case 8:
        controllo->Seleziona(0, controllo->Lunghezza());
        break;
    default:
        break;
    }
    AggiornaMenuModifica(hwnd);
}
