#include "media/geometry/RectangleF.h"

#include <cmath>

namespace q1framework
{

Rectangle RectangleF::toRectangle(int expansion) const
{
    const auto left = static_cast<int32_t>(std::floor(x)) - expansion;
    const auto top = static_cast<int32_t>(std::floor(y)) - expansion;
    const auto right = static_cast<int32_t>(std::ceil(x + w)) + expansion;
    const auto bottom = static_cast<int32_t>(std::ceil(y + h)) + expansion;
    return Rectangle(left, top, right - left, bottom - top);
}

}  // namespace q1framework
