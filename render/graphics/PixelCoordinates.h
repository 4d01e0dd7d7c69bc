#pragma once

#include <algorithm>

// Float coordinates turned into whole pixels for the drawing code of SoftwareGraphics.
namespace q1framework
{
namespace PixelCoordinates
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
}
}
