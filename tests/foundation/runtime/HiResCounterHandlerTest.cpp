#include "foundation/runtime/HiResCounterHandler.h"

#include <gtest/gtest.h>


using q1framework::HiResCounterHandler;

TEST(HiResCounterHandler, TickFractionIsReducedByAMillionWhereItDivides)
{
    struct Case
    {
        uint64_t numer, denom;
        uint64_t numerator, denominator, ticksPerSecond;
        double millisecondsPerTick;
    };
    // Nanosecond ticks (this system's clock); a 24 MHz counter (125/3 ns); 2/3 ms ticks.
    const Case cases[] = {
        {1, 1, 1, 1000000, 1000000000, 1e-6},
        {125, 3, 125, 3000000, 24000000, 125.0 / 3000000.0},
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
    EXPECT_EQ(HiResCounterHandler::getInstance()->getTicksPerSecond(), 1000000000u) << "the system clock: ns";
}
