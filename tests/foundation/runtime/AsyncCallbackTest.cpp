#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using q1framework::AsyncCallback;
using q1framework::MessagePump;

namespace
{
void pump()
{
    MessagePump::getInstance()->pump();
}

struct LoggingCallback : AsyncCallback
{
    LoggingCallback(std::string name, std::vector<std::string>* log) : name(std::move(name)), log(log) {}

    void handleAsyncCallback() override
    {
        ++calls;
        log->push_back(name);
        if (action)
            action();
    }

    std::string name;
    std::vector<std::string>* log;
    int calls = 0;
    std::function<void()> action;
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
    EXPECT_EQ(coalesced.getPendingCount(), 1);
    EXPECT_EQ(counted.getPendingCount(), 2);
    EXPECT_TRUE(log.empty()) << "a trigger only counts; the call waits for the pump";

    pump();
    EXPECT_EQ(coalesced.calls, 1);
    EXPECT_EQ(counted.calls, 2);
    EXPECT_EQ(mixed.calls, 1);
    EXPECT_EQ(counted.getPendingCount(), 0);
    EXPECT_FALSE(AsyncCallback::isAnyPending());

    pump();
    EXPECT_EQ(log.size(), 4u) << "nothing pending, nothing called";
    coalesced.trigger(true);
    pump();
    EXPECT_EQ(coalesced.calls, 2) << "coalescing holds only while a call is pending";
}

TEST(AsyncCallback, PendingCallbacksRunInCreationOrderWhateverTheTriggerOrder)
{
    std::vector<std::string> log;
    LoggingCallback first("first", &log), second("second", &log), third("third", &log);
    third.trigger(false);
    first.trigger(false);
    second.trigger(false);
    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "second", "third"}));
}

TEST(AsyncCallback, CallbackMayDeleteItselfOrALaterCallback)
{
    std::vector<std::string> log;
    LoggingCallback first("first", &log);
    auto* self = new SelfDeletingCallback(&log);
    LoggingCallback killer("killer", &log);
    auto* victim = new LoggingCallback("victim", &log);
    LoggingCallback last("last", &log);
    killer.action = [victim] { delete victim; };
    for (AsyncCallback* callback : std::vector<AsyncCallback*>{&first, self, &killer, victim, &last})
        callback->trigger(false);

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "self", "killer", "last"}));
}

TEST(AsyncCallback, CallbackMayDeleteAnEarlierCallback)
{
    std::vector<std::string> log;
    auto* earlier = new LoggingCallback("earlier", &log);
    LoggingCallback killer("killer", &log);
    LoggingCallback next("next", &log);
    killer.action = [&] {
        delete earlier;
        earlier = nullptr;
    };
    killer.trigger(false);
    killer.trigger(false);   // a second call still pending when the registry shifts under it
    next.trigger(false);

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"killer", "next"})) << "the shift must not skip the next entry";
    EXPECT_EQ(killer.getPendingCount(), 1);
    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"killer", "next", "killer"})) << "the skipped call comes next pump";
}

TEST(AsyncCallback, CallbackMadeAndTriggeredDuringDispatchRunsInTheSameHop)
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

TEST(AsyncCallback, DeletedCallbackDropsItsPendingCalls)
{
    std::vector<std::string> log;
    auto* dropped = new LoggingCallback("dropped", &log);
    dropped->trigger(false);
    delete dropped;
    pump();
    EXPECT_TRUE(log.empty());
}

namespace
{
// Triggers a callback from its own thread, coalesced, as often as it can until told to stop.
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

struct CountingCallback : AsyncCallback
{
    void handleAsyncCallback() override { calls.fetch_add(1); }
    std::atomic<int> calls{0};
};
}  // namespace

TEST(AsyncCallback, ThreadedCoalescedTriggersReachTheMainThread)
{
    CountingCallback callback;
    TriggeringThread triggering(callback);
    triggering.startThread(q1framework::Thread::defaultPriority);
    // Every round of the pump after a trigger has been seen must call back at least once more.
    for (int round = 0; round < 20; ++round)
    {
        const int before = callback.calls.load();
        const int triggersBefore = triggering.triggers.load();
        while (triggering.triggers.load() < triggersBefore + 2)
            q1framework::Thread::sleep(0);
        pump();
        EXPECT_GT(callback.calls.load(), before) << "round " << round;
    }
    triggering.stopThread();
    pump();
    EXPECT_EQ(callback.getPendingCount(), 0);
}
