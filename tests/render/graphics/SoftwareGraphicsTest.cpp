#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

using q1framework::Array;
using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
const PixelValue clear{0, 0, 0, 0};
}

TEST(SoftwareGraphicsTest, OriginAndClipMoveTogetherAndIntersectClipReturnsTheOldClip)
{
    Image image = makeCanvas(40, 30, clear);
    SoftwareGraphics graphics(image);
    EXPECT_EQ(graphics.getClip(false), Rectangle(0, 0, 40, 30));

    graphics.translate(5, 7);
    graphics.translate(1, 1);
    EXPECT_EQ(graphics.getOrigin(), Point(6, 8));
    EXPECT_EQ(graphics.getClip(true), Rectangle(-6, -8, 40, 30));

    graphics.setClip(Rectangle(2, 3, 10, 10), true);  // relative: moved by the origin
    EXPECT_EQ(graphics.getClip(false), Rectangle(8, 11, 10, 10));
    graphics.setClip(Rectangle(2, 3, 10, 10), false);
    EXPECT_EQ(graphics.getClip(false), Rectangle(2, 3, 10, 10));

    // The old clip comes back in the coordinates asked for.
    EXPECT_EQ(graphics.intersectClip(Rectangle(0, 0, 4, 4), true), Rectangle(-4, -5, 10, 10));
    EXPECT_EQ(graphics.getClip(false), Rectangle(6, 8, 4, 4));
    EXPECT_EQ(graphics.intersectClip(Rectangle(0, 0, 7, 9), false), Rectangle(6, 8, 4, 4));
    EXPECT_EQ(graphics.getClip(false), Rectangle(6, 8, 1, 1));

    int stride = 0;
    EXPECT_EQ(graphics.getPixels(&stride, false), image.getPixelPointer(0, 0));
    EXPECT_EQ(stride, image.getStride());
    EXPECT_EQ(graphics.getPixels(nullptr, true), image.getPixelPointer(6, 8));
}

TEST(SoftwareGraphicsTest, AClipOutsideStopsAllDrawingUntilSetClip)
{
    Image image = makeCanvas(20, 20, clear);
    SoftwareGraphics graphics(image);
    graphics.setClip(Rectangle(0, 0, 10, 10), false);
    const Rectangle old = graphics.intersectClip(Rectangle(12, 12, 5, 5), false);
    EXPECT_TRUE(graphics.getClip(false).isEmpty());

    Colour red(255, 0, 0, 255);
    graphics.fillAll(red, false);
    graphics.fillRect(Rectangle(0, 0, 20, 20), red, false);
    graphics.drawVerticalLine(3, 0, 20, red);
    graphics.fillCircle(red, 5, 5, 4);
    graphics.blendPixel(1, 1, red);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 20; ++x)
            ASSERT_EQ(readPixel(image, x, y), clear) << x << ", " << y;

    graphics.setClip(old, false);
    graphics.fillRect(Rectangle(0, 0, 20, 20), red, false);
    EXPECT_EQ(readPixel(image, 9, 9), (PixelValue{0, 0, 255, 255}));
    EXPECT_EQ(readPixel(image, 10, 9), clear);
}

TEST(SoftwareGraphicsTest, AClipBeyondTheBufferDrawsOnlyInsideIt)
{
    Image image = makeCanvas(12, 8, clear);
    SoftwareGraphics graphics(image);
    graphics.setClip(Rectangle(-20, -20, 100, 100), false);
    EXPECT_EQ(graphics.getClip(false), Rectangle(-20, -20, 100, 100));
    graphics.fillAll(Colour(1, 2, 3, 255), false);
    graphics.fillCircle(Colour(9, 9, 9, 255), 0, 0, 30);
    graphics.drawRing(Colour(9, 9, 9, 200), 6, 4, 10, 3);
    graphics.drawLine(-50, -40, 60, 45);
    graphics.tileImage(image, Rectangle(0, 0, 3, 3), Rectangle(-30, -30, 90, 90), true);
    graphics.drawVerticalLineF(11, Colour(9, 9, 9, 255), -10, 100);
    graphics.drawHorizontalLineF(7, Colour(9, 9, 9, 255), -10, 100);
    EXPECT_TRUE(marginIsClear(image));
    EXPECT_EQ(readPixel(image, 11, 7), (PixelValue{9, 9, 9, 255}));
}

TEST(SoftwareGraphicsTest, FillRectReplacesOrBlendsWithItsTwoRoundings)
{
    Image image = makeCanvas(8, 4, PixelValue{10, 20, 30, 255});
    SoftwareGraphics graphics(image);

    // Without blend the colour is premultiplied by division: 255 * 128 / 255 = 128 on each
    // channel; the old pixel is gone and the caller's colour is changed in place.
    Colour half(255, 255, 255, 128);
    graphics.fillRect(Rectangle(0, 0, 1, 1), half, false);
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{128, 128, 128, 128}));
    EXPECT_EQ(half, Colour(128, 128, 128, 128));

    // Alpha 100 without blend: red 200 * 100 / 255 = 78, green 100 * 100 / 255 = 39, blue
    // 50 * 100 / 255 = 19.
    Colour translucent(200, 100, 50, 100);
    graphics.fillRect(Rectangle(1, 0, 1, 1), translucent, false);
    EXPECT_EQ(readPixel(image, 1, 0), (PixelValue{19, 39, 78, 100}));

    // With blend the colour is scaled by shifts: 255 * 128 >> 8 = 127, and the old pixel
    // (10, 20, 30, 255) keeps d * 128 >> 8: 5, 10, 15, 127. Alpha: 127 + 128 = 255.
    Colour blended(255, 255, 255, 128);
    graphics.fillRect(Rectangle(2, 0, 1, 1), blended, true);
    EXPECT_EQ(readPixel(image, 2, 0), (PixelValue{5 + 127, 10 + 127, 15 + 127, 255}));
    EXPECT_EQ(blended, Colour(255, 255, 255, 128));

    // Alpha 0: nothing with blend, a cleared pixel without.
    Colour none(255, 0, 0, 0);
    graphics.fillRect(Rectangle(3, 0, 1, 1), none, true);
    EXPECT_EQ(readPixel(image, 3, 0), (PixelValue{10, 20, 30, 255}));
    graphics.fillRect(Rectangle(3, 0, 1, 1), none, false);
    EXPECT_EQ(readPixel(image, 3, 0), clear);

    // Opaque: the word itself, blend or not.
    Colour opaque(1, 2, 3, 255);
    graphics.fillRect(Rectangle(4, 0, 1, 1), opaque, true);
    EXPECT_EQ(readPixel(image, 4, 0), (PixelValue{3, 2, 1, 255}));

    // Rows of every width blend pixel by pixel alike (the vector path takes groups, the tail
    // single pixels): red 200 at alpha 60 adds 200 * 60 >> 8 = 46 to d * 196 >> 8.
    for (int width = 1; width <= 8; ++width)
    {
        Colour colour(200, 0, 0, 60);
        graphics.fillRect(Rectangle(0, 0, 8, 4), opaque, false);
        graphics.fillRect(Rectangle(0, 1, width, 1), colour, true);
        for (int x = 0; x < 8; ++x)
        {
            const PixelValue expected = x < width ? PixelValue{3 * 196 >> 8, 2 * 196 >> 8, (1 * 196 >> 8) + 46, (255 * 196 >> 8) + 60}
                                                  : PixelValue{3, 2, 1, 255};
            ASSERT_EQ(readPixel(image, x, 1), expected) << "width " << width << ", x " << x;
        }
    }
}

TEST(SoftwareGraphicsTest, BlendPixelAndBlendWhite)
{
    Image image = makeCanvas(4, 1, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.translate(1, 0);

    // Alpha 0.5 becomes truncate(127.5) = 127: colour 0 * 129 >> 8 + 255 * 127 >> 8 = 126,
    // alpha (255 * 129 >> 8) + 127 = 128 + 127 = 255.
    graphics.blendWhite(0, 0, 0.5f);
    EXPECT_EQ(readPixel(image, 1, 0), (PixelValue{126, 126, 126, 255}));
    graphics.blendWhite(1, 0, 1.0f);
    EXPECT_EQ(readPixel(image, 2, 0), opaqueWhite);
    // 1.004 * 255 truncates to 256, which wraps to alpha 0: nothing.
    graphics.blendWhite(2, 0, 1.004f);
    EXPECT_EQ(readPixel(image, 3, 0), opaqueBlack);
    // Straight form at alpha 64 for red 255: 255 * 64 >> 8 = 63 over 0; alpha 255 * 192 >> 8 = 191 + 64.
    graphics.blendPixel(-1, 0, Colour(255, 0, 0, 64));
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{0, 0, 63, 255}));
    graphics.blendPixel(3, 0, Colour(255, 0, 0, 255));  // outside the buffer
    EXPECT_TRUE(marginIsClear(image));
}

TEST(SoftwareGraphicsTest, CheckerboardCellsCountFromTheBufferAndBlendPremultiplied)
{
    Image image = makeCanvas(12, 8, opaqueWhite);
    SoftwareGraphics graphics(image);
    graphics.translate(1, 0);  // cells stay anchored to the buffer, not the origin
    graphics.fillCheckerboard(Rectangle(-1, 0, 12, 8), Colour(255, 0, 0, 255), Colour(0, 0, 255, 128), 4);
    // The second colour premultiplies to blue 255 * 128 / 255 = 128, alpha 128; over opaqueWhite:
    // 255 * 128 >> 8 = 127, plus 128 on blue and alpha.
    const PixelValue first{0, 0, 255, 255};
    const PixelValue second{255, 127, 127, 255};
    EXPECT_EQ(readPixel(image, 0, 0), first);
    EXPECT_EQ(readPixel(image, 3, 3), first);
    EXPECT_EQ(readPixel(image, 4, 0), second);
    EXPECT_EQ(readPixel(image, 0, 4), second);
    EXPECT_EQ(readPixel(image, 7, 7), first);
    EXPECT_EQ(readPixel(image, 11, 3), first);
    graphics.fillCheckerboard(Rectangle(0, 0, 4, 4), Colour(0, 255, 0, 255), Colour(), 0);  // no cells
    EXPECT_EQ(readPixel(image, 1, 1), first);
}

TEST(SoftwareGraphicsTest, GradientStepsInFixedPointAndCarriesItsFractions)
{
    // Black to opaqueWhite over 4 rows: step (255 << 16) / 4 = 63.75 in 16.16. Rows: 0; 63 (sum of
    // fractions 0); 127 (sum 0xC000); 191.25 + the carry of sum 0x14000 = 192.
    Image image = makeCanvas(3, 6, clear);
    SoftwareGraphics graphics(image);
    graphics.fillGradient(Rectangle(0, 1, 3, 4), Colour(0, 0, 0, 255), Colour(255, 255, 255, 255), 1);
    const int rows[4] = {0, 63, 127, 192};
    for (int row = 0; row < 4; ++row)
        EXPECT_EQ(readPixel(image, 1, row + 1), (PixelValue{rows[row], rows[row], rows[row], 255})) << row;
    EXPECT_EQ(readPixel(image, 1, 0), clear);
    EXPECT_EQ(readPixel(image, 1, 5), clear);

    // The whole height counts whatever the clip: with rows 3 and 4 clipped in, they get 127 and 192.
    Image clipped = makeCanvas(3, 6, clear);
    SoftwareGraphics clippedGraphics(clipped);
    clippedGraphics.setClip(Rectangle(0, 3, 3, 3), false);
    clippedGraphics.fillGradient(Rectangle(0, 1, 3, 4), Colour(0, 0, 0, 255), Colour(255, 255, 255, 255), 1);
    EXPECT_EQ(readPixel(clipped, 0, 2), clear);
    EXPECT_EQ(readPixel(clipped, 0, 3), (PixelValue{127, 127, 127, 255}));
    EXPECT_EQ(readPixel(clipped, 0, 4), (PixelValue{192, 192, 192, 255}));
}

TEST(SoftwareGraphicsTest, GradientTintModeScalesWhatIsThere)
{
    // Red 255 at alpha 128 over (b 100, g 100, r 100, a 200):
    // da = (200 * 128 + 255) >> 8 = 100, inverse 256 - 100 = 156; tint red (255 * 128 + 255) >> 8
    // = 128, green and blue (0 + 255) >> 8 = 0.
    // red (100 * 156 >> 8) + ((128 * 100 + 255) >> 8) = 60 + 50; green and blue 60 + 0;
    // alpha (156 * 200 >> 8) + 100 = 121 + 100.
    Image image = makeCanvas(2, 2, PixelValue{100, 100, 100, 200});
    SoftwareGraphics graphics(image);
    graphics.fillGradient(Rectangle(0, 0, 2, 2), Colour(255, 0, 0, 128), Colour(255, 0, 0, 128), 0);
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{60, 60, 110, 221}));
    EXPECT_EQ(readPixel(image, 1, 1), (PixelValue{60, 60, 110, 221}));
}

TEST(SoftwareGraphicsTest, PointsAreScaledTruncatedAndWrittenUnblended)
{
    Image image = makeCanvas(10, 10, clear);
    SoftwareGraphics graphics(image);
    graphics.translate(2, 1);
    Array<SoftwareGraphics::PlottedPoint> points;
    points.add({5, 4, 0x11223344u});   // 5 * 1.5 = 7.5 -> 7, 4 * 1.5 = 6; minus the origin: (5, 5)
    points.add({1, 0, 0xFFFFFFFFu});   // (1 - 2, 0 - 1): outside
    points.add({-20, 2, 0xFFFFFFFFu});
    graphics.drawPoints(points, 1.5f);
    EXPECT_EQ(readPixel(image, 5, 5), (PixelValue{0x44, 0x33, 0x22, 0x11}));
    int written = 0;
    for (int y = 0; y < 10; ++y)
        for (int x = 0; x < 10; ++x)
            written += readPixel(image, x, y) != clear;
    EXPECT_EQ(written, 1);
    EXPECT_TRUE(marginIsClear(image));
}

TEST(SoftwareGraphicsTest, FillsScene)
{
    Image image = makeCanvas(96, 64, PixelValue{40, 30, 20, 255});
    SoftwareGraphics graphics(image);
    graphics.fillCheckerboard(Rectangle(0, 0, 96, 16), Colour(90, 90, 90, 255), Colour(255, 255, 255, 96), 4);
    Colour solid(230, 120, 20, 255);
    graphics.fillRect(Rectangle(4, 20, 20, 16), solid, true);
    Colour overwritten(20, 160, 230, 120);
    graphics.fillRect(Rectangle(14, 28, 20, 16), overwritten, false);
    Colour blended(20, 160, 230, 120);
    graphics.fillRect(Rectangle(38, 20, 20, 16), blended, true);
    Colour blendedAgain(250, 250, 250, 60);
    graphics.fillRect(Rectangle(48, 28, 21, 16), blendedAgain, true);
    graphics.fillGradient(Rectangle(74, 20, 18, 40), Colour(255, 200, 0, 255), Colour(120, 0, 160, 255), 1);
    graphics.fillGradient(Rectangle(4, 48, 64, 12), Colour(255, 255, 255, 0), Colour(0, 255, 0, 200), 1);
    graphics.fillGradient(Rectangle(0, 0, 96, 6), Colour(0, 0, 0, 200), Colour(0, 0, 0, 0), 0);

    // The translucent fill without blend replaced the opaque one: 20 * 120 / 255 = 9,
    // 160 * 120 / 255 = 75, 230 * 120 / 255 = 108.
    EXPECT_EQ(readPixel(image, 20, 30), (PixelValue{108, 75, 9, 120}));
    // Blended over the background: inverse 136; 40 * 136 >> 8 = 21 + (230 * 120 >> 8 = 107);
    // 30 * 136 >> 8 = 15 + 75; 20 * 136 >> 8 = 10 + 9; 255 * 136 >> 8 = 135 + 120.
    EXPECT_EQ(readPixel(image, 40, 22), (PixelValue{128, 90, 19, 255}));
    // The vertical gradient's first row is its top colour.
    EXPECT_EQ(readPixel(image, 80, 20), (PixelValue{0, 200, 255, 255}));
    EXPECT_TRUE(GoldenImage::matchesGolden(image, "fills"));
}
