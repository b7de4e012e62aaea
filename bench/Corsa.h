#pragma once

#include "bench/Schermo.h"

#include <optional>
#include <vector>

#include <QProcess>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>

using Valore = std::optional<double>;

/// The median of the measures that did not fail; none when all failed.
[[nodiscard]] Valore Mediana(std::vector<Valore> valori);

/// One run of a program, from its start to its end with this object. Whatever program it is, it is seen by its windows,
/// its processor time and its memory.
class Corsa
{
public:
    Corsa(const Schermo &schermo, const QStringList &comando);
    ~Corsa();
    Corsa(const Corsa &) = delete;
    Corsa &operator=(const Corsa &) = delete;

    static constexpr double Pazienza = 120'000; ///< milliseconds until something that does not happen is given up

    /// Milliseconds from the start until a window is on the screen.
    Valore FinoAllaFinestra();
    /// Milliseconds from the start until the picture changes no more, and until \a testo, a part of the screen where
    /// lines of the page come to stand, changed no more.
    struct Disegno {
        Valore tutto, testo;
    };
    Disegno FinoAlDisegno(const QRect &testo);
    /// Waits until the program and those that it started rest: a browser engine may still load the page's pictures.
    /// False when they do not within Pazienza.
    bool Riposa() const;
    /// Milliseconds of processor time per character typed into the page, where Testo() is.
    Valore Battitura();

    /// The part of the screen where lines of the page stand, once there is a window.
    [[nodiscard]] QRect Testo() const { return {m_schermo.Angolo(m_finestra) + QPoint(330, 170), QSize(140, 140)}; }

    /// Proportional resident megabytes, of the program and the programs that it started.
    [[nodiscard]] Valore Memoria() const;
    /// The same of the program alone.
    [[nodiscard]] Valore MemoriaPropria() const;
    /// Milliseconds of processor time of the thread that has the windows.
    [[nodiscard]] double ProcessoreFinestre() const;

    [[nodiscard]] bool Viva() const { return m_processo.state() == QProcess::Running; }
    [[nodiscard]] double Trascorsi() const;
    [[nodiscard]] Schermo::Finestra Finestra() const { return m_finestra; }

private:
    [[nodiscard]] std::vector<qint64> Famiglia() const;
    [[nodiscard]] double Processore() const { return ProcessoreDi(m_processo.processId()); }
    [[nodiscard]] static double ProcessoreDi(qint64 processo);

    const Schermo &m_schermo;
    QTemporaryDir m_dati;
    QProcess m_processo;
    double m_inizio = 0;
    Schermo::Finestra m_finestra = 0;
};
