#include "chrome/PannelloStato.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

PannelloStato::PannelloStato(QLabel *etichetta) : QObject(etichetta), m_etichetta(etichetta)
{
    m_orologio.start();
    m_scadenza.setSingleShot(true);
    connect(&m_scadenza, &QTimer::timeout, this, &PannelloStato::Mostra);
    QCoreApplication::instance()->installEventFilter(this);
}

void PannelloStato::Fatto(const QString &testo, Argomento argomento)
{
    m_turno.Fatto(testo, argomento, m_orologio.elapsed());
    Mostra();
}

void PannelloStato::DiPassaggio(const QString &testo)
{
    m_turno.DiPassaggio(testo);
    Mostra();
}

void PannelloStato::Mostra()
{
    const qint64 ora = m_orologio.elapsed();
    m_etichetta->setText(m_turno.Testo(ora));
    if (const auto scadenza = m_turno.Scadenza())
        m_scadenza.start(int(*scadenza - ora));
    else
        m_scadenza.stop();
}

// It only watches; what the user does comes to a window of the host first, once.
bool PannelloStato::eventFilter(QObject *oggetto, QEvent *evento)
{
    const bool azione = evento->type() == QEvent::KeyPress || evento->type() == QEvent::MouseButtonPress ||
                        evento->type() == QEvent::Wheel;
    if (azione && oggetto->isWindowType()) {
        m_turno.Azione(m_orologio.elapsed());
        Mostra();
    }
    return false;
}
