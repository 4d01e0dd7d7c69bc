#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <cmath>

using q1framework::Colour;
using q1framework::Image;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
const Colour opaqueWhiteColour(255, 255, 255, 255);
}

TEST(SoftwareGraphicsLinesTest, IntegerLinesExcludeTheirEndAndPremultiplyOnlyVertically)
{
    Image image = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics graphics(image);

    // Vertical, alpha 128: the colour is premultiplied in place by division (255 * 128 / 255 =
    // 128) and blended premultiplied: 0 + 128; alpha 255 * 128 >> 8 = 127, + 128.
    Colour vertical(255, 255, 255, 128);
    graphics.drawVerticalLine(1, 5, 2, vertical);  // ends in either order: rows 2, 3, 4
    EXPECT_EQ(vertical, Colour(128, 128, 128, 128));
    EXPECT_EQ(readPixel(image, 1, 1), opaqueBlack);
    EXPECT_EQ(readPixel(image, 1, 2), (PixelValue{128, 128, 128, 255}));
    EXPECT_EQ(readPixel(image, 1, 4), (PixelValue{128, 128, 128, 255}));
    EXPECT_EQ(readPixel(image, 1, 5), opaqueBlack);

    // Horizontal, the same colour: the straight form shifts, 255 * 128 >> 8 = 127.
    Colour horizontal(255, 255, 255, 128);
    graphics.drawHorizontalLine(6, 2, 5, horizontal);
    EXPECT_EQ(horizontal, Colour(255, 255, 255, 128));
    EXPECT_EQ(readPixel(image, 2, 6), whiteOverBlack(128));
    EXPECT_EQ(readPixel(image, 4, 6), (PixelValue{127, 127, 127, 255}));
    EXPECT_EQ(readPixel(image, 5, 6), opaqueBlack);

    Colour opaque(10, 20, 30, 255);
    graphics.drawVerticalLine(7, 3, 3, opaque);  // equal ends: nothing
    EXPECT_EQ(readPixel(image, 7, 3), opaqueBlack);
    graphics.drawHorizontalLine(0, 7, 6, opaque);
    EXPECT_EQ(readPixel(image, 6, 0), (PixelValue{30, 20, 10, 255}));
}

TEST(SoftwareGraphicsLinesTest, FractionalEndsGetTheirCoveredShareOfAlpha)
{
    Image image = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    // Rows 1 to 4 from 1.25 to 4.5: row 1 alpha truncate(255 * 0.75) = 191, rows 2 and 3 full,
    // row 4 truncate(255 * 0.5) = 127.
    graphics.drawVerticalLineF(2, opaqueWhiteColour, 4.5f, 1.25f);
    EXPECT_EQ(readPixel(image, 2, 0), opaqueBlack);
    EXPECT_EQ(readPixel(image, 2, 1), whiteOverBlack(191));
    EXPECT_EQ(readPixel(image, 2, 2), opaqueWhite);
    EXPECT_EQ(readPixel(image, 2, 3), opaqueWhite);
    EXPECT_EQ(readPixel(image, 2, 4), whiteOverBlack(127));
    EXPECT_EQ(readPixel(image, 2, 5), opaqueBlack);
    // Both ends in one pixel: truncate(255 * (2.75 - 2.25)) = 127.
    graphics.drawVerticalLineF(4, opaqueWhiteColour, 2.25f, 2.75f);
    EXPECT_EQ(readPixel(image, 4, 2), whiteOverBlack(127));

    // Across: 0.5 to 3: column 0 gets 127, 1 and 2 full, column 3 alpha 0.
    graphics.drawHorizontalLineF(7, opaqueWhiteColour, 0.5f, 3.0f);
    EXPECT_EQ(readPixel(image, 0, 7), whiteOverBlack(127));
    EXPECT_EQ(readPixel(image, 2, 7), opaqueWhite);
    EXPECT_EQ(readPixel(image, 3, 7), opaqueBlack);
}

TEST(SoftwareGraphicsLinesTest, AFractionalLineStopsInsideTheClipsLastRow)
{
    Image image = makeCanvas(4, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.setClip(Rectangle(0, 0, 4, 4), false);
    // The end becomes 4 - 0.0001: row 3 gets truncate(255 * 0.9999) = 254, row 4 nothing.
    graphics.drawVerticalLineF(1, opaqueWhiteColour, 1.25f, 10.0f);
    EXPECT_EQ(readPixel(image, 1, 3), whiteOverBlack(254));
    EXPECT_EQ(readPixel(image, 1, 4), opaqueBlack);
    // The right end on the clip edge leaves the column outside alone.
    graphics.drawHorizontalLineF(0, opaqueWhiteColour, 2.5f, 9.0f);
    EXPECT_EQ(readPixel(image, 2, 0), whiteOverBlack(127));
    EXPECT_EQ(readPixel(image, 3, 0), opaqueWhite);
    EXPECT_TRUE(marginIsClear(image));
}

TEST(SoftwareGraphicsLinesTest, OutlineGradientLineAndTaperedLine)
{
    Image image = makeCanvas(10, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.drawRect(Rectangle(1, 1, 4, 3), opaqueWhiteColour);
    const char* expectedRows[] = {"......", ".####.", ".#..#.", ".####.", "......"};
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(readPixel(image, x, y), expectedRows[y][x] == '#' ? opaqueWhite : opaqueBlack) << x << ", " << y;

    // Black to opaqueWhite over rows 0 to 3: the bottom colour's weight 0, 0.25, 0.5, 0.75 gives 0,
    // 63, 127, 191 (truncated); alpha stays 255 and the pixels are written whole.
    graphics.drawVerticalGradientLine(7, 4, 0, Colour(255, 255, 255, 255), Colour(0, 0, 0, 255));
    const int grey[4] = {0, 63, 127, 191};
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(readPixel(image, 7, y), (PixelValue{grey[y], grey[y], grey[y], 255})) << y;

    // From 0 to 4: t = 0, 0.25, 0.5, 0.75 gives profiles 0, 0.5, 1, 0.5 and alphas 0,
    // truncate(255 * sqrt(0.5)) = 180, 255, 180.
    graphics.drawTaperedVerticalLine(9, opaqueWhiteColour, 0.0f, 4.0f);
    EXPECT_EQ(readPixel(image, 9, 0), opaqueBlack);
    EXPECT_EQ(readPixel(image, 9, 1), whiteOverBlack(180));
    EXPECT_EQ(readPixel(image, 9, 2), opaqueWhite);
    EXPECT_EQ(readPixel(image, 9, 3), whiteOverBlack(180));
    EXPECT_EQ(readPixel(image, 9, 4), opaqueBlack);
}

TEST(SoftwareGraphicsLinesTest, WuLinesPlotPairsWeightedByTheFraction)
{
    Image image = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    // Shallow, gradient 0.5. First end: x 1.5 -> 1, y 1, gap 0.5: (1, 1) at 0.5. Last end:
    // x 5.5 -> 5, y 3, gap 0.5: (5, 3) at 0.5. Between, y 1.5, 2, 2.5: (2, 1) and (2, 2) at
    // 0.5, (3, 2) at 1, (4, 2) and (4, 3) at 0.5. Alpha 0.5 is truncate(127.5) = 127.
    graphics.drawLine(5, 3, 1, 1);
    int lit = 0;
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            lit += readPixel(image, x, y) != opaqueBlack;
    EXPECT_EQ(lit, 7);
    for (auto [x, y] : {std::pair{1, 1}, {2, 1}, {2, 2}, {4, 2}, {4, 3}, {5, 3}})
        EXPECT_EQ(readPixel(image, x, y), whiteOverBlack(127)) << x << ", " << y;
    EXPECT_EQ(readPixel(image, 3, 2), opaqueWhite);

    // Steep, x and y swap roles: gradient 0.25 along y. Between the ends x is 2.25, 2.5, 2.75:
    // (2, 2) at 0.75 (191) and (3, 2) at 0.25 (63), then 127 and 127, then 63 and 191.
    Image steep = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics steepGraphics(steep);
    steepGraphics.drawLine(2, 1, 3, 5);
    EXPECT_EQ(readPixel(steep, 2, 1), whiteOverBlack(127));
    EXPECT_EQ(readPixel(steep, 2, 2), whiteOverBlack(191));
    EXPECT_EQ(readPixel(steep, 3, 2), whiteOverBlack(63));
    EXPECT_EQ(readPixel(steep, 2, 3), whiteOverBlack(127));
    EXPECT_EQ(readPixel(steep, 2, 4), whiteOverBlack(63));
    EXPECT_EQ(readPixel(steep, 3, 4), whiteOverBlack(191));
    EXPECT_EQ(readPixel(steep, 3, 5), whiteOverBlack(127));

    // Equal x draws nothing, whatever the ends in y.
    Image vertical = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics verticalGraphics(vertical);
    verticalGraphics.drawLine(3, 0, 3, 7);
    for (int y = 0; y < 8; ++y)
        EXPECT_EQ(readPixel(vertical, 3, y), opaqueBlack);
}

TEST(SoftwareGraphicsLinesTest, SlantedLineMeasuresFromTheNearestPointOfItsRow)
{
    Image image = makeCanvas(8, 10, opaqueBlack);
    SoftwareGraphics graphics(image);
    // From (2, 1) to (3, 7), half width 1.5, slope 1 / 6 in x per row. Row 4: nearest x
    // 2 + 3 / 6 = 2.5, so pixels 2 and 3 are 0.5 away: on the soft edge at alpha
    // 255 * (1 - (0.5 - 0.5)) = 255; pixels 1 and 4 are 1.5 away: nothing. Row 1: nearest x 2;
    // pixel 2 at distance 0 is inside, 1 and 3 at distance 1 get truncate(255 * 0.5) = 127.
    graphics.drawSlantedLine(2, opaqueWhiteColour, 1.0f, 7.0f, 1.5f);
    EXPECT_EQ(readPixel(image, 1, 4), opaqueBlack);
    EXPECT_EQ(readPixel(image, 2, 4), opaqueWhite);
    EXPECT_EQ(readPixel(image, 3, 4), opaqueWhite);
    EXPECT_EQ(readPixel(image, 4, 4), opaqueBlack);
    EXPECT_EQ(readPixel(image, 1, 1), whiteOverBlack(127));
    EXPECT_EQ(readPixel(image, 2, 1), opaqueWhite);
    EXPECT_EQ(readPixel(image, 3, 1), whiteOverBlack(127));
    // Row 0 lies above the segment: nearest point (2, 1), pixel 2 at distance 1 -> 127.
    EXPECT_EQ(readPixel(image, 2, 0), whiteOverBlack(127));
}

TEST(SoftwareGraphicsLinesTest, LinesScene)
{
    Image image = makeCanvas(120, 80, PixelValue{48, 32, 24, 255});
    SoftwareGraphics graphics(image);
    graphics.drawRect(Rectangle(2, 2, 116, 76), Colour(200, 200, 200, 255));
    graphics.drawRect(Rectangle(6, 6, 30, 20), Colour(255, 120, 0, 160));
    for (int i = 0; i < 6; ++i)
    {
        Colour vertical(120 + 20 * i, 220, 255, 255 - 35 * i);
        graphics.drawVerticalLine(42 + 3 * i, 6, 26, vertical);
        Colour horizontal(255, 220, 120 + 20 * i, 255 - 35 * i);
        graphics.drawHorizontalLine(30 + 3 * i, 6, 36, horizontal);
        graphics.drawVerticalLineF(64 + 3 * i, Colour(255, 255, 255, 255), 6.0f + 0.2f * i, 26.0f - 0.3f * i);
        graphics.drawHorizontalLineF(48 + 3 * i, Colour(140, 255, 140, 255), 6.0f + 0.25f * i, 36.0f - 0.4f * i);
    }
    for (int i = 0; i < 5; ++i)
    {
        graphics.drawVerticalGradientLine(84 + 2 * i, 6, 40 + 6 * i, Colour(255, 60, 60, 255), Colour(60, 60, 255, 80));
        graphics.drawTaperedVerticalLine(98 + 2 * i, Colour(255, 255, 200, 255), 6.5f + i, 60.0f - 3.0f * i);
    }
    for (int i = 0; i < 8; ++i)
    {
        const double angle = i * 3.14159265358979 / 8.0;
        graphics.drawLine(60.0, 52.0, 60.0 + 22.0 * std::cos(angle), 52.0 + 22.0 * std::sin(angle));
        graphics.drawLine(60.0, 52.0, 60.0 - 22.0 * std::cos(angle + 0.2), 52.0 - 22.0 * std::sin(angle + 0.2));
    }
    for (int i = 0; i < 4; ++i)
        graphics.drawSlantedLine(10 + 7 * i, Colour(120, 200, 255, 255), 42.0f, 74.0f - 4.0f * i, 1.0f + 0.75f * i);

    // The outline's top-left corner; the Wu line along y = 52 from x 60, whose inner pixels get
    // alpha 1 (opaqueWhite); the first gradient line's top row, weight 0 of the bottom colour: the top
    // colour, opaque.
    EXPECT_EQ(readPixel(image, 2, 2), (PixelValue{200, 200, 200, 255}));
    EXPECT_EQ(readPixel(image, 70, 52), opaqueWhite);
    EXPECT_EQ(readPixel(image, 84, 6), (PixelValue{60, 60, 255, 255}));
    EXPECT_TRUE(GoldenImage::matchesGolden(image, "lines"));
}
