#include "platform/TastiDopoDialogo.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>

TastiDopoDialogo::TastiDopoDialogo(QDialog *dialogo, QWidget *destinatario)
    : QObject(dialogo), m_destinatario(destinatario)
{
    // The window and not the dialog: a dialog has no more to do with the keys, its window still hands them out.
    if (dialogo->windowHandle())
        dialogo->windowHandle()->installEventFilter(this);
}

TastiDopoDialogo::~TastiDopoDialogo()
{
    for (std::unique_ptr<QEvent> &tasto : m_tasti) {
        if (m_destinatario)
            QCoreApplication::postEvent(m_destinatario, tasto.release());
    }
}

bool TastiDopoDialogo::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (evento->type() != QEvent::KeyPress && evento->type() != QEvent::KeyRelease)
        return QObject::eventFilter(oggetto, evento);
    if (PerLaPagina(*static_cast<QKeyEvent *>(evento)))
        m_tasti.emplace_back(evento->clone());
    return true;
}

/// The key that closed the dialog may still be down: its repetitions and its release mean nothing to the page.
bool TastiDopoDialogo::PerLaPagina(const QKeyEvent &tasto)
{
    const auto posto = std::find(m_premuti.begin(), m_premuti.end(), tasto.key());
    if (tasto.type() == QEvent::KeyPress && !tasto.isAutoRepeat()) {
        if (posto == m_premuti.end())
            m_premuti.push_back(tasto.key());
        return true;
    }
    if (posto == m_premuti.end())
        return false;
    if (!tasto.isAutoRepeat())
        m_premuti.erase(posto);
    return true;
}
