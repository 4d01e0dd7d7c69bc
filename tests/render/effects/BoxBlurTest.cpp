// boxBlur: the running sums against window means summed afresh on random pictures, the margin it
// needs, and its refusals.
#include "render/effects/BoxBlur.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <tuple>

using q1framework::boxBlur;
using q1framework::FloatImage;

TEST(BoxBlurTest, RunningSumsEqualPlainWindowMeans)
{
    // Pixel (x, y) is the mean of the span by span pixels from (x - span / 2, y - span / 2),
    // 0 beyond the picture: odd and even spans, and a span wider than the picture.
    std::mt19937 random(20240611);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    for (const auto& [width, height, span] : {std::tuple{9, 5, 1}, {9, 5, 2}, {17, 11, 3}, {6, 13, 8}, {3, 3, 9}})
    {
        FloatImage source(width, height, 0);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                setFloatPixel(source, x, y, {value(random), value(random), value(random), value(random)});
        const FloatImage result = boxBlur(source, span);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
            {
                double sums[4] = {};
                for (int row = std::max(y - span / 2, 0); row < std::min(y - span / 2 + span, height); ++row)
                    for (int column = std::max(x - span / 2, 0); column < std::min(x - span / 2 + span, width); ++column)
                        for (int channel = 0; channel < 4; ++channel)
                            sums[channel] += source.getPixel(column, row)[channel];
                FloatPixel mean;
                for (size_t channel = 0; channel < 4; ++channel)
                    mean[channel] = static_cast<float>(sums[channel] / (span * span));
                ASSERT_TRUE(pixelNear(result, x, y, mean)) << width << " by " << height << ", span " << span;
            }
    }
}

TEST(BoxBlurTest, AMarginNarrowerThanHalfTheSpanIsWidenedFirst)
{
    // Span 7 reads 3 pixels past the edges; the one-pixel source has no margin: 1 / 49.
    FloatImage source = makeFilled(1, 1, {1, 1, 1, 1});
    const FloatImage result = boxBlur(source, 7);
    EXPECT_EQ(source.getMargin(), 3);
    EXPECT_TRUE(pixelNear(source, 0, 0, {1, 1, 1, 1}, 0.0f));
    EXPECT_TRUE(pixelNear(result, 0, 0, {1 / 49.0f, 1 / 49.0f, 1 / 49.0f, 1 / 49.0f}));
}

TEST(BoxBlurTest, AnEmptySourceOrABadSpanGivesTheEmptyImage)
{
    FloatImage empty;
    EXPECT_TRUE(boxBlur(empty, 3).isEmpty());
    FloatImage source = makeFilled(2, 2, {1, 1, 1, 1});
    EXPECT_TRUE(boxBlur(source, 0).isEmpty());
    // A margin of half this span cannot be had; the source stays as it was.
    EXPECT_TRUE(boxBlur(source, std::numeric_limits<int>::max()).isEmpty());
    EXPECT_EQ(source.getMargin(), 0);
}
