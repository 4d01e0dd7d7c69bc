// SoftwareGraphics: the outline rectangle and the lines.
#include "render/graphics/SoftwareGraphics.h"

#include "render/graphics/ColourWords.h"
#include "render/graphics/ShapeCoverage.h"
#include "render/kernels/PixelArithmetic.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace q1framework
{

namespace
{
// The pixels of a span with fractional ends, start < end: visit(position, alpha) for each, the
// end pixels with alpha in proportion to the part of them the span covers. A last pixel at or
// beyond limit (an end on the clip's edge, where it has alpha 0) is left out.
template <class Visit>
void walkFractionalSpan(float start, float end, int alpha, int limit, Visit visit)
{
    const int first = static_cast<int>(start);
    const int last = static_cast<int>(end);
    if (first == last)
    {
        visit(first, static_cast<int>(alpha * (end - start)));
        return;
    }
    visit(first, static_cast<int>(alpha * (first - start + 1.0)));
    for (int position = first + 1; position < last; ++position)
        visit(position, alpha);
    if (last < limit)
        visit(last, static_cast<int>(alpha * (end - last)));
}
}

void SoftwareGraphics::drawRect(const Rectangle& area, Colour colour)
{
    if (area.isEmpty())
        return;
    drawVerticalLineF(area.x, colour, static_cast<float>(area.y), static_cast<float>(area.getBottom()));
    drawVerticalLineF(area.getRight() - 1, colour, static_cast<float>(area.y), static_cast<float>(area.getBottom()));
    drawHorizontalLine(area.y, area.x + 1, area.getRight() - 1, colour);
    drawHorizontalLine(area.getBottom() - 1, area.x + 1, area.getRight() - 1, colour);
}

void SoftwareGraphics::drawVerticalLine(int x, int y1, int y2, Colour& colour)
{
    if (y2 < y1)
        std::swap(y1, y2);
    const Rectangle target = toDrawable(Rectangle(x, y1, 1, y2 - y1));
    if (target.isEmpty())
        return;
    if (colour.getAlpha() == 255)
    {
        fillWord(target, ColourWords::opaque(colour));
        return;
    }
    colour.premultiply();
    uint8_t bytes[4];
    PixelArithmetic::wordToBytes(ColourWords::packed(colour), bytes);
    for (int y = target.y; y < target.getBottom(); ++y)
        PixelArithmetic::blendOver(pixelAddress(target.x, y), bytes, bytes[3]);
}

void SoftwareGraphics::drawHorizontalLine(int y, int x1, int x2, Colour& colour)
{
    if (x2 < x1)
        std::swap(x1, x2);
    const Rectangle target = toDrawable(Rectangle(x1, y, x2 - x1, 1));
    if (target.isEmpty())
        return;
    if (colour.getAlpha() == 255)
        fillWord(target, ColourWords::opaque(colour));
    else
        blendWord(target, ColourWords::straightAddend(colour, colour.getAlpha()));
}

void SoftwareGraphics::drawVerticalLineF(int x, Colour colour, float start, float end)
{
    if (end < start)
        std::swap(start, end);
    x += originX;
    start += static_cast<float>(originY);
    end += static_cast<float>(originY);
    // The end stays just inside the clip's last row.
    end = std::min(end, static_cast<float>(drawable.getBottom() - 0.0001));
    start = std::max(start, static_cast<float>(drawable.y));
    if (!(start < end) || x < drawable.x || x >= drawable.getRight())
        return;
    walkFractionalSpan(start, end, colour.getAlpha(), drawable.getBottom(),
                       [&](int y, int alpha) { blendStraightAt(x, y, colour, alpha); });
}

void SoftwareGraphics::drawHorizontalLineF(int y, Colour colour, float start, float end)
{
    if (end < start)
        std::swap(start, end);
    y += originY;
    start += static_cast<float>(originX);
    end += static_cast<float>(originX);
    end = std::min(end, static_cast<float>(drawable.getRight()));
    start = std::max(start, static_cast<float>(drawable.x));
    if (!(start < end) || y < drawable.y || y >= drawable.getBottom())
        return;
    walkFractionalSpan(start, end, colour.getAlpha(), drawable.getRight(),
                       [&](int x, int alpha) { blendStraightAt(x, y, colour, alpha); });
}

void SoftwareGraphics::drawVerticalGradientLine(int x, int y1, int y2, Colour top, Colour bottom)
{
    if (y2 < y1)
    {
        std::swap(y1, y2);
        std::swap(top, bottom);
    }
    x += originX;
    y1 += originY;
    y2 += originY;
    const int first = std::max(y1, drawable.y);
    const int end = std::min(y2, drawable.getBottom());
    if (y1 == y2 || first >= end || x < drawable.x || x >= drawable.getRight())
        return;
    const float length = static_cast<float>(y2 - y1);
    const float step = 1.0f / length;
    float weight = 1.0f - static_cast<float>(y2 - first) / length;  // of the bottom colour
    const auto mix = [&weight](uint8_t upper, uint8_t lower) {
        return static_cast<int>(lower * weight + upper * (1.0f - weight));
    };
    for (int y = first; y < end; ++y, weight += step)
    {
        const Colour colour(mix(top.getRed(), bottom.getRed()), mix(top.getGreen(), bottom.getGreen()),
                            mix(top.getBlue(), bottom.getBlue()), mix(top.getAlpha(), bottom.getAlpha()));
        blendStraightAt(x, y, colour, colour.getAlpha());
    }
}

void SoftwareGraphics::drawTaperedVerticalLine(int x, Colour colour, float y1, float y2)
{
    if (y2 < y1)
        std::swap(y1, y2);
    x += originX;
    const float start = y1 + static_cast<float>(originY);
    const float end = y2 + static_cast<float>(originY);
    if (!(start < end) || x < drawable.x || x >= drawable.getRight())
        return;
    const float step = 1.0f / (end - start);
    const int firstRow = ShapeCoverage::toPixel(std::floor(start));
    const int first = std::max(firstRow, drawable.y);
    const int last = std::min(ShapeCoverage::toPixel(std::ceil(end)), drawable.getBottom());
    float t = -(start - static_cast<float>(firstRow)) * step + static_cast<float>(first - firstRow) * step;
    for (int y = first; y < last; ++y, t += step)
    {
        if (!(t >= 0.0f && t < 1.0f))
            continue;
        const float profile = t < 0.5f ? 2.0f * t : 2.0f - 2.0f * t;
        blendStraightAt(x, y, colour, static_cast<int>(colour.getAlpha() * std::sqrt(profile)) & 255);
    }
}

void SoftwareGraphics::drawLine(double x1, double y1, double x2, double y2)
{
    // Ends beyond +-1e8 pixels (or not numbers) are refused rather than walked.
    const auto isReasonable = [](double value) { return std::fabs(value) < 1.0e8; };
    if (x1 == x2 || !isReasonable(x1) || !isReasonable(y1) || !isReasonable(x2) || !isReasonable(y2))
        return;
    // Wu's line along its major axis; plot(major, minor, alpha) swaps back for steep lines.
    const bool steep = std::fabs(y2 - y1) >= std::fabs(x2 - x1);
    if (steep)
    {
        std::swap(x1, y1);
        std::swap(x2, y2);
    }
    if (x2 < x1)
    {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const auto plot = [this, steep](int major, int minor, double alpha) {
        if (steep)
            blendWhite(minor, major, static_cast<float>(alpha));
        else
            blendWhite(major, minor, static_cast<float>(alpha));
    };
    const auto plotPair = [&plot](int major, double minor, double gap) {
        const int whole = static_cast<int>(minor);
        const double fraction = minor - whole;
        plot(major, whole, gap * (1.0 - fraction));
        plot(major, whole + 1, gap * fraction);
    };
    const double gradient = (y2 - y1) / (x2 - x1);

    const double startMajor = x1 + 0.5;
    const int first = static_cast<int>(startMajor);
    double minor = y1 + gradient * (first - x1);
    plotPair(first, minor, first - startMajor + 1.0);

    const double endMajor = x2 + 0.5;
    const int last = static_cast<int>(endMajor);
    plotPair(last, y2 + gradient * (last - x2), endMajor - last);

    for (int major = first + 1; major < last; ++major)
    {
        minor += gradient;
        plotPair(major, minor, 1.0);
    }
}

void SoftwareGraphics::drawSlantedLine(int x, Colour colour, float y1, float y2, float halfWidth)
{
    const float left = static_cast<float>(x + originX);
    const float top = std::min(y1, y2) + static_cast<float>(originY);
    const float bottom = std::max(y1, y2) + static_cast<float>(originY);
    const float startY = y1 + static_cast<float>(originY);
    const float slope = y1 == y2 ? 100000.0f : 1.0f / (y2 - y1);  // x per y along the segment
    const int reach = ShapeCoverage::toPixel(std::ceil(halfWidth));
    const int firstRow = ShapeCoverage::toPixel(std::floor(top)) - reach;
    const int lastRow = ShapeCoverage::toPixel(std::ceil(bottom)) + reach;
    const Rectangle box =
        Rectangle(x + originX - reach, firstRow, 2 * reach + 2, lastRow - firstRow + 1).getIntersection(drawable);
    const int alpha = colour.getAlpha();
    for (int py = box.y; py < box.getBottom(); ++py)
    {
        // The segment's point nearest to this row: its x at the row, kept on the segment.
        const float nearestX = std::clamp(left + (static_cast<float>(py) - startY) * slope, left, left + 1.0f);
        const float nearestY = std::clamp(static_cast<float>(py), top, bottom);
        for (int px = box.x; px < box.getRight(); ++px)
        {
            const float dx = static_cast<float>(px) - nearestX;
            const float dy = static_cast<float>(py) - nearestY;
            const int pixelAlpha = ShapeCoverage::discAlpha(alpha, std::sqrt(dx * dx + dy * dy), halfWidth);
            if (pixelAlpha >= 0)
                blendStraightAt(px, py, colour, pixelAlpha);
        }
    }
}

}  // namespace q1framework
