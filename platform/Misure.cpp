#include "platform/Misure.h"

#include <cmath>

int Misure::InPixel(double twip)
{
    return static_cast<int>(std::lround(twip / TwipPerPixel));
}
