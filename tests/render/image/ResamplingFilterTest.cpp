#include "render/image/ResamplingFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using q1framework::ResamplingFilter;

TEST(ResamplingFilterTest, TapCountsFollowQualityOrScale)
{
    // Quality below 0: ((truncate(scale * 4) + 4) & ~1), limited to 8..32; otherwise the quality,
    // limited alike, whatever the scale.
    const struct
    {
        float scale;
        int quality, taps;
    } cases[] = {{1.0f, -1, 8},   {2.0f, -1, 12},   {1500.0f / 1100.0f, -1, 8}, {1.5f, -1, 10}, {0.25f, -1, 8},
                 {7.0f, -5, 32},  {1000.0f, -1, 32}, {0.5f, 100, 32},           {3.0f, 2, 8},   {3.0f, 13, 13}};
    for (const auto& each : cases)
        EXPECT_EQ(ResamplingFilter::computeTaps(each.scale, each.quality), each.taps) << each.scale << ", " << each.quality;
    EXPECT_EQ(ResamplingFilter(400, 200, -1).getTaps(), 12);
    EXPECT_FLOAT_EQ(ResamplingFilter(400, 200, -1).getCutoff(), 0.5f);
    EXPECT_FLOAT_EQ(ResamplingFilter(200, 400, -1).getCutoff(), 1.0f);
}

TEST(ResamplingFilterTest, CoefficientsAreTheTruncatedWindowedSinc)
{
    // Scale 1 at fraction 0: only the centre tap (window 1, sinc 1) is 255 * 127; the others sit
    // on zeros of the sinc. Scale 2, 12 taps, cutoff 0.5, worked out in double.
    const ResamplingFilter same(64, 64, -1), half(128, 64, -1);
    for (int tap = 0; tap < 8; ++tap)
        EXPECT_EQ(same.computeCoefficient(0.0f, tap), tap == 4 ? 32385 : 0) << tap;
    const int halving[12] = {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9};
    for (int tap = 0; tap < 12; ++tap)
        EXPECT_EQ(half.computeCoefficient(0.0f, tap), halving[tap]) << tap;

    // Any fraction: within one unit of the formula written another way (the squared raised
    // cosine is sin^4 of half its phase), and tap 0 is cut by the window once the fraction is
    // above 0.
    const double pi = 3.141592653589793;
    for (const ResamplingFilter& filter : {same, half, ResamplingFilter(300, 77, -1), ResamplingFilter(30, 77, 13)})
        for (float frac : {0.1f, 0.25f, 0.5f, 0.8125f, 0.99f})
        {
            EXPECT_EQ(filter.computeCoefficient(frac, 0), 0);
            const int taps = filter.getTaps();
            const double cutoff = filter.getCutoff();
            for (int tap = 0; tap < taps; ++tap)
            {
                const double along = tap - frac, distance = along - taps / 2;
                const double window = along < 0.0 ? 0.0 : std::pow(std::sin(pi * along / taps), 4.0);
                const double sinc = distance == 0.0 ? 1.0 : std::sin(pi * cutoff * distance) / (pi * cutoff * distance);
                EXPECT_LE(std::abs(filter.computeCoefficient(frac, tap) - window * sinc * cutoff * 255.0 * 127.0), 1.0)
                    << taps << " taps, fraction " << frac << ", tap " << tap;
            }
        }
}
