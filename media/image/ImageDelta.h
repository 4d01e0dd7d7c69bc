#pragma once

#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

// The pixels in which one image differs from another (Image::computeDelta), in the order line by
// line, left to right.
class ImageDelta
{
public:
    // Eight bytes: where, and the new pixel.
    struct Entry
    {
        uint32_t position;  // y << 16 | (x & 0xFFFF)
        uint32_t pixel;     // the other image's pixel as a host-order word (0xAARRGGBB)

        int getX() const { return static_cast<int>(position & 0xFFFF); }
        int getY() const { return static_cast<int>(position >> 16); }
    };

    Array<Entry> entries;
};

}  // namespace q1framework
