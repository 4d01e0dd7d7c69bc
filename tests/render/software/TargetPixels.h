#pragma once

#include "media/geometry/RectangleList.h"
#include "media/image/Image.h"

#include <vector>

// What the software context's tests read back: a target's pixel as its four bytes (blue, green,
// red, alpha), and the areas a frame drew.
inline std::vector<int> pixelAt(const q1framework::Image& image, int x, int y)
{
    const uint8_t* pixel = image.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

inline std::vector<q1framework::Rectangle> areasOf(const q1framework::RectangleList& list)
{
    return std::vector<q1framework::Rectangle>(list.begin(), list.end());
}
