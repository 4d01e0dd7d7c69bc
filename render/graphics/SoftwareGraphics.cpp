#include "render/graphics/SoftwareGraphics.h"

#include "media/image/Image.h"

#include <cstddef>

namespace q1framework
{

SoftwareGraphics::SoftwareGraphics(uint8_t* pixelData, int bufferWidth, int bufferHeight, int bufferStride)
    : clip(0, 0, bufferWidth, bufferHeight), width(bufferWidth), height(bufferHeight), stride(bufferStride),
      pixels(pixelData), font(Font::getFallback())
{
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
    clip = relative ? area.translated(getOrigin()) : area;
}

Rectangle SoftwareGraphics::getClip(bool relative) const
{
    return relative ? clip.translated(Point() - getOrigin()) : clip;
}

Rectangle SoftwareGraphics::intersectClip(const Rectangle& area, bool relative)
{
    const Rectangle old = getClip(relative);
    clip = clip.getIntersection(relative ? area.translated(getOrigin()) : area);
    return old;
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

}  // namespace q1framework
