#pragma once

#include "media/image/Image.h"
#include "render/graphics/SoftwareGraphics.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>

// A pixel for the renderer's exact checks, in the memory order of a pixel: blue, green, red, alpha.
using PixelValue = std::array<int, 4>;

const PixelValue clearPixel{0, 0, 0, 0};
const PixelValue opaqueBlack{0, 0, 0, 255};
const PixelValue opaqueWhite{255, 255, 255, 255};

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

struct PixelCheck
{
    int x;
    int y;
    PixelValue expected;
};

// One EXPECT_EQ per check, at (x, y) + origin, naming the position.
inline void expectPixels(const q1framework::Image& image, const q1framework::Point& origin,
                         std::initializer_list<PixelCheck> checks)
{
    for (const PixelCheck& check : checks)
        EXPECT_EQ(readPixel(image, origin.x + check.x, origin.y + check.y), check.expected)
            << "at " << check.x << ", " << check.y << " from " << origin.x << ", " << origin.y;
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

// A canvas and its painter, for scenes of small groups each drawn and checked around an origin of
// its own.
struct Scene
{
    Scene(int width, int height, const PixelValue& background)
        : image(makeCanvas(width, height, background)), graphics(image)
    {
    }
    void moveTo(int x, int y) { graphics.translate(x - graphics.getOrigin().x, y - graphics.getOrigin().y); }
    // Checks relative to the current origin.
    void expect(std::initializer_list<PixelCheck> checks) const
    {
        expectPixels(image, graphics.getOrigin(), checks);
    }

    q1framework::Image image;
    q1framework::SoftwareGraphics graphics;
};

// Whether every byte of the margin band around the picture is still 0.
inline bool marginIsClear(const q1framework::Image& image)
{
    const int margin = image.getMargin();
    for (int y = -margin; y < image.getHeight() + margin; ++y)
        for (int x = -margin; x < image.getWidth() + margin; ++x)
        {
            const bool inside = x >= 0 && y >= 0 && x < image.getWidth() && y < image.getHeight();
            if (!inside && readPixel(image, x, y) != clearPixel)
                return false;
        }
    return true;
}
