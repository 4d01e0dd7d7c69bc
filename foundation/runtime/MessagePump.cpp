#include "foundation/runtime/MessagePump.h"

#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/ScopedLock.h"
#include "foundation/runtime/Timer.h"

#include <atomic>
#include <cmath>
#include <thread>
#include <utility>

namespace q1framework
{

// One running timer as the pump keeps it.
struct ScheduledTimer
{
    Timer* timer;
    double dueMs;        // on the clock of HiResCounterHandler::getMillisecondCounterHiRes
    uint64_t startOrder;
    uint64_t lastPass;   // the timer pass in which it last fired, or in which it was started
};

namespace
{
// These live outside the pump so that any thread may use them before the pump exists and after
// it is gone; all three are ready before any code runs and need no destruction.
std::atomic<bool> pumpDestroyed{false};
std::atomic<bool> asyncDispatchRequested{false};
std::atomic<std::thread::id> mainThread{std::thread::id()};
}  // namespace

MessagePump* MessagePump::getInstance()
{
    if (pumpDestroyed.load(std::memory_order_acquire))
        return nullptr;
    // Made by the first caller, in practice the load-time VSyncTimer, and destroyed at unload
    // after every load-time object made before that first call.
    static MessagePump instance;
    return &instance;
}

MessagePump::MessagePump()
{
    adoptCurrentThread();
}

MessagePump::~MessagePump()
{
    pumpDestroyed.store(true, std::memory_order_release);
    for (ScheduledTimer* entry : timers)
    {
        entry->timer->nativeTimer = nullptr;
        delete entry;
    }
    timers.clear();

    // Taken out first: cancelling takes each poster's lock, and posting takes the poster's lock
    // before this one.
    for (Message* message : takeQueuedMessages())
    {
        if (MessagePoster* poster = message->getPoster())
            poster->cancelMessage(message);
        delete message;
    }
}

void MessagePump::adoptCurrentThread()
{
    mainThread.store(std::this_thread::get_id(), std::memory_order_release);
}

bool MessagePump::isMainThread()
{
    return mainThread.load(std::memory_order_acquire) == std::this_thread::get_id();
}

void MessagePump::requestAsyncDispatch()
{
    asyncDispatchRequested.store(true, std::memory_order_release);
}

void MessagePump::pump()
{
    pump(HiResCounterHandler::getMillisecondCounterHiRes());
}

void MessagePump::pump(double nowMs)
{
    adoptCurrentThread();
    deliverMessages();
    runAsyncDispatch();
    fireDueTimers(nowMs);
}

void MessagePump::enqueueMessage(Message* message)
{
    ScopedLock hold(queueLock);
    queue.add(message);
}

Array<Message*> MessagePump::takeQueuedMessages()
{
    ScopedLock hold(queueLock);
    return std::move(queue);
}

void MessagePump::deliverMessages()
{
    // Taken whole, so that messages posted by a handler wait for the next pump.
    for (Message* message : takeQueuedMessages())
    {
        // A cancelled message has no poster any more, and the queue is its only owner.
        if (MessagePoster* poster = message->getPoster())
            poster->deliverMessage(message);
        else
            delete message;
    }
}

void MessagePump::runAsyncDispatch()
{
    if (!asyncDispatchRequested.exchange(false, std::memory_order_acq_rel))
        return;
    AsyncCallback::dispatchPending();
    // A callback that deletes one before it in the registry shifts the walk past the next entry;
    // whatever is still counted then gets its turn in the next pump.
    if (AsyncCallback::isAnyPending())
        requestAsyncDispatch();
}

ScheduledTimer* MessagePump::scheduleTimer(Timer& timer, double nowMs)
{
    const double interval = timer.getInterval() > 0 ? timer.getInterval() : 0.0;
    auto* entry = new ScheduledTimer{&timer, nowMs + interval, ++startCount, activePass};
    timers.add(entry);
    return entry;
}

void MessagePump::cancelTimer(ScheduledTimer* entry)
{
    timers.removeFirstMatching(entry);
    delete entry;
}

void MessagePump::fireDueTimers(double nowMs)
{
    const uint64_t pass = ++passCount;
    const uint64_t enclosingPass = activePass;
    activePass = pass;
    for (;;)
    {
        // Searched afresh after every callback: a callback may start, stop or delete timers.
        ScheduledTimer* next = nullptr;
        for (ScheduledTimer* entry : timers)
        {
            // A later pass number is a pump nested in a callback of this one: what fired or
            // started there has had its turn.
            if (entry->lastPass >= pass || entry->dueMs > nowMs)
                continue;
            if (next == nullptr || entry->dueMs < next->dueMs
                || (entry->dueMs == next->dueMs && entry->startOrder < next->startOrder))
                next = entry;
        }
        if (next == nullptr)
            break;

        next->lastPass = pass;
        const double interval = next->timer->getInterval();
        if (interval > 0)
            next->dueMs += interval * (std::floor((nowMs - next->dueMs) / interval) + 1.0);
        else
            next->dueMs = nowMs;
        // The entry may be gone once the callback returns.
        next->timer->timerCallback();
    }
    activePass = enclosingPass;
}

}  // namespace q1framework
