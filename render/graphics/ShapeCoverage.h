#pragma once

#include <algorithm>

// Helpers of the shape drawing of SoftwareGraphics: float coordinates as whole pixels, and the
// coverage rule of discs.
namespace q1framework
{
namespace ShapeCoverage
{
// The value truncated towards zero, kept within +-1e8 so that boxes built from it cannot overflow
// (NaN counts as 0). Only far-off shapes are affected, and they lie outside every clip.
inline int toPixel(float value)
{
    constexpr float limit = 1.0e8f;
    if (!(value > -limit))
        return value < 0.0f ? -static_cast<int>(limit) : 0;
    return static_cast<int>(std::min(value, limit));
}

// The alpha of a pixel at distance from a disc's centre (or a thick line's axis): full alpha
// below radius - 1, on the one-pixel soft edge truncate(alpha * (1 - (distance - (radius - 1)))),
// -1 (nothing) from radius on.
inline int discAlpha(int alpha, float distance, float radius)
{
    if (distance < radius - 1.0f)
        return alpha;
    if (distance < radius)
        return static_cast<int>(alpha * (1.0f - (distance - (radius - 1.0f))));
    return -1;
}
}
}
