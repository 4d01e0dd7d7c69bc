// Pixel comparison of two images: differsAt and computeDelta.
#include "media/image/Image.h"

#include "media/image/ImageDelta.h"
#include "media/image/InternalImage.h"

#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
bool pixelsDiffer(const uint8_t* first, const uint8_t* second, int tolerance)
{
    for (int channel = 0; channel < 4; ++channel)
        if (std::abs(first[channel] - second[channel]) > tolerance)
            return true;
    return false;
}
}

bool Image::differsAt(const Image& other, const Point& position, int tolerance) const
{
    return pixelsDiffer(getPixelAt(position), other.getPixelAt(position), tolerance);
}

ImageDelta* Image::computeDelta(const Image& other, int tolerance) const
{
    if (internal == nullptr || getSize() != other.getSize())
        return nullptr;
    auto* delta = new ImageDelta;
    if (internal->pixels == nullptr || other.internal->pixels == nullptr)
        return delta;
    for (int y = 0; y < internal->height; ++y)
    {
        const uint8_t* own = getLine(static_cast<unsigned>(y));
        const uint8_t* others = other.getLine(static_cast<unsigned>(y));
        for (int x = 0; x < internal->width; ++x)
        {
            if (!pixelsDiffer(own + x * 4, others + x * 4, tolerance))
                continue;
            ImageDelta::Entry entry;
            entry.position = static_cast<uint32_t>(y) << 16 | (static_cast<uint32_t>(x) & 0xFFFF);
            std::memcpy(&entry.pixel, others + x * 4, 4);
            delta->entries.add(entry);
        }
    }
    return delta;
}

}  // namespace q1framework
