#pragma once

#include "media/geometry/Point.h"

#include <cstdint>

namespace q1framework
{

// Click counts for platforms whose press events carry none: a press of the same button within
// maximumIntervalMs of the previous press and within maximumDistance pixels of it (in x and in
// y) counts one more click; any other press starts again at 1.
//
// Thread contract: main thread; an object belongs to its window.
class ClickCounter
{
public:
    static constexpr uint32_t maximumIntervalMs = 400;
    static constexpr int32_t maximumDistance = 5;

    // The click count of a press of button at position (window pixels) at timeMs, a
    // millisecond clock that may wrap around (the X server's event time).
    int press(int button, const Point& position, uint32_t timeMs);

private:
    int lastButton = 0;
    Point lastPosition;
    uint32_t lastTimeMs = 0;
    int count = 0;
};

}  // namespace q1framework
