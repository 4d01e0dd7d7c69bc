#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Thread.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

using q1framework::AsyncCallback;

namespace
{
void pump()
{
    q1framework::MessagePump::getInstance()->pump();
}

struct LoggingCallback : AsyncCallback, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    void handleAsyncCallback() override { record(); }
};

struct SelfDeletingCallback : AsyncCallback
{
    explicit SelfDeletingCallback(std::vector<std::string>* log) : log(log) {}
    void handleAsyncCallback() override
    {
        log->push_back("self");
        delete this;
    }
    std::vector<std::string>* log;
};
}  // namespace

TEST(AsyncCallback, CoalescedTriggersCollapseAndPlainOnesCount)
{
    std::vector<std::string> log;
    LoggingCallback coalesced("coalesced", &log), counted("counted", &log), mixed("mixed", &log);
    coalesced.trigger(true);
    coalesced.trigger(true);
    counted.trigger(false);
    counted.trigger(false);
    mixed.trigger(false);
    mixed.trigger(true);   // one is already pending
    EXPECT_EQ(counted.getPendingCount(), 2);
    EXPECT_TRUE(log.empty()) << "a trigger only counts; the call waits for the pump";

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"coalesced", "counted", "counted", "mixed"}));
    EXPECT_FALSE(AsyncCallback::isAnyPending());
    pump();
    EXPECT_EQ(log.size(), 4u) << "nothing pending, nothing called";
    coalesced.trigger(true);
    pump();
    EXPECT_EQ(coalesced.calls, 2) << "coalescing holds only while a call is pending";
}

TEST(AsyncCallback, RunsInCreationOrderAndSurvivesCallbacksDeletedDuringTheWalk)
{
    std::vector<std::string> log;
    LoggingCallback first("first", &log);
    auto* self = new SelfDeletingCallback(&log);
    LoggingCallback killer("killer", &log);
    auto* victim = new LoggingCallback("victim", &log);
    auto* dropped = new LoggingCallback("dropped", &log);
    LoggingCallback last("last", &log);
    killer.action = [&] {
        delete victim;
        victim = nullptr;
    };
    for (AsyncCallback* callback : std::vector<AsyncCallback*>{&last, victim, dropped, &killer, self, &first})
        callback->trigger(false);
    delete dropped;   // its pending call goes with it

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "self", "killer", "last"}));
}

TEST(AsyncCallback, CallbackMayDeleteAnEarlierOne)
{
    std::vector<std::string> log;
    auto* earlier = new LoggingCallback("earlier", &log);
    LoggingCallback killer("killer", &log), next("next", &log);
    killer.action = [&] {
        delete earlier;
        earlier = nullptr;
    };
    killer.trigger(false);
    killer.trigger(false);   // still pending when the registry shifts under it
    next.trigger(false);

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"killer", "next"})) << "the shift must not skip the next entry";
    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"killer", "next", "killer"})) << "the passed-over call comes next";
}

TEST(AsyncCallback, CallbackMadeAndTriggeredDuringTheWalkRunsInTheSameHop)
{
    std::vector<std::string> log;
    LoggingCallback maker("maker", &log);
    std::unique_ptr<LoggingCallback> made;
    maker.action = [&] {
        made = std::make_unique<LoggingCallback>("made", &log);
        made->trigger(true);
    };
    maker.trigger(true);
    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"maker", "made"}));
}

namespace
{
struct CountingCallback : AsyncCallback
{
    void handleAsyncCallback() override { calls.fetch_add(1); }
    std::atomic<int> calls{0};
};

// Triggers a callback, coalesced, from its own thread until told to stop.
struct TriggeringThread : q1framework::Thread
{
    explicit TriggeringThread(AsyncCallback& callback) : callback(callback) {}
    ~TriggeringThread() override { stopThread(); }
    void run() override
    {
        while (!threadShouldExit())
        {
            callback.trigger(true);
            triggers.fetch_add(1);
        }
    }
    AsyncCallback& callback;
    std::atomic<int> triggers{0};
};
}  // namespace

TEST(AsyncCallback, ThreadedCoalescedTriggersReachTheMainThread)
{
    CountingCallback callback;
    TriggeringThread triggering(callback);
    triggering.startThread(q1framework::Thread::defaultPriority);
    // A trigger seen after the last pump must bring at least one more call in the next.
    for (int round = 0; round < 20; ++round)
    {
        const int callsBefore = callback.calls.load();
        const int triggersBefore = triggering.triggers.load();
        while (triggering.triggers.load() < triggersBefore + 2)
            q1framework::Thread::sleep(0);
        pump();
        EXPECT_GT(callback.calls.load(), callsBefore) << "round " << round;
    }
    triggering.stopThread();
    pump();
    EXPECT_EQ(callback.getPendingCount(), 0);
}
