#include "platform/RichTextBox.h"

#include "platform/Cercatore.h"
#include "platform/Disposizione.h"

#include <algorithm>
#include <unordered_map>

#include <QScrollBar>
#include <QTextBlock>

namespace
{

std::unordered_map<Hwnd, RichTextBox *> &Controlli()
{
    static std::unordered_map<Hwnd, RichTextBox *> controlli;
    return controlli;
}

} // namespace

RichTextBox::RichTextBox(QWidget *parent) : QPlainTextEdit(parent)
{
    auto *documento = new QTextDocument(this);
    m_disposizione = new Disposizione(documento);
    documento->setDocumentLayout(m_disposizione);
    documento->setUndoRedoEnabled(false);
    const QSize vista = viewport()->size();
    viewport()->resize(Disposizione::LarghezzaRiga, vista.height());
    setDocument(documento);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    viewport()->resize(vista);
    setFrameShape(QFrame::NoFrame);

    QPalette tavolozza = palette();
    tavolozza.setColor(QPalette::Base, Qt::white);
    tavolozza.setColor(QPalette::Text, Qt::black);
    setPalette(tavolozza);
    NascondiSelezione(false);

    connect(documento, &QTextDocument::contentsChange, this, &RichTextBox::DocumentoCambiato);
    connect(documento, &QTextDocument::contentsChanged, this, &RichTextBox::DopoCambiamento);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &RichTextBox::SelezioneForseCambiata);
    connect(this, &QPlainTextEdit::selectionChanged, this, &RichTextBox::SelezioneForseCambiata);

    static Hwnd prossimo = 0x10000;
    m_hwnd = ++prossimo;
    Controlli().emplace(m_hwnd, this);
}

RichTextBox::~RichTextBox()
{
    Controlli().erase(m_hwnd);
}

RichTextBox *RichTextBox::DaHandle(Hwnd hwnd)
{
    const auto trovato = Controlli().find(hwnd);
    return trovato == Controlli().end() ? nullptr : trovato->second;
}

// --- Selection ------------------------------------------------------------------------------------------------------

int RichTextBox::SelStart() const
{
    return DaDocumento(textCursor().selectionStart());
}

int RichTextBox::SelLength() const
{
    const QTextCursor cursore = textCursor();
    return DaDocumento(cursore.selectionEnd()) - DaDocumento(cursore.selectionStart());
}

void RichTextBox::MuoviCursore(int ancora, int posizione)
{
    QTextCursor cursore = textCursor();
    cursore.setPosition(ancora);
    if (posizione != ancora)
        cursore.setPosition(posizione, QTextCursor::KeepAnchor);
    setTextCursor(cursore);
}

void RichTextBox::ImpostaSelStart(int posizione)
{
    ConcludiComposizione();
    const int documento = InDocumento(posizione);
    MuoviCursore(documento, documento);
}

void RichTextBox::ImpostaSelLength(int lunghezza)
{
    Seleziona(SelStart(), lunghezza);
}

void RichTextBox::Seleziona(int da, int quanti)
{
    ConcludiComposizione();
    da = Limita(da);
    MuoviCursore(InDocumento(da), InDocumento(std::min<qsizetype>(qsizetype(da) + std::max(0, quanti), Lunghezza())));
}

void RichTextBox::ImpostaSelText(const QString &testo)
{
    Sostituisci(SelStart(), SelLength(), testo);
}

void RichTextBox::Elimina()
{
    if (SelLength() > 0)
        ImpostaSelText(QString());
}

void RichTextBox::SelezioneForseCambiata()
{
    // In the middle of a change of the document the positions do not hold yet; the change itself reports afterwards.
    if (m_interno || m_attesa || document()->blockCount() != m_blocchi)
        return;
    const std::pair<int, int> nuova{SelStart(), SelLength()};
    if (m_battitura && (nuova.second > 0 || nuova.first != m_battitura->first))
        m_battitura.reset();
    if (nuova == m_selezione)
        return;
    m_selezione = nuova;
    emit SelChange();
}

// --- Search ---------------------------------------------------------------------------------------------------------

int RichTextBox::Find(const QString &testo, int inizio, int fine, int opzioni)
{
    if (testo.isEmpty() || testo.size() > Lunghezza())
        return -1;
    const QString tutto = Text();
    const QStringView campo =
        QStringView(tutto).first(fine < 0 ? tutto.size() : std::min<qsizetype>(fine, tutto.size()));
    const Qt::CaseSensitivity caso = opzioni & Maiuscole ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const auto diParola = [&campo](qsizetype dove) {
        return dove >= 0 && dove < campo.size() && (campo[dove].isLetterOrNumber() || campo[dove] == u'_');
    };
    const Cercatore cercatore(testo, caso);
    qsizetype trovato = cercatore.Prossimo(campo, inizio);
    if (opzioni & ParolaIntera) {
        while (trovato >= 0 && ((diParola(trovato) && diParola(trovato - 1)) ||
                                (diParola(trovato + testo.size() - 1) && diParola(trovato + testo.size()))))
            trovato = cercatore.Prossimo(campo, trovato + 1);
    }
    if (trovato >= 0 && !(opzioni & SenzaEvidenza))
        Seleziona(int(trovato), int(testo.size()));
    return int(trovato);
}

// --- Lines and view -------------------------------------------------------------------------------------------------

int RichTextBox::GetLineFromChar(int posizione) const
{
    const int blocco = document()->findBlock(InDocumento(posizione)).blockNumber();
    return blocco - m_interruzioni.NonRighePrima(blocco);
}

int RichTextBox::NumeroRighe() const
{
    const int ultimo = m_blocchi - 1;
    return ultimo + 1 - m_interruzioni.NonRighePrima(ultimo);
}

int RichTextBox::PrimaRigaVisibile() const
{
    const int blocco = firstVisibleBlock().blockNumber();
    return blocco - m_interruzioni.NonRighePrima(blocco);
}

int RichTextBox::InizioRiga(int riga) const
{
    if (riga <= 0)
        return 0;
    if (riga >= NumeroRighe())
        return Lunghezza();
    // The first block whose count of line ends before it reaches the line.
    int basso = riga;
    int alto = m_blocchi - 1;
    while (basso < alto) {
        const int mezzo = basso + (alto - basso) / 2;
        if (mezzo - m_interruzioni.NonRighePrima(mezzo) < riga)
            basso = mezzo + 1;
        else
            alto = mezzo;
    }
    return InizioBlocco(document()->findBlockByNumber(basso));
}

std::vector<RichTextBox::RigaVisibile> RichTextBox::RigheVisibili() const
{
    std::vector<RigaVisibile> righe;
    const QPoint origine = viewport()->pos();
    QTextBlock blocco = firstVisibleBlock();
    QRectF area = blockBoundingGeometry(blocco).translated(contentOffset());
    bool primo = true;
    while (blocco.isValid() && area.top() < viewport()->height()) {
        const int numero = blocco.blockNumber();
        if (primo || numero == 0 || FineRiga(m_interruzioni.Tipo(numero - 1))) {
            // The block's own height counts the margin below the last one in.
            const qreal altezza =
                blocco.layout()->lineCount() > 0 ? blocco.layout()->lineAt(0).height() : area.height();
            righe.push_back(
                {numero - m_interruzioni.NonRighePrima(numero), int(area.top()) + origine.y(), int(altezza)});
        }
        primo = false;
        blocco = blocco.next();
        area =
            QRectF(area.left(), area.bottom(), area.width(), blocco.isValid() ? blockBoundingRect(blocco).height() : 0);
    }
    return righe;
}

QPoint RichTextBox::PosizioneDaCarattere(int posizione) const
{
    QTextCursor cursore(document());
    cursore.setPosition(InDocumento(posizione));
    return cursorRect(cursore).topLeft() + viewport()->pos();
}

void RichTextBox::ScorriRighe(int righe)
{
    verticalScrollBar()->setValue(verticalScrollBar()->value() + righe);
}

QPoint RichTextBox::PosizioneScorrimento() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void RichTextBox::ImpostaPosizioneScorrimento(QPoint punto)
{
    horizontalScrollBar()->setValue(punto.x());
    verticalScrollBar()->setValue(punto.y());
}

void RichTextBox::NascondiSelezione(bool nascondi)
{
    QPalette tavolozza = palette();
    for (const QPalette::ColorGroup gruppo : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        tavolozza.setBrush(gruppo, QPalette::Highlight,
                           nascondi ? QBrush(Qt::transparent) : QBrush(QColor(178, 219, 240)));
        // No brush: selected text keeps its own colours.
        tavolozza.setBrush(gruppo, QPalette::HighlightedText, QBrush(Qt::NoBrush));
    }
    setPalette(tavolozza);
}

void RichTextBox::Ridisegna(bool acceso)
{
    setUpdatesEnabled(acceso);
    if (acceso)
        viewport()->update();
}
