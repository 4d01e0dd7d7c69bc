// SoftwareGraphics: image blits, nearest-neighbour scaling, tiling, three- and nine-part images.
#include "render/graphics/SoftwareGraphics.h"

#include "media/image/Image.h"
#include "render/kernels/PixelKernels.h"

#include <algorithm>
#include <cstring>

namespace q1framework
{

namespace
{
// The scaled blit blends through a short row of gathered source pixels.
constexpr int gatherLength = 256;
}

void SoftwareGraphics::drawImage(const Image& image, const Point& position, bool blend, int opacity)
{
    drawImagePart(image, image.getBounds(), position, blend, opacity);
}

void SoftwareGraphics::drawImagePart(const Image& image, const Rectangle& source, const Point& position, bool blend,
                                     int opacity)
{
    if (image.isEmpty() || image.getData() == nullptr)
        return;
    const Point target = position + getOrigin();
    const Rectangle part = source.getIntersection(image.getBounds());
    const Rectangle covered = Rectangle(target, part.getSize()).getIntersection(drawable);
    if (part.isEmpty() || covered.isEmpty())
        return;
    const int sourceX = part.x - target.x + covered.x;
    const int sourceY = part.y - target.y + covered.y;
    const PixelKernels& kernels = PixelKernels::getBest();
    opacity = std::clamp(opacity, 0, 255);
    for (int row = 0; row < covered.h; ++row)
    {
        const uint8_t* from = image.getPixelPointer(sourceX, sourceY + row);
        uint8_t* to = pixelAddress(covered.x, covered.y + row);
        if (blend)
            kernels.blendPixels(to, from, covered.w, opacity);
        else
            std::memmove(to, from, static_cast<size_t>(covered.w) * 4);
    }
}

void SoftwareGraphics::drawImageScaled(const Image& image, const Rectangle& source, const Rectangle& destination,
                                       bool blend, int opacity, Alignment alignment)
{
    const Rectangle box = getAlignedBox(destination, source.getSize(), alignment);
    if (source.getSize() == destination.getSize())
    {
        drawImagePart(image, source, box.getPosition(), blend, opacity);
        return;
    }
    if (image.isEmpty() || image.getData() == nullptr)
        return;
    const Rectangle placed = destination.translated(getOrigin());
    const Rectangle part = source.getIntersection(image.getBounds());
    const Rectangle covered = placed.getIntersection(drawable);
    if (part.isEmpty() || covered.isEmpty())
        return;
    // 16.16 steps through the source, held in 64 bits so that large pictures cannot overflow them;
    // every column and row they give lies inside part.
    const int64_t stepX = (static_cast<int64_t>(part.w) << 16) / placed.w;
    const int64_t stepY = (static_cast<int64_t>(part.h) << 16) / placed.h;
    const int64_t startX = (covered.x - placed.x) * stepX + (static_cast<int64_t>(part.x) << 16);
    const PixelKernels& kernels = PixelKernels::getBest();
    uint32_t gathered[gatherLength];
    for (int row = 0; row < covered.h; ++row)
    {
        const int64_t sourceRow = (((row + covered.y - placed.y) * stepY) >> 16) + part.y;
        const auto* line = reinterpret_cast<const uint32_t*>(image.getLine(static_cast<unsigned>(sourceRow)));
        uint8_t* to = pixelAddress(covered.x, covered.y + row);
        int64_t position = startX;
        for (int done = 0; done < covered.w;)
        {
            const int count = std::min(gatherLength, covered.w - done);
            for (int index = 0; index < count; ++index, position += stepX)
                std::memcpy(&gathered[index], &line[position >> 16], 4);
            if (blend)
                kernels.blendPixels(to + done * 4, reinterpret_cast<const uint8_t*>(gathered), count, 255);
            else
                std::memcpy(to + done * 4, gathered, static_cast<size_t>(count) * 4);
            done += count;
        }
    }
}

void SoftwareGraphics::drawImageAligned(const Image& image, const Rectangle& destination, bool blend, int opacity,
                                        Alignment alignment)
{
    drawImageScaled(image, image.getBounds(), destination, blend, opacity, alignment);
}

void SoftwareGraphics::tileImage(const Image& image, const Rectangle& source, const Rectangle& destination, bool blend)
{
    const Rectangle tileArea = clip.getIntersection(destination.translated(getOrigin()));
    if (tileArea.isEmpty())
        return;
    const Rectangle tile = source.getIntersection(image.getBounds());
    if (tile.isEmpty())
        return;
    const Rectangle old = intersectClip(destination, true);
    const int columns = (destination.w + tile.w - 1) / tile.w;
    const int rows = (destination.h + tile.h - 1) / tile.h;
    // Only the tiles that meet the clip are visited; the others would draw nothing.
    const Rectangle visible = drawable.translated(Point() - getOrigin());
    const int firstColumn = std::max(0, (visible.x - destination.x) / tile.w);
    const int lastColumn = std::min(columns, (visible.getRight() - destination.x + tile.w - 1) / tile.w);
    const int firstRow = std::max(0, (visible.y - destination.y) / tile.h);
    const int lastRow = std::min(rows, (visible.getBottom() - destination.y + tile.h - 1) / tile.h);
    for (int row = firstRow; row < lastRow; ++row)
        for (int column = firstColumn; column < lastColumn; ++column)
            drawImagePart(image, tile, Point(destination.x + column * tile.w, destination.y + row * tile.h), blend, 255);
    setClip(old, true);
}

void SoftwareGraphics::drawThreePartHorizontal(const Image& image, const Rectangle& destination, bool blend)
{
    const int imageWidth = image.getWidth();
    const int cap = imageWidth / 3;
    const int capHeight = std::min(image.getHeight(), destination.h);
    drawImageScaled(image, Rectangle(0, 0, cap, capHeight), Rectangle(destination.x, destination.y, cap, capHeight),
                    blend, 255, Alignment::TopLeft);
    tileImage(image, Rectangle(cap, 0, cap, capHeight),
              Rectangle(destination.x + cap, destination.y, destination.w - 2 * cap, capHeight), blend);
    drawImageScaled(image, Rectangle(imageWidth - cap, 0, cap, capHeight),
                    Rectangle(destination.getRight() - cap, destination.y, cap, capHeight), blend, 255,
                    Alignment::TopLeft);
}

void SoftwareGraphics::drawThreePartVertical(const Image& image, const Rectangle& destination, bool blend)
{
    const int imageHeight = image.getHeight();
    const int cap = imageHeight / 3;
    const int columnWidth = image.getWidth();
    const int x = destination.x + (destination.w - columnWidth) / 2;
    drawImageScaled(image, Rectangle(0, 0, columnWidth, cap), Rectangle(x, destination.y, columnWidth, cap), blend,
                    255, Alignment::TopLeft);
    tileImage(image, Rectangle(0, cap, columnWidth, cap),
              Rectangle(x, destination.y + cap, columnWidth, destination.h - 2 * cap), blend);
    drawImageScaled(image, Rectangle(0, imageHeight - cap, columnWidth, cap),
                    Rectangle(x, destination.getBottom() - cap, columnWidth, cap), blend, 255, Alignment::TopLeft);
}

void SoftwareGraphics::drawNinePart(const Image& image, const Rectangle& destination, bool blend)
{
    const int imageWidth = image.getWidth();
    const int imageHeight = image.getHeight();
    const int cornerWidth = imageWidth / 3;
    const int cornerHeight = imageHeight / 3;
    const int x = destination.x;
    const int y = destination.y;
    const int w = destination.w;
    const int h = destination.h;
    // The source grid: columns at 0, cornerWidth, imageWidth - cornerWidth; rows likewise.
    const int rightColumn = imageWidth - cornerWidth;
    const int bottomRow = imageHeight - cornerHeight;
    const int middleWidth = imageWidth - 2 * cornerWidth;
    const int middleHeight = imageHeight - 2 * cornerHeight;

    drawImagePart(image, Rectangle(0, 0, cornerWidth, cornerHeight), Point(x, y), blend, 255);
    drawImagePart(image, Rectangle(rightColumn, 0, cornerWidth, cornerHeight), Point(x + w - cornerWidth, y), blend,
                  255);
    drawImagePart(image, Rectangle(0, bottomRow, cornerWidth, cornerHeight), Point(x, y + h - cornerHeight), blend,
                  255);
    drawImagePart(image, Rectangle(rightColumn, bottomRow, cornerWidth, cornerHeight),
                  Point(x + w - cornerWidth, y + h - cornerHeight), blend, 255);

    tileImage(image, Rectangle(cornerWidth, 0, middleWidth, cornerHeight),
              Rectangle(x + cornerWidth, y, w - 2 * cornerWidth, cornerHeight), blend);
    tileImage(image, Rectangle(cornerWidth, bottomRow, middleWidth, cornerHeight),
              Rectangle(x + cornerWidth, y + h - cornerHeight, w - 2 * cornerWidth, cornerHeight), blend);
    tileImage(image, Rectangle(0, cornerHeight, cornerWidth, middleHeight),
              Rectangle(x, y + cornerHeight, cornerWidth, h - 2 * cornerHeight), blend);
    tileImage(image, Rectangle(rightColumn, cornerHeight, cornerWidth, middleHeight),
              Rectangle(x + w - cornerWidth, y + cornerHeight, cornerWidth, h - 2 * cornerHeight), blend);
    tileImage(image, Rectangle(cornerWidth, cornerHeight, middleWidth, middleHeight),
              Rectangle(x + cornerWidth, y + cornerHeight, w - 2 * cornerWidth, h - 2 * cornerHeight), blend);
}

}  // namespace q1framework
