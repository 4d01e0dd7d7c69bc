// KLParameters: the settings of the two time parameters, which the editor's selectors show.

#include "plugin/KLParameters.h"

#include <gtest/gtest.h>

#include <cmath>

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
