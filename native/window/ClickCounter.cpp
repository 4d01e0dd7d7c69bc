#include "native/window/ClickCounter.h"

#include <cstdlib>

namespace q1framework
{

int ClickCounter::press(int button, const Point& position, uint32_t timeMs)
{
    // Unsigned subtraction measures across the clock's wrap.
    const bool continues = count > 0 && button == lastButton && timeMs - lastTimeMs <= maximumIntervalMs
                           && std::abs(position.x - lastPosition.x) <= maximumDistance
                           && std::abs(position.y - lastPosition.y) <= maximumDistance;
    count = continues ? count + 1 : 1;
    lastButton = button;
    lastPosition = position;
    lastTimeMs = timeMs;
    return count;
}

}  // namespace q1framework
