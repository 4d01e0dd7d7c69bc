#include "render/context/Texture.h"

#include <cmath>

namespace q1framework
{

Texture::Texture(RenderingContext* owner, int newWidth, int newHeight, int newKind)
    : context(owner), width(newWidth), height(newHeight), kind(newKind)
{
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
