#pragma once

#include "media/geometry/Rectangle.h"

namespace q1framework
{

// A rectangle with fractional position and size, in pixels: it covers [x, x + w) by [y, y + h).
class RectangleF
{
public:
    constexpr RectangleF() = default;
    constexpr RectangleF(double xValue, double yValue, double width, double height)
        : x(xValue), y(yValue), w(width), h(height)
    {
    }

    constexpr bool isEmpty() const { return !(w > 0.0 && h > 0.0); }

    // The smallest whole-pixel rectangle that covers this one, grown by expansion pixels on each
    // side (a negative expansion shrinks it).
    Rectangle toRectangle(int expansion) const;

    double x = 0.0;
    double y = 0.0;
    double w = 0.0;
    double h = 0.0;
};

}  // namespace q1framework
