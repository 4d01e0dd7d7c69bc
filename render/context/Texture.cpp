#include "render/context/Texture.h"

#include "media/image/Image.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>

namespace q1framework
{

namespace
{
std::atomic<int> liveTextures{0};

// A colour byte divided by alpha, in single precision.
uint8_t unpremultiplied(uint8_t byte, float factor)
{
    return static_cast<uint8_t>(std::min(255.0f, static_cast<float>(static_cast<int>(byte * factor))));
}
}  // namespace

Texture::Texture(RenderingContext* owner, int newWidth, int newHeight, int newKind)
    : context(owner), width(newWidth), height(newHeight), kind(newKind)
{
    liveTextures.fetch_add(1, std::memory_order_relaxed);
}

Texture::~Texture()
{
    liveTextures.fetch_sub(1, std::memory_order_relaxed);
}

int Texture::getLiveCount()
{
    return liveTextures.load(std::memory_order_relaxed);
}

void Texture::copyTexels(const Image& image, const Rectangle& part, uint8_t* texels, bool unpremultiply) const
{
    const size_t textureStride = static_cast<size_t>(width) * 4;
    for (int32_t y = part.y; y < part.getBottom(); ++y)
    {
        const uint8_t* from = image.getPixelPointer(part.x, y);
        uint8_t* to = texels + static_cast<size_t>(y) * textureStride + static_cast<size_t>(part.x) * 4;
        if (!unpremultiply)
        {
            std::memcpy(to, from, static_cast<size_t>(part.w) * 4);
            continue;
        }
        for (int32_t x = 0; x < part.w; ++x, from += 4, to += 4)
        {
            const uint8_t alpha = from[3];
            const float factor = alpha == 0 ? 0.0f : 255.0f / alpha;
            to[0] = unpremultiplied(from[0], factor);
            to[1] = unpremultiplied(from[1], factor);
            to[2] = unpremultiplied(from[2], factor);
            to[3] = alpha;
        }
    }
}

void Texture::uploadWhole(const Image& image, bool unpremultiply)
{
    const Rectangle whole(0, 0, width, height);
    upload(image, &whole, 1, unpremultiply);
}

void Texture::draw(double x, double y, double scale, float alpha, float angle)
{
    const double source[4] = {0.0, 0.0, static_cast<double>(width), static_cast<double>(height)};
    const double destination[4] = {x + (width - width * scale) * 0.5, y + (height - height * scale) * 0.5,
                                   width * scale, height * scale};
    drawRotated(alpha, angle, 0.0, 0.0, source, destination);
}

void Texture::drawRotated(float alpha, double angle, double centreX, double centreY, const double source[4],
                          const double destination[4])
{
    const double left = destination[0], top = destination[1];
    const double right = left + destination[2], bottom = top + destination[3];
    const double unturned[8] = {left, top, right, top, right, bottom, left, bottom};
    const double cosine = std::cos(angle), sine = std::sin(angle);
    double corners[8];
    for (int corner = 0; corner < 4; ++corner)
    {
        const double dx = unturned[2 * corner] - centreX;
        const double dy = unturned[2 * corner + 1] - centreY;
        corners[2 * corner] = dx * cosine - dy * sine + centreX;
        corners[2 * corner + 1] = dx * sine + dy * cosine + centreY;
    }
    drawQuad(source, corners, alpha);
}

}  // namespace q1framework
