#pragma once

#include "foundation/runtime/Timer.h"

namespace q1framework
{

// The frame clock of the whole user interface: one Timer, made when the shared object loads and
// started at once with an interval of 16 ms, that ticks whenever the pump runs and a frame is
// due. On each tick every listener gets vsyncTick, in the order they were added; the native
// layer's windows listen, and each tick is one frame of theirs.
//
// Thread contract: main thread only.
class VSyncTimer : public Timer
{
public:
    // Receives the frame ticks. Not owned; remove it before it is destroyed.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // Main thread, once per frame.
        virtual void vsyncTick() {}
    };

    static constexpr int frameIntervalMs = 16;

    // The load-time instance.
    static VSyncTimer& getInstance();

    // Adds listener at the end unless it is already listed; null is ignored.
    static void addListener(Listener* listener);
    // Removes listener if it is listed.
    static void removeListener(Listener* listener);
    static int32_t getListenerCount();

    // Main thread, from the pump: vsyncTick on each listener by index, reading the count afresh
    // after each, so that a listener may add or remove listeners during its tick.
    void timerCallback() override;

private:
    VSyncTimer();

    static VSyncTimer instance;
};

}  // namespace q1framework
