#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

// Where a box of one size goes inside a rectangle: each value names the box's horizontal and
// vertical place. The numbers are part of the contract (layouts store them); a value outside
// 0 to 9 acts as Centre.
enum class Alignment : int32_t
{
    TopLeft = 0,       // left, top
    TopRight = 1,      // right, top
    Centre = 2,        // centre, centre
    TopCentre = 3,     // centre, top
    BottomCentre = 4,  // centre, bottom
    CentreLeft = 5,    // left, centre
    CentreRight = 6,   // right, centre
    BottomLeft = 7,    // left, bottom
    BottomRight = 8,   // right, bottom
    Stretch = 9,       // the box becomes the rectangle itself
};

// The box of boxSize placed in area by alignment. A centred coordinate is area position +
// (area size - box size) / 2, the division rounding towards zero; right and bottom put the box's
// far edge on the area's. Stretch gives area unchanged. The box may overhang a smaller area.
Rectangle getAlignedBox(const Rectangle& area, const Point& boxSize, Alignment alignment);

}  // namespace q1framework
