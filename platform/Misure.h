#pragma once

/// Lengths of the program's design are in twips: 1/1440 inch, 15 to a pixel at 96 dpi (device-independent pixels of
/// Qt).
namespace Misure
{

inline constexpr int TwipPerPixel = 15;

/// Pixels for \a twip, rounded to the nearest; any sign.
[[nodiscard]] int InPixel(double twip);

/// Twips for \a pixel, exact.
[[nodiscard]] constexpr int InTwip(int pixel)
{
    return pixel * TwipPerPixel;
}

} // namespace Misure
