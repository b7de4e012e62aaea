#include "html/PausaControllo.h"

#include "html/Avanzamento.h"
#include "html/CodaTasti.h"

#include "platform/RichTextBox.h"

#include <QCoreApplication>
#include <QEvent>

namespace ModuloVerificaSintassi
{

PausaControllo::PausaControllo(RichTextBox &editor, Avanzamento *avanzamento)
    : m_editor(&editor), m_avanzamento(avanzamento), m_revisione(editor.Revisione()),
      m_scorrimento(editor.PosizioneScorrimento()), m_disegnava(editor.updatesEnabled())
{
    editor.Ridisegna(false);
    editor.installEventFilter(this);
    editor.viewport()->installEventFilter(this);
    m_durata.start();
}

PausaControllo::~PausaControllo()
{
    if (!m_editor)
        return;
    m_editor->removeEventFilter(this);
    m_editor->viewport()->removeEventFilter(this);
    if (m_nascosto)
        m_editor->show();
    if (m_editor->PosizioneScorrimento() != m_scorrimento && m_editor->Revisione() == m_revisione)
        m_editor->ImpostaPosizioneScorrimento(m_scorrimento);
    if (m_disegnava)
        m_editor->Ridisegna(true);
    // In the queue of all keys, so that none that comes now passes them.
    CodaTasti::Di(m_editor).Anteponi(std::move(m_tasti));
}

bool PausaControllo::Passa(qsizetype valore)
{
    if (!m_mostrato && m_avanzamento && m_durata.elapsed() >= AttesaAvanzamento)
        Mostra();
    QCoreApplication::processEvents(m_mostrato ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    if (!m_editor || m_editor->Revisione() != m_revisione)
        return false;
    if (!m_avanzamento)
        return true;
    m_avanzamento->ImpostaValore(valore);
    return !m_avanzamento->Annullato();
}

void PausaControllo::Mostra()
{
    m_mostrato = true;
    if (m_editor && !m_editor->isHidden()) {
        m_nascosto = true;
        m_editor->hide();
        // A control that draws nothing leaves its picture where it was.
        if (QWidget *padre = m_editor->parentWidget())
            padre->update(m_editor->geometry());
    }
    m_avanzamento->Mostra();
}

bool PausaControllo::eventFilter(QObject *oggetto, QEvent *evento)
{
    switch (evento->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
        m_tasti.emplace_back(evento->clone());
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return QObject::eventFilter(oggetto, evento);
    }
}

} // namespace ModuloVerificaSintassi
