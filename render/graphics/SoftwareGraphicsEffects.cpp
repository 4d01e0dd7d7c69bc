// SoftwareGraphics: the image effects, computed in float by the blocks of render/effects/.
#include "render/graphics/SoftwareGraphics.h"

#include "media/image/Image.h"
#include "render/effects/BoxBlur.h"
#include "render/effects/Convolution.h"
#include "render/effects/EffectKernels.h"
#include "render/effects/FloatImage.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace q1framework
{

namespace
{
// A shadow's falloff: the power kernel's weights then add up to about 1.2, so a wide shape casts
// a shadow of the full colour with an edge that fades smoothly.
constexpr float shadowPower = 3.0f;
// Two box blurs make a tent, which has no hard step at its edge as a single box has.
constexpr int blurPasses = 2;

// passes box blurs of span, one after the other; the empty image when one of them fails.
FloatImage blurRepeatedly(FloatImage picture, int span, int passes)
{
    for (int pass = 0; pass < passes && !picture.isEmpty(); ++pass)
        picture = boxBlur(picture, span);
    return picture;
}

// The pixels an effect on part needs: part grown by the effect's reach on each side, within the
// drawable rectangle. A reach beyond that rectangle's size adds nothing, so it is cut to it first.
Rectangle withReach(const Rectangle& part, int64_t reachX, int64_t reachY, const Rectangle& drawable)
{
    const auto x = static_cast<int32_t>(std::min<int64_t>(reachX, drawable.w));
    const auto y = static_cast<int32_t>(std::min<int64_t>(reachY, drawable.h));
    return Rectangle(part.x - x, part.y - y, part.w + 2 * x, part.h + 2 * y).getIntersection(drawable);
}
}

void SoftwareGraphics::drawDropShadow(const Rectangle& area, const Colour& colour, const Point& offset, int size)
{
    const Rectangle part = toDrawable(area);
    if (part.isEmpty() || size < 1 || colour.getAlpha() == 0)
        return;
    const Rectangle source = withReach(part, size / 2 + std::abs(static_cast<int64_t>(offset.x)),
                                       size / 2 + std::abs(static_cast<int64_t>(offset.y)), drawable);
    const FloatImage art = readPixels(source, 0);
    const FloatImage kernel = makePowerKernel(size, shadowPower, colour);
    replacePixels(part, source, convolve(art, kernel, offset, art, Colour()));
}

void SoftwareGraphics::drawGlow(const Rectangle& area, const Colour& colour, int radius)
{
    const Rectangle part = toDrawable(area);
    if (part.isEmpty() || radius < 1 || colour.getAlpha() == 0)
        return;
    // The disc reaches radius pixels, and each blur of span 2 * radius + 1 radius more.
    const int64_t reach = static_cast<int64_t>(radius) * (1 + blurPasses);
    const Rectangle source = withReach(part, reach, reach, drawable);
    const FloatImage art = readPixels(source, 0);
    const FloatImage kernel = makeDiscKernel(radius, colour);
    FloatImage halo = blurRepeatedly(convolve(art, kernel, Point(), FloatImage(), Colour()), 2 * radius + 1, blurPasses);
    halo.placeUnder(art);
    replacePixels(part, source, halo);
}

void SoftwareGraphics::blurRect(const Rectangle& area, int span)
{
    const Rectangle part = toDrawable(area);
    if (part.isEmpty() || span < 1)
        return;
    const int64_t reach = static_cast<int64_t>(span / 2) * blurPasses;
    const Rectangle source = withReach(part, reach, reach, drawable);
    replacePixels(part, source, blurRepeatedly(readPixels(source, span / 2), span, blurPasses));
}

FloatImage SoftwareGraphics::readPixels(const Rectangle& bufferArea, int margin) const
{
    const Image wrapped(pixelAddress(bufferArea.x, bufferArea.y), bufferArea.w, bufferArea.h, stride,
                        Image::wrapPixels);
    return FloatImage::fromImage(wrapped, margin);
}

void SoftwareGraphics::replacePixels(const Rectangle& part, const Rectangle& source, const FloatImage& picture)
{
    if (picture.getBounds() != Rectangle(Point(), source.getSize()))
        return;  // a step could not allocate its picture
    const Rectangle partInPicture(part.getPosition() - source.getPosition(), part.getSize());
    drawImagePart(picture.toImage(), partInPicture, part.getPosition() - getOrigin(), false, 255);
}

}  // namespace q1framework
