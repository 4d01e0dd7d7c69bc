#pragma once

// The decaying peak level of a signal, for a level meter: every sample raises the peak to its
// magnitude when that is higher, and every sample then lowers it by decayPerSample, so a meter
// falls at a fixed rate after a transient. Levels are linear magnitudes (1.0 is full scale).
//
// Thread contract: the owner's audio thread, with the owner's mutex held.
class PeakMeter
{
public:
    // Audio thread. Follows `frames` samples of one channel (channelCount 1) or of two (left and
    // right compared in turn, one decay step per frame), then limits the peak to 0..1.5 and
    // answers it. Within the block the peak may go below 0; only the result is limited. With
    // frames below 1 only the limit runs. A NaN sample never raises the peak; an infinite one
    // shows as 1.5. The block costs one running maximum over its frames, side by side in lanes.
    float measure(const float* const* channels, int channelCount, int frames);

    float peak = 0.0f;            // linear level, 0..1.5 between blocks
    float decayPerSample = 0.1f;  // fall per sample, linear level
};
