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
// Civil date of a day count since 1970-01-01 (proleptic Gregorian), by era arithmetic.
Date civilFromUnixTime(std::time_t seconds)
{
    Date date;
    const long long days = seconds / 86400 - (seconds % 86400 < 0 ? 1 : 0);
    const long long secondOfDay = seconds - days * 86400;
    date.hour = static_cast<int>(secondOfDay / 3600);
    date.minute = static_cast<int>(secondOfDay / 60 % 60);
    date.second = static_cast<int>(secondOfDay % 60);
    date.dayOfWeek = static_cast<int>(((days % 7) + 11) % 7);   // day 0 was a Thursday (4)

    const long long shifted = days + 719468;   // days since 0000-03-01
    const long long era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const long long dayOfEra = shifted - era * 146097;
    const long long yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long monthFromMarch = (5 * dayOfYear + 2) / 153;
    date.dayOfMonth = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    date.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    date.year = static_cast<int>(yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0));
    return date;
}

bool sameDate(const Date& a, const Date& b)
{
    return a.year == b.year && a.month == b.month && a.dayOfWeek == b.dayOfWeek && a.dayOfMonth == b.dayOfMonth
           && a.hour == b.hour && a.minute == b.minute && a.second == b.second;
}
}  // namespace

TEST(HiResCounterHandler, DateIsTheWallClockInLocalTime)
{
    const Date knownDay = civilFromUnixTime(951782400);   // 2000-02-29 00:00:00, a Tuesday
    ASSERT_TRUE(sameDate(knownDay, Date{2000, 2, 2, 29, 0, 0, 0}));

    setenv("TZ", "UTC0", 1);
    tzset();
    const std::time_t before = std::time(nullptr);
    const Date date = HiResCounterHandler::getDate();
    const std::time_t after = std::time(nullptr);
    EXPECT_TRUE(sameDate(date, civilFromUnixTime(before)) || sameDate(date, civilFromUnixTime(after)))
        << date.year << "-" << date.month << "-" << date.dayOfMonth << " " << date.hour << ":" << date.minute
        << ":" << date.second << " weekday " << date.dayOfWeek;

    // One hour east of UTC all year round: the same instant an hour later on the local clock.
    setenv("TZ", "ONE-1", 1);
    tzset();
    const std::time_t shiftedBefore = std::time(nullptr);
    const Date shifted = HiResCounterHandler::getDate();
    const std::time_t shiftedAfter = std::time(nullptr);
    EXPECT_TRUE(sameDate(shifted, civilFromUnixTime(shiftedBefore + 3600))
                || sameDate(shifted, civilFromUnixTime(shiftedAfter + 3600)));
    unsetenv("TZ");
    tzset();
}
