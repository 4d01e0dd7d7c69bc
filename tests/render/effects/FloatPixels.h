#pragma once

#include "render/effects/FloatImage.h"

#include <gtest/gtest.h>

#include <cmath>

// Helpers of the image effects' tests: float pixels in the channel order of FloatImage (blue,
// green, red, alpha).
using FloatPixel = q1framework::FloatImage::Pixel;

inline FloatPixel readFloatPixel(const q1framework::FloatImage& image, int x, int y)
{
    const float* pixel = image.getPixel(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

inline void setFloatPixel(q1framework::FloatImage& image, int x, int y, const FloatPixel& value)
{
    for (size_t channel = 0; channel < 4; ++channel)
        image.getPixel(x, y)[channel] = value[channel];
}

// Whether every channel of pixel (x, y) lies within tolerance of expected. The default allows for
// sums of a few floats, a few units of their last place.
inline testing::AssertionResult pixelNear(const q1framework::FloatImage& image, int x, int y,
                                          const FloatPixel& expected, float tolerance = 1.0e-6f)
{
    const FloatPixel actual = readFloatPixel(image, x, y);
    for (size_t channel = 0; channel < 4; ++channel)
        if (!(std::fabs(actual[channel] - expected[channel]) <= tolerance))
            return testing::AssertionFailure() << "pixel " << x << ", " << y << " channel " << channel << " is "
                                               << actual[channel] << ", expected " << expected[channel];
    return testing::AssertionSuccess();
}

// A picture of width by height, every pixel value.
inline q1framework::FloatImage makeFilled(int width, int height, const FloatPixel& value, int margin = 0)
{
    q1framework::FloatImage image(width, height, margin);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            setFloatPixel(image, x, y, value);
    return image;
}
