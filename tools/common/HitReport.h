#pragma once

#include "dsp/DemoDrumLoop.h"

#include <cstdio>
#include <string>
#include <vector>

// Measures what a rendering of the demo loop did to each drum hit, and prints it as a table next
// to the dry loop: the peak of the hit's first 20 ms and the RMS level from 25 to 35 ms after its
// start, both in dBFS over both channels. Hits that start together (a kick with a hat) are one
// onset, measured once and named after both.
class HitReport
{
public:
    struct Levels
    {
        double peakDecibels;
        double afterDecibels;
    };

    HitReport(const std::vector<DemoDrumLoop::Hit>& hits, int sampleRate);

    // Adds one rendering of the loop (the first one added is the reference, usually the dry loop).
    void addRendering(const std::string& name, const std::vector<float>& left,
                      const std::vector<float>& right);

    // Levels of the onset at `frame` in a stereo rendering.
    static Levels measure(const std::vector<float>& left, const std::vector<float>& right, int frame,
                          int sampleRate);

    // One row per onset in the first `tableSeconds`, then the mean change of every rendering
    // against the first one, per kind of onset, over the whole loop.
    void print(std::FILE* out, double tableSeconds) const;

private:
    struct Onset
    {
        int frame;
        std::string name;  // the instruments that start here, as "kick+hat"
        float velocity;    // the loudest of them
    };

    struct Rendering
    {
        std::string name;
        std::vector<Levels> levels;  // one per onset
    };

    std::vector<Onset> onsets;
    int sampleRate;
    std::vector<Rendering> renderings;
};
