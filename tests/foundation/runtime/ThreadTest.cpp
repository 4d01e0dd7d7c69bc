#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <sys/resource.h>

using q1framework::MessagePump;
using q1framework::Thread;

namespace
{
// Loops until asked to exit, recording what it sees from inside the thread.
struct LoopingThread : Thread
{
    ~LoopingThread() override { stopThread(); }

    void run() override
    {
        starts.fetch_add(1);
        onMainThread = Thread::isMainThread();
        while (!threadShouldExit())
        {
            errno = 0;
            niceValue = getpriority(PRIO_PROCESS, 0);   // this thread's own, on Linux
            iterations.fetch_add(1);
            if (stopFromInside)
                stopThread();
            Thread::sleep(1);
        }
        sawExitRequest = true;
    }

    std::atomic<int> starts{0};
    std::atomic<int> iterations{0};
    std::atomic<int> niceValue{0};
    std::atomic<bool> onMainThread{true};
    std::atomic<bool> sawExitRequest{false};
    std::atomic<bool> stopFromInside{false};
};

// Runs a fixed amount of work and returns on its own.
struct ShortThread : Thread
{
    ~ShortThread() override { stopThread(); }
    void run() override { runs.fetch_add(1); }
    std::atomic<int> runs{0};
};

// Waits, in small sleeps, until condition holds or ten seconds have passed.
bool eventually(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition())
    {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        Thread::sleep(1);
    }
    return true;
}

int ownNiceValue()
{
    errno = 0;
    return getpriority(PRIO_PROCESS, 0);
}
}  // namespace

TEST(Thread, ThreadedStartRunsUntilStopAsksItToExit)
{
    LoopingThread thread;
    EXPECT_FALSE(thread.isThreadRunning());
    thread.startThread(Thread::defaultPriority);
    EXPECT_TRUE(thread.isThreadRunning()) << "running from the start request on";
    ASSERT_TRUE(eventually([&] { return thread.iterations.load() > 3; }));

    thread.startThread(Thread::defaultPriority);
    EXPECT_EQ(thread.starts.load(), 1) << "a running thread is not started twice";

    thread.stopThread();
    EXPECT_FALSE(thread.isThreadRunning());
    EXPECT_TRUE(thread.sawExitRequest) << "stopThread returned before run did";
    const int iterations = thread.iterations.load();
    Thread::sleep(5);
    EXPECT_EQ(thread.iterations.load(), iterations);
    thread.stopThread();   // stopping a stopped thread does nothing

    thread.sawExitRequest = false;
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return thread.iterations.load() > iterations; }));
    EXPECT_FALSE(thread.threadShouldExit()) << "a new start clears the old exit request";
    thread.stopThread();
    EXPECT_EQ(thread.starts.load(), 2);
}

TEST(Thread, ThreadedRunThatReturnsEndsTheThreadAndMayBeStartedAgain)
{
    ShortThread thread;
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return !thread.isThreadRunning(); }));
    EXPECT_EQ(thread.runs.load(), 1);
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return thread.runs.load() == 2; }));
}

TEST(Thread, ThreadedStopFromInsideOnlyAsks)
{
    LoopingThread thread;
    thread.stopFromInside = true;
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return !thread.isThreadRunning(); }));
    EXPECT_TRUE(thread.sawExitRequest);
    EXPECT_EQ(thread.iterations.load(), 1);
    thread.stopThread();
}

TEST(Thread, ThreadedPrioritiesBecomeNiceValuesRelativeToTheStarter)
{
    const int base = ownNiceValue();
    LoopingThread thread;
    // Lowering is always allowed: priority 3 is two steps of 3.8 below the starter's level.
    thread.startThread(3);
    EXPECT_EQ(thread.getPriority(), 3);
    const int lowered = base + 8 > 19 ? 19 : base + 8;
    EXPECT_TRUE(eventually([&] { return thread.niceValue.load() == lowered; })) << thread.niceValue.load();

    thread.setPriority(0);
    const int lowest = base + 19 > 19 ? 19 : base + 19;
    EXPECT_TRUE(eventually([&] { return thread.niceValue.load() == lowest; })) << thread.niceValue.load();

    // Raising may be refused in part or whole; it never lowers, and never overshoots.
    thread.setPriority(10);
    EXPECT_EQ(thread.getPriority(), 10);
    Thread::sleep(20);
    const int raised = thread.niceValue.load();
    EXPECT_LE(raised, lowest);
    EXPECT_GE(raised, base - 19 < -20 ? -20 : base - 19);
    thread.stopThread();

    thread.setPriority(4);
    EXPECT_EQ(thread.getPriority(), 10) << "without a thread the priority is not changed";
}

TEST(Thread, ThreadedMainThreadIsTheOneThatPumps)
{
    MessagePump::getInstance()->pump();
    EXPECT_TRUE(Thread::isMainThread());
    LoopingThread thread;
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return thread.iterations.load() > 0; }));
    EXPECT_FALSE(thread.onMainThread);
    thread.stopThread();
}

TEST(Thread, SleepWaitsAtLeastTheGivenTime)
{
    const auto start = std::chrono::steady_clock::now();
    Thread::sleep(25);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(25));
    Thread::sleep(0);
    Thread::sleep(-5);
}
