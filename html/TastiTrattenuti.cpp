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
    if (m_giu.empty() || (tipo != QEvent::KeyPress && tipo != QEvent::KeyRelease && tipo != QEvent::ShortcutOverride))
        return QObject::eventFilter(oggetto, evento);
    const auto &tasto = static_cast<const QKeyEvent &>(*evento);
    if (!Contiene(Identita(tasto)))
        return false;
    if (tipo == QEvent::KeyRelease) {
        Rilasciato(tasto);
        return true;
    }
    if (tasto.isAutoRepeat()) {
        evento->accept();
        return true;
    }
    // Pressed anew: its release went to another window.
    std::erase(m_giu, Identita(tasto));
    return false;
}
