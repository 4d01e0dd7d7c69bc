#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/VSyncTimer.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using q1framework::HiResCounterHandler;
using q1framework::MessagePump;
using q1framework::VSyncTimer;

namespace
{
struct Window : VSyncTimer::Listener, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    void vsyncTick() override { record(); }
};

class VSyncTimerTest : public ::testing::Test
{
protected:
    // Restarts the frame clock, so that earlier pumps at made-up times do not matter, and then
    // pumps at made-up times one frame apart: each pump finds exactly one frame due.
    void SetUp() override
    {
        VSyncTimer::getInstance().startTimer(VSyncTimer::frameIntervalMs);
        frameTimeMs = HiResCounterHandler::getMillisecondCounterHiRes();
    }

    void TearDown() override
    {
        for (Window* window : {&first, &second, &third})
            VSyncTimer::removeListener(window);
    }

    void nextFrame()
    {
        frameTimeMs += VSyncTimer::frameIntervalMs;
        MessagePump::getInstance()->pump(frameTimeMs);
    }

    double frameTimeMs = 0;
    std::vector<std::string> frames;
    Window first{"first", &frames}, second{"second", &frames}, third{"third", &frames};
};
}  // namespace

TEST(VSyncTimer, RunsFromLoadTimeAtSixteenMilliseconds)
{
    EXPECT_TRUE(VSyncTimer::getInstance().isTimerRunning());
    EXPECT_EQ(VSyncTimer::getInstance().getInterval(), 16);
}

TEST_F(VSyncTimerTest, EveryFrameTicksEachListenerOnceInOrder)
{
    VSyncTimer::addListener(&first);
    VSyncTimer::addListener(&second);
    VSyncTimer::addListener(&first);   // already listed
    VSyncTimer::addListener(nullptr);
    EXPECT_EQ(VSyncTimer::getListenerCount(), 2);

    nextFrame();
    EXPECT_EQ(frames, (std::vector<std::string>{"first", "second"}));
    nextFrame();
    EXPECT_EQ(frames.size(), 4u);

    VSyncTimer::removeListener(&first);
    frames.clear();
    nextFrame();
    EXPECT_EQ(frames, std::vector<std::string>{"second"});
}

TEST_F(VSyncTimerTest, ListenersAddedOrRemovedDuringATick)
{
    VSyncTimer::addListener(&first);
    VSyncTimer::addListener(&second);
    first.action = [this] {
        VSyncTimer::removeListener(&second);   // later in the list: not ticked this frame
        VSyncTimer::addListener(&third);       // appended: ticked in this very frame
    };
    nextFrame();
    EXPECT_EQ(frames, (std::vector<std::string>{"first", "third"}));
}
