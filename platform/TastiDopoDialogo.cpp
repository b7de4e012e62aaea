#include "platform/TastiDopoDialogo.h"

#include <QCoreApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>

TastiDopoDialogo::TastiDopoDialogo(QDialog *dialogo, QWidget *destinatario)
    : QObject(dialogo), m_dialogo(dialogo), m_destinatario(destinatario)
{
    connect(dialogo, &QDialog::finished, this, &TastiDopoDialogo::AscoltaFinestra);
}

TastiDopoDialogo::~TastiDopoDialogo()
{
    Consegna();
}

void TastiDopoDialogo::AscoltaFinestra()
{
    m_premuti.clear();
    // The window and not the dialog: a dialog has no more to do with the keys, its window still hands them out.
    if (m_dialogo->windowHandle())
        m_dialogo->windowHandle()->installEventFilter(this);
}

void TastiDopoDialogo::Consegna()
{
    for (std::unique_ptr<QEvent> &tasto : m_tasti) {
        if (m_destinatario)
            QCoreApplication::postEvent(m_destinatario, tasto.release());
    }
    m_tasti.clear();
}

bool TastiDopoDialogo::eventFilter(QObject *oggetto, QEvent *evento)
{
    if ((evento->type() != QEvent::KeyPress && evento->type() != QEvent::KeyRelease) || m_dialogo->isVisible())
        return QObject::eventFilter(oggetto, evento);
    if (PerLaPagina(*static_cast<QKeyEvent *>(evento)))
        m_tasti.emplace_back(evento->clone());
    if (!m_dialogo->isModal())
        Consegna();
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
