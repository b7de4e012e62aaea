#pragma once

#include <QColor>

#include <cmath>

/// The colours of the interface. Every text colour stands at least 4.5:1 against each background that it meets.
namespace Colori
{

inline constexpr QColor Finestra{166, 220, 220};     ///< forms, command buttons, check boxes, tab strips
inline constexpr QColor Pannello{205, 236, 236};     ///< frames, labels, panels, toolbars
inline constexpr QColor Intestazione{138, 198, 222}; ///< header strips, list headers, title bars
inline constexpr QColor Testo{3, 58, 80};
inline constexpr QColor Progresso{240, 86, 53}; ///< progress, and the one thing to look at
inline constexpr QColor Avviso{255, 255, 204};  ///< hints without a colour of their own

inline constexpr QColor Grigio{160, 160, 160};
inline constexpr QColor Azzurro{69, 126, 222};
inline constexpr QColor Blu{0, 0, 255};
inline constexpr QColor Rosa{255, 192, 192};
inline constexpr QColor Sabbia{239, 231, 208};
inline constexpr QColor Bianco{255, 255, 255};

inline constexpr QColor Carta{246, 252, 252};        ///< menus
inline constexpr QColor Bordo{95, 160, 184};         ///< outlines of fields and buttons
inline constexpr QColor Linea{158, 205, 217};        ///< separators
inline constexpr QColor Selezione{11, 99, 128};      ///< selected text and rows, focus ring
inline constexpr QColor TestoSpento{84, 122, 136};   ///< disabled controls
inline constexpr QColor Segnaposto{79, 116, 131};    ///< prompts in empty fields
inline constexpr QColor Scrivania{143, 203, 210};    ///< behind the inner windows
inline constexpr QColor TitoloSpento{187, 224, 231}; ///< title bar of a window that is not the active one

/// \a a moved towards \a b; \a parte from 0 (all \a a) to 1 (all \a b).
[[nodiscard]] inline QColor Mescola(const QColor &a, const QColor &b, double parte)
{
    const auto m = [parte](int x, int y) { return int(std::lround(x + (y - x) * parte)); };
    return {m(a.red(), b.red()), m(a.green(), b.green()), m(a.blue(), b.blue())};
}

} // namespace Colori
