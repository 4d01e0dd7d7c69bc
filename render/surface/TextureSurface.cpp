#include "render/surface/TextureSurface.h"

#include "render/context/RenderingContext.h"
#include "render/context/Texture.h"

namespace q1framework
{

TextureSurface::TextureSurface(RenderingContext& owner, int width, int height)
    : Surface(Point(width, height)), context(owner), texture(owner.createTexture(width, height, 1, 1)),
      image(width, height, true, Image::defaultMargin)
{
}

TextureSurface::~TextureSurface()
{
    delete texture;
}

uint8_t* TextureSurface::getPixels(int* stride)
{
    if (stride != nullptr)
        *stride = image.getStride();
    return image.getData() != nullptr ? image.getPixelPointer(0, 0) : nullptr;
}

void TextureSurface::update(const RectangleList& dirty, void*, void*)
{
    if (texture != nullptr && !dirty.isEmpty())
        texture->upload(image, dirty.begin(), dirty.getCount(), false);
}

void TextureSurface::moveRegion(Rectangle& region, Point& destination)
{
    image.moveRect(region, destination);
    // The device takes only rectangles inside the texture.
    const Rectangle moved = Rectangle(destination, region.getSize()).getIntersection(image.getBounds());
    if (texture != nullptr && !moved.isEmpty())
        texture->upload(image, &moved, 1, false);
}

void TextureSurface::present()
{
    if (texture != nullptr)
        texture->draw(0.0, 0.0, 1.0, 1.0f, 0.0f);
}

void TextureSurface::copyRegion(void*, const Rectangle&, const Point&) {}

}  // namespace q1framework
