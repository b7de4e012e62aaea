#include "editor/FrmPaginaHTML.h"

#include "app/ModuloDichiarazioni.h"
#include "app/TabellaLingua.h"
#include "chrome/Colori.h"
#include "editor/MargineRighe.h"
#include "editor/TastiPagina.h"
#include "html/ModuloTag.h"
#include "platform/Misure.h"

#include <QGuiApplication>
#include <QResizeEvent>
#include <QScrollBar>
#include <QTimer>

using namespace Qt::StringLiterals;
using ModuloDichiarazioni::Stato;
using ModuloPrincipale::Messaggio;

namespace
{

constexpr int MargineDisegnato = 435; // twips, until the first resize
constexpr int Margine = 540;
constexpr double CorpoCarattere = 10; // points

} // namespace

FrmPaginaHTML::FrmPaginaHTML(QWidget *parent)
    : QWidget(parent), m_pad(new RichTextBox(this)), m_margine(new MargineRighe(m_pad, this)), m_timer(new QTimer(this))
{
    setObjectName(u"FrmPaginaHTML"_s);
    m_pad->setObjectName(u"RichPad"_s);
    m_pad->setAccessibleName(Messaggio(229));
    m_margine->setObjectName(u"picLines"_s);
    m_margine->setAccessibleName(Messaggio(340));
    m_margine->resize(Misure::InPixel(MargineDisegnato), 0);
    m_timer->setObjectName(u"Timer1"_s);
    m_timer->setInterval(100);
    setFocusProxy(m_pad);
    setAutoFillBackground(true);
    QPalette tavolozza = palette();
    tavolozza.setColor(QPalette::Window, Colori::Finestra);
    setPalette(tavolozza);
    Carica();
    CollegaEventi();
    m_timer->start();
}

FrmPaginaHTML::~FrmPaginaHTML()
{
    // The control still speaks when it goes with the other children, and this window is no longer whole then.
    m_pad->disconnect(this);
    m_pad->verticalScrollBar()->disconnect(this);
}

void FrmPaginaHTML::Carica()
{
    QFont carattere(u"Courier New"_s);
    carattere.setStyleHint(QFont::Monospace);
    carattere.setPointSizeF(CorpoCarattere);
    m_pad->setFont(carattere);
    m_pad->setTabStopDistance(4 * QFontMetricsF(carattere).horizontalAdvance(u' '));
    m_pad->ImpostaSelColor(0);
    m_pad->ImpostaSelBold(false);
    m_pad->ImpostaSelItalic(false);
    Stato().ControlloInCorso = false;
    m_erroreBase =
        ModuloTag::CaricaTag(ModuloDichiarazioni::PercorsoIn(ModuloDichiarazioni::CartellaProgramma(), u"tag html.db"))
            .messaggio;
    Stato().FinestraPronta = false;
}

void FrmPaginaHTML::CollegaEventi()
{
    const auto ridisegna = [this] { Pad_Disegna_Numero_Righe(m_margine); };
    // The control tells which part of it is painted anew; beside the rest the numbers stand as they are.
    connect(m_pad, &RichTextBox::updateRequest, this, [this](const QRect &area, int dy) {
        if (Stato().ControlloInCorso)
            m_ultimaPrimaRiga = 0;
        else
            m_margine->Segui(area, dy);
    });
    connect(m_pad, &RichTextBox::SelChange, this, [this] {
        emit StatoModificaCambiato(m_pad->hWnd());
        if (!Stato().ControlloInCorso)
            m_margine->SeguiCaretto();
    });
    connect(new TastiPagina(m_pad), &TastiPagina::AnteprimaRichiesta, this, &FrmPaginaHTML::AnteprimaRichiesta);
    connect(m_pad, &RichTextBox::KeyUp, this, [this] { emit StatoModificaCambiato(m_pad->hWnd()); });
    connect(m_pad, &RichTextBox::MouseDown, this, [this](int bottone, int, QPoint dove) {
        if (bottone != 2)
            return;
        emit StatoModificaCambiato(m_pad->hWnd());
        emit MenuRichiesto(m_pad->mapToGlobal(dove));
    });
    connect(m_pad, &RichTextBox::MenuDaTastiera, this, [this](QPoint dove) {
        emit StatoModificaCambiato(m_pad->hWnd());
        emit MenuRichiesto(m_pad->mapToGlobal(dove));
    });
    connect(m_pad, &RichTextBox::MouseUp, this, ridisegna);
    // The selection stays visible while a dialog has the focus.
    const auto mostraSelezione = [this] { m_pad->NascondiSelezione(false); };
    connect(m_pad, &RichTextBox::Click, this, mostraSelezione);
    connect(m_pad, &RichTextBox::LostFocus, this, mostraSelezione);
    connect(m_timer, &QTimer::timeout, this, &FrmPaginaHTML::ScorrimentoForseCambiato);
}

void FrmPaginaHTML::Attiva()
{
    if (Stato().FinestraPronta)
        return;
    Stato().FinestraPronta = true;
    emit PrimaAttivazione();
}

void FrmPaginaHTML::resizeEvent(QResizeEvent *evento)
{
    QWidget::resizeEvent(evento);
    if (!window()->isMinimized())
        Disponi();
}

void FrmPaginaHTML::focusInEvent(QFocusEvent *evento)
{
    QWidget::focusInEvent(evento);
    m_pad->setFocus();
}

void FrmPaginaHTML::Disponi()
{
    const int larghezzaMargine = Misure::InTwip(m_margine->width());
    const int altezza = std::max(0, Misure::InTwip(height()) - 100);
    const int larghezza = std::max(0, Misure::InTwip(width()) - larghezzaMargine - 150);
    m_pad->setGeometry(Misure::InPixel(larghezzaMargine + 50), 0, Misure::InPixel(larghezza), Misure::InPixel(altezza));
    m_margine->setGeometry(0, 0, Misure::InPixel(Margine), Misure::InPixel(altezza));
    emit Ridimensionata();
    Pad_Disegna_Numero_Righe(m_margine);
}

void FrmPaginaHTML::Pad_Disegna_Numero_Righe(MargineRighe *margine)
{
    margine->SeguiCaretto();
    margine->update();
}

int FrmPaginaHTML::Pad_Prima_Riga_Visibile() const
{
    return m_pad->PrimaRigaVisibile();
}

int FrmPaginaHTML::Pad_NumeroRighe() const
{
    return m_pad->NumeroRighe();
}

void FrmPaginaHTML::Pad_Vai_A_Riga(int line_number)
{
    const bool esiste = line_number >= 2 && line_number <= m_pad->NumeroRighe();
    const int posizione = esiste ? m_pad->InizioRiga(line_number - 1) : 0;
    m_pad->Ridisegna(false);
    // From the end back, so that the line comes to stand at the top of the view.
    m_pad->ImpostaSelStart(m_pad->Lunghezza());
    m_pad->ImpostaSelStart(posizione);
    m_pad->Ridisegna(true);
    m_pad->setFocus();
}

int FrmPaginaHTML::Pad_Ultima_Riga_Selezionata(int lIndex) const
{
    return m_pad->GetLineFromChar(lIndex);
}

void FrmPaginaHTML::ScorrimentoForseCambiato()
{
    const int prima = Pad_Prima_Riga_Visibile() + 1;
    if (prima == m_ultimaPrimaRiga)
        return;
    Pad_Disegna_Numero_Righe(m_margine);
    m_ultimaPrimaRiga = prima;
}
