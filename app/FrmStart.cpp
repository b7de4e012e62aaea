#include "app/FrmStart.h"

#include "app/Comandi.h"
#include "app/DisposizioneBarre.h"
#include "app/DisposizioneFinestre.h"
#include "app/Domande.h"
#include "app/Frammenti.h"
#include "app/ModuloDichiarazioni.h"
#include "app/NuovaPagina.h"
#include "app/OffertaRecupero.h"
#include "app/PaginaCorrente.h"
#include "app/TabellaLingua.h"
#include "app/TempoCaricamento.h"
#include "chrome/Colori.h"
#include "chrome/ModuloGrafica.h"
#include "chrome/PannelloStato.h"
#include "dialogs/Anteprima.h"
#include "dialogs/FrmAnteprima.h"
#include "dialogs/FrmTrova.h"
#include "dialogs/FrmVaiARiga.h"
#include "dialogs/PostoAnteprima.h"
#include "editor/FrmPaginaHTML.h"
#include "editor/Recupero.h"
#include "editor/clsUndo.h"
#include "html/FrmControlloSintassi.h"
#include "html/VerificaSintassi.h"
#include "platform/Dialoghi.h"
#include "platform/Misure.h"
#include "platform/TastiDopoDialogo.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int IntervalloRivelazione = 10; // ms

QSize InTwip(QSize pixel)
{
    return {Misure::InTwip(pixel.width()), Misure::InTwip(pixel.height())};
}

QRect InTwip(QRect pixel)
{
    return {Misure::InTwip(pixel.x()), Misure::InTwip(pixel.y()), Misure::InTwip(pixel.width()),
            Misure::InTwip(pixel.height())};
}

QRect InPixel(QRect twip)
{
    return {Misure::InPixel(twip.x()), Misure::InPixel(twip.y()), Misure::InPixel(twip.width()),
            Misure::InPixel(twip.height())};
}

} // namespace

FrmStart::FrmStart(const QString &pagina)
    : m_postoAnteprima(std::make_unique<PostoAnteprima>()), m_rivelazione(new QTimer(this)), m_daAprire(pagina)
{
    TastiDopoDialogo::Attiva([] { return Stato().ControlloInCorso; });
    setObjectName(u"FrmStart"_s);
    setWindowIcon(ModuloGrafica::Icona(u"velloro"));
    Stato().FileAnteprima = m_postoAnteprima->Percorso();
    CostruisciFinestra();
    CostruisciStato();
    CostruisciFinestreInterne();
    CollegaPagina();
    CollegaModifica();
    CollegaControllo();
    CollegaComandi();
    CollegaFrammenti();
    AggiornaMenuModifica(m_hwndPad);
    AggiornaTitolo();

    // The window stays away until the document window is ready.
    m_rivelazione->setInterval(IntervalloRivelazione);
    connect(m_rivelazione, &QTimer::timeout, this, &FrmStart::Rivela);
    m_rivelazione->start();
    QMetaObject::invokeMethod(m_documento, &FrmPaginaHTML::Attiva, Qt::QueuedConnection);
}

FrmStart::~FrmStart()
{
    // What the inner windows say while they go has no listener any more.
    m_pad->disconnect(this);
    m_documento->disconnect(this);
    m_risultati->disconnect(this);
    delete m_anteprima; // the engine goes before the window that it draws in
}

// --- Building -------------------------------------------------------------------------------------------------------

void FrmStart::CostruisciFinestra()
{
    m_comandi = new Comandi(this);
    m_comandi->CostruisciMenu(menuBar());
    m_popUp = m_comandi->CostruisciPopUp(this);

    auto *centro = new QWidget(this);
    auto *colonna = new QVBoxLayout(centro);
    colonna->setContentsMargins(0, 0, 0, 0);
    colonna->setSpacing(0);
    auto *barre = new QWidget(centro);
    barre->setObjectName(u"PicToolBar"_s);
    new DisposizioneBarre(barre);
    m_comandi->CostruisciBarre(barre);
    m_area = new QMdiArea(centro);
    m_area->setObjectName(u"AreaFinestre"_s);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    colonna->addWidget(barre);
    colonna->addWidget(m_area, 1);
    setCentralWidget(centro);
    m_area->viewport()->installEventFilter(this);
    ModuloGrafica::Decora(*this);
    QPalette tavolozza = barre->palette();
    tavolozza.setColor(QPalette::Window, Colori::Pannello);
    barre->setPalette(tavolozza);
    barre->setAutoFillBackground(true);
}

void FrmStart::CostruisciStato()
{
    statusBar()->setObjectName(u"StatusBar"_s);
    const auto pannello = [this](const QString &nome, int elasticita) {
        auto *etichetta = new QLabel(statusBar());
        etichetta->setObjectName(nome);
        etichetta->setTextFormat(Qt::PlainText);
        statusBar()->addPermanentWidget(etichetta, elasticita);
        return etichetta;
    };
    QLabel *primo = pannello(u"StatusBar(1)"_s, 1);
    primo->setMinimumWidth(1);
    primo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_stato = new PannelloStato(primo);
    m_pannello2 = pannello(u"StatusBar(2)"_s, 0);
    m_pannelloPosizione = pannello(u"StatusBar(3)"_s, 0);
    m_pannelloCodifica = pannello(u"StatusBar(4)"_s, 0);
}

void FrmStart::CostruisciFinestreInterne()
{
    const auto aggiungi = [this](QWidget *contenuto) {
        // None can be closed: there is one of each for the program's life.
        QMdiSubWindow *finestra =
            m_area->addSubWindow(contenuto, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
        finestra->setObjectName(u"Finestra_"_s + contenuto->objectName());
        finestra->setAttribute(Qt::WA_DeleteOnClose, false);
        ModuloGrafica::RimuoviChiudi(*contenuto);
        return finestra;
    };
    m_documento = new FrmPaginaHTML;
    m_documento->setWindowIcon(ModuloGrafica::Icona(u"documento"));
    m_pad = m_documento->RichPad();
    m_hwndPad = m_pad->hWnd();
    m_risultati = new FrmControlloSintassi;
    m_risultati->setWindowIcon(ModuloGrafica::Icona(u"risultati"));
    auto *anteprima = new FrmAnteprima;
    m_finestraAnteprima = aggiungi(anteprima);
    CollegaAnteprima(*anteprima);
    m_finestraRisultati = aggiungi(m_risultati);
    m_finestraDocumento = aggiungi(m_documento);

    connect(m_documento, &FrmPaginaHTML::PrimaAttivazione, this, &FrmStart::Avvia);
    connect(m_documento, &FrmPaginaHTML::StatoModificaCambiato, this, &FrmStart::AggiornaMenuModifica);
    connect(m_documento, &FrmPaginaHTML::MenuRichiesto, this, [this](QPoint dove) { m_popUp->popup(dove); });
    connect(m_documento, &FrmPaginaHTML::AnteprimaRichiesta, this, &FrmStart::AggiornaAnteprima);
    connect(m_documento, &FrmPaginaHTML::Ridimensionata, this, [this] { Disponi(false); });
    connect(m_pad, &RichTextBox::SelChange, this, &FrmStart::MostraPosizione);
    connect(m_pad, &RichTextBox::Change, this, &FrmStart::MostraPosizione);
}

// --- Start and layout -----------------------------------------------------------------------------------------------

void FrmStart::Avvia()
{
    if (!m_documento->ErroreBase().isEmpty())
        Domande::Semplice(this, m_documento->ErroreBase());
    // A large page takes its time: the window is there first.
    if (!m_daAprire.isEmpty()) {
        Rivela();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    ApriOInizia();
    MostraPosizione(); // a page that nobody filled has told of no change
    m_avviata = true;
    ForseMostrata();
}

void FrmStart::ApriOInizia()
{
    if (OffriRecupero())
        return;
    if (m_daAprire.isEmpty() || (!m_pagina->Apri(m_daAprire) && Stato().FileCorrente.isEmpty()))
        Nuovo();
    // What the program starts with is where the history begins.
    m_undo->Reset();
    AggiornaMenuModifica(m_hwndPad);
}

bool FrmStart::OffriRecupero()
{
    const std::optional<PaginaRecuperata> recuperata =
        OffertaRecupero::Chiedi(this, [this](const PaginaRecuperata &pagina) {
            m_undo->Reset();
            m_pagina->Recupera(pagina);
            m_recupero->ScriviOra();
        });
    return recuperata.has_value();
}

void FrmStart::Rivela()
{
    if (!Stato().FinestraPronta)
        return;
    m_rivelazione->stop();
    showMaximized();
    m_area->setActiveSubWindow(m_finestraDocumento);
    m_pad->setFocus();
    AggiornaAnteprima(false);
    m_rivelata = true;
    ForseMostrata();
}

void FrmStart::ForseMostrata()
{
    if (m_avviata && m_rivelata)
        emit Mostrata();
}

bool FrmStart::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_area->viewport() && evento->type() == QEvent::Resize)
        Disponi(true);
    return QMainWindow::eventFilter(oggetto, evento);
}

void FrmStart::Disponi(bool ancheDocumento)
{
    if (m_inDisposizione || !m_finestraDocumento || !m_finestraAnteprima)
        return;
    const QScopedValueRollback<bool> sentinella(m_inDisposizione, true);
    const QSize schermo = InTwip(screen()->availableGeometry().size());
    const QSize area = InTwip(m_area->viewport()->size());
    if (ancheDocumento)
        m_finestraDocumento->setGeometry(InPixel(DisposizioneFinestre::Documento(schermo, area)));
    const QRect documento = InTwip(m_finestraDocumento->geometry());
    m_finestraAnteprima->setGeometry(InPixel(DisposizioneFinestre::Anteprima(schermo, area, documento)));
    Stato().LarghezzaDocumento = documento.width();
    Stato().AltezzaDocumento = documento.height();
    m_finestraRisultati->setGeometry(InPixel(DisposizioneFinestre::Risultati(schermo, area, documento)));
}

// --- Commands -------------------------------------------------------------------------------------------------------

void FrmStart::Nuovo()
{
    const bool chiede = m_pagina->Modificata();
    if (!m_pagina->ChiediSalvataggio())
        return;
    if (!chiede)
        m_recupero->Deponi();
    m_undo->TakeUndoSnapShot();
    const NuovaPagina::Esito esito = NuovaPagina::Scegli(*m_pad, this);
    m_pad->setFocus();
    if (!esito.iniziata) {
        m_recupero->Riprendi();
        AggiornaAnteprima(false);
        return;
    }
    m_stato->Fatto({}, PannelloStato::Argomento::Lettura);
    m_stato->Fatto({}, PannelloStato::Argomento::Ricarica);
    ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, false);
    if (const int corpo = m_pad->Find(u"<BODY>"_s, 0, -1, RichTextBox::SenzaEvidenza); corpo > 0)
        m_pad->ImpostaSelStart(corpo + 8);
    m_pad->centerCursor(); // with what follows it in view
    m_pagina->Iniziata();
    m_undo->TakeUndoSnapShot();
    m_recupero->Salvata();
    AggiornaAnteprima(false);
    MostraTempoCaricamento(Stato().FileAnteprima);
    if (!esito.avviso.isEmpty())
        m_stato->Fatto(esito.avviso);
}

bool FrmStart::ApriPaginaWeb()
{
    return m_pagina->ApriConDialogo();
}

void FrmStart::AggiornaMenuModifica(Hwnd hwnd)
{
    const RichTextBox *controllo = RichTextBox::DaHandle(hwnd);
    if (Stato().ControlloInCorso || !controllo)
        return;
    const bool selezione = controllo->textCursor().hasSelection();
    for (const int indice : {3, 4, 6})
        m_comandi->Abilita(u"MenuEdit(%1)"_s.arg(indice), selezione);
    m_comandi->Abilita(u"MenuEdit(5)"_s, m_puoIncollare);
    m_comandi->Abilita(u"MenuEdit(0)"_s, m_undo->CanUndo());
    m_comandi->Abilita(u"MenuEdit(1)"_s, m_undo->CanRedo());
}

void FrmStart::ControllaSintassi()
{
    ModuloVerificaSintassi::VerificaSintassi(*m_pad, 1, true);
    if (std::exchange(m_daChiudere, false))
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void FrmStart::DiVerifica(bool finita, int falli)
{
    m_falliDetti = finita ? falli : -1;
    const QString errori = falli == 0 ? Messaggio(410) : Messaggio(411).arg(falli);
    m_stato->Fatto(finita ? errori : Messaggio(412), PannelloStato::Argomento::Verifica);
}

void FrmStart::Trova(quint8 modalita)
{
    if (!m_trova) {
        m_trova = new FrmTrova(this);
        // All that one replace changes is one step back.
        connect(m_trova, &FrmTrova::SostituzioneImminente, m_undo, &clsUndo::TakeUndoSnapShot);
        connect(m_trova, &FrmTrova::SostituzioneFatta, m_undo, &clsUndo::TakeUndoSnapShot);
    }
    m_trova->Init(m_pad, modalita);
}

void FrmStart::MostraTempoCaricamento(const QString &file)
{
    const QFileInfo informazioni(file);
    if (!informazioni.exists())
        return;
    m_pannello2->setText(TempoCaricamento::GetSpeedInfo(informazioni.size()));
    statusBar()->update();
}

void FrmStart::MostraPosizione()
{
    if (Stato().ControlloInCorso)
        return;
    const int posizione = m_pad->SelStart();
    const int riga = m_pad->GetLineFromChar(posizione);
    const QString testo = Messaggio(208).arg(riga + 1).arg(posizione - m_pad->InizioRiga(riga) + 1);
    const bool piuLungo = testo.size() > m_pannelloPosizione->text().size();
    m_pannelloPosizione->setText(testo);
    // At a fixed size a new text does not have the whole window laid out again; the panel only grows.
    if (const QSize misura = piuLungo ? m_pannelloPosizione->sizeHint() : QSize();
        misura.width() > m_pannelloPosizione->minimumWidth())
        m_pannelloPosizione->setFixedSize(misura);
}

void FrmStart::AggiornaTitolo()
{
    setWindowTitle(m_pagina->Titolo());
    m_documento->setWindowTitle(m_pagina->Nome());
}

void FrmStart::AggiornaAnteprima(bool nascondi)
{
    m_anteprima->AggiornaAnteprima(m_pad, nascondi);
}

void FrmStart::VaiARiga()
{
    const int corrente = m_pad->GetLineFromChar(m_pad->SelStart()) + 1;
    FrmVaiARiga dialogo(corrente, m_documento->Pad_NumeroRighe(), this);
    if (dialogo.exec() == QDialog::Accepted)
        m_documento->Pad_Vai_A_Riga(dialogo.Riga());
}

void FrmStart::Esci()
{
    close();
}

void FrmStart::FineDalSistema()
{
    m_recupero->Lascia();
    // Not quit(): that closes the windows one by one, and closing asks.
    QCoreApplication::exit();
}

void FrmStart::closeEvent(QCloseEvent *evento)
{
    // The check still needs the page.
    m_daChiudere = Stato().ControlloInCorso;
    const bool chiede = m_pagina->Modificata();
    if (m_daChiudere || !m_pagina->ChiediSalvataggio()) {
        evento->ignore();
        return;
    }
    // What nobody was asked about is not thrown away.
    if (chiede)
        m_recupero->Chiudi();
    else
        m_recupero->Lascia();
    evento->accept();
    QCoreApplication::quit(); // the find dialog may still be open
}
