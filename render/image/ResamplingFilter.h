#pragma once

#include <cstdint>
#include <vector>

namespace q1framework
{

// The windowed-sinc filter of the resampler along one axis, from sourceSize to destinationSize
// pixels: its tap count, and its coefficients for a run of output positions.
//
// Output position p reads the source pixels from truncate(pos) - taps / 2 on, where pos is
// p * scale, accumulated in float from the run's first position by adding scale once per
// position. With frac = pos - floor(pos), tap i has the coefficient
//   truncate(window * sinc * cutoff * 255 * 127)           (a signed 16-bit value)
//   window = (0.5 - 0.5 * cos(w))^2, w = (i - frac) * 2 pi / taps, 0 where w is negative
//   sinc   = sin(v) / v (1 at v = 0), v = (i - taps / 2 - frac) * pi * cutoff
// with cutoff = 1 / max(1, scale).
//
// Thread contract: any thread; an object is a value.
class ResamplingFilter
{
public:
    static constexpr int minimumTaps = 8;
    static constexpr int maximumTaps = 32;

    // sourceSize and destinationSize from 1.
    ResamplingFilter(int sourceSize, int destinationSize, int quality);

    // Tap count for a scale (source size / destination size): with a quality below 0,
    // ((truncate(scale * 4) + 4) & ~1), otherwise quality; either limited to 8..32.
    static int computeTaps(float scale, int quality);

    float getScale() const { return scale; }
    float getCutoff() const { return cutoff; }
    int getTaps() const { return taps; }

    // The coefficients of one output position at fraction frac.
    int16_t computeCoefficient(float frac, int tap) const;

    // For the count output positions from first: starts[j], the first source pixel read, and
    // taps coefficients each, stored tapStride apart (the taps beyond getTaps() are 0), every
    // value repeated copies times in a row. Output position p reads from p * scale, computed in
    // float from p alone, so a run gives each position the taps of any other run that covers it.
    void computeRun(int first, int count, int tapStride, int copies, std::vector<int32_t>& starts,
                    std::vector<int16_t>& coefficients) const;

private:
    float scale;
    float cutoff;
    int taps;
};

}  // namespace q1framework
