#include "render/software/SoftwareContext.h"

#include "render/software/SoftwareTexture.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
float channel(uint8_t byte)
{
    return byte / 255.0f;
}

uint8_t toByte(float value)
{
    return static_cast<uint8_t>(std::clamp(value, 0.0f, 255.0f) + 0.5f);
}

float mix(float from, float to, float amount)
{
    return from + (to - from) * amount;
}

// The red, green, blue and alpha of each corner, 0..1, by convert.
void cornerChannels(const Colour corners[4], float (*convert)(uint8_t), float values[4][4])
{
    for (int corner = 0; corner < 4; ++corner)
    {
        values[corner][0] = convert(corners[corner].getRed());
        values[corner][1] = convert(corners[corner].getGreen());
        values[corner][2] = convert(corners[corner].getBlue());
        values[corner][3] = convert(corners[corner].getAlpha());
    }
}

// GLSL's smoothstep.
double smoothstep(double edge0, double edge1, double x)
{
    const double t = std::clamp((x - edge0) / (edge1 - edge0), 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}
}  // namespace

SoftwareContext::SoftwareContext()
{
    maximumTextureSize = maximumTextureSide;
}

SoftwareContext::~SoftwareContext()
{
    notifyDeletion();
}

void SoftwareContext::setTarget(const Image& newTarget)
{
    target = newTarget;
    size = target.getSize();
}

Texture* SoftwareContext::createTexture(int width, int height, int, int kind)
{
    if (width < 0 || height < 0 || width > maximumTextureSide || height > maximumTextureSide)
        return nullptr;
    return new SoftwareTexture(*this, width, height, kind);
}

void SoftwareContext::setClip(const Rectangle& area)
{
    clipping = !area.isEmpty();
    if (clipping)
        clip = area;
}

void SoftwareContext::beginFrame()
{
    drawnAreas.clear();
    setClip(target.getBounds());
}

void SoftwareContext::setSize(int width, int height)
{
    size = Point(width, height);
}

Rectangle SoftwareContext::getDrawableArea() const
{
    const Rectangle whole = target.getBounds();
    return clipping ? whole.getIntersection(clip) : whole;
}

void SoftwareContext::blendPixel(int x, int y, float red, float green, float blue, float opacity)
{
    uint8_t* pixel = target.getPixelPointer(x, y);
    const float keep = 1.0f - opacity;
    pixel[0] = toByte(blue * 255.0f * opacity + pixel[0] * keep);
    pixel[1] = toByte(green * 255.0f * opacity + pixel[1] * keep);
    pixel[2] = toByte(red * 255.0f * opacity + pixel[2] * keep);
    pixel[3] = toByte(opacity * 255.0f * opacity + pixel[3] * keep);
}

void SoftwareContext::addDrawnArea(const Rectangle& area)
{
    if (!area.isEmpty())
        drawnAreas.add(area);
}

float SoftwareContext::signedChannel(uint8_t byte)
{
    return byte >= 128 ? 0.0f : byte / 127.0f;
}

void SoftwareContext::blendIfInside(int x, int y, const Rectangle& drawable, const float colour[4])
{
    if (drawable.contains(Point(x, y)))
        blendPixel(x, y, colour[0], colour[1], colour[2], colour[3]);
}

void SoftwareContext::fillGradientRect(const Rectangle& area, const Colour corners[4])
{
    const Rectangle drawable = getDrawableArea();
    const Rectangle part = area.getIntersection(drawable);
    if (part.isEmpty())
        return;
    float values[4][4];
    cornerChannels(corners, &channel, values);
    for (int y = part.y; y < part.getBottom(); ++y)
    {
        const float down = (y + 0.5f - area.y) / area.h;
        for (int x = part.x; x < part.getRight(); ++x)
        {
            const float across = (x + 0.5f - area.x) / area.w;
            float colour[4];
            for (int index = 0; index < 4; ++index)
                colour[index] = mix(mix(values[0][index], values[1][index], across),
                                    mix(values[3][index], values[2][index], across), down);
            blendPixel(x, y, colour[0], colour[1], colour[2], colour[3]);
        }
    }
    addDrawnArea(part);
}

void SoftwareContext::drawGradientRect(const Rectangle& area, const Colour corners[4])
{
    if (area.isEmpty())
        return;
    const Rectangle drawable = getDrawableArea();
    float values[4][4];
    cornerChannels(corners, &signedChannel, values);
    // The loop through the four corners' pixels, each edge from its first corner up to the next.
    const int right = area.getRight() - 1, bottom = area.getBottom() - 1;
    const Point ends[4] = {Point(area.x, area.y), Point(right, area.y), Point(right, bottom), Point(area.x, bottom)};
    for (int edge = 0; edge < 4; ++edge)
    {
        const Point from = ends[edge], to = ends[(edge + 1) % 4];
        const int steps = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
        for (int step = 0; step < std::max(steps, 1); ++step)
        {
            const float amount = steps > 0 ? static_cast<float>(step) / steps : 0.0f;
            float colour[4];
            for (int index = 0; index < 4; ++index)
                colour[index] = mix(values[edge][index], values[(edge + 1) % 4][index], amount);
            const int x = steps > 0 ? from.x + (to.x - from.x) * step / steps : from.x;
            const int y = steps > 0 ? from.y + (to.y - from.y) * step / steps : from.y;
            blendIfInside(x, y, drawable, colour);
        }
    }
    addDrawnArea(area.getIntersection(drawable));
}

void SoftwareContext::drawLine(int x1, int y1, int x2, int y2, const Colour& colour)
{
    const Rectangle drawable = getDrawableArea();
    const float values[4] = {signedChannel(colour.getRed()), signedChannel(colour.getGreen()),
                             signedChannel(colour.getBlue()), signedChannel(colour.getAlpha())};
    const int steps = std::max(std::abs(x2 - x1), std::abs(y2 - y1));
    // One pixel per step along the longer axis; the last point is left out, as GL leaves it.
    for (int step = 0; step < steps; ++step)
    {
        const double amount = static_cast<double>(step) / steps;
        const int x = static_cast<int>(std::floor(x1 + (x2 - x1) * amount));
        const int y = static_cast<int>(std::floor(y1 + (y2 - y1) * amount));
        blendIfInside(x, y, drawable, values);
    }
    const Rectangle box(std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1) + 1, std::abs(y2 - y1) + 1);
    if (steps > 0)
        addDrawnArea(box.getIntersection(drawable));
}

void SoftwareContext::fillCircle(const Rectangle& bounds, const Colour& colour)
{
    const Rectangle part = bounds.getIntersection(getDrawableArea());
    if (part.isEmpty())
        return;
    // The circle shader's edge: the alpha fades over one pixel centred on the radius, by the
    // square root of one minus a smoothstep.
    const double radius = bounds.w * 0.5;
    const double centreX = bounds.x + bounds.w * 0.5, centreY = bounds.y + bounds.h * 0.5;
    const float red = channel(colour.getRed()), green = channel(colour.getGreen());
    const float blue = channel(colour.getBlue()), alpha = channel(colour.getAlpha());
    for (int y = part.y; y < part.getBottom(); ++y)
        for (int x = part.x; x < part.getRight(); ++x)
        {
            const double distance = std::hypot(x + 0.5 - centreX, y + 0.5 - centreY);
            const double edge = smoothstep(radius - 0.5, radius + 0.5, distance);
            const float opacity = alpha * static_cast<float>(std::sqrt(1.0 - edge));
            if (opacity > 0.0f)
                blendPixel(x, y, red, green, blue, opacity);
        }
    addDrawnArea(part);
}

}  // namespace q1framework
