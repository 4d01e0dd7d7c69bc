#include "render/effects/Convolution.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace q1framework
{

namespace
{
// Adds coverage times kernel to result, with the kernel's centre pixel on (x, y) of result; the
// kernel's rows and columns are first cut to result's picture.
void spread(FloatImage& result, const FloatImage& kernel, int x, int y, float coverage)
{
    const int left = x - kernel.getWidth() / 2;
    const int top = y - kernel.getHeight() / 2;
    const int firstColumn = std::max(0, -left);
    const int endColumn = std::min(kernel.getWidth(), result.getWidth() - left);
    const int firstRow = std::max(0, -top);
    const int endRow = std::min(kernel.getHeight(), result.getHeight() - top);
    const int count = (endColumn - firstColumn) * FloatImage::channels;
    for (int row = firstRow; row < endRow; ++row)
    {
        const float* weights = kernel.getPixel(firstColumn, row);
        float* sums = result.getPixel(left + firstColumn, top + row);
        for (int index = 0; index < count; ++index)
            sums[index] += coverage * weights[index];
    }
}
}

FloatImage convolve(const FloatImage& source, const FloatImage& kernel, const Point& offset, const FloatImage& top,
                    const Colour& background)
{
    if (source.isEmpty() || kernel.isEmpty())
        return FloatImage();
    if (!top.isEmpty() && top.getBounds() != source.getBounds())
        return FloatImage();
    FloatImage result(source.getWidth(), source.getHeight(), source.getMargin());
    if (result.isEmpty())
        return result;
    // An offset that moves every spread off the picture leaves nothing to add (and would overflow
    // the positions below).
    const bool reaches = std::abs(static_cast<int64_t>(offset.x)) < source.getWidth() + kernel.getWidth()
                         && std::abs(static_cast<int64_t>(offset.y)) < source.getHeight() + kernel.getHeight();
    for (int y = 0; reaches && y < source.getHeight(); ++y)
    {
        const float* pixel = source.getPixel(0, y);
        for (int x = 0; x < source.getWidth(); ++x, pixel += FloatImage::channels)
            if (pixel[3] > 0.0f)
                spread(result, kernel, x + offset.x, y + offset.y, pixel[3]);
    }
    result.limitToPremultiplied();
    result.placeOver(background);
    result.placeUnder(top);
    return result;
}

}  // namespace q1framework
