#include "render/image/ImageScaling.h"

#include "render/image/ImageResampler.h"

#include <cstring>

namespace q1framework
{

Image resampleImage(const Image& source, Image& destination, const Rectangle* rectangles, int count, int quality)
{
    ImageResampler resampler;
    return resampler.resample(source, destination, rectangles, count, quality);
}

Image resized(const Image& image, const Point& size, int quality)
{
    if (image.isEmpty() || size.x < 1 || size.y < 1)
        return Image();
    Image result(size, false, Image::defaultMargin);
    const Rectangle whole = result.getBounds();
    return resampleImage(image, result, &whole, 1, quality);
}

Image getScaled(const Image& image, int width, int height, bool forceCopy)
{
    if (image.isEmpty())
        return Image();
    if (image.getSize() == Point(width, height))
        return forceCopy ? image.duplicate() : image;
    return resized(image, Point(width, height), 8);
}

Image getSubImage(const Image& image, const Rectangle& area)
{
    const Rectangle part = area.getIntersection(image.getBounds());
    if (part.isEmpty() || image.getData() == nullptr)
        return Image();
    Image result(part.getSize(), true, Image::defaultMargin);
    if (result.isEmpty())
        return Image();
    for (int row = 0; row < part.h; ++row)
        std::memcpy(result.getLine(static_cast<unsigned>(row)), image.getPixelPointer(part.x, part.y + row),
                    static_cast<size_t>(part.w) * 4);
    return result;
}

}  // namespace q1framework
