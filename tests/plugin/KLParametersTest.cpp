// KLParameters: the physical units (a value set in a format's unit, LV2's per cent, dB, steps
// and switch, becomes the 0..1 value whose display text reads what was set) and the settings of
// the two time parameters, which the editor's selectors show.

#include "plugin/KLParameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

namespace
{
// "%.2f" of a number, the oracle of a text with two decimals.
std::string twoDecimals(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string textOf(float value, int index)
{
    return KLParameters::getText(value, index).getCString();
}
}  // namespace

TEST(KLParameters, EveryWholePercentReadsBackAsItself)
{
    for (const int index : {KLParameters::attack, KLParameters::release, KLParameters::drive})
        for (int percent = static_cast<int>(KLParameters::getMinimum(index));
             percent <= static_cast<int>(KLParameters::getMaximum(index)); ++percent)
        {
            const float value = KLParameters::fromPhysical(static_cast<float>(percent), index);
            ASSERT_EQ(textOf(value, index), std::to_string(percent) + " %") << KLParameters::getName(index);
        }
}

TEST(KLParameters, EveryHundredthOfADecibelReadsBackAsItself)
{
    for (int hundredths = -900; hundredths <= 900; ++hundredths)
    {
        const double decibels = hundredths / 100.0;
        const float value = KLParameters::fromPhysical(static_cast<float>(decibels), KLParameters::gain);
        ASSERT_EQ(textOf(value, KLParameters::gain), twoDecimals(decibels) + " dB");
    }
}

TEST(KLParameters, RoundNumbersGiveTheirNearestValue)
{
    EXPECT_EQ(KLParameters::fromPhysical(60.0f, KLParameters::attack), 0.8f);
    EXPECT_EQ(KLParameters::fromPhysical(-100.0f, KLParameters::release), 0.0f);
    EXPECT_EQ(KLParameters::fromPhysical(0.0f, KLParameters::release), 0.5f);
    EXPECT_EQ(KLParameters::fromPhysical(-9.0f, KLParameters::gain), 0.0f);
    EXPECT_EQ(KLParameters::fromPhysical(4.5f, KLParameters::gain), 0.75f);
    EXPECT_EQ(KLParameters::fromPhysical(30.0f, KLParameters::drive), 0.3f);
    EXPECT_EQ(KLParameters::fromPhysical(100.0f, KLParameters::drive), 1.0f);
}

TEST(KLParameters, PhysicalValueOfAnyValueComesBackExactly)
{
    std::mt19937 random(14);
    std::uniform_real_distribution<float> values(0.0f, 1.0f);
    for (const int index : {KLParameters::attack, KLParameters::release, KLParameters::gain, KLParameters::drive})
        for (int trial = 0; trial < 20000; ++trial)
        {
            const float physical = KLParameters::toPhysical(values(random), index);
            const float value = KLParameters::fromPhysical(physical, index);
            ASSERT_EQ(KLParameters::toPhysical(value, index), physical) << KLParameters::getName(index);
        }
}

TEST(KLParameters, EndsOfTheValueRangeAreTheEndsOfThePhysicalRange)
{
    for (int index = 0; index < KLParameters::count; ++index)
    {
        EXPECT_EQ(KLParameters::toPhysical(0.0f, index), KLParameters::getMinimum(index)) << index;
        EXPECT_EQ(KLParameters::toPhysical(1.0f, index), KLParameters::getMaximum(index)) << index;
    }
}

TEST(KLParameters, TimeStepsAreTheThreeRangesOfTheValue)
{
    for (const int index : {KLParameters::attackTime, KLParameters::releaseTime})
    {
        EXPECT_EQ(KLParameters::toPhysical(0.2f, index), 0.0f);
        EXPECT_EQ(KLParameters::toPhysical(0.5f, index), 1.0f);
        EXPECT_EQ(KLParameters::toPhysical(0.666f, index), 2.0f);
        for (int step = 0; step < KLParameters::getStepCount(index); ++step)
        {
            const float value = KLParameters::fromPhysical(static_cast<float>(step), index);
            EXPECT_EQ(textOf(value, index), KLParameters::getStepName(index, step));
        }
    }
}

TEST(KLParameters, TimeStepBetweenStepsIsTheNearestAndOutsideTheNearestEnd)
{
    EXPECT_EQ(KLParameters::fromPhysical(0.4f, KLParameters::attackTime), 0.0f);
    EXPECT_EQ(KLParameters::fromPhysical(1.6f, KLParameters::attackTime), 1.0f);
    EXPECT_EQ(KLParameters::fromPhysical(-3.0f, KLParameters::releaseTime), 0.0f);
    EXPECT_EQ(KLParameters::fromPhysical(40.0f, KLParameters::releaseTime), 1.0f);
}

TEST(KLParameters, BypassSwitchIsOnAboveZero)
{
    EXPECT_EQ(KLParameters::fromPhysical(0.0f, KLParameters::bypass), 0.0f);
    EXPECT_EQ(KLParameters::fromPhysical(0.25f, KLParameters::bypass), 1.0f);
    EXPECT_EQ(KLParameters::fromPhysical(-1.0f, KLParameters::bypass), 0.0f);
    EXPECT_EQ(KLParameters::toPhysical(0.5f, KLParameters::bypass), 1.0f);
    EXPECT_EQ(KLParameters::toPhysical(0.499f, KLParameters::bypass), 0.0f);
}

TEST(KLParameters, NotANumberStaysNotANumber)
{
    for (int index = 0; index < KLParameters::count; ++index)
    {
        EXPECT_TRUE(std::isnan(KLParameters::fromPhysical(NAN, index))) << index;
        EXPECT_TRUE(std::isnan(KLParameters::toPhysical(NAN, index))) << index;
    }
}

TEST(KLParameters, IndexOutOfRangeHasNoUnitAndKeepsItsValue)
{
    EXPECT_STREQ(KLParameters::getSymbol(7), "");
    EXPECT_STREQ(KLParameters::getUnit(-1), "");
    EXPECT_EQ(KLParameters::getStepCount(7), 0);
    EXPECT_STREQ(KLParameters::getStepName(4, 3), "");
    EXPECT_EQ(KLParameters::toPhysical(0.3f, 7), 0.3f);
    EXPECT_EQ(KLParameters::fromPhysical(42.0f, -1), 42.0f);
}

TEST(KLParameters, TimeSettingsChangeAt0333And0666ComparedAsDouble)
{
    EXPECT_EQ(KLParameters::getTimeState(0.0f), KLParameters::sharp);
    // 0.333f is a little above 0.333 as a double, 0.3329f below it.
    EXPECT_EQ(KLParameters::getTimeState(0.3329f), KLParameters::sharp);
    EXPECT_EQ(KLParameters::getTimeState(0.333f), KLParameters::mid);
    EXPECT_EQ(KLParameters::getTimeState(0.6659f), KLParameters::mid);
    EXPECT_EQ(KLParameters::getTimeState(0.666f), KLParameters::soft);
    EXPECT_EQ(KLParameters::getTimeState(1.0f), KLParameters::soft);
}

TEST(KLParameters, EachTimeSettingHasItsFactorAndText)
{
    EXPECT_EQ(KLParameters::getTimeFactor(0.1f), 0.5f);
    EXPECT_EQ(KLParameters::getTimeFactor(0.5f), 1.0f);
    EXPECT_EQ(KLParameters::getTimeFactor(0.9f), 2.0f);
    EXPECT_EQ(KLParameters::getText(0.1f, KLParameters::attackTime), q1framework::String("sharp"));
    EXPECT_EQ(KLParameters::getText(0.5f, KLParameters::releaseTime), q1framework::String("mid"));
    EXPECT_EQ(KLParameters::getText(0.9f, KLParameters::attackTime), q1framework::String("soft"));
}
