#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Timer.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using q1framework::MessagePump;
using q1framework::Timer;

// The pump is driven with made-up times on the real clock, far enough from the moment the timers
// were started that the microseconds a start takes never matter: a check that a timer fires uses
// a time after `started` (read after the starts), one that it does not, a time before `before`.
namespace
{
double now()
{
    return q1framework::HiResCounterHandler::getMillisecondCounterHiRes();
}

void pumpAt(double timeMs)
{
    MessagePump::getInstance()->pump(timeMs);
}
}  // namespace

TEST(Timer, FiresDueTimersEarliestFirstAndRepeatsWithoutBursts)
{
    std::vector<std::string> log;
    LoggingTimer slow("slow", &log), fast("fast", &log), middle("middle", &log), tied("tied", &log);
    const double before = now();
    slow.startTimer(3000);
    fast.startTimer(1000);
    middle.startTimer(2000);
    tied.startTimer(2000);   // started after middle, so due right after it
    const double started = now();

    pumpAt(before + 999);
    EXPECT_TRUE(log.empty()) << "nothing is due before its interval has passed";
    pumpAt(started + 3000);
    EXPECT_EQ(log, (std::vector<std::string>{"fast", "middle", "tied", "slow"}));
    pumpAt(started + 3000);
    EXPECT_EQ(fast.calls, 1) << "the next tick is a full interval later";

    pumpAt(started + 10500);
    EXPECT_EQ(fast.calls, 2) << "eight ticks late: one callback, not a burst";
    // The schedule keeps its phase: next at start + 11 s, not one interval after the late pump.
    pumpAt(before + 10999);
    EXPECT_EQ(fast.calls, 2);
    pumpAt(started + 11000);
    EXPECT_EQ(fast.calls, 3);

    // Interval 0 is due at every pump, at that pump's time: equal times fire in starting order.
    log.clear();
    LoggingTimer zero("zero", &log), alsoZero("also zero", &log);
    zero.startTimer(0);
    alsoZero.startTimer(0);
    const double later = now();
    pumpAt(later + 1);
    pumpAt(later + 2);
    EXPECT_EQ(log, (std::vector<std::string>{"zero", "also zero", "zero", "also zero"}));
}

TEST(Timer, CallbacksMayStopRestartOrDeleteTimersTheirOwnIncluded)
{
    std::vector<std::string> log;
    auto* self = new LoggingTimer("self", &log);
    auto* victim = new LoggingTimer("victim", &log);
    LoggingTimer stopping("stopping", &log), restarting("restarting", &log), killer("killer", &log),
        stopped("stopped", &log), fresh("fresh", &log);
    self->action = [&] { delete self; };
    stopping.action = [&] { stopping.stopTimer(); };
    restarting.action = [&] { restarting.startTimer(5000); };
    killer.action = [&] {
        delete victim;
        victim = nullptr;
        stopped.stopTimer();
        if (!fresh.isTimerRunning())
            fresh.startTimer(0);   // due at once, at every pump, but not in this one
    };
    self->startTimer(100);
    stopping.startTimer(200);
    restarting.startTimer(300);
    killer.startTimer(400);
    victim->startTimer(500);
    stopped.startTimer(600);
    const double started = now();

    pumpAt(started + 1000);
    EXPECT_EQ(log, (std::vector<std::string>{"self", "stopping", "restarting", "killer"}));
    EXPECT_FALSE(stopping.isTimerRunning());
    log.clear();
    pumpAt(started + 1400);
    pumpAt(started + 1450);
    // Earliest due first: fresh since its start, killer only 1.2 s after its own.
    EXPECT_EQ(log, (std::vector<std::string>{"fresh", "killer", "fresh"}));
    pumpAt(now() + 5000);
    EXPECT_EQ(restarting.calls, 2) << "the restart began a new 5 s schedule";
}
