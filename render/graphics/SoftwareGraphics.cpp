// SoftwareGraphics: construction, origin and clip, single pixels and the fills.
#include "render/graphics/SoftwareGraphics.h"

#include "media/image/Image.h"
#include "render/graphics/ColourWords.h"
#include "render/kernels/PixelArithmetic.h"
#include "render/kernels/PixelKernels.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace q1framework
{

SoftwareGraphics::SoftwareGraphics(uint8_t* pixelData, int bufferWidth, int bufferHeight, int bufferStride)
    : width(std::max(bufferWidth, 0)), height(std::max(bufferHeight, 0)), stride(bufferStride), pixels(pixelData),
      font(Font::getFallback())
{
    if (pixels == nullptr)
        width = height = 0;
    setClipInBuffer(Rectangle(0, 0, width, height));
}

SoftwareGraphics::SoftwareGraphics(const Image& image)
    : SoftwareGraphics(image.isEmpty() ? nullptr : image.getPixelPointer(0, 0), image.getWidth(), image.getHeight(),
                       image.getStride())
{
}

void SoftwareGraphics::translate(int dx, int dy)
{
    originX += dx;
    originY += dy;
}

void SoftwareGraphics::setClip(const Rectangle& area, bool relative)
{
    setClipInBuffer(relative ? area.translated(getOrigin()) : area);
}

Rectangle SoftwareGraphics::getClip(bool relative) const
{
    return relative ? clip.translated(Point() - getOrigin()) : clip;
}

Rectangle SoftwareGraphics::intersectClip(const Rectangle& area, bool relative)
{
    const Rectangle old = getClip(relative);
    setClipInBuffer(clip.getIntersection(relative ? area.translated(getOrigin()) : area));
    return old;
}

void SoftwareGraphics::setClipInBuffer(const Rectangle& area)
{
    clip = area;
    drawable = area.getIntersection(Rectangle(0, 0, width, height));
}

uint8_t* SoftwareGraphics::getPixels(int* strideOut, bool atOrigin) const
{
    if (strideOut != nullptr)
        *strideOut = stride;
    return atOrigin ? pixelAddress(originX, originY) : pixels;
}

uint8_t* SoftwareGraphics::pixelAddress(int x, int y) const
{
    return pixels + static_cast<ptrdiff_t>(y) * stride + static_cast<ptrdiff_t>(x) * 4;
}

Rectangle SoftwareGraphics::toDrawable(const Rectangle& area) const
{
    return area.translated(getOrigin()).getIntersection(drawable);
}

void SoftwareGraphics::blendStraightAt(int x, int y, const Colour& colour, int alpha)
{
    uint8_t* pixel = pixelAddress(x, y);
    if (alpha == 255)
    {
        const uint32_t word = ColourWords::opaque(colour);
        std::memcpy(pixel, &word, 4);
        return;
    }
    uint8_t addend[4];
    PixelArithmetic::wordToBytes(ColourWords::straightAddend(colour, alpha), addend);
    PixelArithmetic::blendOver(pixel, addend, alpha);
}

void SoftwareGraphics::fillWord(const Rectangle& bufferArea, uint32_t word)
{
    for (int y = bufferArea.y; y < bufferArea.getBottom(); ++y)
    {
        uint8_t* row = pixelAddress(bufferArea.x, y);
        for (int x = 0; x < bufferArea.w; ++x)
            std::memcpy(row + x * 4, &word, 4);
    }
}

void SoftwareGraphics::blendWord(const Rectangle& bufferArea, uint32_t word)
{
    const PixelKernels& kernels = PixelKernels::getBest();
    for (int y = bufferArea.y; y < bufferArea.getBottom(); ++y)
        kernels.blendWord(pixelAddress(bufferArea.x, y), bufferArea.w, word);
}

void SoftwareGraphics::blendPixel(int x, int y, const Colour& colour)
{
    const Point position(x + originX, y + originY);
    if (drawable.contains(position))
        blendStraightAt(position.x, position.y, colour, colour.getAlpha());
}

void SoftwareGraphics::blendWhite(int x, int y, float alpha)
{
    // Beyond the range of int (or not a number) the truncation has no value: nothing is drawn.
    const float scaled = alpha * 255.0f;
    if (!(scaled > -2.0e9f && scaled < 2.0e9f))
        return;
    blendPixel(x, y, Colour(255, 255, 255, static_cast<int>(scaled) & 255));
}

void SoftwareGraphics::drawPoints(const Array<PlottedPoint>& points, float pointScale)
{
    for (const PlottedPoint& point : points)
    {
        const auto x = static_cast<int16_t>(static_cast<int>(point.x * static_cast<double>(pointScale)));
        const auto y = static_cast<int16_t>(static_cast<int>(point.y * static_cast<double>(pointScale)));
        const Point position(x - originX, y - originY);
        if (drawable.contains(position))
            std::memcpy(pixelAddress(position.x, position.y), &point.pixel, 4);
    }
}

void SoftwareGraphics::fillAll(Colour colour, bool blend)
{
    fillRect(getClip(true), colour, blend);
}

void SoftwareGraphics::fillRect(const Rectangle& area, Colour& colour, bool blend)
{
    const Rectangle target = toDrawable(area);
    if (target.isEmpty())
        return;
    const int alpha = colour.getAlpha();
    if (!blend || alpha == 255)
    {
        colour.premultiply();
        fillWord(target, ColourWords::packed(colour));
        return;
    }
    if (alpha == 0)
        return;
    blendWord(target, ColourWords::straightAddend(colour, alpha));
}

void SoftwareGraphics::fillCheckerboard(const Rectangle& area, Colour first, Colour second, int cellSize)
{
    const Rectangle target = toDrawable(area);
    if (target.isEmpty() || cellSize < 1)
        return;
    first.premultiply();
    second.premultiply();
    const uint32_t words[2] = {ColourWords::packed(first), ColourWords::packed(second)};
    const PixelKernels& kernels = PixelKernels::getBest();
    for (int y = target.y; y < target.getBottom(); ++y)
    {
        // A run of the same cell lasts up to the next multiple of cellSize in x.
        for (int x = target.x; x < target.getRight();)
        {
            const int runEnd = std::min(target.getRight(), (x / cellSize + 1) * cellSize);
            kernels.blendWord(pixelAddress(x, y), runEnd - x, words[((y / cellSize) ^ (x / cellSize)) & 1]);
            x = runEnd;
        }
    }
}

void SoftwareGraphics::fillGradient(const Rectangle& area, Colour top, Colour bottom, int mode)
{
    const Rectangle whole = area.translated(getOrigin());
    const Rectangle target = whole.getIntersection(drawable);
    if (whole.isEmpty() || target.isEmpty())
        return;
    // Alpha, red, green, blue in 16.16 fixed point, each with the running sum of its fractions:
    // bit 16 of that sum carries one unit into the row's channel, which breaks up the bands.
    const int topChannels[4] = {top.getAlpha(), top.getRed(), top.getGreen(), top.getBlue()};
    const int bottomChannels[4] = {bottom.getAlpha(), bottom.getRed(), bottom.getGreen(), bottom.getBlue()};
    int32_t values[4];
    int32_t steps[4];
    int32_t fractionSums[4] = {0, 0, 0, 0};
    for (int channel = 0; channel < 4; ++channel)
    {
        values[channel] = topChannels[channel] << 16;
        steps[channel] = ((bottomChannels[channel] << 16) - (topChannels[channel] << 16)) / whole.h;
    }
    const PixelKernels& kernels = PixelKernels::getBest();
    for (int y = whole.y; y < target.getBottom(); ++y)
    {
        uint8_t row[4];  // alpha, red, green, blue of this row
        for (int channel = 0; channel < 4; ++channel)
        {
            row[channel] = static_cast<uint8_t>((values[channel] + (fractionSums[channel] & 0x10000)) >> 16);
            fractionSums[channel] += values[channel] & 0xFFFF;
            values[channel] += steps[channel];
        }
        if (y < target.y)
            continue;
        const Colour colour(row[1], row[2], row[3], row[0]);
        if (mode != 1)
            tintRow(y, target.x, target.getRight(), row);
        else if (row[0] == 255)
            fillWord(Rectangle(target.x, y, target.w, 1), ColourWords::opaque(colour));
        else if (row[0] != 0)
            kernels.blendWord(pixelAddress(target.x, y), target.w, ColourWords::straightAddend(colour, row[0]));
    }
}

void SoftwareGraphics::tintRow(int y, int left, int right, const uint8_t channels[4])
{
    const int alpha = channels[0];
    // The row's colour premultiplied with rounding, in pixel byte order (blue, green, red).
    const int tint[3] = {(channels[3] * alpha + 255) >> 8, (channels[2] * alpha + 255) >> 8,
                         (channels[1] * alpha + 255) >> 8};
    uint8_t* pixel = pixelAddress(left, y);
    for (int x = left; x < right; ++x, pixel += 4)
    {
        const int oldAlpha = pixel[3];
        const int coverage = (oldAlpha * alpha + 255) >> 8;
        const int inverse = 256 - (coverage & 255);
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<uint8_t>((pixel[channel] * inverse >> 8) + ((tint[channel] * pixel[channel] + 255) >> 8));
        pixel[3] = static_cast<uint8_t>((inverse * oldAlpha >> 8) + coverage);
    }
}

}  // namespace q1framework
