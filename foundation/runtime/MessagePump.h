#pragma once

#include "foundation/runtime/Mutex.h"
#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

class Message;
class Timer;
struct ScheduledTimer;

// The main thread's message pump, the framework's own stand-in for a platform run loop. One
// process-wide object, made on first use, holds everything that has to reach the main thread
// later:
//   - the running Timers, each fired when due and then rescheduled by its interval;
//   - the single hop that runs AsyncCallback::dispatchPending after any trigger;
//   - the queue of posted Messages, delivered in posting order through their MessagePoster.
// Nothing runs by itself: pump() runs what is due and returns at once. The host's editor idle
// call drives it, and a stand-alone program calls it from its own loop.
//
// The main thread is the one that last called pump(); before the first pump, the one that made
// the pump or brought the framework up (FrameworkInitialiser).
class MessagePump
{
public:
    // Any thread: the pump, made on first use; null once it has been destroyed when the shared
    // object unloads.
    static MessagePump* getInstance();

    MessagePump(const MessagePump&) = delete;
    MessagePump& operator=(const MessagePump&) = delete;

    // Main thread: makes the calling thread the main thread, then, in this order, delivers the
    // messages posted before the call, runs the AsyncCallback hop if a trigger asked for it, and
    // fires the timers that are due, earliest due first (equal times in the order the timers were
    // started). Each timer fires at most once per call, and a timer started during the call waits
    // for the next one, so a call always ends. The overload without a time reads
    // HiResCounterHandler::getMillisecondCounterHiRes; nowMs is a time on that clock.
    void pump();
    void pump(double nowMs);

    // Main thread: makes the calling thread the main thread.
    static void adoptCurrentThread();
    // Any thread: whether the caller is the main thread.
    static bool isMainThread();

    // Any thread: asks for one run of AsyncCallback::dispatchPending in the next pump. Requests
    // made before that run are served by it.
    static void requestAsyncDispatch();

    // Any thread, for MessagePoster::postMessage: queues a message that its poster has already
    // listed as pending. From here on the queue owns it: the pump hands it to its poster's
    // deliverMessage, or deletes it if it was cancelled meanwhile.
    void enqueueMessage(Message* message);

    // Main thread, for Timer: schedules timer to fire first at nowMs plus its interval and returns
    // the entry that the timer keeps as its handle.
    ScheduledTimer* scheduleTimer(Timer& timer, double nowMs);
    // Main thread, for Timer: removes and frees an entry that scheduleTimer returned.
    void cancelTimer(ScheduledTimer* entry);

    // Main thread: number of running timers.
    int32_t getTimerCount() const { return timers.getCount(); }

private:
    MessagePump();
    // At unload: stops every timer that is still running and deletes the queued messages.
    ~MessagePump();

    // Empties the queue into the array returned.
    Array<Message*> takeQueuedMessages();
    void deliverMessages();
    void runAsyncDispatch();
    void fireDueTimers(double nowMs);

    Array<ScheduledTimer*> timers;
    uint64_t startCount = 0;   // orders timers with equal due times by their start
    uint64_t passCount = 0;    // numbers the timer passes of pump(), from 1
    uint64_t activePass = 0;   // the pass running now, 0 outside pump()

    Mutex queueLock;           // guards queue only; never held while a message is delivered
    Array<Message*> queue;     // posted and not yet delivered, in posting order
};

}  // namespace q1framework
