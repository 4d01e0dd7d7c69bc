#pragma once

#include <cmath>
#include <vector>

// One channel of a block of the editors' test tone: a 110 Hz sine at 44.1 kHz from phase 0, at
// amplitude (linear, 1.0 is full scale), computed in double and stored as float. Loud enough at
// 0.9 to raise the needles and light the drive lamp.
inline std::vector<float> sineBlock(float amplitude, int frames)
{
    std::vector<float> samples(static_cast<size_t>(frames > 0 ? frames : 0));
    for (size_t frame = 0; frame < samples.size(); ++frame)
        samples[frame] =
            amplitude * static_cast<float>(std::sin(2.0 * M_PI * 110.0 * static_cast<double>(frame) / 44100.0));
    return samples;
}
