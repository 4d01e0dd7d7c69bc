#pragma once

#include <cstdint>

namespace q1framework
{

// A position or a size in whole pixels. The pixel (x, y) covers the square from (x, y) to
// (x + 1, y + 1); y grows downwards.
class Point
{
public:
    constexpr Point() = default;
    constexpr Point(int32_t xValue, int32_t yValue) : x(xValue), y(yValue) {}

    constexpr Point operator+(const Point& other) const { return Point(x + other.x, y + other.y); }
    constexpr Point operator-(const Point& other) const { return Point(x - other.x, y - other.y); }
    constexpr bool operator==(const Point& other) const { return x == other.x && y == other.y; }
    constexpr bool operator!=(const Point& other) const { return !(*this == other); }

    int32_t x = 0;
    int32_t y = 0;
};

}  // namespace q1framework
