#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <sys/resource.h>

using q1framework::Thread;

namespace
{
// This thread's own nice value (Linux keeps one per thread).
int ownNiceValue()
{
    errno = 0;
    return getpriority(PRIO_PROCESS, 0);
}

// Loops until asked to exit, or for `iterationLimit` rounds, recording what it sees inside.
struct LoopingThread : Thread
{
    ~LoopingThread() override { stopThread(); }
    void run() override
    {
        starts.fetch_add(1);
        onMainThread = Thread::isMainThread();
        for (int round = 0; round < iterationLimit && !threadShouldExit(); ++round)
        {
            niceValue = ownNiceValue();
            iterations.fetch_add(1);
            if (stopFromInside)
                stopThread();
            Thread::sleep(1);
        }
        sawExitRequest = threadShouldExit();
    }
    int iterationLimit = 1 << 30;
    bool stopFromInside = false;
    std::atomic<int> starts{0}, iterations{0}, niceValue{0};
    std::atomic<bool> onMainThread{true}, sawExitRequest{false};
};

// Waits in small sleeps until condition holds; false after ten seconds.
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

    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return thread.iterations.load() > iterations; }));
    EXPECT_FALSE(thread.threadShouldExit()) << "a new start clears the old exit request";
}

TEST(Thread, ThreadedRunThatReturnsOrStopsItselfEndsAndMayBeStartedAgain)
{
    LoopingThread thread;
    thread.iterationLimit = 2;
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return !thread.isThreadRunning(); }));
    EXPECT_EQ(thread.iterations.load(), 2);
    EXPECT_FALSE(thread.sawExitRequest);

    thread.stopFromInside = true;   // from run, stopThread can only ask
    thread.startThread(Thread::defaultPriority);
    ASSERT_TRUE(eventually([&] { return !thread.isThreadRunning(); }));
    EXPECT_EQ(thread.starts.load(), 2);
    EXPECT_EQ(thread.iterations.load(), 3);
    EXPECT_TRUE(thread.sawExitRequest);
}

TEST(Thread, ThreadedPrioritiesBecomeNiceValuesRelativeToTheStarter)
{
    const int base = ownNiceValue();
    const auto clampNice = [](int nice) { return nice < -20 ? -20 : (nice > 19 ? 19 : nice); };
    LoopingThread thread;
    // Lowering is always allowed: 3 is two steps of 3.8 nice levels below the starter's level.
    thread.startThread(3);
    EXPECT_TRUE(eventually([&] { return thread.niceValue.load() == clampNice(base + 8); }))
        << thread.niceValue.load();
    thread.setPriority(0);
    EXPECT_TRUE(eventually([&] { return thread.niceValue.load() == clampNice(base + 19); }))
        << thread.niceValue.load();

    // Raising may be refused in part or in whole: never lower, and never beyond the target.
    thread.setPriority(10);
    EXPECT_EQ(thread.getPriority(), 10);
    const int iterations = thread.iterations.load();
    ASSERT_TRUE(eventually([&] { return thread.iterations.load() > iterations + 1; }));
    EXPECT_LE(thread.niceValue.load(), clampNice(base + 19));
    EXPECT_GE(thread.niceValue.load(), clampNice(base - 19));

    thread.stopThread();
    thread.setPriority(4);
    EXPECT_EQ(thread.getPriority(), 10) << "without a thread the priority is not changed";
}

TEST(Thread, ThreadedMainThreadIsTheOneThatPumps)
{
    q1framework::MessagePump::getInstance()->pump();
    EXPECT_TRUE(Thread::isMainThread());
    LoopingThread thread;
    thread.iterationLimit = 1;
    thread.startThread(Thread::defaultPriority);
    thread.stopThread();
    EXPECT_EQ(thread.starts.load(), 1);
    EXPECT_FALSE(thread.onMainThread);
}

TEST(Thread, SleepWaitsAtLeastTheGivenTime)
{
    const auto start = std::chrono::steady_clock::now();
    Thread::sleep(25);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(25));
    Thread::sleep(-5);
}
