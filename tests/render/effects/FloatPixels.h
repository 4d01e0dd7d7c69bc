#pragma once

#include "render/effects/FloatImage.h"

#include <gtest/gtest.h>

#include <cmath>

// Helpers of the image effects' tests: float pixels in the channel order of FloatImage (blue,
// green, red, alpha).
using FloatPixel = q1framework::FloatImage::Pixel;

// Within this of a hand-worked value: the effects compute in float, and sums of a few floats
// carry a few units of their last place.
constexpr float floatTolerance = 1.0e-6f;

inline FloatPixel readFloatPixel(const q1framework::FloatImage& image, int x, int y)
{
    const float* pixel = image.getPixel(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

inline void setFloatPixel(q1framework::FloatImage& image, int x, int y, const FloatPixel& value)
{
    float* pixel = image.getPixel(x, y);
    for (int channel = 0; channel < 4; ++channel)
        pixel[channel] = value[static_cast<size_t>(channel)];
}

// Whether every channel of pixel (x, y) lies within tolerance of expected.
inline testing::AssertionResult pixelNear(const q1framework::FloatImage& image, int x, int y,
                                          const FloatPixel& expected, float tolerance = floatTolerance)
{
    const FloatPixel actual = readFloatPixel(image, x, y);
    for (size_t channel = 0; channel < 4; ++channel)
        if (!(std::fabs(actual[channel] - expected[channel]) <= tolerance))
            return testing::AssertionFailure()
                   << "pixel " << x << ", " << y << " is (" << actual[0] << ", " << actual[1] << ", " << actual[2]
                   << ", " << actual[3] << "), expected (" << expected[0] << ", " << expected[1] << ", "
                   << expected[2] << ", " << expected[3] << ")";
    return testing::AssertionSuccess();
}

// A picture of width by height, margin 0 unless given, every pixel value.
inline q1framework::FloatImage makeFilled(int width, int height, const FloatPixel& value, int margin = 0)
{
    q1framework::FloatImage image(width, height, margin);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            setFloatPixel(image, x, y, value);
    return image;
}
