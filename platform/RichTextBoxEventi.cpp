// The control's keys, mouse and clipboard.

#include "platform/RichTextBox.h"

#include "platform/Tastiera.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QTextBlock>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace
{

int Bottone(Qt::MouseButton bottone)
{
    switch (bottone) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

/// Text from elsewhere, with the line ends of a page.
QString TestoPagina(const QMimeData &dati)
{
    return dati.text().replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u"\n"_s, u"\r\n"_s);
}

} // namespace

void RichTextBox::keyPressEvent(QKeyEvent *evento)
{
    EventoTasto tasto = Tastiera::DaQt(*evento);
    const int codice = tasto.codice;
    const QPointer<RichTextBox> questo(this);
    constexpr int primaFreccia = 33; // Page Up
    constexpr int ultimaFreccia = 40;
    if (codice >= primaFreccia && codice <= ultimaFreccia)
        ConcludiComposizione();
    m_premuti.insert(Tastiera::Identita(*evento), tasto);
    emit KeyDown(&tasto);
    if (!questo)
        return;
    if (tasto.codice == 0) {
        evento->accept();
        return;
    }
    const bool scrive = !evento->text().isEmpty() && evento->text().front().isPrint() &&
                        (tasto.shift & 2 ? (tasto.shift & 4) != 0 : true);
#ifndef Q_OS_MACOS
    // Alt with a letter is for the menus; a key that types with AltGr carries another modifier.
    if (scrive && (tasto.shift & 6) == 4) {
        evento->ignore();
        return;
    }
#endif
    const bool acapo = codice == 13;
    const bool tabulatore = evento->key() == Qt::Key_Tab && (tasto.shift & 6) == 0;
    if (scrive || acapo || tabulatore) {
        const char16_t originale = acapo ? u'\r' : tabulatore ? u'\t' : evento->text().front().unicode();
        char16_t carattere = originale;
        emit KeyPress(&carattere);
        if (!questo)
            return;
        if (carattere == 0) {
            evento->accept();
            return;
        }
        if (carattere != originale) {
            ImpostaSelText(QString(QChar(carattere)));
            evento->accept();
            return;
        }
    }
    // Shift+Enter would put a line separator into the page; a page has line ends only.
    if (acapo) {
        ImpostaSelText(u"\r\n"_s);
        ensureCursorVisible();
        evento->accept();
        return;
    }
    ScavalcaTaglio(codice, tasto.shift & 1);
    QPlainTextEdit::keyPressEvent(evento);
}

// The cut of a long line is no character: a key that would only step over it, or only take it away, acts from behind
// it; Home and End act from the line's first and last piece.
void RichTextBox::ScavalcaTaglio(int codice, bool estende)
{
    if (codice == 35 || codice == 36) {
        QTextCursor capo = textCursor();
        const int passo = codice == 36 ? -1 : 1;
        const int primo = capo.blockNumber();
        int blocco = primo;
        const auto taglioAccanto = [&] {
            const int interruzione = passo < 0 ? blocco - 1 : blocco;
            return interruzione >= 0 && interruzione < m_blocchi - 1 &&
                   m_interruzioni.Tipo(interruzione) == Interruzione::Taglio;
        };
        while (taglioAccanto())
            blocco += passo;
        if (blocco != primo) {
            const QTextBlock ultimo = document()->findBlockByNumber(blocco);
            capo.setPosition(ultimo.position() + (passo < 0 ? 0 : ultimo.length() - 1),
                             estende ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
            setTextCursor(capo);
        }
        return;
    }
    const bool indietro = codice == 37 || codice == 8;
    const bool cancella = codice == 8 || codice == 46;
    QTextCursor cursore = textCursor();
    if ((!indietro && codice != 39 && codice != 46) || (cursore.hasSelection() && (cancella || !estende)) ||
        !(indietro ? cursore.atBlockStart() : cursore.atBlockEnd()))
        return;
    const int interruzione = cursore.blockNumber() - (indietro ? 1 : 0);
    if (interruzione < 0 || interruzione >= m_blocchi - 1 || m_interruzioni.Tipo(interruzione) != Interruzione::Taglio)
        return;
    cursore.movePosition(indietro ? QTextCursor::PreviousCharacter : QTextCursor::NextCharacter,
                         estende && !cancella ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    setTextCursor(cursore);
}

void RichTextBox::keyReleaseEvent(QKeyEvent *evento)
{
    QPlainTextEdit::keyReleaseEvent(evento);
    // A key held down is released once.
    if (evento->isAutoRepeat())
        return;
    // Who types "<" or Ctrl+Space may let go of Shift or Ctrl first: the key is still the one that was pressed.
    EventoTasto tasto = m_premuti.take(Tastiera::Identita(*evento));
    if (tasto.codice == 0)
        tasto = Tastiera::DaQt(*evento);
    emit KeyUp(&tasto);
}

void RichTextBox::mousePressEvent(QMouseEvent *evento)
{
    const QPointer<RichTextBox> questo(this);
    QPlainTextEdit::mousePressEvent(evento);
    emit MouseDown(Bottone(evento->button()), Tastiera::StatoShift(evento->modifiers()),
                   evento->position().toPoint() + viewport()->pos());
    if (questo)
        evento->accept();
}

void RichTextBox::mouseReleaseEvent(QMouseEvent *evento)
{
    const QPointer<RichTextBox> questo(this);
    QPlainTextEdit::mouseReleaseEvent(evento);
    emit MouseUp(Bottone(evento->button()), Tastiera::StatoShift(evento->modifiers()),
                 evento->position().toPoint() + viewport()->pos());
    if (questo && evento->button() == Qt::LeftButton)
        emit Click();
}

void RichTextBox::contextMenuEvent(QContextMenuEvent *evento)
{
    // The mouse has its own event, MouseDown; here only the keyboard asks.
    if (evento->reason() == QContextMenuEvent::Keyboard)
        emit MenuDaTastiera(cursorRect().bottomLeft() + viewport()->pos());
    evento->accept();
}

void RichTextBox::focusOutEvent(QFocusEvent *evento)
{
    ConcludiComposizione();
    QPlainTextEdit::focusOutEvent(evento);
    // Keys released elsewhere are not heard of here.
    m_premuti.clear();
    emit LostFocus();
}

void RichTextBox::inputMethodEvent(QInputMethodEvent *evento)
{
    const QPointer<RichTextBox> questo(this);
    QPlainTextEdit::inputMethodEvent(evento);
    // Composing put formats of its own into the block: ours are due again.
    if (questo)
        textCursor().block().setUserState(-1);
}

// What is being composed has no place in the text, but takes room in its line: a place pointed at or gone to behind it
// would be one behind the line's end.
void RichTextBox::ConcludiComposizione()
{
    const auto composto = [this] { return textCursor().block().layout()->preeditAreaText(); };
    if (composto().isEmpty())
        return;
    QGuiApplication::inputMethod()->commit();
    if (const QString resto = composto(); !resto.isEmpty()) {
        QInputMethodEvent fine;
        fine.setCommitString(resto);
        QCoreApplication::sendEvent(this, &fine);
    }
}

QMimeData *RichTextBox::createMimeDataFromSelection() const
{
    // Every host's programs exchange plain text with lone line feeds inside Qt.
    auto *dati = new QMimeData;
    dati->setText(SelText().replace(u"\r\n"_s, u"\n"_s));
    return dati;
}

// Qt takes the text away and puts it in as one change of the document; here each change is reported before the next.
void RichTextBox::dropEvent(QDropEvent *evento)
{
    QDragLeaveEvent fine; // ends the drop caret and the scrolling
    QPlainTextEdit::dragLeaveEvent(&fine);
    if (isReadOnly() || !canInsertFromMimeData(evento->mimeData())) {
        evento->ignore();
        return;
    }
    ConcludiComposizione();
    const int dove = DaDocumento(cursorForPosition(evento->position().toPoint()).position());
    if (evento->source() == viewport() && evento->dropAction() == Qt::MoveAction) {
        SpostaSelezione(dove);
    } else {
        Sostituisci(dove, 0, TestoPagina(*evento->mimeData()));
        ensureCursorVisible();
    }
    evento->acceptProposedAction();
}

void RichTextBox::SpostaSelezione(int dove)
{
    const int inizio = SelStart();
    const QString testo = SelText();
    const int quanti = int(testo.size());
    dove = Limita(dove);
    if (dove >= inizio && dove <= inizio + quanti)
        return;
    Sostituisci(inizio, quanti, QString());
    Sostituisci(dove < inizio ? dove : dove - quanti, 0, testo);
}

bool RichTextBox::canInsertFromMimeData(const QMimeData *dati) const
{
    return dati->hasText();
}

void RichTextBox::insertFromMimeData(const QMimeData *dati)
{
    ImpostaSelText(TestoPagina(*dati));
    ensureCursorVisible();
}
