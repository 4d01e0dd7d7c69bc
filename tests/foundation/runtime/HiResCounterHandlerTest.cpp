#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>

using q1framework::Date;
using q1framework::DeletedAtShutdown;
using q1framework::HiResCounterHandler;

TEST(HiResCounterHandler, TickFractionIsReducedByAMillionWhereItDivides)
{
    struct Case
    {
        uint64_t numer, denom;
        uint64_t numerator, denominator, ticksPerSecond;
        double millisecondsPerTick;
    };
    // Nanosecond ticks; a 24 MHz counter (125/3 ns); millisecond ticks; 2/3 ms ticks.
    const Case cases[] = {
        {1, 1, 1, 1000000, 1000000000, 1e-6},
        {125, 3, 125, 3000000, 24000000, 125.0 / 3000000.0},
        {1000000, 1, 1, 1, 1000, 1.0},
        {2000000, 3, 2, 3, 1500, 2.0 / 3.0},
    };
    for (const Case& c : cases)
    {
        const HiResCounterHandler handler(c.numer, c.denom);
        SCOPED_TRACE(testing::Message() << c.numer << "/" << c.denom);
        EXPECT_EQ(handler.getNumerator(), c.numerator);
        EXPECT_EQ(handler.getDenominator(), c.denominator);
        EXPECT_EQ(handler.getTicksPerSecond(), c.ticksPerSecond);
        EXPECT_DOUBLE_EQ(handler.getMillisecondsPerTick(), c.millisecondsPerTick);
    }
    EXPECT_DOUBLE_EQ(HiResCounterHandler(125, 3).ticksToMilliseconds(24000000), 1000.0);
    EXPECT_EQ(HiResCounterHandler(1, 1).ticksToMilliseconds(3000000), 3.0);
}

TEST(HiResCounterHandler, SingletonIsMadeOnDemandAndGoesWithDeleteAll)
{
    DeletedAtShutdown::deleteAll();
    HiResCounterHandler* instance = HiResCounterHandler::getInstance();
    EXPECT_EQ(HiResCounterHandler::getInstance(), instance);
    EXPECT_EQ(DeletedAtShutdown::getCount(), 1);
    EXPECT_EQ(instance->getTicksPerSecond(), 1000000000u) << "the system clock counts nanoseconds";

    {
        const HiResCounterHandler converter(125, 3);
        EXPECT_EQ(HiResCounterHandler::getInstance(), instance) << "a converter is not the singleton";
    }
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
    HiResCounterHandler::getMillisecondCounterHiRes();
    EXPECT_EQ(DeletedAtShutdown::getCount(), 1) << "the next use makes a new one";
}

TEST(HiResCounterHandler, MillisecondCounterTracksTheSteadyClock)
{
    using Clock = std::chrono::steady_clock;
    const double ourStart = HiResCounterHandler::getMillisecondCounterHiRes();
    const Clock::time_point steadyStart = Clock::now();
    q1framework::Thread::sleep(30);
    const Clock::time_point steadyEnd = Clock::now();
    const double ourEnd = HiResCounterHandler::getMillisecondCounterHiRes();

    const double steadyMs = std::chrono::duration<double, std::milli>(steadyEnd - steadyStart).count();
    EXPECT_GE(steadyMs, 30.0) << "Thread::sleep returned early";
    // Our readings bracket the steady clock's, on the same monotonic source.
    EXPECT_GE(ourEnd - ourStart + 1e-6, steadyMs);
}

namespace
{
// The calendar fields of a moment, through the C library's UTC conversion.
Date utcDate(std::time_t seconds)
{
    tm utc{};
    gmtime_r(&seconds, &utc);
    return Date{utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_wday, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec};
}

bool sameDate(const Date& a, const Date& b)
{
    return a.year == b.year && a.month == b.month && a.dayOfWeek == b.dayOfWeek && a.dayOfMonth == b.dayOfMonth
           && a.hour == b.hour && a.minute == b.minute && a.second == b.second;
}
}  // namespace

TEST(HiResCounterHandler, DateIsTheWallClockInLocalTime)
{
    ASSERT_TRUE(sameDate(utcDate(951782400), Date{2000, 2, 2, 29, 0, 0, 0})) << "Tuesday 29 February 2000";
    // One hour east of UTC all year round: the local clock reads an hour later than UTC.
    setenv("TZ", "ONE-1", 1);
    tzset();
    const std::time_t before = std::time(nullptr);
    const Date date = HiResCounterHandler::getDate();
    const std::time_t after = std::time(nullptr);
    EXPECT_TRUE(sameDate(date, utcDate(before + 3600)) || sameDate(date, utcDate(after + 3600)))
        << date.year << "-" << date.month << "-" << date.dayOfMonth << " " << date.hour << ":" << date.minute
        << ":" << date.second << " weekday " << date.dayOfWeek;
    unsetenv("TZ");
    tzset();
}
