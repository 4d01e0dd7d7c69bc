#include "render/image/ResamplingFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using q1framework::ResamplingFilter;

namespace
{
// The coefficient written another way: the squared raised-cosine window is sin^4 of half its
// phase, pi * (tap - frac) / taps.
double coefficientByDefinition(int taps, double cutoff, double frac, int tap)
{
    const double along = tap - frac;
    const double window = along < 0.0 ? 0.0 : std::pow(std::sin(3.141592653589793 * along / taps), 4.0);
    const double distance = along - taps / 2;
    const double sinc = distance == 0.0 ? 1.0 : std::sin(3.141592653589793 * cutoff * distance) / (3.141592653589793 * cutoff * distance);
    return window * sinc * cutoff * 255.0 * 127.0;
}
}

TEST(ResamplingFilterTest, TapCountsFollowQualityOrScale)
{
    // Quality below 0: ((truncate(scale * 4) + 4) & ~1), limited to 8..32.
    EXPECT_EQ(ResamplingFilter::computeTaps(1.0f, -1), 8);          // 4 + 4
    EXPECT_EQ(ResamplingFilter::computeTaps(2.0f, -1), 12);         // 8 + 4
    EXPECT_EQ(ResamplingFilter::computeTaps(1500.0f / 1100.0f, -1), 8);  // 5 + 4 = 9, even: 8
    EXPECT_EQ(ResamplingFilter::computeTaps(1.5f, -1), 10);
    EXPECT_EQ(ResamplingFilter::computeTaps(0.25f, -1), 8);         // 1 + 4 = 5 -> 4, at least 8
    EXPECT_EQ(ResamplingFilter::computeTaps(7.0f, -5), 32);
    EXPECT_EQ(ResamplingFilter::computeTaps(1000.0f, -1), 32);
    // Otherwise the quality itself, limited alike, for both axes whatever the scale.
    EXPECT_EQ(ResamplingFilter::computeTaps(0.5f, 100), 32);
    EXPECT_EQ(ResamplingFilter::computeTaps(3.0f, 2), 8);
    EXPECT_EQ(ResamplingFilter::computeTaps(3.0f, 13), 13);
    EXPECT_EQ(ResamplingFilter(100, 10, 100).getTaps(), 32);
    EXPECT_EQ(ResamplingFilter(10, 100, 2).getTaps(), 8);
    EXPECT_EQ(ResamplingFilter(400, 200, -1).getTaps(), 12);
    EXPECT_FLOAT_EQ(ResamplingFilter(400, 200, -1).getCutoff(), 0.5f);
    EXPECT_FLOAT_EQ(ResamplingFilter(200, 400, -1).getCutoff(), 1.0f);
}

TEST(ResamplingFilterTest, CoefficientsAreTheTruncatedWindowedSinc)
{
    // Scale 1 at fraction 0: only the centre tap (window 1, sinc 1) is 255 * 127; the others
    // sit on zeros of the sinc.
    const ResamplingFilter same(64, 64, -1);
    for (int tap = 0; tap < 8; ++tap)
        EXPECT_EQ(same.computeCoefficient(0.0f, tap), tap == 4 ? 32385 : 0) << tap;

    // Scale 2, 12 taps, cutoff 0.5, worked out in double:
    // {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9}.
    const ResamplingFilter half(128, 64, -1);
    const int expected[12] = {0, 9, 0, -859, 0, 8973, 16192, 8973, 0, -859, 0, 9};
    for (int tap = 0; tap < 12; ++tap)
        EXPECT_EQ(half.computeCoefficient(0.0f, tap), expected[tap]) << tap;

    // Any fraction: within one unit of the definition (truncation of nearly equal doubles), and
    // tap 0 is cut by the window once the fraction is above 0.
    for (const ResamplingFilter& filter : {same, half, ResamplingFilter(300, 77, -1), ResamplingFilter(30, 77, 13)})
        for (float frac : {0.1f, 0.25f, 0.5f, 0.8125f, 0.99f})
        {
            EXPECT_EQ(filter.computeCoefficient(frac, 0), 0);
            for (int tap = 0; tap < filter.getTaps(); ++tap)
                EXPECT_LE(std::abs(filter.computeCoefficient(frac, tap)
                                   - coefficientByDefinition(filter.getTaps(), filter.getCutoff(), frac, tap)),
                          1.0)
                    << filter.getTaps() << " taps, fraction " << frac << ", tap " << tap;
        }
}

TEST(ResamplingFilterTest, ARunAccumulatesItsPositionFromItsFirstOutput)
{
    // Scale 1.5, 10 taps (half 5). From output 3: positions 4.5, 6, 7.5, first source pixels
    // 4 - 5, 6 - 5, 7 - 5; coefficients at fractions 0.5, 0, 0.5.
    const ResamplingFilter filter(150, 100, -1);
    ASSERT_EQ(filter.getTaps(), 10);
    std::vector<int32_t> starts;
    std::vector<int16_t> coefficients;
    filter.computeRun(3, 3, 12, 4, starts, coefficients);
    EXPECT_EQ(starts, (std::vector<int32_t>{-1, 1, 2}));
    ASSERT_EQ(coefficients.size(), 3u * 12 * 4);
    const float fractions[3] = {0.5f, 0.0f, 0.5f};
    for (int output = 0; output < 3; ++output)
        for (int tap = 0; tap < 12; ++tap)
            for (int copy = 0; copy < 4; ++copy)
            {
                const int16_t expected = tap < 10 ? filter.computeCoefficient(fractions[output], tap) : 0;
                EXPECT_EQ(coefficients[static_cast<size_t>((output * 12 + tap) * 4 + copy)], expected);
            }
}
