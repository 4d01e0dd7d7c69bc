// SoftwareGraphics: discs, rings, arcs and rounded rectangles. Distances are measured from a
// pixel's integer position (its top-left corner) to the centre, in float.
#include "render/graphics/SoftwareGraphics.h"

#include "render/graphics/ShapeCoverage.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
using ShapeCoverage::toPixel;

constexpr double twoPi = 6.283185307179586;

// The pixels around a centre out to reach, with a border of 2, in buffer coordinates.
Rectangle boxAround(float centreX, float centreY, float reach)
{
    const int left = toPixel(std::floor(centreX - reach)) - 2;
    const int top = toPixel(std::floor(centreY - reach)) - 2;
    const int right = toPixel(std::ceil(centreX + reach)) + 2;
    const int bottom = toPixel(std::ceil(centreY + reach)) + 2;
    return Rectangle(left, top, right - left + 1, bottom - top + 1);
}

// An angle brought into [0, 2 pi) by whole turns, added or subtracted in double and kept in
// float after each step. Angles too large for float to step by a turn are first reduced by fmod.
float toFirstTurn(float angle)
{
    if (std::fabs(angle) > 1.0e4f)
        angle = static_cast<float>(std::fmod(static_cast<double>(angle), twoPi));
    while (angle < 0.0f)
        angle = static_cast<float>(angle + twoPi);
    while (angle >= twoPi)
        angle = static_cast<float>(angle - twoPi);
    return angle;
}

// The alpha of a ring pixel from its distance e outside the ring's solid band: full inside, a
// one-pixel soft edge, -1 beyond it (or for a distance that is not a number).
int ringAlpha(int alpha, float outside)
{
    if (!(outside < 1.0f))
        return -1;
    return outside < 0.0f ? alpha : static_cast<int>(alpha * (1.0f - outside));
}

// Each pixel around a ring, in buffer coordinates within limit, that lies less than one pixel
// outside the ring's solid band (thickness - 0.99 on either side of radius): visit(px, py,
// distance from the centre, radial alpha).
template <class Visit>
void forEachRingPixel(const Rectangle& limit, int alpha, float centreX, float centreY, float radius, float thickness,
                      Visit visit)
{
    const float band = thickness - 0.99f;
    const Rectangle box = boxAround(centreX, centreY, radius + band).getIntersection(limit);
    for (int py = box.y; py < box.getBottom(); ++py)
        for (int px = box.x; px < box.getRight(); ++px)
        {
            const float dx = static_cast<float>(px) - centreX;
            const float dy = static_cast<float>(py) - centreY;
            const float distance = std::sqrt(dx * dx + dy * dy);
            const int radial = ringAlpha(alpha, std::fabs(distance - radius) - band);
            if (radial >= 0)
                visit(px, py, distance, radial);
        }
}

// The coverage of an arc pixel along the arc, lengths in units of half a pixel: 1 inside
// [lower, higher], a one-unit ramp at each end; 0 or less means nothing.
float arcCoverage(float length, float lower, float higher, bool passesZero)
{
    if (!passesZero)
    {
        if (length < lower)
            return std::min(length - lower + 1.0f, 1.0f);
        if (length > higher)
            return std::min(higher - length + 1.0f, 1.0f);
        return 1.0f;
    }
    if (length > higher)
        return std::min(length - higher, 1.0f);
    if (length >= lower)
        return 0.0f;
    return std::min(lower - length, 1.0f);
}
}

void SoftwareGraphics::fillCircle(Colour colour, float centreX, float centreY, float radius)
{
    if (!(radius >= 1.0f))
        return;
    centreX += static_cast<float>(originX);
    centreY += static_cast<float>(originY);
    const Rectangle box = boxAround(centreX, centreY, radius).getIntersection(drawable);
    const int alpha = colour.getAlpha();
    for (int py = box.y; py < box.getBottom(); ++py)
        for (int px = box.x; px < box.getRight(); ++px)
        {
            const float dx = static_cast<float>(px) - centreX;
            const float dy = static_cast<float>(py) - centreY;
            const int pixelAlpha = ShapeCoverage::discAlpha(alpha, std::sqrt(dx * dx + dy * dy), radius);
            if (pixelAlpha >= 0)
                blendStraightAt(px, py, colour, pixelAlpha);
        }
}

void SoftwareGraphics::drawRing(Colour colour, float centreX, float centreY, float radius, float thickness)
{
    forEachRingPixel(drawable, colour.getAlpha(), centreX + static_cast<float>(originX),
                     centreY + static_cast<float>(originY), radius, thickness,
                     [&](int px, int py, float, int alpha) { blendStraightAt(px, py, colour, alpha); });
}

void SoftwareGraphics::drawArc(Colour colour, float centreX, float centreY, float radius, float thickness, float start,
                               float end)
{
    if (!std::isfinite(start) || !std::isfinite(end))
        return;
    start = toFirstTurn(start);
    end = toFirstTurn(end);
    const bool passesZero = start > end;
    const float lowerAngle = std::min(start, end);
    const float higherAngle = std::max(start, end);
    centreX += static_cast<float>(originX);
    centreY += static_cast<float>(originY);
    forEachRingPixel(drawable, colour.getAlpha(), centreX, centreY, radius, thickness,
                     [&](int px, int py, float distance, int radial) {
                         // Angle 0 lies left of the centre; angles grow through the top (clockwise
                         // on screen).
                         float angle = std::atan2(centreY - static_cast<float>(py), centreX - static_cast<float>(px));
                         if (angle < 0.0f)
                             angle = static_cast<float>(angle + twoPi);
                         const float coverage =
                             arcCoverage(angle * 2.0f * distance, lowerAngle * 2.0f * distance + 0.5f,
                                         higherAngle * 2.0f * distance - 0.5f, passesZero);
                         if (coverage > 0.0f)
                             blendStraightAt(px, py, colour, static_cast<int>((radial & 255) * std::sqrt(coverage)));
                     });
}

void SoftwareGraphics::fillRoundedRect(const Rectangle& area, int radius, Colour colour)
{
    fillRoundedRectCorners(area, radius, radius, radius, radius, colour);
}

void SoftwareGraphics::fillCircleIn(const Rectangle& square, const Colour& colour, float centreX, float centreY,
                                    float radius)
{
    const Rectangle old = intersectClip(square, true);
    fillCircle(colour, centreX, centreY, radius);
    setClip(old, true);
}

void SoftwareGraphics::fillRoundedRectCorners(const Rectangle& area, int topLeft, int topRight, int bottomLeft,
                                              int bottomRight, Colour colour)
{
    if (area.isEmpty())
        return;
    const int x = area.x;
    const int y = area.y;
    const int w = area.w;
    const int h = area.h;
    const auto toFloat = [](int value) { return static_cast<float>(value); };
    fillCircleIn(Rectangle(x, y, topLeft, topLeft), colour, toFloat(x + topLeft - 1), toFloat(y + topLeft - 1),
                 toFloat(topLeft));
    fillCircleIn(Rectangle(x + w - topRight, y, topRight, topRight), colour, toFloat(x + w - topRight),
                 toFloat(y + topRight - 1), toFloat(topRight));
    fillCircleIn(Rectangle(x, y + h - bottomLeft, bottomLeft, bottomLeft), colour, toFloat(x + bottomLeft - 1),
                 toFloat(y + h - bottomLeft), toFloat(bottomLeft));
    fillCircleIn(Rectangle(x + w - bottomRight, y + h - bottomRight, bottomRight, bottomRight), colour,
                 toFloat(x + w - bottomRight), toFloat(y + h - bottomRight), toFloat(bottomRight));

    // The straight parts, in blend mode, each from its own copy of the colour.
    const auto fill = [this, &colour](const Rectangle& part) {
        Colour copy(colour);
        fillRect(part, copy, true);
    };
    fill(Rectangle(x, y + topLeft, std::min(topLeft, bottomLeft), h - topLeft - bottomLeft));
    if (topLeft > bottomLeft)
        fill(Rectangle(x + bottomLeft, y + topLeft, topLeft - bottomLeft, h - topLeft));
    else if (bottomLeft > topLeft)
        fill(Rectangle(x + topLeft, y, bottomLeft - topLeft, h - bottomLeft));
    const int leftReach = std::max(topLeft, bottomLeft);
    fill(Rectangle(x + leftReach, y, w - leftReach - std::max(topRight, bottomRight), h));
    if (topRight < bottomRight)
        fill(Rectangle(x + w - bottomRight, y, bottomRight - topRight, h - bottomRight));
    else if (topRight > bottomRight)
        fill(Rectangle(x + w - topRight, y + topRight, topRight - bottomRight, h - topRight));
    fill(Rectangle(x + w - std::min(topRight, bottomRight), y + topRight, std::min(topRight, bottomRight),
                   h - topRight - bottomRight));
}

}  // namespace q1framework
