#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QObject>

/// Sees when a view has been painted.
class Spia : public QObject
{
public:
    bool eventFilter(QObject *oggetto, QEvent *evento) override
    {
        m_dipinto = m_dipinto || evento->type() == QEvent::Paint;
        return QObject::eventFilter(oggetto, evento);
    }

    /// Runs the events until the view is painted the next time.
    void Aspetta()
    {
        m_dipinto = false;
        QElapsedTimer attesa;
        attesa.start();
        while (!m_dipinto) {
            if (attesa.elapsed() > 60'000)
                qFatal("the control was not painted for a minute");
            QCoreApplication::processEvents();
        }
    }

    /// Runs the events until nothing is painted any more.
    void Quiete()
    {
        do {
            m_dipinto = false;
            for (int giro = 0; giro < 3; ++giro)
                QCoreApplication::processEvents();
        } while (m_dipinto);
    }

private:
    bool m_dipinto = false;
};
