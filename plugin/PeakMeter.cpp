#include "plugin/PeakMeter.h"

#include <cmath>

namespace
{
// The loudest level a meter shows; a louder peak is held here so the meter recovers at once.
constexpr float highestPeak = 1.5f;

// Frames taken side by side: each lane keeps its own maximum, so the loop has no dependency from
// one frame to the next and runs on the processor's vector unit.
constexpr int lanes = 8;

// The largest of `level` and of each frame's magnitude plus its decay allowance: frame j counts
// as magnitude(j) + j x decay. `magnitude` is the larger magnitude of the frame's samples. A NaN
// magnitude never wins a comparison, so it is passed over.
template <typename Magnitude>
float largestRaised(float level, int frames, float decay, Magnitude magnitude)
{
    float largest[lanes];
    float allowance[lanes];
    for (int lane = 0; lane < lanes; ++lane)
    {
        largest[lane] = level;
        allowance[lane] = static_cast<float>(lane) * decay;
    }
    const float stride = static_cast<float>(lanes) * decay;
    int frame = 0;
    for (; frame + lanes <= frames; frame += lanes)
        for (int lane = 0; lane < lanes; ++lane)
        {
            const float raised = magnitude(frame + lane) + allowance[lane];
            largest[lane] = largest[lane] < raised ? raised : largest[lane];
            allowance[lane] += stride;
        }
    float result = level;
    for (int lane = 0; lane < lanes; ++lane)
        result = result < largest[lane] ? largest[lane] : result;
    for (; frame < frames; ++frame)
    {
        const float raised = magnitude(frame) + static_cast<float>(frame) * decay;
        result = result < raised ? raised : result;
    }
    return result;
}
}  // namespace

// Frame by frame the level is raised to the frame's magnitude m(j) where that is higher, then
// lowered by one decay step d. After n frames that is max(level, m(0), m(1) + d, ...,
// m(n - 1) + (n - 1) d) - n d: a sample counts with the steps it is spared. One maximum over the
// block gives the level of the steps, up to the rounding of the sums.
float PeakMeter::measure(const float* const* channels, int channelCount, int frames)
{
    float level = peak;
    if (frames > 0)
    {
        const float* left = channels[0];
        const float* right = channels[channelCount == 1 ? 0 : 1];
        const float raised =
            channelCount == 1
                ? largestRaised(level, frames, decayPerSample, [left](int frame) { return std::fabs(left[frame]); })
                : largestRaised(level, frames, decayPerSample, [left, right](int frame) {
                      const float leftMagnitude = std::fabs(left[frame]);
                      const float rightMagnitude = std::fabs(right[frame]);
                      return leftMagnitude < rightMagnitude ? rightMagnitude : leftMagnitude;
                  });
        level = raised - static_cast<float>(frames) * decayPerSample;
    }
    if (level > highestPeak)
        level = highestPeak;
    if (level < 0.0f)
        level = 0.0f;
    peak = level;
    return level;
}
