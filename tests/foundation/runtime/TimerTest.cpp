#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Timer.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using q1framework::HiResCounterHandler;
using q1framework::MessagePump;
using q1framework::Timer;

// The pump is driven with explicit times on the real clock, far enough ahead of the moment the
// timers were started that the few microseconds a start takes never matter: a check that a timer
// fires uses a time after `started` (read after startTimer), a check that it does not uses one
// before `before` (read ahead of it).
namespace
{
double now()
{
    return HiResCounterHandler::getMillisecondCounterHiRes();
}

void pumpAt(double timeMs)
{
    MessagePump::getInstance()->pump(timeMs);
}

struct LoggingTimer : Timer
{
    LoggingTimer(std::string name, std::vector<std::string>* log) : name(std::move(name)), log(log) {}
    ~LoggingTimer() override
    {
        if (onDestroyed)
            onDestroyed();
    }

    void timerCallback() override
    {
        ++callbacks;
        if (log != nullptr)
            log->push_back(name);
        if (action)
            action();
    }

    std::string name;
    std::vector<std::string>* log;
    int callbacks = 0;
    std::function<void()> action;
    std::function<void()> onDestroyed;
};

struct SelfDeletingTimer : Timer
{
    SelfDeletingTimer(std::vector<std::string>* log, int* destroyed) : log(log), destroyed(destroyed) {}
    ~SelfDeletingTimer() override { ++*destroyed; }

    void timerCallback() override
    {
        log->push_back("self");
        delete this;
    }

    std::vector<std::string>* log;
    int* destroyed;
};
}  // namespace

TEST(Timer, FiresDueTimersEarliestFirstAndOnlyWhenDue)
{
    std::vector<std::string> log;
    LoggingTimer slow("slow", &log), fast("fast", &log), middle("middle", &log), tied("tied", &log);
    const double before = now();
    slow.startTimer(3000);
    fast.startTimer(1000);
    middle.startTimer(2000);
    tied.startTimer(2000);   // started after middle, due right after it
    const double started = now();

    EXPECT_TRUE(slow.isTimerRunning());
    EXPECT_EQ(slow.getInterval(), 3000);
    pumpAt(before + 999);
    EXPECT_TRUE(log.empty()) << "nothing is due before its interval has passed";

    pumpAt(started + 3000);
    EXPECT_EQ(log, (std::vector<std::string>{"fast", "middle", "tied", "slow"}));
}

TEST(Timer, RepeatsAtItsIntervalAndDropsTicksMissedByALatePump)
{
    LoggingTimer timer("timer", nullptr);
    const double before = now();
    timer.startTimer(1000);
    const double started = now();
    ASSERT_LT(started - before, 400.0) << "starting a timer took implausibly long";

    pumpAt(started + 1000);
    EXPECT_EQ(timer.callbacks, 1);
    pumpAt(started + 1000);
    EXPECT_EQ(timer.callbacks, 1) << "the next tick is a full interval later";
    pumpAt(started + 2000);
    EXPECT_EQ(timer.callbacks, 2);

    // Eight ticks late: one callback, not a burst of catch-up calls.
    pumpAt(started + 10500);
    EXPECT_EQ(timer.callbacks, 3);
    // The schedule keeps its phase: the next tick is at start + 11 s, not 1 s after the late pump.
    pumpAt(before + 10999);
    EXPECT_EQ(timer.callbacks, 3);
    pumpAt(started + 11000);
    EXPECT_EQ(timer.callbacks, 4);
}

TEST(Timer, StopAndRestartInsideItsOwnCallback)
{
    LoggingTimer stopping("stopping", nullptr);
    stopping.action = [&] { stopping.stopTimer(); };
    LoggingTimer restarting("restarting", nullptr);
    restarting.action = [&] { restarting.startTimer(5000); };

    stopping.startTimer(100);
    restarting.startTimer(100);
    const double started = now();
    pumpAt(started + 100);
    EXPECT_EQ(stopping.callbacks, 1);
    EXPECT_FALSE(stopping.isTimerRunning());
    EXPECT_TRUE(restarting.isTimerRunning());
    EXPECT_EQ(restarting.getInterval(), 5000);

    const double restarted = now();
    pumpAt(restarted + 4000);
    EXPECT_EQ(stopping.callbacks, 1) << "a stopped timer stays silent";
    EXPECT_EQ(restarting.callbacks, 1) << "the restart began a new 5 s schedule";
    pumpAt(restarted + 5000);
    EXPECT_EQ(restarting.callbacks, 2);
}

TEST(Timer, CallbackMayDeleteItselfAndOtherTimersDueInTheSamePass)
{
    std::vector<std::string> log;
    int destroyed = 0;
    auto* self = new SelfDeletingTimer(&log, &destroyed);
    auto* victim = new LoggingTimer("victim", &log);
    LoggingTimer killer("killer", &log);
    LoggingTimer survivor("survivor", &log);
    victim->onDestroyed = [&] { ++destroyed; };
    killer.action = [&] {
        delete victim;
        victim = nullptr;
    };

    self->startTimer(100);
    killer.startTimer(200);
    victim->startTimer(300);
    survivor.startTimer(400);
    const double started = now();
    pumpAt(started + 1000);

    EXPECT_EQ(log, (std::vector<std::string>{"self", "killer", "survivor"}));
    EXPECT_EQ(destroyed, 2);
    pumpAt(started + 2000);
    EXPECT_EQ(log.size(), 5u) << "the two remaining timers go on repeating";
}

TEST(Timer, TimerStartedOrStoppedByAnotherCallbackTakesEffectFromTheNextPump)
{
    std::vector<std::string> log;
    LoggingTimer late("late", &log);
    LoggingTimer fresh("fresh", &log);   // interval 0: due at once, at every pump
    LoggingTimer starter("starter", &log);
    starter.action = [&] {
        late.stopTimer();
        if (!fresh.isTimerRunning())
            fresh.startTimer(0);
    };
    starter.startTimer(1000);
    late.startTimer(1500);
    const double started = now();

    pumpAt(started + 1600);
    EXPECT_EQ(log, std::vector<std::string>{"starter"}) << "stopped before its turn; the new one waits";
    EXPECT_FALSE(late.isTimerRunning());
    pumpAt(started + 1650);
    EXPECT_EQ(log, (std::vector<std::string>{"starter", "fresh"}));
    pumpAt(started + 1700);
    pumpAt(started + 1750);
    EXPECT_EQ(fresh.callbacks, 3) << "an interval of 0 fires once per pump, and each pump ends";
    EXPECT_EQ(starter.callbacks, 1);
}

TEST(Timer, StartingARunningTimerBeginsItsScheduleAgain)
{
    LoggingTimer timer("timer", nullptr);
    timer.startTimer(1000);
    const double beforeRestart = now();
    timer.startTimer(3000);
    pumpAt(beforeRestart + 2000);
    EXPECT_EQ(timer.callbacks, 0) << "the first schedule's tick at 1 s is gone";
    EXPECT_EQ(timer.getInterval(), 3000);
    pumpAt(now() + 3000);
    EXPECT_EQ(timer.callbacks, 1);
}

TEST(Timer, DestroyedOrStoppedTimersLeaveThePump)
{
    const int32_t before = MessagePump::getInstance()->getTimerCount();
    {
        LoggingTimer first("first", nullptr), second("second", nullptr);
        first.startTimer(10);
        second.startTimer(10);
        first.startTimer(20);
        EXPECT_EQ(MessagePump::getInstance()->getTimerCount(), before + 2);
        second.stopTimer();
        second.stopTimer();
        EXPECT_EQ(MessagePump::getInstance()->getTimerCount(), before + 1);
    }
    EXPECT_EQ(MessagePump::getInstance()->getTimerCount(), before);
}
