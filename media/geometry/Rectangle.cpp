#include "media/geometry/Rectangle.h"

#include <algorithm>

namespace q1framework
{

Rectangle Rectangle::getIntersection(const Rectangle& other) const
{
    const int32_t left = std::max(x, other.x);
    const int32_t top = std::max(y, other.y);
    const int32_t width = std::min(getRight(), other.getRight()) - left;
    const int32_t height = std::min(getBottom(), other.getBottom()) - top;
    return Rectangle(left, top, std::max(width, 0), std::max(height, 0));
}

}  // namespace q1framework
