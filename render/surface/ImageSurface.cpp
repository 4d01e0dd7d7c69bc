#include "render/surface/ImageSurface.h"

#include "render/surface/ImagePresenter.h"

namespace q1framework
{

ImageSurface::ImageSurface(ImagePresenter& windowPresenter, int width, int height)
    : MemorySurface(width, height), presenter(windowPresenter)
{
}

void ImageSurface::update(const RectangleList& dirty, void*, void*)
{
    int stride = 0;
    if (const uint8_t* pixels = getPixels(&stride))
        presenter.presentPixels(pixels, stride, size, dirty.begin(), dirty.getCount());
}

void ImageSurface::moveRegion(Rectangle& region, Point& destination)
{
    copyRegion(nullptr, region, destination);
}

void ImageSurface::present()
{
    int stride = 0;
    if (const uint8_t* pixels = getPixels(&stride))
        presenter.presentPixels(pixels, stride, size, nullptr, 0);
}

void ImageSurface::copyRegion(void*, const Rectangle& source, const Point& destination)
{
    Image picture = getImage();
    if (picture.isEmpty())
        return;
    picture.moveRect(source, destination);
    // What moveRect wrote: the source cut to the picture, moved, cut again.
    const Rectangle from = source.getIntersection(picture.getBounds());
    const Rectangle moved = Rectangle(destination + (from.getPosition() - source.getPosition()), from.getSize())
                                .getIntersection(picture.getBounds());
    if (moved.isEmpty())
        return;
    int stride = 0;
    presenter.presentPixels(getPixels(&stride), stride, size, &moved, 1);
}

}  // namespace q1framework
