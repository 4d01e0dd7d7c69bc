// The image effects of SoftwareGraphics: blur, drop shadow and glow on small pictures, with the
// pixels worked out by hand from their blocks (two box blurs make a tent; the power kernel's
// weights; the disc's growth), and the part of the buffer they may touch.
#include "render/graphics/SoftwareGraphics.h"

#include "PixelAssertions.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
const Colour black(0, 0, 0, 255);

void setPixel(Image& image, int x, int y, const PixelValue& value)
{
    uint8_t* pixel = image.getPixelPointer(x, y);
    for (int channel = 0; channel < 4; ++channel)
        pixel[channel] = static_cast<uint8_t>(value[static_cast<size_t>(channel)]);
}

void fillWhite(SoftwareGraphics& graphics, const Rectangle& area)
{
    Colour white(255, 255, 255, 255);
    graphics.fillRect(area, white, false);
}

PixelValue grey(int value)
{
    return {value, value, value, value};
}

// How many pixels of area differ between two images.
int countDifferent(const Image& image, const Image& other, const Rectangle& area)
{
    int count = 0;
    for (int y = area.y; y < area.getBottom(); ++y)
        for (int x = area.x; x < area.getRight(); ++x)
            count += readPixel(image, x, y) != readPixel(other, x, y);
    return count;
}
}

TEST(SoftwareGraphicsEffectsTest, BlurSpreadsASinglePixelIntoATent)
{
    // Two passes of span 3 along a line: 1 -> thirds on three pixels -> 1/9, 2/9, 3/9, 2/9, 1/9.
    // Across and down multiply: the centre 1/9 * 255 = 28.3 -> 28; one step aside 2/27 * 255 =
    // 18.9 -> 19; two steps 1/27 -> 9.4 -> 9; the diagonal 4/81 -> 12.6 -> 13, corner 1/81 -> 3.
    Image image = makeCanvas(20, 20, clearPixel);
    setPixel(image, 9, 9, opaqueWhite);
    SoftwareGraphics graphics(image);
    graphics.translate(5, 5);
    graphics.blurRect(Rectangle(0, 0, 9, 9), 3);
    for (const auto& [x, y, value] : {std::tuple{9, 9, 28}, {8, 9, 19}, {9, 11, 9}, {8, 8, 13}, {10, 10, 13},
                                      {7, 7, 3}, {11, 7, 3}, {6, 9, 0}, {9, 12, 0}})
        EXPECT_EQ(readPixel(image, x, y), grey(value)) << x << ", " << y;
}

TEST(SoftwareGraphicsEffectsTest, TheNewPictureReplacesThePixelsOfTheArea)
{
    // An opaque white square alone at the buffer's corner, blurred. Along a line from x = 0 the
    // first pass gives 2/3, 1, 1, 2/3, 1/3; the second, which has no first-pass values beyond
    // the buffer, (2/3 + 1) / 3 = 5/9 at x = 0 and (1 + 2/3 + 1/3) / 3 = 2/3 at x = 3. So the
    // corner (0, 0) keeps 25/81 of white, 78.7 -> 79, and (3, 3) 4/9, 113.3 -> 113, with alpha
    // alike; blended over the old white they would stay opaque.
    Image image = makeCanvas(8, 8, clearPixel);
    SoftwareGraphics graphics(image);
    fillWhite(graphics, Rectangle(0, 0, 4, 4));
    graphics.blurRect(Rectangle(0, 0, 4, 4), 3);
    EXPECT_EQ(readPixel(image, 0, 0), grey(79));
    EXPECT_EQ(readPixel(image, 3, 3), grey(113));
    EXPECT_EQ(readPixel(image, 4, 3), clearPixel);
}

TEST(SoftwareGraphicsEffectsTest, TheBandAroundTheAreaIsReadButNotWritten)
{
    // White with one black pixel at (3, 4), just left of the area (4, 4, 4, 4). The tent of two
    // blurs of span 3 weighs it 2/9 across and 3/9 down at (4, 4): white 1 - 6/81 = 75/81,
    // 236.1 -> 236, still opaque. The black pixel itself stays.
    Image image = makeCanvas(12, 12, opaqueWhite);
    setPixel(image, 3, 4, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.blurRect(Rectangle(4, 4, 4, 4), 3);
    EXPECT_EQ(readPixel(image, 4, 4), (PixelValue{236, 236, 236, 255}));
    EXPECT_EQ(readPixel(image, 7, 7), opaqueWhite);
    EXPECT_EQ(readPixel(image, 3, 4), opaqueBlack);
    EXPECT_EQ(countOther(image, Rectangle(0, 0, 12, 4), opaqueWhite), 0);
}

TEST(SoftwareGraphicsEffectsTest, AnEffectOnPartOfTheBufferMatchesItOnTheWhole)
{
    // Each effect on a small area equals, within a unit of rounding, the same effect on the
    // whole buffer there, so each reads the whole band its kernels reach; outside the area
    // nothing changes.
    Image art = makeCanvas(48, 40, clearPixel);
    {
        SoftwareGraphics painter(art);
        Colour blue(40, 90, 220, 255), red(230, 40, 30, 160), white(255, 255, 255, 255);
        painter.fillRect(Rectangle(6, 6, 14, 10), blue, true);
        painter.fillCircle(Colour(250, 240, 200, 255), 30, 24, 9);
        painter.fillRect(Rectangle(24, 4, 6, 30), red, true);
        // Five and six pixels left of the area, which the glow of radius 2 reaches (by 3 * 2).
        painter.fillRect(Rectangle(11, 17, 2, 2), white, true);
    }
    const Rectangle area(17, 13, 9, 7);
    const std::vector<std::function<void(SoftwareGraphics&, const Rectangle&)>> effects{
        [](SoftwareGraphics& graphics, const Rectangle& where) { graphics.blurRect(where, 4); },
        [](SoftwareGraphics& graphics, const Rectangle& where) {
            graphics.drawDropShadow(where, Colour(10, 0, 40, 200), Point(5, -3), 7);
        },
        [](SoftwareGraphics& graphics, const Rectangle& where) {
            graphics.drawGlow(where, Colour(255, 200, 0, 255), 2);
        }};
    for (size_t index = 0; index < effects.size(); ++index)
    {
        Image whole = art.duplicate(), part = art.duplicate();
        SoftwareGraphics onWhole(whole), onPart(part);
        effects[index](onWhole, whole.getBounds());
        effects[index](onPart, area);
        int differing = 0;
        for (int y = 0; y < art.getHeight(); ++y)
            for (int x = 0; x < art.getWidth(); ++x)
            {
                const bool inside = area.contains(Point(x, y));
                const PixelValue expected = readPixel(inside ? whole : art, x, y);
                for (size_t channel = 0; channel < 4; ++channel)
                    differing += std::abs(readPixel(part, x, y)[channel] - expected[channel]) > (inside ? 1 : 0);
            }
        EXPECT_EQ(differing, 0) << "effect " << index;
        // Each effect changes a good part of the area (the shadow, the smallest, 12 of its 63
        // pixels), so the comparison is not one of untouched pixels.
        EXPECT_GE(countDifferent(whole, art, area), 10) << "effect " << index;
    }
}

TEST(SoftwareGraphicsEffectsTest, OnlyThePartInsideTheClipIsReadAndWritten)
{
    // The clip (3, 1, 4, 4) cuts the area: the blur sees only the white inside it, so all 16 of
    // its pixels fade, the corners to 25/81 of white (79) as in the corner square above, and
    // nothing outside changes.
    Image image = makeCanvas(10, 8, opaqueWhite);
    SoftwareGraphics graphics(image);
    graphics.setClip(Rectangle(3, 1, 4, 4), false);
    graphics.blurRect(Rectangle(0, 0, 10, 8), 3);
    EXPECT_EQ(readPixel(image, 3, 1), grey(79));
    EXPECT_EQ(readPixel(image, 6, 4), grey(79));
    EXPECT_EQ(countOther(image, image.getBounds(), opaqueWhite), 16);
}

TEST(SoftwareGraphicsEffectsTest, DropShadowLiesUnderThePixelsAtItsOffset)
{
    // Side 1 makes the power kernel a single pixel of weight 15, limited to 1: a hard shadow, the
    // art's coverage moved by (1, 1). The 2 by 2 white square at (2, 2) covers the shadow's own
    // (3, 3); its other three pixels are opaque black. The half-covered white (128) at (4, 3)
    // lies over the square's shadow: 128 of white over black gives (128, 128, 128, 255); its own
    // shadow at (5, 4) has its alpha, 128.
    Image image = makeCanvas(10, 8, clearPixel);
    setPixel(image, 4, 3, grey(128));
    SoftwareGraphics graphics(image);
    fillWhite(graphics, Rectangle(2, 2, 2, 2));
    graphics.drawDropShadow(image.getBounds(), black, Point(1, 1), 1);
    for (const auto& [x, y, value] :
         {std::tuple{2, 2, opaqueWhite}, {3, 3, opaqueWhite}, {3, 4, opaqueBlack}, {4, 4, opaqueBlack},
          {4, 3, PixelValue{128, 128, 128, 255}}, {5, 4, PixelValue{0, 0, 0, 128}}, {5, 3, clearPixel},
          {1, 1, clearPixel}, {2, 4, clearPixel}})
        EXPECT_EQ(readPixel(image, x, y), value) << x << ", " << y;
}

TEST(SoftwareGraphicsEffectsTest, DropShadowFadesWithThePowerKernelOfPower3)
{
    // One opaque pixel at (3, 5), shadow moved by (4, 0) with side 5 (factor 15 / 25 = 0.6):
    // centre 0.6 -> 153; distance 1, 0.6^3 * 0.6 = 0.1296 -> 33.0 -> 33; sqrt(2),
    // 0.4343146^3 * 0.6 = 0.0491543 -> 12.5 -> 13; distance 2, 0.2^3 * 0.6 = 0.0048 -> 1.2 -> 1.
    Image image = makeCanvas(12, 10, clearPixel);
    setPixel(image, 3, 5, opaqueWhite);
    SoftwareGraphics graphics(image);
    graphics.drawDropShadow(image.getBounds(), black, Point(4, 0), 5);
    for (const auto& [x, y, alpha] : {std::tuple{7, 5, 153}, {7, 4, 33}, {8, 6, 13}, {9, 5, 1}, {9, 6, 0}})
        EXPECT_EQ(readPixel(image, x, y), (PixelValue{0, 0, 0, alpha})) << x << ", " << y;
    EXPECT_EQ(readPixel(image, 3, 5), opaqueWhite);
}

TEST(SoftwareGraphicsEffectsTest, GlowGrowsTheShapeByItsRadiusThenFades)
{
    // White art in columns 0 to 5 of every line. The disc of radius 1 grows it to column 6 (the
    // disc's column beside the centre weighs 1 + 2 * 0.586, and the sums saturate in the glow's
    // colour, orange (0, 0.4, 1, 1) in blue, green, red, alpha). Two blurs of span 3 across the
    // step 1, 1, 0, 0, 0 at columns 5..9: first 1, 2/3, 1/3, 0, 0, then 1, 2/3, 1/3, 1/9, 0.
    // Times orange: green 0.4 * 255 * 2/3 = 68, red and alpha 170; 34 and 85; 11.3 -> 11 and
    // 28.3 -> 28. Line 6 lies far enough from the top and bottom.
    Image image = makeCanvas(16, 12, clearPixel);
    SoftwareGraphics graphics(image);
    fillWhite(graphics, Rectangle(0, 0, 6, 12));
    graphics.drawGlow(image.getBounds(), Colour(255, 102, 0, 255), 1);
    for (const auto& [x, value] : {std::pair{5, opaqueWhite}, {6, PixelValue{0, 68, 170, 170}},
                                   {7, PixelValue{0, 34, 85, 85}}, {8, PixelValue{0, 11, 28, 28}}, {9, clearPixel}})
        EXPECT_EQ(readPixel(image, x, 6), value) << x;
    EXPECT_EQ(countOther(image, Rectangle(0, 0, 6, 12), opaqueWhite), 0);
}

TEST(SoftwareGraphicsEffectsTest, BadInputDrawsNothing)
{
    Image image = makeCanvas(12, 12, clearPixel);
    SoftwareGraphics graphics(image);
    fillWhite(graphics, Rectangle(5, 3, 1, 5));
    const Image before = image.duplicate();
    const Rectangle all = image.getBounds();
    for (const Rectangle& area : {Rectangle(2, 2, 0, 5), Rectangle(2, 2, 5, -1), Rectangle(12, 0, 5, 5),
                                  Rectangle(-9, -9, 9, 30)})
    {
        graphics.blurRect(area, 3);
        graphics.drawDropShadow(area, black, Point(1, 1), 3);
        graphics.drawGlow(area, black, 2);
    }
    for (const int size : {0, -2})
    {
        graphics.blurRect(all, size);
        graphics.drawDropShadow(all, black, Point(1, 1), size);
        graphics.drawGlow(all, black, size);
    }
    graphics.drawDropShadow(all, Colour(0, 0, 0, 0), Point(1, 1), 3);
    graphics.drawGlow(all, Colour(255, 0, 0, 0), 2);
    graphics.setClip(Rectangle(20, 20, 5, 5), false);
    graphics.blurRect(all, 3);
    // Margins included: nothing outside the buffer is touched either.
    const int margin = image.getMargin();
    EXPECT_EQ(countDifferent(image, before, Rectangle(-margin, -margin, 12 + 2 * margin, 12 + 2 * margin)), 0);
}
