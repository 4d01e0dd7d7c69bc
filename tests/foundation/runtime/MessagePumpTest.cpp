#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/MessagePump.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
struct Poster : q1framework::MessagePoster, LoggedCalls
{
    explicit Poster(std::vector<std::string>* log) : MessagePoster(nullptr), LoggedCalls("message", log) {}
    void handleMessage(q1framework::Message*) override { record(); }
};
}  // namespace

TEST(MessagePump, OnePumpDeliversMessagesThenCallbacksThenTimers)
{
    // Both pumps run at the same made-up time, at which the timer is due again after firing.
    const double nowMs = q1framework::HiResCounterHandler::getMillisecondCounterHiRes() + 1;
    const auto pumpNow = [nowMs] { q1framework::MessagePump::getInstance()->pump(nowMs); };
    std::vector<std::string> log;
    LoggingTimer timer("timer", &log);
    timer.action = [&] {
        timer.action = nullptr;
        pumpNow();   // nested, as a modal loop would
    };
    timer.startTimer(0);
    LoggingCallback callback("callback", &log);
    callback.trigger(true);
    Poster poster(&log);
    poster.postMessage(new q1framework::Message(7));
    // The nested pump fires the timer once more, and the outer pass does not fire it again.
    pumpNow();
    EXPECT_EQ(log, (std::vector<std::string>{"message", "callback", "timer", "timer"}));
}
