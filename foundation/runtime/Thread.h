#pragma once

#include <cstdint>

namespace q1framework
{

struct NativeThread;

// A thread of the framework's own: derive, implement run, and start it. run should check
// threadShouldExit regularly and return when it answers true; stopThread waits for that.
//
// Priorities go from 0 (lowest) to 10 (highest); 5 is the ordinary priority of the thread that
// starts it. A priority that the process is not allowed to take is replaced by the nearest one
// it may take, and failing to raise the priority is not an error.
//
// Thread contract: start, stop and setPriority on the thread that owns the object;
// threadShouldExit on the thread itself; sleep and isMainThread on any thread.
class Thread
{
public:
    static constexpr int defaultPriority = 5;

    Thread();
    // Stops the thread and waits for it. A subclass whose run uses its own members must stop the
    // thread in its own destructor, before those members go.
    virtual ~Thread();

    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    // The new thread: the work. Returning ends the thread.
    virtual void run() = 0;

    // Starts a new thread that calls run, at the given priority (0 to 10). Does nothing while a
    // thread of this object is still running; one that has finished is cleaned up first. If the
    // system cannot make a thread, the object stays stopped.
    void startThread(int priority);
    // Changes the running thread's priority (0 to 10); without a thread, or with the same
    // priority, nothing happens.
    void setPriority(int priority);
    // Asks the thread to exit (threadShouldExit answers true), then waits, polling every
    // millisecond, until run has returned. Called from run itself it only asks. Stopping a
    // stopped object does nothing.
    void stopThread();

    // Whether run has been started and has not returned yet.
    bool isThreadRunning() const;
    // On the thread itself: whether stopThread has asked it to exit.
    bool threadShouldExit() const;
    int getPriority() const { return priority; }

    // Any thread: sleeps for ms milliseconds; 0 or less returns at once.
    static void sleep(int ms);
    // Any thread: whether the caller is the thread that runs the MessagePump.
    static bool isMainThread();

private:
    NativeThread* native = nullptr;   // null when no thread was started or after stopThread
    int32_t priority = defaultPriority;
};

}  // namespace q1framework
