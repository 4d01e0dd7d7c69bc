// The parameter table: names, defaults and display texts at their boundaries.

#include "plugin/KLParameters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace
{
std::string text(float value, int index)
{
    return KLParameters::getText(value, index).getCString();
}
}  // namespace

TEST(KLParameters, NamesDefaultsAndStateAttributesInIndexOrder)
{
    const char* names[] = {"Attack", "Release", "Bypass", "Gain", "Attack Time", "Release Time", "Drive"};
    const float defaults[] = {0.5f, 0.5f, 0.0f, 0.5f, 0.5f, 0.5f, 0.0f};
    const char* attributes[] = {"attack", "release", "bypass", "gain", "attackTime", "releaseTime", "drive"};
    ASSERT_EQ(KLParameters::count, 7);
    for (int index = 0; index < KLParameters::count; ++index)
    {
        EXPECT_STREQ(KLParameters::getName(index), names[index]);
        EXPECT_EQ(KLParameters::getDefault(index), defaults[index]);
        EXPECT_STREQ(KLParameters::getStateAttribute(index), attributes[index]);
    }
    for (int index : {-1, 7, 1000})
    {
        EXPECT_STREQ(KLParameters::getName(index), "");
        EXPECT_EQ(text(0.5f, index), "");
        EXPECT_EQ(KLParameters::getStateAttribute(index), nullptr);
    }
}

TEST(KLParameters, PercentagesTruncateTowardsZero)
{
    for (int index : {KLParameters::attack, KLParameters::release})
    {
        EXPECT_EQ(text(0.0f, index), "-100 %");
        EXPECT_EQ(text(0.5f, index), "0 %");
        EXPECT_EQ(text(1.0f, index), "100 %");
        // 0.2451 x 200 - 100 = -50.98: towards zero is -50, not -51.
        EXPECT_EQ(text(0.2451f, index), "-50 %");
        // 0.7549 x 200 - 100 = 50.98.
        EXPECT_EQ(text(0.7549f, index), "50 %");
    }
    EXPECT_EQ(text(0.0f, KLParameters::drive), "0 %");
    EXPECT_EQ(text(0.555f, KLParameters::drive), "55 %");
    EXPECT_EQ(text(1.0f, KLParameters::drive), "100 %");
}

TEST(KLParameters, GainReadsDecibelsWithTwoDecimals)
{
    EXPECT_EQ(text(0.0f, KLParameters::gain), "-9.00 dB");
    EXPECT_EQ(text(0.5f, KLParameters::gain), "0.00 dB");
    EXPECT_EQ(text(0.75f, KLParameters::gain), "4.50 dB");
    EXPECT_EQ(text(1.0f, KLParameters::gain), "9.00 dB");
}

TEST(KLParameters, SwitchesAndRangesChangeAtTheirThresholds)
{
    EXPECT_EQ(text(0.499f, KLParameters::bypass), "Off");
    EXPECT_EQ(text(0.5f, KLParameters::bypass), "On");
    for (int index : {KLParameters::attackTime, KLParameters::releaseTime})
    {
        EXPECT_EQ(text(0.0f, index), "sharp");
        EXPECT_EQ(text(0.332f, index), "sharp");
        // The float nearest 0.333 lies just above it, so it is already "mid"; likewise 0.666.
        EXPECT_EQ(text(0.333f, index), "mid");
        EXPECT_EQ(text(0.665f, index), "mid");
        EXPECT_EQ(text(0.666f, index), "soft");
        EXPECT_EQ(text(1.0f, index), "soft");
    }
    EXPECT_EQ(KLParameters::getTimeFactor(0.1f), 0.5f);
    EXPECT_EQ(KLParameters::getTimeFactor(0.5f), 1.0f);
    EXPECT_EQ(KLParameters::getTimeFactor(0.9f), 2.0f);
}

TEST(KLParameters, ValuesFarOutsideTheRangeStillGiveAText)
{
    // Hosts keep values in 0..1; one that does not must not reach an undefined conversion.
    EXPECT_EQ(text(1e30f, KLParameters::attack), "2147483647 %");
    EXPECT_EQ(text(-1e30f, KLParameters::drive), "-2147483648 %");
    EXPECT_EQ(text(NAN, KLParameters::release), "0 %");
}
