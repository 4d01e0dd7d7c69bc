#include "plugin/PeakMeter.h"

#include <cmath>

namespace
{
// The loudest level a meter shows; a louder peak is held here so the meter recovers at once.
constexpr float highestPeak = 1.5f;
}  // namespace

float PeakMeter::measure(const float* const* channels, int channelCount, int frames)
{
    float level = peak;
    if (channelCount == 1)
    {
        const float* samples = channels[0];
        for (int frame = 0; frame < frames; ++frame)
        {
            const float magnitude = std::fabs(samples[frame]);
            if (magnitude > level)
                level = magnitude;
            level = level - decayPerSample;
        }
    }
    else
    {
        const float* left = channels[0];
        const float* right = channels[1];
        for (int frame = 0; frame < frames; ++frame)
        {
            const float leftMagnitude = std::fabs(left[frame]);
            if (leftMagnitude > level)
                level = leftMagnitude;
            const float rightMagnitude = std::fabs(right[frame]);
            if (rightMagnitude > level)
                level = rightMagnitude;
            level = level - decayPerSample;
        }
    }
    if (level > highestPeak)
        level = highestPeak;
    if (level < 0.0f)
        level = 0.0f;
    peak = level;
    return level;
}
