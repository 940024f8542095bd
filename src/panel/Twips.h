#pragma once

#include <cmath>

namespace lumivane {

// Stored geometry is in twips, of which a logical pixel has 15, whatever the screen's scale.

inline constexpr int twipsPerPixel = 15;

inline float toTwips(double pixels)
{
    return static_cast<float>(pixels * twipsPerPixel);
}

inline int toPixels(double twips)
{
    return static_cast<int>(std::lround(twips / twipsPerPixel));
}

} // namespace lumivane
