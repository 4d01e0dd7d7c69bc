#include "render/surface/MemorySurface.h"

#include "render/graphics/SoftwareGraphics.h"

#include <gtest/gtest.h>

#include <cstring>

using q1framework::Colour;
using q1framework::MemorySurface;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::RectangleList;
using q1framework::SoftwareGraphics;

TEST(MemorySurfaceTest, PixelsStartInsideAClearedMarginOfSixteen)
{
    MemorySurface surface(30, 20);
    EXPECT_EQ(surface.getSize(), Point(30, 20));
    EXPECT_EQ(surface.getMargin(), 16);
    int stride = 0;
    uint8_t* pixels = surface.getPixels(&stride);
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(stride, (30 + 32) * 4);
    // The whole block, margins included, is zero: from 16 lines and 16 pixels before (0, 0) to
    // 16 lines and 16 pixels after the last.
    const uint8_t* block = pixels - 16 * stride - 16 * 4;
    for (int byte = 0; byte < (20 + 32) * stride; ++byte)
        ASSERT_EQ(block[byte], 0) << byte;

    // A painter over it writes where the surface says its pixels are.
    SoftwareGraphics graphics(pixels, 30, 20, stride);
    Colour colour(1, 2, 3, 255);
    graphics.fillRect(Rectangle(29, 19, 1, 1), colour, false);
    const uint8_t expected[4] = {3, 2, 1, 255};
    EXPECT_EQ(std::memcmp(pixels + 19 * stride + 29 * 4, expected, 4), 0);

    // Showing does nothing and changes nothing.
    RectangleList dirty;
    dirty.add(Rectangle(0, 0, 30, 20));
    surface.update(dirty, nullptr, nullptr);
    Rectangle region(0, 0, 5, 5);
    Point destination(10, 10);
    surface.moveRegion(region, destination);
    surface.copyRegion(nullptr, region, destination);
    surface.present();
    EXPECT_EQ(surface.getPixels(nullptr), pixels);
    EXPECT_EQ(std::memcmp(pixels + 19 * stride + 29 * 4, expected, 4), 0);
}

TEST(MemorySurfaceTest, EmptyAndImpossibleSizes)
{
    MemorySurface empty(0, -4);
    EXPECT_EQ(empty.getSize(), Point(0, 0));
    int stride = 0;
    EXPECT_NE(empty.getPixels(&stride), nullptr);  // the margin alone
    EXPECT_EQ(stride, 32 * 4);

    MemorySurface huge(1 << 21, 4);
    EXPECT_EQ(huge.getSize(), Point(0, 0));
    EXPECT_EQ(huge.getPixels(&stride), nullptr);
}
