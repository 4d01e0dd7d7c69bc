// boxBlur: single pixels and flat pictures worked out by hand, and the running sums against
// plain window means on random pictures.
#include "render/effects/BoxBlur.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <tuple>

using q1framework::boxBlur;
using q1framework::FloatImage;
using q1framework::Rectangle;

TEST(BoxBlurTest, ASinglePixelBecomesASquareOfItsMean)
{
    // Span 3: the pixel (0.9, 0.45, 0, 0.9) at (3, 3) falls into the 3 by 3 windows of (2..4,
    // 2..4), each getting a ninth: (0.1, 0.05, 0, 0.1). Every other pixel stays 0.
    FloatImage source(7, 7, 1);
    setFloatPixel(source, 3, 3, {0.9f, 0.45f, 0.0f, 0.9f});
    const FloatImage result = boxBlur(source, 3);
    ASSERT_EQ(result.getBounds(), Rectangle(0, 0, 7, 7));
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 7; ++x)
        {
            const bool inside = x >= 2 && x <= 4 && y >= 2 && y <= 4;
            EXPECT_TRUE(pixelNear(result, x, y, inside ? FloatPixel{0.1f, 0.05f, 0.0f, 0.1f} : FloatPixel{0, 0, 0, 0}));
        }
}

TEST(BoxBlurTest, AnEvenSpanReachesOneMorePixelLeftAndUp)
{
    // Span 2: the window of x runs from x - 1 to x, so the pixel at (2, 2) reaches (2..3, 2..3),
    // a quarter each.
    FloatImage source(5, 5, 1);
    setFloatPixel(source, 2, 2, {1, 1, 1, 1});
    const FloatImage result = boxBlur(source, 2);
    for (const auto& [x, y] : {std::pair{2, 2}, {3, 2}, {2, 3}, {3, 3}})
        EXPECT_TRUE(pixelNear(result, x, y, {0.25f, 0.25f, 0.25f, 0.25f}));
    for (const auto& [x, y] : {std::pair{1, 2}, {2, 1}, {4, 3}, {3, 4}, {1, 1}})
        EXPECT_TRUE(pixelNear(result, x, y, {0, 0, 0, 0}));
}

TEST(BoxBlurTest, EdgesFadeAsIfTransparentPixelsLayBeyond)
{
    // A flat picture of 1, span 3: a corner's window holds 2 by 2 of its 9 pixels (4/9), an
    // edge's 2 by 3 (6/9), the inside all 9. Span 5: a corner holds 3 by 3 of 25.
    FloatImage source = makeFilled(5, 5, {1, 1, 1, 1}, 2);
    const FloatImage result = boxBlur(source, 3);
    EXPECT_TRUE(pixelNear(result, 0, 0, {4 / 9.0f, 4 / 9.0f, 4 / 9.0f, 4 / 9.0f}));
    EXPECT_TRUE(pixelNear(result, 2, 4, {6 / 9.0f, 6 / 9.0f, 6 / 9.0f, 6 / 9.0f}));
    EXPECT_TRUE(pixelNear(result, 2, 2, {1, 1, 1, 1}));
    EXPECT_TRUE(pixelNear(boxBlur(source, 5), 4, 0, {0.36f, 0.36f, 0.36f, 0.36f}));
}

TEST(BoxBlurTest, AMarginNarrowerThanHalfTheSpanIsWidenedFirst)
{
    // Span 7 needs a margin of 3; the source has none. A single pixel picture gives 1 / 49.
    FloatImage source = makeFilled(1, 1, {1, 1, 1, 1}, 0);
    const FloatImage result = boxBlur(source, 7);
    EXPECT_EQ(source.getMargin(), 3);
    EXPECT_EQ(result.getMargin(), 3);
    EXPECT_TRUE(pixelNear(source, 0, 0, {1, 1, 1, 1}, 0.0f));
    EXPECT_TRUE(pixelNear(result, 0, 0, {1 / 49.0f, 1 / 49.0f, 1 / 49.0f, 1 / 49.0f}));
}

TEST(BoxBlurTest, RunningSumsEqualPlainWindowMeans)
{
    // Random pictures of a few sizes and spans, odd and even, against the mean of each window
    // summed afresh (in double), reading 0 beyond the picture.
    std::mt19937 random(20240611);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    for (const auto& [width, height, span] : {std::tuple{9, 5, 1}, {9, 5, 2}, {9, 5, 3}, {17, 11, 6}, {6, 13, 8},
                                              {3, 3, 9}})
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
                for (int row = y - span / 2; row < y - span / 2 + span; ++row)
                    for (int column = x - span / 2; column < x - span / 2 + span; ++column)
                        if (row >= 0 && row < height && column >= 0 && column < width)
                            for (int channel = 0; channel < 4; ++channel)
                                sums[channel] += source.getPixel(column, row)[channel];
                const double area = static_cast<double>(span) * span;
                const FloatPixel mean{static_cast<float>(sums[0] / area), static_cast<float>(sums[1] / area),
                                      static_cast<float>(sums[2] / area), static_cast<float>(sums[3] / area)};
                ASSERT_TRUE(pixelNear(result, x, y, mean)) << "size " << width << " by " << height << ", span " << span;
            }
    }
}

TEST(BoxBlurTest, AnEmptySourceOrASpanBelowOneGivesTheEmptyImage)
{
    FloatImage empty;
    EXPECT_TRUE(boxBlur(empty, 3).isEmpty());
    FloatImage source = makeFilled(2, 2, {1, 1, 1, 1});
    EXPECT_TRUE(boxBlur(source, 0).isEmpty());
    EXPECT_TRUE(boxBlur(source, -4).isEmpty());
    // A span whose margin cannot be allocated leaves the source as it was.
    EXPECT_TRUE(boxBlur(source, std::numeric_limits<int>::max()).isEmpty());
    EXPECT_EQ(source.getMargin(), 0);
    EXPECT_TRUE(pixelNear(source, 1, 1, {1, 1, 1, 1}, 0.0f));
}
