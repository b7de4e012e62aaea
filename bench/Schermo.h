#pragma once

#include <optional>

#include <QByteArray>
#include <QPoint>
#include <QRect>

struct _XDisplay; // the header of X11 defines words that Qt uses

/// An X display as somebody sees it who sits before it.
class Schermo
{
public:
    using Finestra = unsigned long;
    using Simbolo = unsigned long; ///< one of X11/keysym.h

    Schermo();
    ~Schermo();
    Schermo(const Schermo &) = delete;
    Schermo &operator=(const Schermo &) = delete;

    [[nodiscard]] bool Aperto() const { return m_display != nullptr; }

    /// The first visible window of some size, or 0.
    [[nodiscard]] Finestra Visibile() const;
    /// Every eighth row of pixels of the screen.
    [[nodiscard]] QByteArray Figura() const;
    /// The same of that part of the screen alone; empty when there is no such part.
    [[nodiscard]] QByteArray Figura(const QRect &parte) const;
    /// Whether more than a caret or a moving ornament tells one picture from another.
    [[nodiscard]] static bool Altra(const QByteArray &una, const QByteArray &altra);
    /// Where the window's top left corner is on the screen.
    [[nodiscard]] QPoint Angolo(Finestra finestra) const;
    /// The colour of that pixel of the screen, 0xRRGGBB.
    [[nodiscard]] unsigned Colore(QPoint dove) const;
    /// The middle of the first square of 8 by 8 pixels in that colour; none when there is no such square.
    [[nodiscard]] std::optional<QPoint> Cerca(unsigned colore) const;

    /// The window that gets the keys, or 0.
    [[nodiscard]] Finestra Attiva() const;
    void Premi(Finestra finestra, Simbolo tasto, unsigned modificatori = 0) const;
    void Rilascia(Finestra finestra, Simbolo tasto, unsigned modificatori = 0) const;
    /// Milliseconds until the program takes the next thing from its queue: a question that every program answers.
    /// None when it does not answer within \a limite milliseconds.
    [[nodiscard]] std::optional<double> Risposta(Finestra finestra, double limite) const;

private:
    Finestra Cerca(Finestra padre, int livello) const;
    void Tasto(Finestra finestra, int tipo, Simbolo tasto, unsigned modificatori) const;

    _XDisplay *m_display;
};
