#pragma once

#include "media/image/Image.h"
#include "render/graphics/SoftwareGraphics.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
#include <tuple>

// A pixel for the renderer's exact checks, in the memory order of a pixel: blue, green, red, alpha.
using PixelValue = std::array<int, 4>;

const PixelValue clearPixel{0, 0, 0, 0}, opaqueBlack{0, 0, 0, 255}, opaqueWhite{255, 255, 255, 255};

// White at alpha (0 to 254) in the straight colour form over opaque black: colour
// 255 * alpha >> 8 on each channel, alpha (255 * (256 - alpha) >> 8) + alpha, which is 255.
inline PixelValue whiteOverBlack(int alpha)
{
    const int colour = 255 * alpha >> 8;
    return {colour, colour, colour, (255 * (256 - alpha) >> 8) + alpha};
}

inline PixelValue readPixel(const q1framework::Image& image, int x, int y)
{
    const uint8_t* pixel = image.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

// How many pixels of area (buffer coordinates) differ from value.
inline int countOther(const q1framework::Image& image, const q1framework::Rectangle& area, const PixelValue& value)
{
    int count = 0;
    for (int y = area.y; y < area.getBottom(); ++y)
        for (int x = area.x; x < area.getRight(); ++x)
            count += readPixel(image, x, y) != value;
    return count;
}

// A picture of width by height, margin 16, every pixel fill.
inline q1framework::Image makeCanvas(int width, int height, const PixelValue& fill)
{
    q1framework::Image image(width, height, true);
    image.fill(fill[2], fill[1], fill[0], fill[3]);
    return image;
}

// Whether every pixel of the margin band around the picture is still clear.
inline bool marginIsClear(const q1framework::Image& image)
{
    const int margin = image.getMargin();
    for (int y = -margin; y < image.getHeight() + margin; ++y)
        for (int x = -margin; x < image.getWidth() + margin; ++x)
            if ((x < 0 || y < 0 || x >= image.getWidth() || y >= image.getHeight()) && readPixel(image, x, y) != clearPixel)
                return false;
    return true;
}

// A canvas and its painter, for scenes of small groups each drawn and checked around an origin of
// its own.
struct Scene
{
    using Check = std::tuple<int, int, PixelValue>;  // x, y and the pixel expected there

    Scene(int width, int height, const PixelValue& background)
        : image(makeCanvas(width, height, background)), graphics(image)
    {
    }
    void moveTo(int x, int y) { graphics.translate(x - graphics.getOrigin().x, y - graphics.getOrigin().y); }
    // One EXPECT_EQ per check, at (x, y) from the current origin, naming the position.
    void expect(std::initializer_list<Check> checks) const
    {
        const q1framework::Point origin = graphics.getOrigin();
        for (const auto& [x, y, expected] : checks)
            EXPECT_EQ(readPixel(image, origin.x + x, origin.y + y), expected)
                << "at " << x << ", " << y << " from " << origin.x << ", " << origin.y;
    }

    q1framework::Image image;
    q1framework::SoftwareGraphics graphics;
};
