#include "render/effects/FloatImage.h"

#include "foundation/runtime/AlignedAllocation.h"
#include "media/image/Image.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace q1framework
{

namespace
{
constexpr int blockAlignment = 16;

// value limited to 0..high; NaN gives 0.
float limit(float value, float high)
{
    return value > 0.0f ? std::min(value, high) : 0.0f;
}

// A channel from 0..1 to the nearest byte, limited first.
uint8_t toByte(float value)
{
    return static_cast<uint8_t>(limit(value, 1.0f) * 255.0f + 0.5f);
}
}

FloatImage::FloatImage(int newWidth, int newHeight, int newMargin)
{
    if (newWidth < 1 || newHeight < 1 || newMargin < 0)
        return;
    const int64_t wideStride = (static_cast<int64_t>(newWidth) + 2 * static_cast<int64_t>(newMargin)) * channels;
    const int64_t lines = static_cast<int64_t>(newHeight) + 2 * static_cast<int64_t>(newMargin);
    if (wideStride > std::numeric_limits<int32_t>::max()
        || lines * wideStride > std::numeric_limits<uint32_t>::max() / static_cast<int64_t>(sizeof(float)))
        return;
    const auto bytes = static_cast<unsigned>(lines * wideStride * static_cast<int64_t>(sizeof(float)));
    block = static_cast<float*>(alignedCalloc(bytes, blockAlignment));
    if (block == nullptr)
        return;
    width = newWidth;
    height = newHeight;
    margin = newMargin;
    stride = static_cast<int>(wideStride);
    origin = block + static_cast<ptrdiff_t>(margin) * stride + margin * channels;
}

FloatImage::FloatImage(FloatImage&& other) noexcept
    : block(std::exchange(other.block, nullptr)), origin(std::exchange(other.origin, nullptr)),
      width(std::exchange(other.width, 0)), height(std::exchange(other.height, 0)),
      margin(std::exchange(other.margin, 0)), stride(std::exchange(other.stride, 0))
{
}

FloatImage& FloatImage::operator=(FloatImage&& other) noexcept
{
    if (this != &other)
    {
        alignedFree(block);
        block = std::exchange(other.block, nullptr);
        origin = std::exchange(other.origin, nullptr);
        width = std::exchange(other.width, 0);
        height = std::exchange(other.height, 0);
        margin = std::exchange(other.margin, 0);
        stride = std::exchange(other.stride, 0);
    }
    return *this;
}

FloatImage::~FloatImage()
{
    alignedFree(block);
}

FloatImage FloatImage::fromImage(const Image& image, int margin)
{
    if (image.isEmpty() || image.getData() == nullptr)
        return FloatImage();
    FloatImage result(image.getWidth(), image.getHeight(), std::max(margin, 0));
    for (int y = 0; y < result.height; ++y)
    {
        const uint8_t* from = image.getLine(static_cast<unsigned>(y));
        float* to = result.getPixel(0, y);
        for (int index = 0; index < result.width * channels; ++index)
            to[index] = from[index] / 255.0f;
    }
    return result;
}

Image FloatImage::toImage() const
{
    if (isEmpty())
        return Image();
    Image image(width, height, false);
    if (image.getWidth() != width)
        return Image();  // not allocated
    for (int y = 0; y < height; ++y)
    {
        const float* from = getPixel(0, y);
        uint8_t* to = image.getLine(static_cast<unsigned>(y));
        for (int x = 0; x < width; ++x, from += channels, to += 4)
        {
            const uint8_t alpha = toByte(from[3]);
            for (int channel = 0; channel < 3; ++channel)
                to[channel] = std::min(toByte(from[channel]), alpha);
            to[3] = alpha;
        }
    }
    return image;
}

FloatImage::Pixel FloatImage::premultiplied(const Colour& colour)
{
    const float alpha = colour.getAlpha() / 255.0f;
    return {colour.getBlue() / 255.0f * alpha, colour.getGreen() / 255.0f * alpha, colour.getRed() / 255.0f * alpha,
            alpha};
}

bool FloatImage::setMargin(int newMargin)
{
    if (isEmpty())
        return true;
    FloatImage copy(width, height, std::max(newMargin, 0));
    if (copy.isEmpty())
        return false;
    for (int y = 0; y < height; ++y)
        std::memcpy(copy.getPixel(0, y), getPixel(0, y), static_cast<size_t>(width) * channels * sizeof(float));
    *this = std::move(copy);
    return true;
}

void FloatImage::placeOver(const Colour& background)
{
    const Pixel under = premultiplied(background);
    for (int y = 0; y < height; ++y)
    {
        float* pixel = getPixel(0, y);
        for (int x = 0; x < width; ++x, pixel += channels)
        {
            const float uncovered = 1.0f - pixel[3];
            for (int channel = 0; channel < channels; ++channel)
                pixel[channel] += under[static_cast<size_t>(channel)] * uncovered;
        }
    }
}

void FloatImage::placeUnder(const FloatImage& top)
{
    if (top.isEmpty() || top.width != width || top.height != height)
        return;
    for (int y = 0; y < height; ++y)
    {
        float* pixel = getPixel(0, y);
        const float* over = top.getPixel(0, y);
        for (int x = 0; x < width; ++x, pixel += channels, over += channels)
        {
            const float uncovered = 1.0f - over[3];
            for (int channel = 0; channel < channels; ++channel)
                pixel[channel] = over[channel] + pixel[channel] * uncovered;
        }
    }
}

void FloatImage::limitToPremultiplied()
{
    for (int y = 0; y < height; ++y)
    {
        float* pixel = getPixel(0, y);
        for (int x = 0; x < width; ++x, pixel += channels)
        {
            if (pixel[3] > 1.0f)
            {
                // Scaled as a whole, so that a colour spread past full coverage keeps its hue
                // rather than every channel running into 1 (white).
                const float scale = 1.0f / pixel[3];
                for (int channel = 0; channel < channels; ++channel)
                    pixel[channel] *= scale;
            }
            pixel[3] = limit(pixel[3], 1.0f);
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = limit(pixel[channel], pixel[3]);
        }
    }
}

}  // namespace q1framework
