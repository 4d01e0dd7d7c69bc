#include "foundation/runtime/AsyncCallback.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using q1framework::AsyncCallback;

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
    EXPECT_TRUE(log.empty()) << "a trigger only counts; the call waits for the pump";

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"coalesced", "counted", "counted", "mixed"}));
    coalesced.trigger(true);
    pump();
    pump();
    EXPECT_EQ(coalesced.calls, 2) << "coalescing holds only while a call is pending";
}

TEST(AsyncCallback, CallbacksMayDeleteOrMakeOthersDuringTheWalk)
{
    // Registry order: earlier, killer, self, victim, dropped, last. The killer deletes one entry
    // before it and one behind it and makes a new one; self deletes itself.
    std::vector<std::string> log;
    auto* earlier = new LoggingCallback("earlier", &log);
    LoggingCallback killer("killer", &log);
    auto* self = new LoggingCallback("self", &log);
    auto* victim = new LoggingCallback("victim", &log);
    auto* dropped = new LoggingCallback("dropped", &log);
    LoggingCallback last("last", &log);
    std::unique_ptr<LoggingCallback> made;
    killer.action = [&] {
        delete earlier;
        delete victim;
        made = std::make_unique<LoggingCallback>("made", &log);
        made->trigger(true);
    };
    self->action = [&] { delete self; };
    for (AsyncCallback* callback : std::vector<AsyncCallback*>{&last, victim, dropped, self, &killer})
        callback->trigger(false);
    killer.trigger(false);   // still pending when the registry shifts under it
    delete dropped;          // its pending call goes with it

    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"killer", "self", "last", "made"}))
        << "the shift must skip neither the next entry nor the one made";
    killer.action = nullptr;
    pump();
    EXPECT_EQ(log.back(), "killer") << "the passed-over call comes in the next hop";
}
