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
    std::vector<std::string> log;
    LoggingTimer timer("timer", &log);
    timer.action = [&] {
        timer.action = nullptr;
        pump();   // nested, as a modal loop would
    };
    timer.startTimer(0);
    LoggingCallback callback("callback", &log);
    callback.trigger(true);
    Poster poster(&log);
    poster.postMessage(new q1framework::Message(7));
    // The pump without a time reads the clock. The nested pump fires the timer once more, and the
    // outer pass does not fire it again.
    pump();
    EXPECT_EQ(log, (std::vector<std::string>{"message", "callback", "timer", "timer"}));
}
