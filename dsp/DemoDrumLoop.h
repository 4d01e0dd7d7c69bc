#pragma once

#include <vector>

// A deterministic synthetic drum loop for demonstrations and benchmarks: 8 seconds of stereo, at
// 44.1 kHz unless another rate is asked for, four bars at 120 BPM of kick, snare and hi-hats built
// from decaying sines and noise bursts, loud hits and soft ghost notes. The same program always
// renders the same samples for a rate; at another rate the hits last as many seconds.
//
// Thread contract: any thread; construction renders the loop and allocates.
class DemoDrumLoop
{
public:
    enum class Instrument
    {
        kick,
        snare,
        closedHat,
        openHat
    };

    struct Hit
    {
        int frame;              // first sample of the hit
        Instrument instrument;
        float velocity;         // 0..1, amplitude relative to the loudest hit of its kind
    };

    // The rate and the length of the loop made without a rate.
    static constexpr int sampleRate = 44100;
    static constexpr int frameCount = sampleRate * 8;

    // rate: samples per second, 8000 or more.
    explicit DemoDrumLoop(int rate = sampleRate);

    const std::vector<float>& left() const { return leftChannel; }
    const std::vector<float>& right() const { return rightChannel; }
    // Every hit of the loop in time order.
    const std::vector<Hit>& hits() const { return hitList; }
    int getSampleRate() const { return rate; }

    static const char* instrumentName(Instrument instrument);

private:
    int rate;
    std::vector<float> leftChannel;
    std::vector<float> rightChannel;
    std::vector<Hit> hitList;
};
