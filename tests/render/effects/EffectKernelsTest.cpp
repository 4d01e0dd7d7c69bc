// The disc and power kernels: weights at known distances from their closed forms, times the
// premultiplied colour.
#include "render/effects/EffectKernels.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

using q1framework::Colour;
using q1framework::FloatImage;
using q1framework::makeDiscKernel;
using q1framework::makePowerKernel;
using q1framework::Rectangle;

namespace
{
// Opaque blue, (1, 0, 0, 1) in the order blue, green, red, alpha.
const Colour blue(0, 0, 255, 255);

FloatPixel blueTimes(float weight)
{
    return {weight, 0.0f, 0.0f, weight};
}
}

TEST(EffectKernelsTest, DiscIsWholeWithinItsRadiusAndFadesOverOnePixelBeyond)
{
    // Radius 2, centre (2, 2): distances 2 and sqrt(2) weigh 1; (0, 1) at sqrt(5) weighs
    // 3 - 2.2360680 = 0.7639320, the corner at sqrt(8) 3 - 2.8284271 = 0.1715729. Red 255, green
    // 102 at alpha 51 premultiply to (0, 0.08, 0.2, 0.2), which each weight multiplies.
    const FloatImage disc = makeDiscKernel(2, Colour(255, 102, 0, 51));
    ASSERT_EQ(disc.getBounds(), Rectangle(0, 0, 5, 5));
    for (const auto& [x, y, weight] :
         {std::tuple{2, 2, 1.0f}, {0, 2, 1.0f}, {3, 3, 1.0f}, {0, 1, 0.7639320f}, {4, 3, 0.7639320f}, {0, 0, 0.1715729f}})
        EXPECT_TRUE(pixelNear(disc, x, y, {0.0f, 0.08f * weight, 0.2f * weight, 0.2f * weight}));
    // Radius 3: the corner lies at sqrt(18) = 4.24, beyond the ring.
    EXPECT_TRUE(pixelNear(makeDiscKernel(3, blue), 0, 0, blueTimes(0.0f), 0.0f));
}

TEST(EffectKernelsTest, PowerKernelWeightsFollowTheirClosedForm)
{
    // Side 5, centre (2, 2), factor 15 / 25 = 0.6. Power 2: distance 0 -> 0.6; 1 -> 0.6^2 * 0.6
    // = 0.216; 2 -> 0.2^2 * 0.6 = 0.024; sqrt(2) -> 0.4343146^2 * 0.6 = 0.1131775; sqrt(8) ->
    // a base below 0, 0. Power 3 at distance 1: 0.6^3 * 0.6 = 0.1296. Side 1: 15, limited to 1.
    const FloatImage kernel = makePowerKernel(5, 2.0f, blue);
    for (const auto& [x, y, weight] :
         {std::tuple{2, 2, 0.6f}, {3, 2, 0.216f}, {2, 0, 0.024f}, {1, 1, 0.1131775f}, {0, 0, 0.0f}})
        EXPECT_TRUE(pixelNear(kernel, x, y, blueTimes(weight)));
    EXPECT_TRUE(pixelNear(makePowerKernel(5, 3.0f, blue), 2, 1, blueTimes(0.1296f)));
    EXPECT_TRUE(pixelNear(makePowerKernel(1, 2.0f, blue), 0, 0, blueTimes(1.0f)));
}

TEST(EffectKernelsTest, EvenPowerKernelIsCentredBetweenPixels)
{
    // Side 4, centre (1.5, 1.5), factor 15 / 16: the middle four at sqrt(0.5) have the base
    // 1 - 0.3535534, squared 0.4178932, weight 0.3917749; (0, 1) and (3, 2) at sqrt(2.5) the base
    // 0.2094306, squared 0.0438611, weight 0.0411198.
    const FloatImage kernel = makePowerKernel(4, 2.0f, blue);
    for (const auto& [x, y, weight] : {std::tuple{1, 1, 0.3917749f}, {2, 2, 0.3917749f}, {2, 1, 0.3917749f},
                                       {0, 1, 0.0411198f}, {3, 2, 0.0411198f}})
        EXPECT_TRUE(pixelNear(kernel, x, y, blueTimes(weight)));
}

TEST(EffectKernelsTest, BadSizesAndPowersGiveTheEmptyKernel)
{
    EXPECT_TRUE(makeDiscKernel(0, blue).isEmpty());
    EXPECT_TRUE(makeDiscKernel(std::numeric_limits<int>::max(), blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(-5, 2.0f, blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(5, -1.0f, blue).isEmpty());
    EXPECT_TRUE(makePowerKernel(5, std::numeric_limits<float>::quiet_NaN(), blue).isEmpty());
}
