// The disc and power kernels: weights at known distances, worked out by hand from their closed
// forms, times the premultiplied colour.
#include "render/effects/EffectKernels.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

using q1framework::Colour;
using q1framework::FloatImage;
using q1framework::makeDiscKernel;
using q1framework::makePowerKernel;
using q1framework::Rectangle;

namespace
{
// Opaque blue: (1, 0, 0, 1) in the order blue, green, red, alpha, so a pixel's weight shows in
// channels 0 and 3.
const Colour blue(0, 0, 255, 255);

FloatPixel blueTimes(float weight)
{
    return {weight, 0.0f, 0.0f, weight};
}
}

TEST(EffectKernelsTest, DiscHoldsTheFullColourInsideItsRadius)
{
    // Radius 2: side 5, centre (2, 2). Distances 0, 1, 2 (on the axes) and sqrt(2) are inside.
    const FloatImage disc = makeDiscKernel(2, blue);
    ASSERT_EQ(disc.getBounds(), Rectangle(0, 0, 5, 5));
    EXPECT_EQ(disc.getMargin(), 0);
    for (const auto& [x, y] : {std::pair{2, 2}, {2, 1}, {0, 2}, {2, 4}, {4, 2}, {1, 1}, {3, 3}})
        EXPECT_TRUE(pixelNear(disc, x, y, blueTimes(1.0f)));
}

TEST(EffectKernelsTest, DiscFadesOverARingOfOnePixel)
{
    // Radius 2, centre (2, 2): (0, 1) lies at sqrt(5) = 2.2360680, weight 3 - 2.2360680 =
    // 0.7639320; the corner (0, 0) at sqrt(8) = 2.8284271, weight 0.1715729. Radius 3, centre
    // (3, 3): the corner lies at sqrt(18) = 4.24 > 4, outside the ring; (0, 1) at sqrt(13) =
    // 3.6055513, weight 0.3944487.
    const FloatImage disc = makeDiscKernel(2, blue);
    EXPECT_TRUE(pixelNear(disc, 0, 1, blueTimes(0.7639320f)));
    EXPECT_TRUE(pixelNear(disc, 4, 3, blueTimes(0.7639320f)));
    EXPECT_TRUE(pixelNear(disc, 0, 0, blueTimes(0.1715729f)));
    EXPECT_TRUE(pixelNear(disc, 4, 4, blueTimes(0.1715729f)));
    const FloatImage wider = makeDiscKernel(3, blue);
    EXPECT_TRUE(pixelNear(wider, 0, 0, blueTimes(0.0f), 0.0f));
    EXPECT_TRUE(pixelNear(wider, 0, 1, blueTimes(0.3944487f)));
}

TEST(EffectKernelsTest, KernelsCarryThePremultipliedColour)
{
    // Red 255, green 102 at alpha 51: (0, 0.08, 0.2, 0.2); the power kernel of side 1 has the
    // weight 15, limited to 1.
    const Colour colour(255, 102, 0, 51);
    EXPECT_TRUE(pixelNear(makeDiscKernel(1, colour), 1, 0, {0.0f, 0.08f, 0.2f, 0.2f}));
    EXPECT_TRUE(pixelNear(makePowerKernel(1, 2.0f, colour), 0, 0, {0.0f, 0.08f, 0.2f, 0.2f}));
}

TEST(EffectKernelsTest, PowerKernelWeightsFollowTheirClosedForm)
{
    // Side 5, centre (2, 2), factor 15 / 25 = 0.6, power 2: distance 0 -> 0.6; 1 -> 0.6^2 * 0.6
    // = 0.216; 2 -> 0.2^2 * 0.6 = 0.024; sqrt(2) -> 0.4343146^2 * 0.6 = 0.1131775;
    // sqrt(5) -> base 1 - 0.8944272 = 0.1055728, squared 0.0111456, times 0.6 = 0.0066874;
    // sqrt(8) -> base below 0, weight 0.
    const FloatImage kernel = makePowerKernel(5, 2.0f, blue);
    ASSERT_EQ(kernel.getBounds(), Rectangle(0, 0, 5, 5));
    EXPECT_TRUE(pixelNear(kernel, 2, 2, blueTimes(0.6f)));
    EXPECT_TRUE(pixelNear(kernel, 3, 2, blueTimes(0.216f)));
    EXPECT_TRUE(pixelNear(kernel, 2, 0, blueTimes(0.024f)));
    EXPECT_TRUE(pixelNear(kernel, 1, 1, blueTimes(0.1131775f)));
    EXPECT_TRUE(pixelNear(kernel, 0, 1, blueTimes(0.0066874f)));
    EXPECT_TRUE(pixelNear(kernel, 0, 0, blueTimes(0.0f), 0.0f));
    // Power 3 at distance 1: 0.6^3 * 0.6 = 0.1296. Power 0: a flat disc of 0.6.
    EXPECT_TRUE(pixelNear(makePowerKernel(5, 3.0f, blue), 2, 1, blueTimes(0.1296f)));
    EXPECT_TRUE(pixelNear(makePowerKernel(5, 0.0f, blue), 0, 1, blueTimes(0.6f)));
}

TEST(EffectKernelsTest, EvenPowerKernelIsCentredBetweenPixels)
{
    // Side 4, centre (1.5, 1.5), factor 15 / 16: the four middle pixels lie at sqrt(0.5) =
    // 0.7071068, base 1 - 0.3535534 = 0.6464466, squared 0.4178932, weight 0.3917749; (0, 1) at
    // sqrt(2.5) = 1.5811388, base 0.2094306, squared 0.0438611, weight 0.0411198.
    const FloatImage kernel = makePowerKernel(4, 2.0f, blue);
    for (const auto& [x, y] : {std::pair{1, 1}, {2, 1}, {1, 2}, {2, 2}})
        EXPECT_TRUE(pixelNear(kernel, x, y, blueTimes(0.3917749f)));
    EXPECT_TRUE(pixelNear(kernel, 0, 1, blueTimes(0.0411198f)));
    EXPECT_TRUE(pixelNear(kernel, 3, 2, blueTimes(0.0411198f)));
}

TEST(EffectKernelsTest, BadSizesAndPowersGiveTheEmptyKernel)
{
    EXPECT_TRUE(makeDiscKernel(0, blue).isEmpty());
    EXPECT_TRUE(makeDiscKernel(-3, blue).isEmpty());
    EXPECT_TRUE(makeDiscKernel(std::numeric_limits<int>::max(), blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(0, 2.0f, blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(-5, 2.0f, blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(5, -1.0f, blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(5, std::numeric_limits<float>::quiet_NaN(), blue).isEmpty());
}
