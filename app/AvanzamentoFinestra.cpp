#include "app/AvanzamentoFinestra.h"

#include "app/TabellaLingua.h"
#include "chrome/ClsProgressBar.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

using ModuloPrincipale::Messaggio;

namespace
{

bool Immissione(QEvent::Type tipo)
{
    switch (tipo) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
        return true;
    default:
        return false;
    }
}

} // namespace

SoloUna::SoloUna(const QWidget &finestra) : m_finestra(finestra)
{
    qApp->installEventFilter(this);
}

bool SoloUna::eventFilter(QObject *oggetto, QEvent *evento)
{
    // Alt+F4 reaches the window that has the keyboard, and this one does not close: what is meant is the program.
    if (oggetto == &m_finestra && evento->type() == QEvent::Close && evento->spontaneous() && m_finestra.parentWidget())
        QMetaObject::invokeMethod(m_finestra.parentWidget(), &QWidget::close, Qt::QueuedConnection);
    const auto *widget = qobject_cast<QWidget *>(oggetto);
    const bool qui = widget && widget->window() == &m_finestra;
    if (evento->type() == QEvent::Shortcut)
        return !qui;
    return widget && !qui && Immissione(evento->type());
}

AvanzamentoFinestra::AvanzamentoFinestra(QWidget *padre, const QString &etichetta, qsizetype massimo)
    : m_finestra(Messaggio(313), Messaggio(314), padre)
{
    m_finestra.Barra().TextStatus(etichetta);
    // A window under a modal one cannot be closed: the system's request would not even arrive.
    m_finestra.setWindowModality(Qt::NonModal);
    m_finestra.Barra().Max(double(massimo));
}

void AvanzamentoFinestra::Mostra()
{
    m_solo.emplace(m_finestra);
    m_finestra.Mostra(0);
}

void AvanzamentoFinestra::ImpostaValore(qsizetype valore)
{
    m_finestra.Barra().Value(double(valore));
}
