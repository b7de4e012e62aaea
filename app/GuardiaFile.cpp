#include "app/GuardiaFile.h"

#include "platform/TastiDopoDialogo.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr auto Ripresa = 150ms; // until a busy window is looked at again

} // namespace

GuardiaFile::GuardiaFile(QWidget *finestra, std::function<bool()> occupata)
    : QObject(finestra), m_finestra(finestra), m_occupata(std::move(occupata))
{
    m_attesa.setSingleShot(true);
    connect(&m_attesa, &QTimer::timeout, this, &GuardiaFile::Prova);
    finestra->installEventFilter(this);
}

bool GuardiaFile::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == m_finestra && evento->type() == QEvent::WindowActivate)
        m_attesa.start(0);
    else if (oggetto == m_finestra && evento->type() == QEvent::WindowDeactivate)
        m_attesa.stop();
    return QObject::eventFilter(oggetto, evento);
}

void GuardiaFile::Guarda()
{
    m_chiesto = true;
    m_attesa.start(0);
}

void GuardiaFile::Prova()
{
    if (!m_finestra->isVisible())
        return;
    const bool disturba = QApplication::activeModalWidget() || QApplication::activePopupWidget() ||
                          QApplication::mouseButtons() != Qt::NoButton || m_occupata() ||
                          (TastiDopoDialogo::SiScrive() && !m_chiesto) || TastiDopoDialogo::Restituisce();
    if (disturba) {
        m_attesa.start(Ripresa);
        return;
    }
    m_chiesto = false;
    emit DaGuardare();
}
