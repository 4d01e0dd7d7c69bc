#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

// What the window system offers a window that shows its pixels without a rendering context: a
// put of rectangles of pixels in memory into the window. The native layer implements it (over
// the X server's MIT-SHM or plain image put, or into memory for display-free tests); an
// ImageSurface calls it. Nothing in the renderer knows which.
//
// Pixels: 32 bits, in memory blue, green, red, alpha, premultiplied; the window shows the colour
// bytes as they are (over black) and ignores alpha. The pixel (x, y) of the buffer goes to the
// pixel (x, y) of the window.
//
// Thread contract: main thread only. The presenter belongs to its window and lives as long as
// the window's native side.
class ImagePresenter
{
public:
    virtual ~ImagePresenter() = default;

    // Shows the given rectangles of a buffer of size pixels, lines stride bytes apart, at the
    // same places in the window; each rectangle is first cut to the buffer and to the window.
    // Areas of the window that the window system lost since the last call (exposed, or never
    // shown) are put as well, from the same buffer, so a call with no rectangles (count 0 or
    // rectangles null) shows exactly those. The buffer is read during the call only.
    virtual void presentPixels(const uint8_t* pixels, int stride, const Point& size, const Rectangle* rectangles,
                               int count) = 0;
};

}  // namespace q1framework
