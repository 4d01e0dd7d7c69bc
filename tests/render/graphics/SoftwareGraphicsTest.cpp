// SoftwareGraphics and Alignment: the clip, then fills, lines, circles and images, each family in
// a scene of small groups checked against the drawing formulas and compared with its golden picture.
#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "render/graphics/Alignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>
#include <vector>

using q1framework::Alignment;
using q1framework::Array;
using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

TEST(AlignmentTest, EveryValuePlacesTheBoxAndCentringRoundsTowardsZero)
{
    // A 5 by 3 box in (10, 20, 20, 14): centre x 10 + (20 - 5) / 2 = 17, centre y 20 + 11 / 2 = 25,
    // right 10 + 20 - 5 = 25, bottom 20 + 14 - 3 = 31. Values outside the list centre.
    const Rectangle area(10, 20, 20, 14);
    const int cases[][3] = {{0, 10, 20}, {1, 25, 20}, {2, 17, 25}, {3, 17, 20}, {4, 17, 31}, {5, 10, 25},
                            {6, 25, 25}, {7, 10, 31}, {8, 25, 31}, {12, 17, 25}, {-1, 17, 25}};
    for (const auto& [value, x, y] : cases)
        EXPECT_EQ(getAlignedBox(area, Point(5, 3), static_cast<Alignment>(value)), Rectangle(x, y, 5, 3)) << value;
    EXPECT_EQ(getAlignedBox(area, Point(5, 3), Alignment::Stretch), area);
    // A larger box overhangs one pixel further right than left: (4 - 7) / 2 = -1, not -2.
    EXPECT_EQ(getAlignedBox(Rectangle(0, 0, 4, 4), Point(7, 7), Alignment::Centre), Rectangle(-1, -1, 7, 7));
}

TEST(SoftwareGraphicsTest, TheClipFollowsTheOriginAndAnEmptyClipStopsAllDrawing)
{
    Image image = makeCanvas(20, 20, clearPixel);
    SoftwareGraphics graphics(image);
    graphics.translate(5, 7);
    graphics.translate(1, 1);
    EXPECT_EQ(graphics.getClip(true), Rectangle(-6, -8, 20, 20));
    EXPECT_EQ(graphics.getPixels(nullptr, true), image.getPixelPointer(6, 8));
    graphics.setClip(Rectangle(-4, -5, 10, 10), true);  // (2, 3, 10, 10) in the buffer
    // intersectClip returns the old clip in the coordinates asked for.
    EXPECT_EQ(graphics.intersectClip(Rectangle(0, 0, 4, 4), true), Rectangle(-4, -5, 10, 10));
    EXPECT_EQ(graphics.intersectClip(Rectangle(0, 0, 7, 9), false), Rectangle(6, 8, 4, 4));
    EXPECT_EQ(graphics.getClip(false), Rectangle(6, 8, 1, 1));

    graphics.setClip(Rectangle(2, 3, 10, 10), false);
    const Rectangle old = graphics.intersectClip(Rectangle(14, 0, 5, 5), false);
    EXPECT_TRUE(graphics.getClip(false).isEmpty());
    Colour red(255, 0, 0, 255);
    Array<SoftwareGraphics::PlottedPoint> points;
    points.add({11, 9, 0x11223344u});  // 11 * 1.5 = 16.5 -> 16, 9 * 1.5 = 13.5 -> 13; minus the origin: (10, 5)
    points.add({4, 6, 0xFFFFFFFFu});   // (0, 1): in the buffer, not in the clip
    const auto drawEverything = [&] {  // all over the buffer and past its edges
        graphics.fillAll(red, false);
        graphics.fillRect(Rectangle(-16, -18, 40, 40), red, false);
        graphics.drawVerticalLine(0, -18, 30, red);
        graphics.drawHorizontalLineF(0, red, -18.0f, 32.0f);
        graphics.fillCircle(red, 0, 0, 14);
        graphics.blendPixel(1, 1, red);
        graphics.drawLine(-26, -28, 30, 31);
        graphics.drawImage(makeCanvas(40, 40, opaqueWhite), Point(-16, -18), true, 255);
    };
    drawEverything();
    graphics.drawPoints(points, 1.5f);
    EXPECT_EQ(countOther(image, image.getBounds(), clearPixel), 0);

    graphics.setClip(old, false);
    graphics.fillRect(Rectangle(-16, -18, 40, 40), red, false);
    graphics.drawPoints(points, 1.5f);
    const PixelValue redPixel{0, 0, 255, 255};
    for (const auto& [x, y, pixel] : {std::tuple{2, 3, redPixel}, {11, 12, redPixel}, {1, 3, clearPixel}, {12, 12, clearPixel},
                                      {11, 13, clearPixel}, {10, 5, PixelValue{0x44, 0x33, 0x22, 0x11}}, {0, 1, clearPixel}})
        EXPECT_EQ(readPixel(image, x, y), pixel) << x << ", " << y;

    // A clip beyond the buffer: drawing stops at the buffer's edges.
    graphics.setClip(Rectangle(-20, -20, 100, 100), false);
    drawEverything();
    graphics.drawRing(Colour(9, 9, 9, 200), 0, 0, 10, 3);
    graphics.tileImage(image, Rectangle(0, 0, 3, 3), Rectangle(-30, -30, 90, 90), true);
    graphics.drawVerticalLineF(13, Colour(1, 2, 3, 255), -30, 100);
    EXPECT_TRUE(marginIsClear(image));
    EXPECT_EQ(readPixel(image, 19, 18), (PixelValue{3, 2, 1, 255}));
}

// Fills in each form over the background (b 40, g 30, r 20, a 255), gradients and a checkerboard,
// with pixels worked out from the blend formulas.
TEST(SoftwareGraphicsTest, FillsScene)
{
    Scene scene(96, 64, {40, 30, 20, 255});
    SoftwareGraphics& graphics = scene.graphics;
    // Cells count from the buffer, not the origin. The second colour premultiplies to 96 and
    // blends over the background: 40 * 160 >> 8 = 25 + 96, 18 + 96, 12 + 96, 159 + 96.
    graphics.translate(1, 0);
    graphics.fillCheckerboard(Rectangle(-1, 0, 96, 16), Colour(90, 90, 90, 255), Colour(255, 255, 255, 96), 4);
    graphics.fillCheckerboard(Rectangle(0, 0, 4, 4), Colour(0, 255, 0, 255), Colour(), 0);  // no cells: nothing
    graphics.translate(-1, 0);
    // Tint of red at alpha 128 over (90, 90, 90, 255): da = (255 * 128 + 255) >> 8 = 128, inverse
    // 128; red (90 * 128 >> 8) + ((((255 * 128 + 255) >> 8) * 90 + 255) >> 8) = 45 + 45, blue and
    // green 45 + 0, alpha 127 + 128.
    graphics.fillGradient(Rectangle(48, 0, 48, 6), Colour(255, 0, 0, 128), Colour(255, 0, 0, 128), 0);
    scene.expect({{3, 8, {90, 90, 90, 255}}, {4, 8, {121, 114, 108, 255}}, {49, 1, {45, 45, 90, 255}}});

    Colour solid(230, 120, 20, 255);
    graphics.fillRect(Rectangle(4, 18, 20, 14), solid, true);
    // Without blend the colour is premultiplied in place by division: 20 * 120 / 255 = 9,
    // 160 * 120 / 255 = 75, 230 * 120 / 255 = 108, and replaces the pixels.
    Colour replacing(20, 160, 230, 120);
    graphics.fillRect(Rectangle(14, 26, 20, 14), replacing, false);
    EXPECT_EQ(replacing, Colour(9, 75, 108, 120));
    // With blend, by shifts: inverse 136; 40 * 136 >> 8 = 21 + (230 * 120 >> 8 = 107), 15 + 75,
    // 10 + 9, 135 + 120. Then white at 60 over that (odd width, the kernels' single-pixel tail):
    // inverse 196, 250 * 60 >> 8 = 58; and over the background at the right edge.
    Colour blended(20, 160, 230, 120);
    graphics.fillRect(Rectangle(38, 18, 20, 14), blended, true);
    EXPECT_EQ(blended, Colour(20, 160, 230, 120));
    Colour light(250, 250, 250, 60);
    graphics.fillRect(Rectangle(48, 26, 21, 14), light, true);
    // Alpha 0: nothing with blend, cleared pixels without.
    Colour none(255, 0, 0, 0);
    graphics.fillRect(Rectangle(60, 18, 10, 4), none, true);
    graphics.fillRect(Rectangle(60, 22, 10, 4), none, false);
    scene.expect({{5, 19, {20, 120, 230, 255}}, {20, 30, {108, 75, 9, 120}}, {40, 20, {128, 90, 19, 255}},
                  {50, 28, {98 + 58, 68 + 58, 14 + 58, 195 + 60}}, {68, 37, {30 + 58, 22 + 58, 15 + 58, 255}},
                  {61, 19, {40, 30, 20, 255}}, {61, 23, clearPixel}});

    // Black to white over 4 rows: step (255 << 16) / 4 = 63.75; rows 0, 63, 127 (fractions summed
    // to 0xC000), then 191.25 plus the carry of 0x14000: 192. The whole height counts whatever the
    // clip: clipped to its last two rows, those still get 127 and 192.
    const Colour black(0, 0, 0, 255), white(255, 255, 255, 255);
    graphics.fillGradient(Rectangle(60, 30, 10, 4), black, white, 1);
    graphics.setClip(Rectangle(60, 38, 10, 2), false);
    graphics.fillGradient(Rectangle(60, 36, 10, 4), black, white, 1);
    graphics.setClip(scene.image.getBounds(), false);
    graphics.fillGradient(Rectangle(74, 18, 18, 40), Colour(255, 200, 0, 255), Colour(120, 0, 160, 255), 1);
    graphics.fillGradient(Rectangle(4, 46, 64, 12), Colour(255, 255, 255, 0), Colour(0, 255, 0, 200), 1);
    scene.expect({{61, 30, {0, 0, 0, 255}}, {61, 31, {63, 63, 63, 255}}, {61, 32, {127, 127, 127, 255}},
                  {61, 33, {192, 192, 192, 255}}, {61, 37, {88, 80, 73, 255}}, {61, 38, {127, 127, 127, 255}},
                  {61, 39, {192, 192, 192, 255}}, {80, 18, {0, 200, 255, 255}}, {5, 46, {40, 30, 20, 255}}});
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "fills"));
}

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

// Discs, rings, arcs and rounded rectangles on black, each checked against the coverage formulas
// (pixel (px, py) is measured at its top-left corner), above a panel of larger shapes.
TEST(SoftwareGraphicsCirclesTest, CirclesScene)
{
    Scene scene(128, 88, opaqueBlack);
    SoftwareGraphics& graphics = scene.graphics;
    const Colour white(255, 255, 255, 255);

    // Around (5, 5), radius 3: distances 0 and 2 (radius - 1) full, 3 outside; sqrt(8) = 2.8284
    // gets 255 * (1 - 0.8284) = 43 and sqrt(5) = 2.2361 gets 255 * 0.7639 = 194. At alpha 100:
    // 100 inside, 100 * 0.7639 = 76 on the edge. A radius below 1 draws nothing, radius 1 the centre.
    graphics.fillCircle(white, 5, 5, 3);
    scene.expect({{5, 5, opaqueWhite}, {7, 5, opaqueWhite}, {8, 5, opaqueBlack}, {7, 7, whiteOverBlack(43)},
                  {6, 7, whiteOverBlack(194)}, {3, 3, whiteOverBlack(43)}});
    scene.moveTo(12, 0);
    graphics.fillCircle(Colour(255, 255, 255, 100), 5, 5, 3);
    scene.expect({{5, 5, whiteOverBlack(100)}, {6, 7, whiteOverBlack(76)}});
    scene.moveTo(24, 0);
    graphics.fillCircle(white, 2, 2, 0.5f);
    graphics.fillCircle(white, 7, 2, 1.0f);
    EXPECT_EQ(countOther(scene.image, Rectangle(24, 0, 12, 8), opaqueBlack), 1);
    scene.expect({{7, 2, opaqueWhite}});

    // Rings around (10, 10), radius 5. Thickness 1: band 0.01, distance 5 full, 4 and 6 at
    // 255 * 0.01 = 2. Thickness 3 (band 2.01): 3 to 7 full, 2 and 8 at 2.
    scene.moveTo(36, 0);
    graphics.drawRing(white, 10, 10, 5, 1);
    scene.expect({{15, 10, opaqueWhite}, {13, 14, opaqueWhite}, {16, 10, whiteOverBlack(2)},
                  {14, 10, whiteOverBlack(2)}, {10, 10, opaqueBlack}, {17, 10, opaqueBlack}});
    scene.moveTo(57, 0);
    graphics.drawRing(white, 10, 10, 5, 3);
    scene.expect({{13, 10, opaqueWhite}, {17, 10, opaqueWhite}, {18, 10, whiteOverBlack(2)},
                  {12, 10, whiteOverBlack(2)}});

    // Angle 0 lies left of the centre and grows through the top. At radius 5 around (10, 10):
    // (5, 10) is at 0, (6, 7) at atan(3 / 4) = 0.6435, (7, 6) at 0.9273, (10, 5) at pi / 2, (15, 10)
    // at pi, (10, 15) at 3 pi / 2, (6, 13) at 2 pi - 0.6435. From 5.5 through 0 to 0.8, and the same
    // with angles out of range (5.5 - 2 pi, 0.8 + 4 pi).
    for (const auto& [x, start, end] : {std::tuple{78, 5.5f, 0.8f}, {99, 5.5f - 6.2831853f, 0.8f + 2 * 6.2831853f}})
    {
        scene.moveTo(x, 0);
        graphics.drawArc(white, 10, 10, 5, 1, start, end);
        scene.expect({{5, 10, opaqueWhite}, {6, 7, opaqueWhite}, {6, 13, opaqueWhite}, {7, 6, opaqueBlack},
                      {10, 5, opaqueBlack}, {15, 10, opaqueBlack}, {10, 15, opaqueBlack}});
    }
    // A soft end: from 0.6435 to 2, (6, 7) has arc length L = 0.6435 * 10 and A = L + 0.5, so its
    // coverage is L - A + 1 = 0.5: alpha 255 * sqrt(0.5) = 180.
    scene.moveTo(0, 22);
    graphics.drawArc(white, 10, 10, 5, 1, 0.6435f, 2.0f);
    scene.expect({{6, 7, whiteOverBlack(180)}, {10, 5, opaqueWhite}, {5, 10, opaqueBlack}, {15, 10, opaqueBlack}});

    // Corners of radius 4: the top-left circle has centre (5, 5) and is drawn in the square
    // (2, 2, 4, 4): sqrt(18) away is out, sqrt(8) in, 3 on the edge at 255, sqrt(10) at
    // 255 * 0.8377 = 213. The bottom-right circle has centre (10, 8).
    scene.moveTo(22, 22);
    graphics.fillRoundedRect(Rectangle(2, 2, 12, 10), 4, white);
    scene.expect({{2, 2, opaqueBlack}, {3, 3, opaqueWhite}, {2, 5, opaqueWhite}, {2, 4, whiteOverBlack(213)},
                  {13, 11, opaqueBlack}, {13, 9, whiteOverBlack(213)}, {13, 8, opaqueWhite}, {7, 2, opaqueWhite},
                  {2, 7, opaqueWhite}, {13, 6, opaqueWhite}});

    scene.moveTo(0, 0);
    graphics.fillRoundedRect(Rectangle(42, 22, 40, 20), 8, Colour(90, 140, 255, 255));
    graphics.fillRoundedRectCorners(Rectangle(86, 22, 40, 20), 0, 10, 6, 3, Colour(255, 255, 255, 170));
    graphics.drawArc(Colour(0, 0, 0, 255), 106, 32, 8, 2, 0.3f, 5.9f);
    scene.expect({{60, 30, {255, 140, 90, 255}}});
    scene.moveTo(0, 44);
    graphics.fillCircle(Colour(255, 200, 40, 255), 20, 20, 14);
    graphics.fillCircle(Colour(40, 200, 255, 140), 32, 28, 10);
    graphics.fillCircle(white, 50.5f, 12.25f, 5.5f);
    graphics.drawRing(Colour(255, 90, 90, 255), 84, 24, 16, 1);
    graphics.drawRing(Colour(150, 255, 150, 180), 84, 24, 9, 3);
    graphics.drawArc(white, 112, 24, 11, 2, 5.2f, 1.1f);
    graphics.drawArc(Colour(255, 160, 0, 255), 112, 24, 6, 1, 1.5f, 4.0f);
    // The disc's centre and a pixel of the first ring at distance 16: solid.
    scene.expect({{20, 20, {40, 200, 255, 255}}, {84, 40, {90, 90, 255, 255}}});
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "circles"));
}

TEST(SoftwareGraphicsCirclesTest, RoundedRectanglePartsCoverEachPixelOnce)
{
    // A pixel covered twice would come out brighter: every pixel of the rectangle outside the
    // corner squares must have exactly one blend of alpha 100.
    const Rectangle area(3, 2, 17, 15);
    for (const auto& [topLeft, topRight, bottomLeft, bottomRight] :
         {std::array{0, 6, 2, 3}, {5, 1, 3, 7}, {4, 4, 0, 0}, {2, 2, 2, 2}})
    {
        Scene scene(24, 20, opaqueBlack);
        scene.graphics.fillRoundedRectCorners(area, topLeft, topRight, bottomLeft, bottomRight, Colour(255, 255, 255, 100));
        const Rectangle squares[4] = {Rectangle(3, 2, topLeft, topLeft), Rectangle(20 - topRight, 2, topRight, topRight),
                                      Rectangle(3, 17 - bottomLeft, bottomLeft, bottomLeft),
                                      Rectangle(20 - bottomRight, 17 - bottomRight, bottomRight, bottomRight)};
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 24; ++x)
            {
                if (std::any_of(squares, squares + 4, [&](const Rectangle& square) { return square.contains({x, y}); }))
                    continue;
                ASSERT_EQ(readPixel(scene.image, x, y), area.contains({x, y}) ? whiteOverBlack(100) : opaqueBlack)
                    << x << ", " << y << " with radii " << topLeft << topRight << bottomLeft << bottomRight;
            }
    }
}

namespace
{
using Labels = std::vector<int>;

// Pixel (x, y) of a labelled picture: blue 10 * x + 1, green 10 * y + 1, red 200, opaque.
PixelValue label(int x, int y)
{
    return {10 * x + 1, 10 * y + 1, 200, 255};
}

Image makeLabelled(int width, int height)
{
    Image image(width, height, true);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            std::copy_n(label(x, y).begin(), 4, image.getPixelPointer(x, y));
    return image;
}

// Of count pixels from (x, y) on (relative to the origin), across or down, the label's x (across)
// or y (down), -1 for black.
Labels labels(const Scene& scene, int x, int y, int count, bool down = false)
{
    Labels found;
    const Point start = scene.graphics.getOrigin() + Point(x, y);
    for (int index = 0; index < count; ++index)
    {
        const PixelValue pixel = readPixel(scene.image, start.x + (down ? 0 : index), start.y + (down ? index : 0));
        found.push_back(pixel == opaqueBlack ? -1 : ((down ? pixel[1] : pixel[0]) - 1) / 10);
    }
    return found;
}
}  // namespace

// Groups of blits of labelled pictures on black, each checked for the source pixel that lands on
// each destination pixel, above a panel of blended, tiled, cut and scaled images.
TEST(SoftwareGraphicsImagesTest, ImagesScene)
{
    Scene scene(160, 124, opaqueBlack);
    SoftwareGraphics& graphics = scene.graphics;
    const Rectangle everywhere = scene.image.getBounds();

    // A source cut at its left is not shifted: (-2, 0, 4, 2) is (0, 0, 2, 2), drawn at (3, 1). The
    // clip picks the source pixels: an image at (4, 3) clipped from column 5 shows labels 1 on.
    // Without blend opacity does nothing.
    scene.moveTo(2, 2);
    const Image labelled = makeLabelled(4, 2);
    graphics.drawImagePart(labelled, Rectangle(-2, 0, 4, 2), Point(3, 1), false, 255);
    graphics.drawImagePart(labelled, Rectangle(2, 0, 5, 1), Point(0, 0), false, 255);
    graphics.setClip(Rectangle(5, 0, 3, 4), true);
    graphics.drawImage(labelled, Point(4, 3), false, 0);
    graphics.setClip(everywhere, false);
    scene.expect({{3, 1, label(0, 0)}, {4, 2, label(1, 1)}, {5, 1, opaqueBlack}, {2, 1, opaqueBlack}});
    EXPECT_EQ(labels(scene, 0, 0, 3), (Labels{2, 3, -1}));
    EXPECT_EQ(labels(scene, 3, 3, 5), (Labels{-1, -1, 1, 2, 3}));

    // Opacity 99 (k = 100) over (200, 100, 50, 255): the source scales to 15, 31, 46, 62, and
    // 256 - 62 = 194 keeps 200 * 194 >> 8 = 151, 75, 37, 193. Opacity 500 counts as 255:
    // 256 - 160 = 96 keeps 75, 37, 18, 95. Without blend a copy. Equal sizes go through
    // drawImagePart with the opacity; a real scale blends at full opacity.
    scene.moveTo(12, 2);
    Colour patch(50, 100, 200, 255);
    graphics.fillRect(Rectangle(0, 0, 6, 6), patch, false);
    const Image sprite = makeCanvas(1, 1, {40, 80, 120, 160});
    graphics.drawImage(sprite, Point(0, 0), true, 99);
    graphics.drawImage(sprite, Point(1, 0), false, 99);
    graphics.drawImage(sprite, Point(2, 0), true, 500);
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(3, 0, 1, 1), true, 99, Alignment::Centre);
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(0, 2, 2, 2), true, 99, Alignment::Centre);
    const PixelValue atOpacity{151 + 15, 75 + 31, 37 + 46, 193 + 62}, full{75 + 40, 37 + 80, 18 + 120, 95 + 160};
    scene.expect({{0, 0, atOpacity}, {1, 0, {40, 80, 120, 160}}, {2, 0, full}, {3, 0, atOpacity}, {0, 2, full},
                  {1, 2, full}, {0, 3, full}, {1, 3, full}, {2, 2, {200, 100, 50, 255}}});

    // Nearest neighbour in 16.16: 3 columns onto 7, step (3 << 16) / 7 = 28086, give columns 0, 0,
    // 0, 1, 1, 2, 2; 2 columns from column 1 onto 4 start at u = 1 << 16 and step 32768; 3 rows
    // onto 5, step 39321, give rows 0, 0, 1, 1, 2. A clip starting inside picks the same columns.
    scene.moveTo(20, 2);
    const Image grid = makeLabelled(4, 3);
    graphics.drawImageScaled(grid, Rectangle(0, 0, 3, 1), Rectangle(0, 0, 7, 1), false, 255, Alignment::TopLeft);
    graphics.drawImageScaled(grid, Rectangle(1, 0, 2, 1), Rectangle(0, 1, 4, 1), false, 255, Alignment::TopLeft);
    graphics.drawImageScaled(grid, Rectangle(3, 0, 1, 3), Rectangle(9, 2, 1, 5), false, 255, Alignment::Stretch);
    graphics.setClip(Rectangle(3, 3, 7, 1), true);
    graphics.drawImageScaled(grid, Rectangle(0, 0, 3, 1), Rectangle(0, 3, 7, 1), false, 255, Alignment::TopLeft);
    graphics.setClip(everywhere, false);
    EXPECT_EQ(labels(scene, 0, 0, 8), (Labels{0, 0, 0, 1, 1, 2, 2, -1}));
    EXPECT_EQ(labels(scene, 0, 1, 5), (Labels{1, 1, 2, 2, -1}));
    EXPECT_EQ(labels(scene, 9, 2, 6, true), (Labels{0, 0, 1, 1, 2, -1}));
    EXPECT_EQ(labels(scene, 0, 3, 8), (Labels{-1, -1, -1, 1, 1, 2, 2, -1}));

    // Aligned: the same size is drawn unscaled at its place, twice the size is scaled.
    scene.moveTo(32, 2);
    const Image small = makeLabelled(2, 2);
    graphics.drawImageAligned(small, Rectangle(3, 3, 2, 2), false, 255, Alignment::BottomRight);
    graphics.drawImageAligned(small, Rectangle(0, 4, 4, 4), false, 255, Alignment::TopLeft);
    scene.expect({{3, 3, label(0, 0)}});
    EXPECT_EQ(labels(scene, 0, 7, 5), (Labels{0, 0, 1, 1, -1}));
    EXPECT_EQ(labels(scene, 0, 3, 5, true), (Labels{-1, 0, 0, 1, 1}));

    // Tiles of a 10-wide source over 25 columns: three, the last one cut; the clip comes back. A
    // destination outside the clip, or a source outside the image, leaves the clip as it was.
    scene.moveTo(42, 2);
    graphics.setClip(Rectangle(0, 0, 28, 2), true);
    const Image strip = makeLabelled(10, 1);
    graphics.tileImage(strip, Rectangle(0, 0, 10, 1), Rectangle(0, 0, 25, 2), false);
    graphics.tileImage(strip, Rectangle(0, 0, 10, 1), Rectangle(40, 0, 5, 1), false);
    graphics.tileImage(strip, Rectangle(12, 0, 3, 1), Rectangle(0, 0, 5, 1), false);
    EXPECT_EQ(graphics.getClip(true), Rectangle(0, 0, 28, 2));
    graphics.setClip(everywhere, false);
    const Labels tiles{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, -1};
    EXPECT_EQ(labels(scene, 0, 0, 26), tiles);
    EXPECT_EQ(labels(scene, 0, 1, 26), tiles);

    // Thirds of 9 columns: caps 0..2 and 6..8, the middle 3..5 tiled over 8 columns, as tall as
    // the image (2 rows). Of 10 columns, thirds of 3 (column 6 is never read); narrower than two
    // caps, the caps overlap, the right one on top, with no middle.
    scene.moveTo(42, 6);
    graphics.drawThreePartHorizontal(makeLabelled(9, 2), Rectangle(0, 0, 14, 5), false);
    graphics.drawThreePartHorizontal(makeLabelled(10, 1), Rectangle(16, 0, 4, 1), false);
    EXPECT_EQ(labels(scene, 0, 0, 15), (Labels{0, 1, 2, 3, 4, 5, 3, 4, 5, 3, 4, 6, 7, 8, -1}));
    EXPECT_EQ(labels(scene, 0, 1, 2, true), (Labels{1, -1}));
    EXPECT_EQ(labels(scene, 16, 0, 5), (Labels{0, 7, 8, 9, -1}));

    // Thirds of 9 rows as a column of the image's own 2 pixels, at (6 - 2) / 2 = 2; a column wider
    // than its destination overhangs both sides: 4 + (2 - 6) / 2 = 2.
    scene.moveTo(64, 6);
    graphics.drawThreePartVertical(makeLabelled(2, 9), Rectangle(0, 0, 6, 12), false);
    EXPECT_EQ(labels(scene, 2, 0, 13, true), (Labels{0, 1, 2, 3, 4, 5, 3, 4, 5, 6, 7, 8, -1}));
    scene.expect({{3, 0, label(1, 0)}, {1, 0, opaqueBlack}, {4, 0, opaqueBlack}});
    scene.moveTo(72, 6);
    graphics.drawThreePartVertical(makeLabelled(6, 3), Rectangle(4, 0, 2, 3), false);
    EXPECT_EQ(labels(scene, 0, 0, 10), (Labels{-1, -1, 0, 1, 2, 3, 4, 5, -1, -1}));

    // Nine parts of 6 by 6 over (1, 1, 10, 8): corners 0, 1 and 4, 5 stay, the middles 2, 3 tile.
    scene.moveTo(84, 6);
    graphics.drawNinePart(makeLabelled(6, 6), Rectangle(1, 1, 10, 8), false);
    for (int row : {1, 5, 8})
        EXPECT_EQ(labels(scene, 0, row, 12), (Labels{-1, 0, 1, 2, 3, 2, 3, 2, 3, 4, 5, -1})) << row;
    for (int column : {1, 6})
        EXPECT_EQ(labels(scene, column, 0, 10, true), (Labels{-1, 0, 1, 2, 3, 2, 3, 4, 5, -1})) << column;
    scene.expect({{10, 8, label(5, 5)}});
    EXPECT_TRUE(marginIsClear(scene.image));

    // The panel, over a blue ground: a soft disc drawn by the renderer on a transparent image, at
    // falling opacities and scaled up and down, and a translucent frame tiled, in three and in nine parts.
    Image disc(20, 20, true), frame(12, 12, true);
    SoftwareGraphics(disc).fillCircle(Colour(255, 180, 60, 255), 9.5f, 9.5f, 9.5f);
    SoftwareGraphics(disc).fillCircle(Colour(255, 255, 255, 200), 7.0f, 7.0f, 3.0f);
    SoftwareGraphics(frame).fillRoundedRect(Rectangle(0, 0, 12, 12), 4, Colour(80, 160, 255, 220));
    SoftwareGraphics(frame).drawRect(Rectangle(1, 1, 10, 10), Colour(255, 255, 255, 255));
    scene.moveTo(0, 22);
    graphics.fillRect(Rectangle(0, 0, 160, 102), patch, false);
    for (int i = 0; i < 5; ++i)
        graphics.drawImage(disc, Point(4 + 22 * i, 2), true, 255 - 50 * i);
    graphics.tileImage(frame, frame.getBounds(), Rectangle(4, 26, 70, 26), true);
    graphics.drawThreePartHorizontal(frame, Rectangle(80, 26, 76, 12), true);
    graphics.drawThreePartVertical(frame, Rectangle(80, 40, 20, 60), true);
    graphics.drawNinePart(frame, Rectangle(104, 40, 52, 40), true);
    graphics.drawImageScaled(disc, disc.getBounds(), Rectangle(4, 54, 44, 44), true, 255, Alignment::Stretch);
    graphics.drawImageScaled(disc, disc.getBounds(), Rectangle(52, 54, 11, 11), true, 255, Alignment::Stretch);
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "images"));
}
