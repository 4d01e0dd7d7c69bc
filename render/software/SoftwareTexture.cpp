#include "render/software/SoftwareTexture.h"

#include "render/software/SoftwareContext.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace q1framework
{

namespace
{
// index wrapped into 0..size - 1, as GL_REPEAT does.
int wrap(int index, int size)
{
    const int rest = index % size;
    return rest < 0 ? rest + size : rest;
}
}  // namespace

SoftwareTexture::SoftwareTexture(SoftwareContext& context, int newWidth, int newHeight, int newKind)
    : Texture(&context, newWidth, newHeight, newKind), owner(context), texels(newWidth, newHeight, true, 0)
{
}

void SoftwareTexture::clear()
{
    texels.fill(0, 0, 0, 0);
}

void SoftwareTexture::upload(const Image& image, const Rectangle* rectangles, int count, bool unpremultiply)
{
    if (rectangles == nullptr || texels.isNull() || image.getData() == nullptr)
        return;
    const Rectangle limit(0, 0, std::min(image.getWidth(), width), std::min(image.getHeight(), height));
    for (int index = 0; index < count; ++index)
    {
        const Rectangle part = rectangles[index].getIntersection(limit);
        if (!part.isEmpty())
            copyTexels(image, part, texels.getPixelPointer(0, 0), unpremultiply);
    }
}

void SoftwareTexture::sample(double u, double v, float channels[4]) const
{
    const double left = std::floor(u - 0.5), top = std::floor(v - 0.5);
    const float across = static_cast<float>(u - 0.5 - left), down = static_cast<float>(v - 0.5 - top);
    const int x0 = wrap(static_cast<int>(left), width), x1 = wrap(static_cast<int>(left) + 1, width);
    const int y0 = wrap(static_cast<int>(top), height), y1 = wrap(static_cast<int>(top) + 1, height);
    const uint8_t* topLeft = getTexel(x0, y0);
    const uint8_t* topRight = getTexel(x1, y0);
    const uint8_t* bottomLeft = getTexel(x0, y1);
    const uint8_t* bottomRight = getTexel(x1, y1);
    for (int index = 0; index < 4; ++index)
    {
        const float upper = topLeft[index] + (topRight[index] - topLeft[index]) * across;
        const float lower = bottomLeft[index] + (bottomRight[index] - bottomLeft[index]) * across;
        channels[index] = upper + (lower - upper) * down;
    }
}

void SoftwareTexture::drawQuad(const double source[4], const double corners[8], float alpha)
{
    if (width == 0 || height == 0 || owner.getTarget().isNull())
        return;
    // The parallelogram: origin at the top-left corner, one side to the top-right corner, the
    // other to the bottom-left one.
    const double originX = corners[0], originY = corners[1];
    const double acrossX = corners[2] - originX, acrossY = corners[3] - originY;
    const double downX = corners[6] - originX, downY = corners[7] - originY;
    const double determinant = acrossX * downY - acrossY * downX;
    if (std::abs(determinant) < 1e-12)
        return;
    double minimumX = corners[0], maximumX = corners[0], minimumY = corners[1], maximumY = corners[1];
    for (int corner = 1; corner < 4; ++corner)
    {
        minimumX = std::min(minimumX, corners[2 * corner]);
        maximumX = std::max(maximumX, corners[2 * corner]);
        minimumY = std::min(minimumY, corners[2 * corner + 1]);
        maximumY = std::max(maximumY, corners[2 * corner + 1]);
    }
    const int left = static_cast<int>(std::floor(minimumX)), top = static_cast<int>(std::floor(minimumY));
    const Rectangle box(left, top, static_cast<int>(std::ceil(maximumX)) - left + 1,
                        static_cast<int>(std::ceil(maximumY)) - top + 1);
    const Rectangle area = box.getIntersection(owner.getDrawableArea());
    if (area.isEmpty())
        return;

    for (int y = area.y; y < area.getBottom(); ++y)
        for (int x = area.x; x < area.getRight(); ++x)
        {
            // The pixel's centre in the parallelogram's own coordinates, 0..1 along each side.
            const double px = x + 0.5 - originX, py = y + 0.5 - originY;
            const double a = (px * downY - py * downX) / determinant;
            const double b = (acrossX * py - acrossY * px) / determinant;
            if (a < 0.0 || a >= 1.0 || b < 0.0 || b >= 1.0)
                continue;
            float texel[4];
            sample(source[0] + a * source[2], source[1] + b * source[3], texel);
            const float opacity = texel[3] / 255.0f * alpha;
            if (opacity > 0.0f)
                owner.blendPixel(x, y, texel[2] / 255.0f, texel[1] / 255.0f, texel[0] / 255.0f, opacity);
        }
    owner.addDrawnArea(area);
}

}  // namespace q1framework
