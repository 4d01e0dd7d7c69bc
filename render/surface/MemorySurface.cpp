#include "render/surface/MemorySurface.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace q1framework
{

namespace
{
// Far beyond any window; keeps the stride and the pixel count inside their integer types.
constexpr int maximumSide = 1 << 20;

int computeStride(const Point& size)
{
    return (size.x + 2 * MemorySurface::margin) * 4;
}
}

MemorySurface::MemorySurface(int width, int height) : Surface(Point(std::max(width, 0), std::max(height, 0)))
{
    if (size.x <= maximumSide && size.y <= maximumSide)
        block = static_cast<uint8_t*>(std::calloc(
            static_cast<size_t>(size.x + 2 * margin) * static_cast<size_t>(size.y + 2 * margin), 4));
    if (block == nullptr)
        size = Point();
}

MemorySurface::~MemorySurface()
{
    std::free(block);
}

uint8_t* MemorySurface::getPixels(int* stride)
{
    const int lineBytes = computeStride(size);
    if (stride != nullptr)
        *stride = lineBytes;
    if (block == nullptr)
        return nullptr;
    return block + static_cast<ptrdiff_t>(margin) * lineBytes + margin * 4;
}

void MemorySurface::update(const RectangleList&, void*, void*) {}

void MemorySurface::moveRegion(Rectangle&, Point&) {}

void MemorySurface::present() {}

void MemorySurface::copyRegion(void*, const Rectangle&, const Point&) {}

}  // namespace q1framework
