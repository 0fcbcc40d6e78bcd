#pragma once

#include <QtGlobal>

namespace orvantine {

/// Length in twips, the unit of every stored and compared measure. Only the drawing code turns it into pixels.
using Twips = int;

inline constexpr Twips TwipsPerPixel = 15;

/// Pixels of a length, rounded towards zero.
[[nodiscard]] constexpr int pixelsOf(Twips length)
{
    return length / TwipsPerPixel;
}

[[nodiscard]] constexpr Twips twipsOf(int pixels)
{
    return pixels * TwipsPerPixel;
}

} // namespace orvantine
