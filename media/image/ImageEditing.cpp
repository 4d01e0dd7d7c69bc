// Operations that change an image's pixels in place.
#include "media/image/Image.h"

#include "media/image/InternalImage.h"

#include <cstring>

namespace q1framework
{

namespace
{
// Calls change(pixel) for the four bytes of every picture pixel.
template <typename Change>
void forEachPixel(Image::InternalImage* image, Change change)
{
    if (image == nullptr || image->pixels == nullptr)
        return;
    for (int32_t y = 0; y < image->height; ++y)
    {
        uint8_t* pixel = image->pixels + static_cast<size_t>(y) * image->stride;
        for (int32_t x = 0; x < image->width; ++x, pixel += 4)
            change(pixel);
    }
}
}

void Image::fill(int red, int green, int blue, int alpha)
{
    if (internal == nullptr || internal->pixels == nullptr)
        return;
    if (red == green && green == blue && blue == alpha)
    {
        for (int32_t y = 0; y < internal->height; ++y)
            std::memset(getLine(static_cast<unsigned>(y)), red, static_cast<size_t>(internal->width) * 4);
        return;
    }
    const uint8_t packed[4] = {static_cast<uint8_t>(blue), static_cast<uint8_t>(green), static_cast<uint8_t>(red),
                               static_cast<uint8_t>(alpha)};
    forEachPixel(internal, [&packed](uint8_t* pixel) { std::memcpy(pixel, packed, 4); });
}

void Image::clearRect(const Rectangle& area)
{
    const Rectangle cleared = area.getIntersection(getBounds());
    if (cleared.isEmpty() || internal->pixels == nullptr)
        return;
    for (int32_t y = cleared.y; y < cleared.getBottom(); ++y)
        std::memset(getPixelPointer(cleared.x, y), 0, static_cast<size_t>(cleared.w) * 4);
}

void Image::orAlpha(unsigned alpha)
{
    const auto bits = static_cast<uint8_t>(alpha);
    forEachPixel(internal, [bits](uint8_t* pixel) { pixel[3] |= bits; });
}

void Image::premultiply()
{
    forEachPixel(internal, [](uint8_t* pixel) {
        const unsigned alpha = pixel[3];
        pixel[0] = static_cast<uint8_t>((pixel[0] * alpha) >> 8);
        pixel[1] = static_cast<uint8_t>((pixel[1] * alpha) >> 8);
        pixel[2] = static_cast<uint8_t>((pixel[2] * alpha) >> 8);
    });
}

void Image::permuteChannels(int first, int second, int third, int fourth)
{
    const int order[4] = {first & 3, second & 3, third & 3, fourth & 3};
    forEachPixel(internal, [&order](uint8_t* pixel) {
        const uint8_t old[4] = {pixel[0], pixel[1], pixel[2], pixel[3]};
        for (int channel = 0; channel < 4; ++channel)
            pixel[channel] = old[order[channel]];
    });
}

void Image::flipVertical()
{
    if (internal == nullptr || internal->pixels == nullptr || internal->height < 2)
        return;
    for (int32_t top = 0, bottom = internal->height - 1; top < bottom; ++top, --bottom)
    {
        uint8_t* upper = getLine(static_cast<unsigned>(top));
        uint8_t* lower = getLine(static_cast<unsigned>(bottom));
        for (int32_t byte = 0; byte < internal->stride; ++byte)
        {
            const uint8_t kept = upper[byte];
            upper[byte] = lower[byte];
            lower[byte] = kept;
        }
    }
}

void Image::moveRect(const Rectangle& from, const Point& to)
{
    if (internal == nullptr || internal->pixels == nullptr)
        return;
    // Clip the source to the picture, then the target, keeping the two in step.
    Rectangle source = from.getIntersection(getBounds());
    Rectangle target = Rectangle(to + (source.getPosition() - from.getPosition()), source.getSize());
    const Rectangle clippedTarget = target.getIntersection(getBounds());
    source = Rectangle(source.getPosition() + (clippedTarget.getPosition() - target.getPosition()), clippedTarget.getSize());
    target = clippedTarget;
    if (target.isEmpty())
        return;
    const size_t lineBytes = static_cast<size_t>(target.w) * 4;
    // Lines go in the order that never overwrites a source line before it is moved.
    if (source.y >= target.y)
        for (int32_t line = 0; line < target.h; ++line)
            std::memmove(getPixelPointer(target.x, target.y + line), getPixelPointer(source.x, source.y + line), lineBytes);
    else
        for (int32_t line = target.h - 1; line >= 0; --line)
            std::memmove(getPixelPointer(target.x, target.y + line), getPixelPointer(source.x, source.y + line), lineBytes);
}

}  // namespace q1framework
