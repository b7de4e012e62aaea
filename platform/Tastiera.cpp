#include "platform/Tastiera.h"

#include "platform/RichTextBox.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace
{

// The extra key beside the left Shift of 102-key keyboards, by its X11 and evdev scan code.
constexpr quint32 ScanCodeMinoreMaggiore = 94;
constexpr int CodiceMinoreMaggiore = 226;

int Codice(int tasto)
{
    if ((tasto >= Qt::Key_A && tasto <= Qt::Key_Z) || (tasto >= Qt::Key_0 && tasto <= Qt::Key_9))
        return tasto;
    if (tasto >= Qt::Key_F1 && tasto <= Qt::Key_F24)
        return 112 + tasto - Qt::Key_F1;
    switch (tasto) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Select:
        return 41;
    case Qt::Key_Execute:
        return 43;
    case Qt::Key_Print:
        return 44;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Plus:
        return 187;
    case Qt::Key_Comma:
        return 188;
    case Qt::Key_Minus:
        return 189;
    case Qt::Key_Period:
        return 190;
    default:
        return 0;
    }
}

} // namespace

int Tastiera::StatoShift(Qt::KeyboardModifiers modificatori)
{
    return (modificatori & Qt::ShiftModifier ? 1 : 0) + (modificatori & Qt::ControlModifier ? 2 : 0) +
           (modificatori & Qt::AltModifier ? 4 : 0);
}

quint64 Tastiera::Identita(const QKeyEvent &evento)
{
    return evento.nativeScanCode() != 0 ? evento.nativeScanCode() : quint64(evento.key()) << 32;
}

EventoTasto Tastiera::DaQt(const QKeyEvent &evento)
{
    EventoTasto tasto;
    tasto.shift = StatoShift(evento.modifiers());
    tasto.testo = evento.text();
    // On a keyboard without the extra key, the key that types "<" stands in for it.
    if (tasto.testo == u"<"_s || evento.nativeScanCode() == ScanCodeMinoreMaggiore)
        tasto.codice = CodiceMinoreMaggiore;
    else
        tasto.codice = Codice(evento.key());
    // Keyboards and programs that have a key for the line feed end a line with it.
    if (tasto.codice == 0 && tasto.testo == u"\n"_s)
        tasto.codice = 13;
    // A key that the rules do not name still has a code: 0 means swallowed.
    if (tasto.codice == 0)
        tasto.codice = 255;
    return tasto;
}
