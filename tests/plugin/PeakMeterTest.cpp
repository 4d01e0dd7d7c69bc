// PeakMeter: short sequences worked out by hand.

#include "plugin/PeakMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
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

TEST(PeakMeter, OneMaximumPerBlockFollowsTheFrameByFrameStepsOnRandomBlocks)
{
    // The frame-by-frame law as the steps read: raise to the louder sample, then fall one step.
    const auto stepByStep = [](float level, const std::vector<float>& left, const std::vector<float>& right,
                               float decay) {
        for (std::size_t frame = 0; frame < left.size(); ++frame)
        {
            level = std::max(level, std::fabs(left[frame]));
            if (!right.empty())
                level = std::max(level, std::fabs(right[frame]));
            level -= decay;
        }
        return std::min(std::max(level, 0.0f), 1.5f);
    };
    std::mt19937 random(11);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int round = 0; round < 200; ++round)
    {
        const int frames = static_cast<int>(random() % 700);
        // Steps large enough that a frame counted one step off shows beyond the rounding.
        const float decay = round % 2 == 0 ? 0.001f : 0.0001f;
        std::vector<float> left(frames), right(round % 3 == 0 ? 0 : frames);
        for (float& sample : left)
            sample = (unit(random) - 0.5f) * std::exp(-8.0f * unit(random));
        for (float& sample : right)
            sample = (unit(random) - 0.5f) * std::exp(-8.0f * unit(random));
        PeakMeter meter;
        meter.decayPerSample = decay;
        meter.peak = unit(random);
        const float expected = stepByStep(meter.peak, left, right, decay);
        // Each of the frame-by-frame steps rounds; the block's one subtraction rounds once.
        EXPECT_NEAR(measure(meter, left, right), expected, 2e-5f) << "round " << round;
    }
}
