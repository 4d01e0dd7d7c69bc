#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Rectangle.h"

namespace q1framework
{

// A growable list of rectangles (dirty areas, clip parts). Array's growth is the one the list
// needs: when full, the old count plus the greater of 5 and half the old count.
using RectangleList = Array<Rectangle>;

}  // namespace q1framework
