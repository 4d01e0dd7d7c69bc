#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "render/graphics/Alignment.h"

#include <gtest/gtest.h>

#include <tuple>

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
