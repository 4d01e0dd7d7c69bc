#include "foundation/runtime/Timer.h"

#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/MessagePump.h"

namespace q1framework
{

Timer::Timer() = default;

Timer::~Timer()
{
    stopTimer();
}

void Timer::startTimer(int newIntervalMs)
{
    intervalMs = newIntervalMs;
    stopTimer();
    if (MessagePump* pump = MessagePump::getInstance())
        nativeTimer = pump->scheduleTimer(*this, HiResCounterHandler::getMillisecondCounterHiRes());
}

void Timer::stopTimer()
{
    if (nativeTimer == nullptr)
        return;
    // A pump that is gone has already cleared every timer's entry, so the pump is there here.
    if (MessagePump* pump = MessagePump::getInstance())
        pump->cancelTimer(nativeTimer);
    nativeTimer = nullptr;
}

}  // namespace q1framework
