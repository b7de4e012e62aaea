#pragma once

#include <QList>
#include <QString>

#include <optional>

/// One thing that a user does. A step says all that it needs, so that it can be done without the steps before it; where
/// it does not apply it does nothing.
struct Passo {
    enum Tipo {
        Pagina,     ///< testo: the file that the program starts with; only as the first step
        Premi,      ///< a: Qt::Key, b: modifiers, testo: what the key types
        Ripeti,     ///< the same for a key that is held
        Rilascia,   ///< the same
        Componi,    ///< testo: what is being composed, "|", what is put in
        Clic,       ///< a, b: place in thousandths of what testo names, c: Qt::MouseButton
        Doppio,     ///< the same
        Trascina,   ///< a, b: from, c: 1000 * x + y, to
        Rotella,    ///< c: eighths of a degree
        Comando,    ///< testo: a menu item or button, pressed with the mouse
        Controllo,  ///< the full check; then a click on the line number a of its results
        Figlio,     ///< a click on the control number a of the front window
        NomeFile,   ///< testo: answer to an open file dialog
        Chiudi,     ///< the front window: a: 0 Escape, 1 its close button, 2 its button number b
        Appunti,    ///< testo is put on the clipboard
        Lascia,     ///< testo is dropped on the page at a, b
        Misura,     ///< the main window becomes a by b; c: 1 maximised
        Attendi,    ///< a: milliseconds
        Scrivi,     ///< testo, typed quickly; a: 1: each key is let go after the next is down
        ScriviDopo, ///< key a closes a box, and testo is typed before anything else can happen
        Scegli,     ///< "<" and testo are typed, a letters taken back, and Tab accepts
        Storia,     ///< everything is undone, and redone
        Fine,       ///< the host ends the program, and it starts again
    };

    Tipo tipo = Attendi;
    int a = 0;
    int b = 0;
    int c = 0;
    QString testo{};
    bool subito = false; ///< no event is handled between the step before and this one

    /// One line that LeggiRiga understands, with what a reader needs behind a "#".
    [[nodiscard]] QString Riga() const;
    /// None for a line that is no step.
    [[nodiscard]] static std::optional<Passo> LeggiRiga(const QString &riga);
};

using Passi = QList<Passo>;
