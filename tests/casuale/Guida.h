#pragma once

#include "Attore.h"
#include "Giudice.h"

#include <QPointer>
#include <QTimer>

#include <ctime>

/// Has the steps done one after the other, each in its own turn of the event loop: of the one that a list, a dialog or
/// a check runs, too.
class Guida : public QObject
{
    Q_OBJECT

public:
    /// \a cartella: an empty folder, which becomes the current one.
    Guida(Passi passi, QString cartella);

    /// Runs the program, as often as the steps end it.
    void Esegui();

private:
    void Programma(int millisecondi);
    void Turno();
    void Passo(const ::Passo &passo);
    void Congeda();
    void Misura();
    [[nodiscard]] bool Trattenuto() const;

    Passi m_passi;
    QString m_cartella;
    Attore *m_attore = nullptr;
    Giudice *m_giudice = nullptr;
    QPointer<QTimer> m_prossimo;
    qsizetype m_fatti = 0;
    int m_congedi = 0;
    bool m_pronta = false; ///< the main window stands, or asks something
    bool m_finita = false;
    std::clock_t m_inizio = 0; ///< of the step under way; 0: none
};
