#pragma once

#include <cstdint>

namespace q1framework
{

struct ScheduledTimer;

// A repeating timer that calls timerCallback on the main thread, from MessagePump::pump, every
// interval while it runs. Callbacks come no earlier than due; when the pump runs late, the missed
// ticks are dropped rather than caught up, and the schedule keeps its phase.
//
// A callback may start, stop or delete any timer, its own included.
//
// Thread contract: main thread only.
class Timer
{
public:
    Timer();
    // Stops the timer.
    virtual ~Timer();

    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Main thread, from MessagePump::pump, once per elapsed interval.
    virtual void timerCallback() = 0;

    // Stores the interval in milliseconds and starts the timer anew: a running timer is stopped
    // first, and the first callback comes intervalMs from now. An interval of 0 or less is not
    // refused; such a timer fires at every pump. Once the pump is gone (after unload) the timer
    // stays stopped.
    void startTimer(int intervalMs);
    // Stops the timer; no callback follows until it is started again. Stopping a stopped timer
    // does nothing.
    void stopTimer();

    // The interval last given to startTimer, in milliseconds; 0 before the first start.
    int getInterval() const { return intervalMs; }
    bool isTimerRunning() const { return nativeTimer != nullptr; }

private:
    friend class MessagePump;

    int32_t intervalMs = 0;
    // The pump's schedule entry; null when stopped.
    ScheduledTimer* nativeTimer = nullptr;
};

}  // namespace q1framework
