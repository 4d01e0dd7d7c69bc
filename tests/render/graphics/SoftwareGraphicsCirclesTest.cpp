#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

using q1framework::Colour;
using q1framework::Image;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
const Colour opaqueWhiteColour(255, 255, 255, 255);

int countChanged(const Image& image, const PixelValue& background)
{
    int changed = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            changed += readPixel(image, x, y) != background;
    return changed;
}
}

TEST(SoftwareGraphicsCirclesTest, DiscsAreSolidInsideRadiusMinusOneWithASoftRing)
{
    Image image = makeCanvas(12, 12, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.translate(1, 1);
    graphics.fillCircle(opaqueWhiteColour, 4, 4, 3);  // centre (5, 5) in the buffer
    // Distance 0 and 2 (on radius - 1): full. 3: outside. sqrt(8) = 2.8284: alpha
    // truncate(255 * (1 - 0.8284)) = 43. sqrt(5) = 2.2361: truncate(255 * 0.7639) = 194.
    EXPECT_EQ(readPixel(image, 5, 5), opaqueWhite);
    EXPECT_EQ(readPixel(image, 7, 5), opaqueWhite);
    EXPECT_EQ(readPixel(image, 8, 5), opaqueBlack);
    EXPECT_EQ(readPixel(image, 7, 7), whiteOverBlack(43));
    EXPECT_EQ(readPixel(image, 6, 7), whiteOverBlack(194));
    EXPECT_EQ(readPixel(image, 3, 3), whiteOverBlack(43));  // symmetric about the pixel (5, 5)

    // Translucent: alpha 100 inside, truncate(100 * 0.7639) = 76 on the edge.
    Image translucent = makeCanvas(12, 12, opaqueBlack);
    SoftwareGraphics translucentGraphics(translucent);
    translucentGraphics.fillCircle(Colour(255, 255, 255, 100), 5, 5, 3);
    EXPECT_EQ(readPixel(translucent, 5, 5), whiteOverBlack(100));
    EXPECT_EQ(readPixel(translucent, 6, 7), whiteOverBlack(76));

    // Radius below 1 draws nothing; radius 1 draws the centre pixel only.
    Image small = makeCanvas(6, 6, opaqueBlack);
    SoftwareGraphics smallGraphics(small);
    smallGraphics.fillCircle(opaqueWhiteColour, 2, 2, 0.5f);
    EXPECT_EQ(countChanged(small, opaqueBlack), 0);
    smallGraphics.fillCircle(opaqueWhiteColour, 2, 2, 1.0f);
    EXPECT_EQ(countChanged(small, opaqueBlack), 1);
    EXPECT_EQ(readPixel(small, 2, 2), opaqueWhite);
}

TEST(SoftwareGraphicsCirclesTest, RingsAreSolidWithinTheirThicknessAndSoftOutside)
{
    Image image = makeCanvas(21, 21, opaqueBlack);
    SoftwareGraphics graphics(image);
    // Thickness 1: band 1 - 0.99 = 0.01. Distance 5: e = -0.01, full. Distances 4 and 6:
    // e = 0.99, alpha truncate(255 * 0.01) = 2. The centre: nothing.
    graphics.drawRing(opaqueWhiteColour, 10, 10, 5, 1);
    EXPECT_EQ(readPixel(image, 15, 10), opaqueWhite);
    EXPECT_EQ(readPixel(image, 13, 14), opaqueWhite);  // 3-4-5
    EXPECT_EQ(readPixel(image, 16, 10), whiteOverBlack(2));
    EXPECT_EQ(readPixel(image, 14, 10), whiteOverBlack(2));
    EXPECT_EQ(readPixel(image, 10, 10), opaqueBlack);
    EXPECT_EQ(readPixel(image, 17, 10), opaqueBlack);

    // Thickness 3 (band 2.01): distances 3 to 7 full, 8 gets truncate(255 * (1 - 0.99)) = 2.
    Image thick = makeCanvas(21, 21, opaqueBlack);
    SoftwareGraphics thickGraphics(thick);
    thickGraphics.drawRing(opaqueWhiteColour, 10, 10, 5, 3);
    EXPECT_EQ(readPixel(thick, 13, 10), opaqueWhite);
    EXPECT_EQ(readPixel(thick, 17, 10), opaqueWhite);
    EXPECT_EQ(readPixel(thick, 18, 10), whiteOverBlack(2));
    EXPECT_EQ(readPixel(thick, 12, 10), whiteOverBlack(2));
}

TEST(SoftwareGraphicsCirclesTest, ArcsCoverTheirAnglesIncludingOnesThatPassZero)
{
    // Angle 0 lies left of the centre and grows through the top. At radius 5 around (10, 10):
    // (5, 10) is at 0, (6, 7) at atan(3 / 4) = 0.6435, (7, 6) at 0.9273, (10, 5) at pi / 2,
    // (15, 10) at pi, (10, 15) at 3 pi / 2, (6, 13) at 2 pi - 0.6435 = 5.6397.
    Image image = makeCanvas(21, 21, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.drawArc(opaqueWhiteColour, 10, 10, 5, 1, 5.5f, 0.8f);  // from 5.5 through 0 to 0.8
    EXPECT_EQ(readPixel(image, 5, 10), opaqueWhite);
    EXPECT_EQ(readPixel(image, 6, 7), opaqueWhite);
    EXPECT_EQ(readPixel(image, 6, 13), opaqueWhite);
    EXPECT_EQ(readPixel(image, 7, 6), opaqueBlack);
    EXPECT_EQ(readPixel(image, 10, 5), opaqueBlack);
    EXPECT_EQ(readPixel(image, 15, 10), opaqueBlack);
    EXPECT_EQ(readPixel(image, 10, 15), opaqueBlack);

    // The same angles given out of range come to the same arc: -0.7832 is 5.5 - 2 pi.
    Image shifted = makeCanvas(21, 21, opaqueBlack);
    SoftwareGraphics shiftedGraphics(shifted);
    shiftedGraphics.drawArc(opaqueWhiteColour, 10, 10, 5, 1, 5.5f - 6.2831853f, 0.8f + 2 * 6.2831853f);
    EXPECT_EQ(readPixel(shifted, 5, 10), opaqueWhite);
    EXPECT_EQ(readPixel(shifted, 6, 13), opaqueWhite);
    EXPECT_EQ(readPixel(shifted, 15, 10), opaqueBlack);

    // A soft end: from 0.6435 to 2, the pixel (6, 7) lies at arc length L = 0.6435 * 10 and
    // A = 0.6435 * 10 + 0.5, so its coverage is L - A + 1 = 0.5: alpha truncate(255 * sqrt(0.5))
    // = 180. (10, 5) at pi / 2 is inside; (5, 10) at 0 and (15, 10) at pi are not.
    Image soft = makeCanvas(21, 21, opaqueBlack);
    SoftwareGraphics softGraphics(soft);
    softGraphics.drawArc(opaqueWhiteColour, 10, 10, 5, 1, 0.6435f, 2.0f);
    EXPECT_EQ(readPixel(soft, 6, 7), whiteOverBlack(180));
    EXPECT_EQ(readPixel(soft, 10, 5), opaqueWhite);
    EXPECT_EQ(readPixel(soft, 5, 10), opaqueBlack);
    EXPECT_EQ(readPixel(soft, 15, 10), opaqueBlack);
}

TEST(SoftwareGraphicsCirclesTest, RoundedRectangleCornersAreQuarterDiscs)
{
    Image image = makeCanvas(16, 14, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.fillRoundedRect(Rectangle(2, 2, 12, 10), 4, opaqueWhiteColour);
    // Top-left circle: centre (5, 5), radius 4, drawn in the square (2, 2, 4, 4).
    EXPECT_EQ(readPixel(image, 2, 2), opaqueBlack);                  // distance sqrt(18)
    EXPECT_EQ(readPixel(image, 3, 3), opaqueWhite);                  // sqrt(8) < 3
    EXPECT_EQ(readPixel(image, 2, 5), opaqueWhite);                  // 3: on the soft edge at 255
    EXPECT_EQ(readPixel(image, 2, 4), whiteOverBlack(213));    // sqrt(10): 255 * 0.8377
    // Bottom-right circle: centre (10, 8).
    EXPECT_EQ(readPixel(image, 13, 11), opaqueBlack);
    EXPECT_EQ(readPixel(image, 13, 9), whiteOverBlack(213));
    EXPECT_EQ(readPixel(image, 13, 8), opaqueWhite);
    // The straight parts and nothing outside the rectangle.
    EXPECT_EQ(readPixel(image, 7, 2), opaqueWhite);
    EXPECT_EQ(readPixel(image, 2, 7), opaqueWhite);
    EXPECT_EQ(readPixel(image, 13, 6), opaqueWhite);
    for (int x = 0; x < 16; ++x)
    {
        EXPECT_EQ(readPixel(image, x, 1), opaqueBlack);
        EXPECT_EQ(readPixel(image, x, 12), opaqueBlack);
    }
}

TEST(SoftwareGraphicsCirclesTest, RoundedRectanglePartsCoverEachPixelOnce)
{
    // With a translucent colour a pixel covered twice would come out brighter. Every pixel of
    // the rectangle outside the corner squares must have exactly one blend of alpha 100.
    const int radii[][4] = {{0, 6, 2, 3}, {5, 1, 3, 7}, {4, 4, 0, 0}, {2, 2, 2, 2}};
    for (const auto& corner : radii)
    {
        Image image = makeCanvas(24, 20, opaqueBlack);
        SoftwareGraphics graphics(image);
        const Rectangle area(3, 2, 17, 15);
        graphics.fillRoundedRectCorners(area, corner[0], corner[1], corner[2], corner[3], Colour(255, 255, 255, 100));
        const Rectangle squares[4] = {Rectangle(3, 2, corner[0], corner[0]),
                                      Rectangle(20 - corner[1], 2, corner[1], corner[1]),
                                      Rectangle(3, 17 - corner[2], corner[2], corner[2]),
                                      Rectangle(20 - corner[3], 17 - corner[3], corner[3], corner[3])};
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 24; ++x)
            {
                bool inCorner = false;
                for (const Rectangle& square : squares)
                    inCorner = inCorner || square.contains({x, y});
                if (inCorner)
                    continue;
                const PixelValue expected = area.contains({x, y}) ? whiteOverBlack(100) : opaqueBlack;
                ASSERT_EQ(readPixel(image, x, y), expected)
                    << x << ", " << y << " with radii " << corner[0] << corner[1] << corner[2] << corner[3];
            }
    }
}

TEST(SoftwareGraphicsCirclesTest, CirclesScene)
{
    Image image = makeCanvas(128, 96, PixelValue{60, 40, 30, 255});
    SoftwareGraphics graphics(image);
    graphics.fillCircle(Colour(255, 200, 40, 255), 20, 20, 14);
    graphics.fillCircle(Colour(40, 200, 255, 140), 32, 28, 10);
    graphics.fillCircle(Colour(255, 255, 255, 255), 50.5f, 12.25f, 5.5f);
    graphics.drawRing(Colour(255, 90, 90, 255), 84, 24, 16, 1);
    graphics.drawRing(Colour(150, 255, 150, 180), 84, 24, 9, 3);
    graphics.drawArc(Colour(255, 255, 255, 255), 112, 24, 11, 2, 5.2f, 1.1f);  // passes angle 0
    graphics.drawArc(Colour(255, 160, 0, 255), 112, 24, 6, 1, 1.5f, 4.0f);
    graphics.fillRoundedRect(Rectangle(6, 50, 50, 38), 10, Colour(90, 140, 255, 255));
    graphics.fillRoundedRectCorners(Rectangle(64, 50, 56, 38), 0, 14, 6, 3, Colour(255, 255, 255, 170));
    graphics.drawArc(Colour(0, 0, 0, 255), 92, 69, 15, 3, 0.3f, 5.9f);

    // The disc's centre and a pixel of the first ring at distance 16: solid.
    EXPECT_EQ(readPixel(image, 20, 20), (PixelValue{40, 200, 255, 255}));
    EXPECT_EQ(readPixel(image, 84, 40), (PixelValue{90, 90, 255, 255}));
    EXPECT_EQ(readPixel(image, 30, 69), (PixelValue{255, 140, 90, 255}));
    EXPECT_TRUE(GoldenImage::matchesGolden(image, "circles"));
}
