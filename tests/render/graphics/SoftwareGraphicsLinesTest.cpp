#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"

#include <gtest/gtest.h>

#include <cmath>

using q1framework::Colour;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

// Groups of lines on black, each checked against the line formulas, above a panel of lines of
// every kind.
TEST(SoftwareGraphicsLinesTest, LinesScene)
{
    Scene scene(120, 96, opaqueBlack);
    SoftwareGraphics& graphics = scene.graphics;
    const Colour white(255, 255, 255, 255);
    const PixelValue half = whiteOverBlack(127);

    // Integer ends, the second excluded, in either order. Vertical at alpha 128: premultiplied in
    // place by division (128) and blended premultiplied, alpha 127 + 128. Horizontal: the straight
    // form, 255 * 128 >> 8 = 127. blendWhite 0.5 is alpha truncate(127.5) = 127; 1.004 * 255
    // truncates to 256, which wraps to alpha 0. Red at alpha 64: 255 * 64 >> 8 = 63.
    scene.moveTo(2, 2);
    Colour vertical(255, 255, 255, 128), horizontal(255, 255, 255, 128), opaque(10, 20, 30, 255);
    graphics.drawVerticalLine(1, 5, 2, vertical);
    graphics.drawHorizontalLine(6, 2, 5, horizontal);
    graphics.drawVerticalLine(7, 3, 3, opaque);
    graphics.drawHorizontalLine(0, 7, 6, opaque);
    graphics.blendWhite(0, 7, 0.5f);
    graphics.blendWhite(1, 7, 1.004f);
    graphics.blendPixel(2, 7, Colour(255, 0, 0, 64));
    EXPECT_EQ(vertical, Colour(128, 128, 128, 128));
    EXPECT_EQ(horizontal, Colour(255, 255, 255, 128));
    scene.expect({{1, 1, opaqueBlack}, {1, 2, {128, 128, 128, 255}}, {1, 4, {128, 128, 128, 255}}, {1, 5, opaqueBlack},
                  {2, 6, whiteOverBlack(128)}, {4, 6, whiteOverBlack(128)}, {5, 6, opaqueBlack}, {7, 3, opaqueBlack},
                  {6, 0, {30, 20, 10, 255}}, {7, 0, opaqueBlack}, {0, 7, half}, {1, 7, opaqueBlack},
                  {2, 7, {0, 0, 63, 255}}});

    // Fractional ends get their covered share: 1.25 to 4.5 gives row 1 255 * 0.75 = 191, rows 2
    // and 3 full, row 4 127; 2.25 to 2.75 in one pixel 127; across 0.5 to 3: 127, full, full, 0.
    scene.moveTo(12, 2);
    graphics.drawVerticalLineF(2, white, 4.5f, 1.25f);
    graphics.drawVerticalLineF(4, white, 2.25f, 2.75f);
    graphics.drawHorizontalLineF(7, white, 0.5f, 3.0f);
    scene.expect({{2, 0, opaqueBlack}, {2, 1, whiteOverBlack(191)}, {2, 2, opaqueWhite}, {2, 3, opaqueWhite},
                  {2, 4, half}, {2, 5, opaqueBlack}, {4, 2, half}, {0, 7, half}, {2, 7, opaqueWhite},
                  {3, 7, opaqueBlack}});

    // Clipped to 4 rows, the end becomes 4 - 0.0001: row 3 gets 255 * 0.9999 = 254. Across, the
    // end stops on the clip's right edge.
    scene.moveTo(22, 2);
    graphics.setClip(Rectangle(0, 0, 4, 4), true);
    graphics.drawVerticalLineF(1, white, 1.25f, 10.0f);
    graphics.drawHorizontalLineF(0, white, 2.5f, 9.0f);
    graphics.setClip(scene.image.getBounds(), false);
    scene.expect({{1, 3, whiteOverBlack(254)}, {1, 4, opaqueBlack}, {2, 0, half}, {3, 0, opaqueWhite},
                  {4, 0, opaqueBlack}});

    // An outline just inside (1, 1, 4, 3). A gradient line, ends given bottom first, black to
    // white over rows 0 to 3: weights 0, 0.25, 0.5, 0.75 give 0, 63, 127, 191. A tapered line from
    // 0 to 4: t = 0, 0.25, 0.5, 0.75, profiles 0, 0.5, 1, 0.5, alphas 0, 255 * sqrt(0.5) = 180, 255, 180.
    scene.moveTo(28, 2);
    graphics.drawRect(Rectangle(1, 1, 4, 3), white);
    graphics.drawVerticalGradientLine(7, 4, 0, white, Colour(0, 0, 0, 255));
    graphics.drawTaperedVerticalLine(9, white, 0.0f, 4.0f);
    scene.expect({{1, 1, opaqueWhite}, {4, 1, opaqueWhite}, {1, 3, opaqueWhite}, {4, 3, opaqueWhite}, {2, 2, opaqueBlack},
                  {5, 1, opaqueBlack}, {1, 4, opaqueBlack}, {7, 0, opaqueBlack}, {7, 1, {63, 63, 63, 255}},
                  {7, 3, {191, 191, 191, 255}}, {7, 4, opaqueBlack}, {9, 1, whiteOverBlack(180)}, {9, 2, opaqueWhite}});

    // Wu, shallow, gradient 0.5. First end: x 1.5 -> 1, y 1, gap 0.5: (1, 1) at 0.5. Last end:
    // x 5.5 -> 5, y 3: (5, 3) at 0.5. Between, y 1.5, 2, 2.5: (2, 1) and (2, 2) at 0.5, (3, 2) at
    // 1, (4, 2) and (4, 3) at 0.5. Seven pixels, no others.
    scene.moveTo(40, 2);
    graphics.drawLine(5, 3, 1, 1);
    EXPECT_EQ(countOther(scene.image, Rectangle(40, 2, 8, 8), opaqueBlack), 7);
    scene.expect({{1, 1, half}, {2, 1, half}, {2, 2, half}, {3, 2, opaqueWhite}, {4, 2, half}, {4, 3, half},
                  {5, 3, half}});
    // Steep, x and y swap roles, gradient 0.25: between the ends x is 2.25, 2.5, 2.75, so (2, 2)
    // gets 0.75 (191) and (3, 2) 0.25 (63), then 127 and 127, then 63 and 191.
    scene.moveTo(50, 2);
    graphics.drawLine(2, 1, 3, 5);
    scene.expect({{2, 1, half}, {2, 2, whiteOverBlack(191)}, {3, 2, whiteOverBlack(63)}, {2, 3, half},
                  {2, 4, whiteOverBlack(63)}, {3, 4, whiteOverBlack(191)}, {3, 5, half}});
    // Equal x draws nothing, whatever the ends in y.
    scene.moveTo(60, 2);
    graphics.drawLine(3, 0, 3, 7);
    EXPECT_EQ(countOther(scene.image, Rectangle(60, 2, 8, 8), opaqueBlack), 0);

    // Slanted from (2, 1) to (3, 7), half width 1.5, x moving 1 / 6 per row. Row 4: nearest x 2.5,
    // pixels 2 and 3 are 0.5 away, on the soft edge at 255 * (1 - (0.5 - 0.5)) = 255; pixels 1 and
    // 4 are 1.5 away: nothing. Row 1: pixel 2 inside, 1 and 3 at distance 1: 127. Row 0, above the
    // segment: pixel 2 is 1 from (2, 1): 127.
    scene.moveTo(70, 2);
    graphics.drawSlantedLine(2, white, 1.0f, 7.0f, 1.5f);
    scene.expect({{1, 4, opaqueBlack}, {2, 4, opaqueWhite}, {3, 4, opaqueWhite}, {4, 4, opaqueBlack}, {1, 1, half},
                  {2, 1, opaqueWhite}, {3, 1, half}, {2, 0, half}});

    // The panel: outlines, lines at falling alphas, gradient lines towards a translucent colour,
    // thick slanted lines and a star of anti-aliased ones.
    scene.moveTo(0, 16);
    graphics.drawRect(Rectangle(2, 2, 116, 76), Colour(200, 200, 200, 255));
    graphics.drawRect(Rectangle(6, 6, 30, 20), Colour(255, 120, 0, 160));
    for (int i = 0; i < 6; ++i)
    {
        Colour down(120 + 20 * i, 220, 255, 255 - 35 * i), across(255, 220, 120 + 20 * i, 255 - 35 * i);
        graphics.drawVerticalLine(42 + 3 * i, 6, 26, down);
        graphics.drawHorizontalLine(30 + 3 * i, 6, 36, across);
        graphics.drawVerticalGradientLine(84 + 3 * i, 6, 40 + 6 * i, Colour(255, 60, 60, 255), Colour(60, 60, 255, 80));
    }
    for (int i = 0; i < 8; ++i)
    {
        const double angle = i * 3.14159265358979 / 8.0;
        graphics.drawLine(60.0, 52.0, 60.0 + 22.0 * std::cos(angle), 52.0 + 22.0 * std::sin(angle));
        graphics.drawLine(60.0, 52.0, 60.0 - 22.0 * std::cos(angle + 0.2), 52.0 - 22.0 * std::sin(angle + 0.2));
        if (i < 4)
            graphics.drawSlantedLine(10 + 7 * i, Colour(120, 200, 255, 255), 42.0f, 74.0f - 4.0f * i, 1.0f + 0.75f * i);
    }
    // The outline's corner; the anti-aliased line along y = 52, whose inner pixels get alpha 1;
    // the first gradient line's top row: the top colour, opaque.
    scene.expect({{2, 2, {200, 200, 200, 255}}, {70, 52, opaqueWhite}, {84, 6, {60, 60, 255, 255}}});
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "lines"));
}
