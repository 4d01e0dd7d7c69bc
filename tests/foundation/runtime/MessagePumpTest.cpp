#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Timer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using q1framework::MessagePump;

namespace
{
std::vector<std::string> events;

struct Poster : q1framework::MessagePoster
{
    Poster() : MessagePoster(nullptr) {}
    void handleMessage(q1framework::Message*) override { events.push_back("message"); }
};

struct Callback : q1framework::AsyncCallback
{
    void handleAsyncCallback() override { events.push_back("callback"); }
};

// Pumps again from inside its own callback, as a modal loop would.
struct NestingTimer : q1framework::Timer
{
    void timerCallback() override
    {
        events.push_back("timer");
        if (nest)
        {
            nest = false;
            MessagePump::getInstance()->pump(nowMs);
        }
    }
    double nowMs = 0;
    bool nest = false;
};
}  // namespace

TEST(MessagePump, OnePumpDeliversMessagesThenCallbacksThenTimers)
{
    events.clear();
    NestingTimer timer;
    timer.nest = true;
    timer.startTimer(0);
    Callback callback;
    callback.trigger(true);
    Poster poster;
    poster.postMessage(new q1framework::Message(7));
    timer.nowMs = q1framework::HiResCounterHandler::getMillisecondCounterHiRes() + 1;
    MessagePump::getInstance()->pump(timer.nowMs);
    // The nested pump fires the timer once more, and the outer pass does not fire it again.
    EXPECT_EQ(events, (std::vector<std::string>{"message", "callback", "timer", "timer"}));
}

TEST(MessagePump, PumpWithoutATimeReadsTheClock)
{
    events.clear();
    NestingTimer timer;
    timer.startTimer(0);
    MessagePump::getInstance()->pump();
    EXPECT_EQ(events.size(), 1u);
}
