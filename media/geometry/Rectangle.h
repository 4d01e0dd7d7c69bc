#pragma once

#include "media/geometry/Point.h"

#include <cstdint>

namespace q1framework
{

// An axis-aligned rectangle in whole pixels: the pixels from (x, y) up to, not including,
// (x + w, y + h). It is empty when w or h is below 1; an empty rectangle keeps its position.
class Rectangle
{
public:
    constexpr Rectangle() = default;
    constexpr Rectangle(int32_t xValue, int32_t yValue, int32_t width, int32_t height)
        : x(xValue), y(yValue), w(width), h(height)
    {
    }
    constexpr Rectangle(const Point& position, const Point& size) : x(position.x), y(position.y), w(size.x), h(size.y) {}

    constexpr bool isEmpty() const { return w < 1 || h < 1; }
    constexpr int32_t getRight() const { return x + w; }
    constexpr int32_t getBottom() const { return y + h; }
    constexpr Point getPosition() const { return Point(x, y); }
    constexpr Point getSize() const { return Point(w, h); }
    constexpr bool contains(const Point& point) const
    {
        return point.x >= x && point.y >= y && point.x < x + w && point.y < y + h;
    }

    // The common part: position at the larger left and top edges, size up to the smaller right
    // and bottom edges. Disjoint rectangles give width or height 0, still at the larger edges.
    Rectangle getIntersection(const Rectangle& other) const;
    bool intersects(const Rectangle& other) const { return !getIntersection(other).isEmpty(); }
    // The same size, moved by offset.
    constexpr Rectangle translated(const Point& offset) const { return Rectangle(x + offset.x, y + offset.y, w, h); }

    constexpr bool operator==(const Rectangle& other) const
    {
        return x == other.x && y == other.y && w == other.w && h == other.h;
    }
    constexpr bool operator!=(const Rectangle& other) const { return !(*this == other); }

    int32_t x = 0;
    int32_t y = 0;
    int32_t w = 0;
    int32_t h = 0;
};

}  // namespace q1framework
