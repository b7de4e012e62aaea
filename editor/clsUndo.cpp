#include "editor/clsUndo.h"

#include <algorithm>

#include <QMessageBox>
#include <QThread>

#include "app/ModuloDichiarazioni.h"
#include "platform/Confronto.h"

using namespace Qt::StringLiterals;

namespace
{

constexpr int NessunControllo = 91;     // an object that is not there
constexpr int ThreadDelContenitore = 5; // a call that cannot be made there

} // namespace

// The content is being rewritten: nothing is recorded and nothing painted until it is whole again.
class clsUndo::Riscrittura
{
public:
    explicit Riscrittura(clsUndo &undo) : m_undo(undo), m_hwnd(undo.m_rtb->hWnd())
    {
        m_undo.m_tracking = false;
        SetRedraw(m_hwnd, false);
    }
    ~Riscrittura()
    {
        SetRedraw(m_hwnd, true);
        m_undo.m_tracking = true;
    }
    Q_DISABLE_COPY_MOVE(Riscrittura)

private:
    clsUndo &m_undo;
    Hwnd m_hwnd;
};

clsUndo::clsUndo(QObject *genitore) : QObject(genitore) {}

clsUndo::~clsUndo()
{
    delete m_timer;
}

bool clsUndo::Attach(QObject *contenitore, RichTextBox *controllo, int pausa)
{
    if (m_rtb)
        m_rtb->disconnect(this);
    m_rtb = controllo;
    if (!controllo)
        return false;
    connect(controllo, &RichTextBox::Change, this, &clsUndo::AlCambio);
    connect(controllo, &RichTextBox::SelChange, this, &clsUndo::AllaSelezione);
    connect(controllo, &RichTextBox::KeyDown, this, &clsUndo::AlTasto);
    connect(controllo, &RichTextBox::MouseDown, this, [this] {
        if (InAttesa())
            AlTick();
    });
    const bool creato = CreateTimer(contenitore, pausa);
    return Reset() && creato;
}

bool clsUndo::CreateTimer(QObject *contenitore, int pausa)
{
    int errore = 0;
    if (!contenitore)
        errore = NessunControllo;
    else if (contenitore->thread() != QThread::currentThread())
        errore = ThreadDelContenitore;
    if (errore != 0) {
        QMessageBox messaggio(QMessageBox::Warning, u"clsUndo - Unexpected Error No. %1"_s.arg(errore),
                              errore == NessunControllo ? u"Object variable not set"_s : u"Invalid procedure call"_s,
                              QMessageBox::Ok | QMessageBox::Help);
        messaggio.exec();
        return false;
    }
    if (!m_timer) {
        m_timer = new QTimer(contenitore);
        m_timer->setObjectName(u"UndoTimer_"_s + m_rtb->objectName());
        connect(m_timer, &QTimer::timeout, this, &clsUndo::AlTick);
    }
    m_timer->stop();
    m_timer->setInterval(pausa);
    return true;
}

bool clsUndo::Reset()
{
    if (!m_rtb)
        return false;
    m_undoList.clear();
    m_redoList.clear();
    m_lastRtf = m_rtb->ContenutoRTF();
    m_revisioneRtf = m_rtb->Revisione();
    AllaSelezione();
    m_tracking = true;
    return TakeUndoSnapShot();
}

bool clsUndo::TakeUndoSnapShot()
{
    if (!m_rtb)
        return false;
    if (m_timer)
        m_timer->stop();
    const ContenutoRtf attuale = m_rtb->ContenutoRTF();
    const auto [sinistra, destra] = ContenutoRtf::Confronta(m_lastRtf, attuale);
    const qsizetype primaLunghezza = m_lastRtf.Lunghezza();
    const qsizetype lunghezza = attuale.Lunghezza();
    const bool uguale = sinistra == lunghezza && lunghezza == primaLunghezza;
    const Selezione selezione = SelezioneDelControllo();
    if (uguale && !m_undoList.empty()) {
        m_corrente = selezione;
        m_revisioneCorrente = m_revisioneRtf = m_rtb->Revisione();
        m_undoList.back().Segno = m_segno; // another page with the same text
        return false;
    }

    clsUndoElement elemento;
    elemento.MatchingCharsFromLeft = qint32(sinistra);
    elemento.MatchingCharsFromRight = qint32(destra);
    elemento.TextBlock_BeforeChange = m_lastRtf.Parte(sinistra, primaLunghezza - sinistra - destra);
    elemento.TextBlock_AfterChange = attuale.Parte(sinistra, lunghezza - sinistra - destra);
    elemento.SelStart_BeforeChange = m_precedente.inizio;
    elemento.SelLength_BeforeChange = m_precedente.lunghezza;
    elemento.SelStart_AfterChange = selezione.inizio;
    elemento.SelLength_AfterChange = selezione.lunghezza;
    elemento.FirstVisibleLine = m_rtb->PrimaRigaVisibile();
    elemento.SoloAspetti = m_revisioneRtf == m_rtb->Revisione();
    elemento.Segno = m_segno;
    elemento.Time = QDateTime::currentDateTime();
    m_undoList.push_back(std::move(elemento));
    m_redoList.clear();
    m_lastRtf = attuale;
    m_precedente = m_corrente = selezione;
    m_revisioneCorrente = m_revisioneRtf = m_rtb->Revisione();
    emit StatoCambiato();
    return true;
}

bool clsUndo::Undo(int passi)
{
    if (!m_rtb || InCorso())
        return false;
    TakeUndoSnapShot();
    const int quanti = int(m_undoList.size());
    if (quanti < 2 || passi < 1)
        return false;
    {
        const Riscrittura riscrittura(*this);
        for (int i = std::min(passi, quanti - 1); i > 0 && m_rtb; --i) {
            Applica(m_undoList.back(), m_undoList.back().TextBlock_BeforeChange);
            m_redoList.push_back(std::move(m_undoList.back()));
            m_undoList.pop_back();
        }
        const clsUndoElement &ultimo = m_redoList.back();
        Ripristina({ultimo.SelStart_BeforeChange, ultimo.SelLength_BeforeChange}, ultimo.FirstVisibleLine, true);
    }
    Annuncia();
    return true;
}

bool clsUndo::Redo(int passi)
{
    if (!m_rtb || InCorso())
        return false;
    if (m_rtb->Revisione() != m_revisioneRtf)
        TakeUndoSnapShot();
    const int quanti = int(m_redoList.size());
    if (quanti < 1 || passi < 1)
        return false;
    // Colours alone, set since, are no pending change; the record fits the content without them.
    RiprendiAspetti();
    {
        const Riscrittura riscrittura(*this);
        for (int i = std::min(passi, quanti); i > 0 && m_rtb; --i) {
            Applica(m_redoList.back(), m_redoList.back().TextBlock_AfterChange);
            m_undoList.push_back(std::move(m_redoList.back()));
            m_redoList.pop_back();
        }
        const clsUndoElement &ultimo = m_undoList.back();
        Ripristina({ultimo.SelStart_AfterChange, ultimo.SelLength_AfterChange}, ultimo.FirstVisibleLine, false);
    }
    Annuncia();
    return true;
}

bool clsUndo::AnnullaComando()
{
    if (!m_rtb || InCorso())
        return false;
    m_rtb->ConcludiComposizione();
    // Colours set since the last undo would become a record, and take away what can be redone.
    if (!m_redoList.empty())
        RiprendiAspetti();
    bool fatto = false;
    for (bool ancora = true; ancora;) {
        TakeUndoSnapShot();
        const int revisione = m_rtb->Revisione();
        ancora = Undo(1);
        fatto = fatto || ancora;
        ancora = ancora && m_rtb && m_rtb->Revisione() == revisione;
    }
    return fatto;
}

bool clsUndo::RipristinaComando()
{
    if (!m_rtb || InCorso())
        return false;
    m_rtb->ConcludiComposizione();
    bool fatto = false;
    bool testoCambiato = false;
    while (m_rtb && !(testoCambiato && (m_redoList.empty() || !m_redoList.back().SoloAspetti))) {
        const int revisione = m_rtb->Revisione();
        if (!Redo(1))
            break;
        fatto = true;
        testoCambiato = testoCambiato || m_rtb->Revisione() != revisione;
    }
    return fatto;
}

void clsUndo::Annuncia()
{
    emit StatoCambiato();
    if (m_undoList.back().Segno == m_segno)
        return;
    m_segno = m_undoList.back().Segno;
    emit SegnoCambiato(m_segno);
}

void clsUndo::Applica(const clsUndoElement &elemento, const QString &blocco)
{
    m_rtb->SostituisciRTF(elemento.MatchingCharsFromLeft, blocco, elemento.MatchingCharsFromRight);
    m_lastRtf = m_rtb->ContenutoRTF();
    m_revisioneRtf = m_rtb->Revisione();
}

void clsUndo::Ripristina(Selezione selezione, int primaRiga, bool mostraCaretto)
{
    if (!m_rtb)
        return;
    m_rtb->Seleziona(selezione.inizio, selezione.lunghezza);
    m_rtb->ScorriRighe(primaRiga - m_rtb->PrimaRigaVisibile());
    if (mostraCaretto)
        m_rtb->ensureCursorVisible();
    m_precedente = m_corrente = SelezioneDelControllo();
    m_revisioneCorrente = m_rtb->Revisione();
}

// Takes back what was coloured since the last record, when the text is still the same.
void clsUndo::RiprendiAspetti()
{
    const ContenutoRtf attuale = m_rtb->ContenutoRTF();
    if (m_rtb->Revisione() != m_revisioneRtf || attuale == m_lastRtf)
        return;
    const auto [sinistra, destra] = ContenutoRtf::Confronta(attuale, m_lastRtf);
    m_rtb->SostituisciRTF(sinistra, m_lastRtf.Parte(sinistra, m_lastRtf.Lunghezza() - sinistra - destra), destra);
}

// --- Events ---------------------------------------------------------------------------------------------------------

void clsUndo::AlCambio()
{
    if (!m_timer)
        return;
    if (!m_tracking) {
        m_timer->stop();
        return;
    }
    // The control reports a change of the text before or after the change of the selection that comes with it; either
    // way the selection from before the run is the previous one.
    if (!InAttesa() && m_revisioneCorrente != m_rtb->Revisione())
        AllaSelezione();
    m_timer->start();
}

void clsUndo::AlTick()
{
    // A check that lets timers run is half-way through its colours.
    if (ModuloDichiarazioni::Stato().ControlloInCorso)
        return;
    if (m_timer)
        m_timer->stop();
    if (m_tracking)
        TakeUndoSnapShot();
}

void clsUndo::AllaSelezione()
{
    if (InAttesa() || !m_rtb)
        return;
    m_precedente = m_corrente;
    m_corrente = SelezioneDelControllo();
    m_revisioneCorrente = m_rtb->Revisione();
}

void clsUndo::AlTasto(EventoTasto *tasto)
{
    const int codice = tasto->codice;
    if (tasto->shift == 2 && (codice == 'Z' || codice == 'Y')) {
        codice == 'Z' ? AnnullaComando() : RipristinaComando();
        tasto->codice = 0;
        return;
    }
    const bool fineCorsa = codice == 13 || (codice >= 32 && codice <= 44) || (codice >= 112 && codice <= 123);
    if (fineCorsa && InAttesa())
        AlTick();
}

// --- Helpers --------------------------------------------------------------------------------------------------------

clsUndo::Selezione clsUndo::SelezioneDelControllo() const
{
    return {m_rtb->SelStart(), m_rtb->SelLength()};
}

bool clsUndo::InCorso() const
{
    return !m_tracking || ModuloDichiarazioni::Stato().ControlloInCorso;
}

void clsUndo::SetRedraw(Hwnd hwnd, bool acceso)
{
    if (RichTextBox *controllo = RichTextBox::DaHandle(hwnd))
        controllo->Ridisegna(acceso);
}

int clsUndo::MatchingChars(QStringView a, QStringView b, bool daDestra)
{
    return int(Confronto::ParteUguale(a, b, daDestra));
}
