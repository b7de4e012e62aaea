#pragma once

/// When the preview navigates: one navigation at a time, requests that come meanwhile are one more at its end, and a
/// page that never ends holds up nothing for good. Knows neither clock nor engine; what it answers is to be done at
/// once.
class CicloAnteprima
{
public:
    enum class Azione {
        Niente,
        Naviga,
        Rinnova, ///< drop the process that draws the page, then navigate
        Rinuncia ///< drop it and show nothing until the next request
    };

    /// A refresh is wanted.
    [[nodiscard]] Azione Richiesta();
    /// The navigation under way ended, or the process that draws the page is gone.
    [[nodiscard]] Azione Finita();
    /// The navigation under way takes long, but the page lives: it waits for something remote.
    [[nodiscard]] Azione Lenta();
    /// The navigation under way takes long and the page does not answer. The page that hangs may be the one before, so
    /// the same page gets one more try in a new process.
    [[nodiscard]] Azione Muta();

    [[nodiscard]] bool InCorso() const { return m_inCorso; }

private:
    [[nodiscard]] Azione Concludi();

    bool m_inCorso = false;
    bool m_ancora = false;
    bool m_riprovata = false;
};
