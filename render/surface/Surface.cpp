#include "render/surface/Surface.h"

#include "render/gl/OpenGLContext.h"
#include "render/gl/OpenGLSurface.h"
#include "render/surface/ImageSurface.h"
#include "render/surface/MemorySurface.h"
#include "render/surface/TextureSurface.h"

namespace q1framework
{

Surface* Surface::create(RenderingContext* context, int kind, const Point& size, ImagePresenter* presenter)
{
    switch (kind)
    {
        case memoryKind:
            return new MemorySurface(size.x, size.y);
        case openGLKind:
        case openGLAltKind:
            if (auto* openGL = dynamic_cast<OpenGLContext*>(context))
                return new OpenGLSurface(*openGL, size.x, size.y);
            // Any other context shows the surface through its textures alike, without device copies.
            return context != nullptr ? new TextureSurface(*context, size.x, size.y) : nullptr;
        case imageKind:
            return presenter != nullptr ? new ImageSurface(*presenter, size.x, size.y) : nullptr;
        default:
            return nullptr;
    }
}

const Image& Surface::getImage()
{
    if (image.isNull())
    {
        int stride = 0;
        if (uint8_t* pixels = getPixels(&stride))
            image = Image(pixels, size.x, size.y, stride, Image::wrapPixels, getMargin());
    }
    return image;
}

}  // namespace q1framework
