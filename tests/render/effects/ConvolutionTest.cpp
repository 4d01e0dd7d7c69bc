// convolve: the spread of a source's coverage by a kernel, its limit, and the compositing with a
// top picture and a background, on pictures small enough to work out by hand.
#include "render/effects/Convolution.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>

using q1framework::Colour;
using q1framework::convolve;
using q1framework::FloatImage;
using q1framework::Point;
using q1framework::Rectangle;

namespace
{
// Pixels of image other than those listed that are not transparent.
int countOthersSet(const FloatImage& image, std::initializer_list<Point> listed)
{
    int count = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            bool isListed = false;
            for (const Point& point : listed)
                isListed = isListed || (point.x == x && point.y == y);
            count += !isListed && readFloatPixel(image, x, y) != FloatPixel{0, 0, 0, 0};
        }
    return count;
}
}

TEST(ConvolutionTest, ADeltaKernelGivesBackAWhiteSource)
{
    // A 1 by 1 white kernel of weight 1 spreads each alpha onto its own pixel only.
    FloatImage source(4, 3, 2);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
        {
            const float alpha = static_cast<float>(x + 4 * y) / 11.0f;
            setFloatPixel(source, x, y, {alpha, alpha, alpha, alpha});
        }
    const FloatImage result = convolve(source, makeFilled(1, 1, {1, 1, 1, 1}), Point(), FloatImage(), Colour());
    ASSERT_EQ(result.getBounds(), source.getBounds());
    EXPECT_EQ(result.getMargin(), 2);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_TRUE(pixelNear(result, x, y, readFloatPixel(source, x, y), 0.0f));
}

TEST(ConvolutionTest, OnlyTheSourcesAlphaIsSpread)
{
    // A reddish source pixel of alpha 0.5 under a blue kernel comes out blue at 0.5.
    const FloatImage source = makeFilled(1, 1, {0.0f, 0.1f, 0.4f, 0.5f});
    const FloatImage result = convolve(source, makeFilled(1, 1, {1, 0, 0, 1}), Point(), FloatImage(), Colour());
    EXPECT_TRUE(pixelNear(result, 0, 0, {0.5f, 0.0f, 0.0f, 0.5f}, 0.0f));
}

TEST(ConvolutionTest, APixelSpreadsTheKernelAroundTheKernelsCentre)
{
    // Kernel 3 by 2, weights 0.1 * (1 + i + 3j) at (i, j); its centre is (3 / 2, 2 / 2) = (1, 1).
    // Source alpha 0.5 at (2, 3): kernel pixel (i, j) lands on (1 + i, 2 + j) with 0.05 * (1 + i + 3j).
    FloatImage kernel(3, 2, 0);
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 3; ++i)
        {
            const float weight = 0.1f * static_cast<float>(1 + i + 3 * j);
            setFloatPixel(kernel, i, j, {weight, 0.0f, 0.0f, weight});
        }
    FloatImage source(6, 6, 0);
    setFloatPixel(source, 2, 3, {0.5f, 0.5f, 0.5f, 0.5f});
    const FloatImage result = convolve(source, kernel, Point(), FloatImage(), Colour());
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 3; ++i)
        {
            const float spread = 0.05f * static_cast<float>(1 + i + 3 * j);
            EXPECT_TRUE(pixelNear(result, 1 + i, 2 + j, {spread, 0.0f, 0.0f, spread}));
        }
    EXPECT_EQ(countOthersSet(result, {{1, 2}, {2, 2}, {3, 2}, {1, 3}, {2, 3}, {3, 3}}), 0);
}

TEST(ConvolutionTest, TheOffsetMovesTheSpreadAndWhatLeavesThePictureIsLost)
{
    // The corner pixel spread by a 3 by 3 kernel of 0.1, moved by (-1, 2): centred on (-1, 2), it
    // covers columns -2 to 0 and rows 1 to 3, of which only column 0 lies in the picture.
    FloatImage source(4, 5, 0);
    setFloatPixel(source, 0, 0, {1, 1, 1, 1});
    const FloatImage kernel = makeFilled(3, 3, {0.1f, 0.1f, 0.1f, 0.1f});
    const FloatImage result = convolve(source, kernel, Point(-1, 2), FloatImage(), Colour());
    for (int y = 1; y <= 3; ++y)
        EXPECT_TRUE(pixelNear(result, 0, y, {0.1f, 0.1f, 0.1f, 0.1f}));
    EXPECT_EQ(countOthersSet(result, {{0, 1}, {0, 2}, {0, 3}}), 0);
    // Offsets far beyond the picture, up to the largest, spread nothing into it.
    for (const Point& offset : {Point(5, 0), Point(0, -7), Point(std::numeric_limits<int>::max(), 0),
                                Point(0, std::numeric_limits<int>::min())})
        EXPECT_EQ(countOthersSet(convolve(source, kernel, offset, FloatImage(), Colour()), {}), 0)
            << offset.x << ", " << offset.y;
}

TEST(ConvolutionTest, SumsBeyondFullCoverageSaturateInTheKernelsColour)
{
    // Three opaque pixels in a row under a kernel (0.1, 0.2, 0.3, 0.4) three wide: the middle
    // pixel gathers three times that, (0.3, 0.6, 0.9, 1.2), scaled back to alpha 1 as
    // (0.25, 0.5, 0.75, 1); the ends gather twice, (0.2, 0.4, 0.6, 0.8), and keep it.
    const FloatImage source = makeFilled(3, 1, {1, 1, 1, 1});
    const FloatImage kernel = makeFilled(3, 1, {0.1f, 0.2f, 0.3f, 0.4f});
    const FloatImage result = convolve(source, kernel, Point(), FloatImage(), Colour());
    EXPECT_TRUE(pixelNear(result, 1, 0, {0.25f, 0.5f, 0.75f, 1.0f}));
    EXPECT_TRUE(pixelNear(result, 0, 0, {0.2f, 0.4f, 0.6f, 0.8f}));
    EXPECT_TRUE(pixelNear(result, 2, 0, {0.2f, 0.4f, 0.6f, 0.8f}));
}

TEST(ConvolutionTest, TheSpreadGoesOverTheBackgroundAndTheTopOverIt)
{
    // Spread (0.5, 0, 0, 0.5) over opaque red (0, 0, 1, 1) is (0.5, 0, 0.5, 1); top
    // (0, 0.2, 0, 0.4) over that, uncovered 0.6: (0.3, 0.2, 0.3, 1).
    const FloatImage source = makeFilled(1, 1, {0.5f, 0.5f, 0.5f, 0.5f});
    const FloatImage top = makeFilled(1, 1, {0.0f, 0.2f, 0.0f, 0.4f});
    const FloatImage result = convolve(source, makeFilled(1, 1, {1, 0, 0, 1}), Point(), top, Colour(255, 0, 0, 255));
    EXPECT_TRUE(pixelNear(result, 0, 0, {0.3f, 0.2f, 0.3f, 1.0f}));
}

TEST(ConvolutionTest, EmptyInputOrATopOfAnotherSizeGivesTheEmptyImage)
{
    const FloatImage source = makeFilled(2, 2, {1, 1, 1, 1});
    const FloatImage kernel = makeFilled(1, 1, {1, 1, 1, 1});
    EXPECT_TRUE(convolve(FloatImage(), kernel, Point(), FloatImage(), Colour()).isEmpty());
    EXPECT_TRUE(convolve(source, FloatImage(), Point(), FloatImage(), Colour()).isEmpty());
    EXPECT_TRUE(convolve(source, kernel, Point(), makeFilled(2, 3, {1, 1, 1, 1}), Colour()).isEmpty());
}
