#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <tuple>

using q1framework::Colour;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

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
