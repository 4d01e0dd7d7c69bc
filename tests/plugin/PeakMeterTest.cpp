// PeakMeter: short sequences worked out by hand.

#include "plugin/PeakMeter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
float measure(PeakMeter& meter, std::vector<float> left, std::vector<float> right = {})
{
    float* channels[] = {left.data(), right.data()};
    return meter.measure(channels, right.empty() ? 1 : 2, static_cast<int>(left.size()));
}
}  // namespace

TEST(PeakMeter, RisesToEachLouderSampleAndFallsOneStepPerFrame)
{
    PeakMeter meter;
    meter.decayPerSample = 0.125f;  // exact in binary, so the steps are exact
    // 0.5 -> 0.375; 0.25 is lower -> 0.25; -0.75 is louder -> 0.625.
    EXPECT_EQ(measure(meter, {0.5f, 0.25f, -0.75f}), 0.625f);
    // The next block starts from the stored peak: 0.5, 0.375.
    EXPECT_EQ(measure(meter, {0.0f, 0.0f}), 0.375f);
    // Stereo, frame 0: right -0.875 is the louder; frame 1: left 0.5 is below 0.75. 0.875 - 2 x 0.125.
    EXPECT_EQ(measure(meter, {0.25f, 0.5f}, {-0.875f, 0.0f}), 0.625f);
}

TEST(PeakMeter, ResultIsHeldBetweenZeroAndOneAndAHalf)
{
    PeakMeter meter;
    meter.peak = 3.0f;
    EXPECT_EQ(measure(meter, {}), 1.5f);  // an empty block only limits
    // A sample of 2.0 reads 1.5 after the block, whatever the decay.
    EXPECT_EQ(measure(meter, {2.0f}), 1.5f);
    // The default decay of 0.1 per sample empties the meter in a few samples, and it stays at 0.
    EXPECT_EQ(measure(meter, std::vector<float>(20, 0.0f)), 0.0f);
    // A NaN never raises it; an infinite sample shows as 1.5.
    EXPECT_EQ(measure(meter, {NAN}), 0.0f);
    EXPECT_EQ(measure(meter, {INFINITY}), 1.5f);
}
