#include "foundation/runtime/VSyncTimer.h"

#include "foundation/runtime/StaticInitOrder.h"
#include "foundation/var/Array.h"

namespace q1framework
{

namespace
{
// The windows (or anything else) that draw a frame per tick, in the order they were added.
__attribute__((init_priority(StaticInitOrder::vsyncWindows))) Array<VSyncTimer::Listener*> listeners;
}

__attribute__((init_priority(StaticInitOrder::vsyncTimer))) VSyncTimer VSyncTimer::instance;

VSyncTimer::VSyncTimer()
{
    startTimer(frameIntervalMs);
}

VSyncTimer& VSyncTimer::getInstance()
{
    return instance;
}

void VSyncTimer::addListener(Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere(listener);
}

void VSyncTimer::removeListener(Listener* listener)
{
    listeners.removeFirstMatching(listener);
}

int32_t VSyncTimer::getListenerCount()
{
    return listeners.getCount();
}

void VSyncTimer::timerCallback()
{
    for (int32_t index = 0; index < listeners.getCount(); ++index)
        listeners[index]->vsyncTick();
}

}  // namespace q1framework
