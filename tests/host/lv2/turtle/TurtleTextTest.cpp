// TurtleText: the numbers and texts of the bundle's Turtle documents read back as written.

#include "host/lv2/turtle/TurtleText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>

TEST(TurtleText, NumbersHaveTheFewestDecimalsAndAPoint)
{
    EXPECT_EQ(TurtleText::number(-100.0f), "-100.0");
    EXPECT_EQ(TurtleText::number(0.0f), "0.0");
    EXPECT_EQ(TurtleText::number(1.5f), "1.5");
    EXPECT_EQ(TurtleText::number(0.3f), "0.3");
    EXPECT_EQ(TurtleText::number(-2.25f), "-2.25");
}

TEST(TurtleText, NumbersReadBackAsTheSameFloat)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> values(-1000.0f, 1000.0f);
    for (int trial = 0; trial < 10000; ++trial)
    {
        const float value = trial % 2 == 0 ? values(random) : values(random) * 1e-12f;
        ASSERT_EQ(std::strtof(TurtleText::number(value).c_str(), nullptr), value) << TurtleText::number(value);
    }
}

TEST(TurtleText, NumbersWithoutATurtleFormAreZero)
{
    EXPECT_EQ(TurtleText::number(NAN), "0.0");
    EXPECT_EQ(TurtleText::number(INFINITY), "0.0");
}

TEST(TurtleText, LiteralsEscapeQuotesBackslashesAndLineBreaks)
{
    EXPECT_EQ(TurtleText::literal("Attack Time"), "\"Attack Time\"");
    EXPECT_EQ(TurtleText::literal("a \"b\" \\ c\nd"), "\"a \\\"b\\\" \\\\ c\\nd\"");
}
