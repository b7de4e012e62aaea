#include "html/TastiTrattenuti.h"

#include "platform/RichTextBox.h"

#include <QKeyEvent>

#include <algorithm>

namespace
{

// A key keeps its scan code while its meaning follows Shift: "=" may be released as "0".
quint64 Identita(const QKeyEvent &tasto)
{
    return tasto.nativeScanCode() != 0 ? tasto.nativeScanCode() : quint64(tasto.key()) << 32;
}

} // namespace

TastiTrattenuti &TastiTrattenuti::Di(RichTextBox *editor)
{
    for (QObject *figlio : editor->children()) {
        if (auto *tasti = dynamic_cast<TastiTrattenuti *>(figlio))
            return *tasti;
    }
    return *new TastiTrattenuti(editor);
}

TastiTrattenuti::TastiTrattenuti(RichTextBox *editor) : QObject(editor)
{
    editor->installEventFilter(this);
}

bool TastiTrattenuti::Contiene(quint64 tasto) const
{
    return std::find(m_giu.begin(), m_giu.end(), tasto) != m_giu.end();
}

void TastiTrattenuti::Premuto(const QKeyEvent &tasto)
{
    m_ultimo = Identita(tasto);
    if (!Contiene(Identita(tasto)))
        m_giu.push_back(Identita(tasto));
}

void TastiTrattenuti::Rilasciato(const QKeyEvent &tasto)
{
    if (!tasto.isAutoRepeat())
        std::erase(m_giu, Identita(tasto));
}

bool TastiTrattenuti::eventFilter(QObject *oggetto, QEvent *evento)
{
    const QEvent::Type tipo = evento->type();
    if (tipo != QEvent::KeyPress && tipo != QEvent::KeyRelease && tipo != QEvent::ShortcutOverride)
        return QObject::eventFilter(oggetto, evento);
    const auto &tasto = static_cast<const QKeyEvent &>(*evento);
    const quint64 identita = Identita(tasto);
    const quint64 primaDi = m_ultimo;
    if (tipo == QEvent::KeyPress)
        m_ultimo = identita;
    if (!Contiene(identita))
        return false;
    if (tipo == QEvent::KeyRelease) {
        Rilasciato(tasto);
        return true;
    }
    // Under X11 a key that goes down at once after it was let go counts as repeated, but none repeats behind another.
    if (tasto.isAutoRepeat() && primaDi == identita) {
        evento->accept();
        return true;
    }
    // Pressed anew: its release went to another window.
    std::erase(m_giu, identita);
    return false;
}
