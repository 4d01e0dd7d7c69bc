#include "render/image/ResamplingFilter.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
constexpr double pi = 3.141592653589793;
}

ResamplingFilter::ResamplingFilter(int sourceSize, int destinationSize, int quality)
    : scale(static_cast<float>(sourceSize) / static_cast<float>(destinationSize)),
      cutoff(1.0f / std::max(1.0f, scale)), taps(computeTaps(scale, quality))
{
}

int ResamplingFilter::computeTaps(float scale, int quality)
{
    if (quality >= 0)
        return std::clamp(quality, minimumTaps, maximumTaps);
    // Large scales ask for many taps; the limit keeps the truncation below in range.
    const int fromScale = static_cast<int>(std::min(scale * 4.0f, 1024.0f));
    return std::clamp((fromScale + 4) & ~1, minimumTaps, maximumTaps);
}

int16_t ResamplingFilter::computeCoefficient(float frac, int tap) const
{
    const double phase = (tap - static_cast<double>(frac)) * 2.0 * pi / taps;
    const double rise = 0.5 - 0.5 * std::cos(phase);
    const double window = phase < 0.0 ? 0.0 : rise * rise;
    const double argument = (tap - taps / 2 - static_cast<double>(frac)) * pi * cutoff;
    const double sinc = argument == 0.0 ? 1.0 : std::sin(argument) / argument;
    return static_cast<int16_t>(static_cast<int>(window * sinc * cutoff * 255.0 * 127.0));
}

void ResamplingFilter::computeRun(int first, int count, int tapStride, int copies, std::vector<int32_t>& starts,
                                  std::vector<int16_t>& coefficients) const
{
    starts.resize(static_cast<size_t>(count));
    coefficients.assign(static_cast<size_t>(count) * tapStride * copies, 0);
    for (int index = 0; index < count; ++index)
    {
        // From the output position itself, never by steps from the run's first: a run that
        // starts elsewhere must give each position the same taps.
        const float position = static_cast<float>(first + index) * scale;
        const float frac = position - std::floor(position);
        starts[static_cast<size_t>(index)] = static_cast<int32_t>(position) - taps / 2;
        int16_t* row = coefficients.data() + static_cast<size_t>(index) * tapStride * copies;
        for (int tap = 0; tap < taps; ++tap)
            std::fill_n(row + tap * copies, copies, computeCoefficient(frac, tap));
    }
}

}  // namespace q1framework
