// convolve: the spread of a source's coverage by a kernel, its saturation, and the compositing
// with a background and a top picture, on pictures small enough to work out by hand.
#include "render/effects/Convolution.h"

#include "FloatPixels.h"

#include <gtest/gtest.h>

#include <limits>

using q1framework::Colour;
using q1framework::convolve;
using q1framework::FloatImage;
using q1framework::Point;

namespace
{
const FloatImage none;

// The sum of every alpha in the picture: with the listed pixels' alphas, it shows that no other
// pixel holds anything.
float alphaSum(const FloatImage& image)
{
    float sum = 0.0f;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            sum += image.getPixel(x, y)[3];
    return sum;
}
}

TEST(ConvolutionTest, ADeltaKernelGivesBackAWhiteSource)
{
    FloatImage source(4, 3, 2);
    for (int index = 0; index < 12; ++index)
    {
        const float alpha = static_cast<float>(index) / 11.0f;
        setFloatPixel(source, index % 4, index / 4, {alpha, alpha, alpha, alpha});
    }
    const FloatImage result = convolve(source, makeFilled(1, 1, {1, 1, 1, 1}), Point(), none, Colour());
    for (int index = 0; index < 12; ++index)
        EXPECT_TRUE(pixelNear(result, index % 4, index / 4, readFloatPixel(source, index % 4, index / 4), 0.0f));
}

TEST(ConvolutionTest, APixelSpreadsItsAlphaInTheKernelsColourAroundTheKernelsCentre)
{
    // Kernel 3 by 2 in blue, weights 0.1 * (1 + i + 3j) at (i, j); its centre is (3 / 2, 2 / 2)
    // = (1, 1). The reddish source pixel of alpha 0.5 at (2, 3) puts kernel pixel (i, j) on
    // (1 + i, 2 + j), blue, weighing 0.05 * (1 + i + 3j); the six add up to 1.05.
    FloatImage kernel(3, 2, 0);
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 3; ++i)
            setFloatPixel(kernel, i, j, {0.1f * (1 + i + 3 * j), 0.0f, 0.0f, 0.1f * (1 + i + 3 * j)});
    FloatImage source(6, 6, 0);
    setFloatPixel(source, 2, 3, {0.0f, 0.1f, 0.4f, 0.5f});
    const FloatImage result = convolve(source, kernel, Point(), none, Colour());
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 3; ++i)
            EXPECT_TRUE(pixelNear(result, 1 + i, 2 + j, {0.05f * (1 + i + 3 * j), 0.0f, 0.0f, 0.05f * (1 + i + 3 * j)}));
    EXPECT_NEAR(alphaSum(result), 1.05f, 1.0e-6f);
}

TEST(ConvolutionTest, TheOffsetMovesTheSpreadAndWhatLeavesThePictureIsLost)
{
    // The corner pixel spread by a 3 by 3 kernel of 0.1 and moved by (-1, 2) covers columns -2
    // to 0 and rows 1 to 3: only column 0 lies in the picture.
    FloatImage source(4, 5, 0);
    setFloatPixel(source, 0, 0, {1, 1, 1, 1});
    const FloatImage kernel = makeFilled(3, 3, {0.1f, 0.1f, 0.1f, 0.1f});
    const FloatImage result = convolve(source, kernel, Point(-1, 2), none, Colour());
    for (int y = 1; y <= 3; ++y)
        EXPECT_TRUE(pixelNear(result, 0, y, {0.1f, 0.1f, 0.1f, 0.1f}));
    EXPECT_NEAR(alphaSum(result), 0.3f, 1.0e-6f);
    for (const Point& offset : {Point(5, 0), Point(std::numeric_limits<int>::max(), 0), Point(0, std::numeric_limits<int>::min())})
        EXPECT_EQ(alphaSum(convolve(source, kernel, offset, none, Colour())), 0.0f) << offset.x << ", " << offset.y;
}

TEST(ConvolutionTest, SumsBeyondFullCoverageSaturateInTheKernelsColour)
{
    // Three opaque pixels in a row under a kernel (0.1, 0.2, 0.3, 0.4) three wide: the middle
    // pixel gathers (0.3, 0.6, 0.9, 1.2), scaled back to alpha 1 as (0.25, 0.5, 0.75, 1); the
    // ends gather (0.2, 0.4, 0.6, 0.8) and keep it.
    const FloatImage source = makeFilled(3, 1, {1, 1, 1, 1});
    const FloatImage result = convolve(source, makeFilled(3, 1, {0.1f, 0.2f, 0.3f, 0.4f}), Point(), none, Colour());
    EXPECT_TRUE(pixelNear(result, 1, 0, {0.25f, 0.5f, 0.75f, 1.0f}));
    EXPECT_TRUE(pixelNear(result, 0, 0, {0.2f, 0.4f, 0.6f, 0.8f}));
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
    EXPECT_TRUE(convolve(none, kernel, Point(), none, Colour()).isEmpty());
    EXPECT_TRUE(convolve(source, none, Point(), none, Colour()).isEmpty());
    EXPECT_TRUE(convolve(source, kernel, Point(), makeFilled(2, 3, {1, 1, 1, 1}), Colour()).isEmpty());
}
