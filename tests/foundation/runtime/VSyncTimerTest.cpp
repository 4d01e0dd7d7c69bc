#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/VSyncTimer.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using q1framework::VSyncTimer;

namespace
{
struct Window : VSyncTimer::Listener, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    void vsyncTick() override { record(); }
};
}  // namespace

TEST(VSyncTimer, RunsFromLoadTimeAndTicksEachListenerOncePerFrameInOrder)
{
    VSyncTimer& clock = VSyncTimer::getInstance();
    EXPECT_TRUE(clock.isTimerRunning());
    EXPECT_EQ(clock.getInterval(), 16);

    // Restarted, then pumped at made-up times one frame apart: each pump finds one frame due.
    clock.startTimer(VSyncTimer::frameIntervalMs);
    double frameTimeMs = q1framework::HiResCounterHandler::getMillisecondCounterHiRes();
    const auto nextFrame = [&] {
        q1framework::MessagePump::getInstance()->pump(frameTimeMs += VSyncTimer::frameIntervalMs);
    };
    std::vector<std::string> frames;
    Window first("first", &frames), second("second", &frames), third("third", &frames);
    VSyncTimer::addListener(&first);
    VSyncTimer::addListener(&second);
    VSyncTimer::addListener(&first);   // already listed
    VSyncTimer::addListener(nullptr);
    nextFrame();
    nextFrame();
    EXPECT_EQ(frames, (std::vector<std::string>{"first", "second", "first", "second"}));

    // During a tick: a listener removed behind the current one misses this frame, one added
    // at the end gets it.
    first.action = [&] {
        VSyncTimer::removeListener(&second);
        VSyncTimer::addListener(&third);
    };
    frames.clear();
    nextFrame();
    EXPECT_EQ(frames, (std::vector<std::string>{"first", "third"}));
    for (Window* window : {&first, &third})
        VSyncTimer::removeListener(window);
    EXPECT_EQ(VSyncTimer::getListenerCount(), 0);
}
