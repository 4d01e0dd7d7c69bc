#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

using q1framework::Thread;

namespace
{
// Runs until it is asked to exit, counting its runs; or, when told to, returns by itself.
class Worker : public Thread
{
public:
    ~Worker() override { stopThread(); }

    void run() override
    {
        runs.fetch_add(1);
        onOwnThread.store(pthread_equal(pthread_self(), starter) == 0);
        errno = 0;
        const int nice = getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)));
        niceValue.store(errno == 0 ? nice : 1000);
        started.store(true);
        if (stopItself)
            stopThread();
        while (!threadShouldExit() && !returnAtOnce)
            Thread::sleep(1);
        sawExitRequest.store(threadShouldExit());
    }

    void waitUntilStarted()
    {
        while (!started.load())
            Thread::sleep(1);
    }

    pthread_t starter = pthread_self();
    bool returnAtOnce = false;
    bool stopItself = false;
    std::atomic<int> runs{0};
    std::atomic<bool> started{false};
    std::atomic<bool> onOwnThread{false};
    std::atomic<bool> sawExitRequest{false};
    std::atomic<int> niceValue{1000};
};
}  // namespace

TEST(Thread, ThreadedRunGoesOnItsOwnThreadUntilStopThreadAsksItToExitAndWaits)
{
    Worker worker;
    EXPECT_FALSE(worker.isThreadRunning());
    worker.startThread(Thread::defaultPriority);
    worker.waitUntilStarted();
    EXPECT_TRUE(worker.onOwnThread.load());
    EXPECT_TRUE(worker.isThreadRunning());
    worker.stopThread();
    // stopThread returns only after run has: what run did last is visible.
    EXPECT_TRUE(worker.sawExitRequest.load());
    EXPECT_FALSE(worker.isThreadRunning());
    EXPECT_FALSE(worker.threadShouldExit()) << "a stopped object has no thread to ask";
}

TEST(Thread, ThreadedStartingARunningThreadDoesNothingAndAFinishedOneRunsAgain)
{
    Worker worker;
    worker.startThread(Thread::defaultPriority);
    worker.waitUntilStarted();
    worker.startThread(Thread::defaultPriority);
    worker.stopThread();
    EXPECT_EQ(worker.runs.load(), 1);

    worker.returnAtOnce = true;
    worker.started = false;
    worker.startThread(Thread::defaultPriority);
    worker.waitUntilStarted();
    while (worker.isThreadRunning())
        Thread::sleep(1);
    EXPECT_FALSE(worker.sawExitRequest.load()) << "run returned by itself";
    worker.started = false;
    worker.startThread(Thread::defaultPriority);
    worker.waitUntilStarted();
    worker.stopThread();
    EXPECT_EQ(worker.runs.load(), 3);
}

TEST(Thread, ThreadedStopThreadFromRunItselfOnlyAsks)
{
    Worker worker;
    worker.stopItself = true;
    worker.startThread(Thread::defaultPriority);
    while (worker.isThreadRunning())
        Thread::sleep(1);
    EXPECT_TRUE(worker.sawExitRequest.load());
    worker.stopThread();  // the owner cleans up what run could not
    EXPECT_FALSE(worker.isThreadRunning());
}

TEST(Thread, ThreadedTheLowestPriorityRunsAtALowerSchedulingPriorityThanItsStarter)
{
    errno = 0;
    const int starterNice = getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)));
    ASSERT_EQ(errno, 0);
    Worker worker;
    worker.startThread(0);
    worker.waitUntilStarted();
    EXPECT_EQ(worker.getPriority(), 0);
    // Priority 0 is the far end from the ordinary 5: 19 nice steps lower, within the range.
    EXPECT_EQ(worker.niceValue.load(), std::min(19, starterNice + 19));
    worker.stopThread();
}

TEST(Thread, ThreadedTheDestructorStopsTheThread)
{
    std::atomic<bool> finished{false};
    class Flagging : public Thread
    {
    public:
        explicit Flagging(std::atomic<bool>& flag) : flag(flag) {}
        ~Flagging() override { stopThread(); }
        void run() override
        {
            while (!threadShouldExit())
                Thread::sleep(1);
            flag.store(true);
        }
        std::atomic<bool>& flag;
    };
    {
        Flagging thread(finished);
        thread.startThread(Thread::defaultPriority);
    }
    EXPECT_TRUE(finished.load());
}
