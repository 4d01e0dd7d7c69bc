#include "dsp/DemoDrumLoop.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace
{
constexpr double pi = 3.14159265358979323846;
constexpr double secondsPerStep = 0.125;  // a sixteenth note at 120 BPM
constexpr int stepsPerBar = 16;
constexpr int bars = 4;
constexpr float peakLevel = 0.5f;         // loudest sample of the finished loop, -6 dBFS

// Small deterministic noise source (xorshift32), uniform in -1..1.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : state(seed * 2654435761u + 1u) {}

    float next()
    {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return static_cast<float>(state) * (2.0f / 4294967296.0f) - 1.0f;
    }

private:
    std::uint32_t state;
};

struct Voice
{
    double seconds;   // length of the rendered tail
    float panLeft;
    float panRight;
};

Voice voiceOf(DemoDrumLoop::Instrument instrument)
{
    switch (instrument)
    {
        case DemoDrumLoop::Instrument::kick: return {0.6, 1.0f, 1.0f};
        case DemoDrumLoop::Instrument::snare: return {0.5, 0.9f, 1.0f};
        case DemoDrumLoop::Instrument::closedHat: return {0.15, 1.0f, 0.6f};
        case DemoDrumLoop::Instrument::openHat: return {0.6, 1.0f, 0.6f};
    }
    return {0.0, 0.0f, 0.0f};
}

// One sample of a hit `t` seconds after its start, `dt` seconds after the one before. `phase` and `highPass` carry the oscillator
// phase and the noise filter's memory from sample to sample.
float voiceSample(DemoDrumLoop::Instrument instrument, double t, double dt, double& phase, float& highPass,
                  Noise& noise)
{
    switch (instrument)
    {
        case DemoDrumLoop::Instrument::kick:
        {
            // A sine sweeping from 155 Hz down to 45 Hz, with a 2 ms noise click on top.
            const double frequency = 45.0 + 110.0 * std::exp(-t / 0.035);
            phase += 2.0 * pi * frequency * dt;
            const double body = std::sin(phase) * std::exp(-t / 0.28);
            const double click = noise.next() * 0.3 * std::exp(-t / 0.002);
            return static_cast<float>(body + click);
        }
        case DemoDrumLoop::Instrument::snare:
        {
            phase += 2.0 * pi * 185.0 * dt;
            const double tone = (std::sin(phase) + 0.5 * std::sin(phase * 330.0 / 185.0)) * 0.45 *
                                std::exp(-t / 0.07);
            const float white = noise.next();
            const float bright = white - highPass;  // first difference: tilts the noise upwards
            highPass = white;
            return static_cast<float>(tone + bright * 0.4 * std::exp(-t / 0.14));
        }
        case DemoDrumLoop::Instrument::closedHat:
        case DemoDrumLoop::Instrument::openHat:
        {
            const double decay = instrument == DemoDrumLoop::Instrument::openHat ? 0.18 : 0.03;
            const float white = noise.next();
            const float bright = white - highPass;
            highPass = white;
            return static_cast<float>(bright * 0.35 * std::exp(-t / decay));
        }
    }
    return 0.0f;
}

std::vector<DemoDrumLoop::Hit> pattern(int rate)
{
    using Instrument = DemoDrumLoop::Instrument;
    std::vector<DemoDrumLoop::Hit> hits;
    const auto add = [&hits, rate](int bar, int step, Instrument instrument, float velocity) {
        const double seconds = (bar * stepsPerBar + step) * secondsPerStep;
        hits.push_back({static_cast<int>(std::lround(seconds * rate)), instrument,
                        velocity});
    };
    for (int bar = 0; bar < bars; ++bar)
    {
        add(bar, 0, Instrument::kick, 1.0f);
        add(bar, 8, Instrument::kick, 0.95f);
        if (bar % 2 == 1)
            add(bar, 10, Instrument::kick, 0.4f);
        if (bar == 2)
            add(bar, 7, Instrument::kick, 0.35f);
        add(bar, 4, Instrument::snare, 1.0f);
        add(bar, 12, Instrument::snare, 0.95f);
        if (bar % 2 == 0)
            add(bar, 14, Instrument::snare, 0.3f);
        else
            add(bar, 9, Instrument::snare, 0.35f);
        for (int step = 0; step < stepsPerBar; step += 2)
        {
            if (bar == bars - 1 && step == 14)
                add(bar, step, Instrument::openHat, 0.7f);
            else
                add(bar, step, Instrument::closedHat, step % 4 == 0 ? 0.8f : 0.45f);
        }
    }
    std::stable_sort(hits.begin(), hits.end(),
                     [](const DemoDrumLoop::Hit& a, const DemoDrumLoop::Hit& b) { return a.frame < b.frame; });
    return hits;
}
}

DemoDrumLoop::DemoDrumLoop(int loopRate)
    : rate(loopRate), leftChannel(static_cast<std::size_t>(loopRate) * 8, 0.0f),
      rightChannel(leftChannel.size(), 0.0f), hitList(pattern(loopRate))
{
    const int frames = static_cast<int>(leftChannel.size());
    for (std::size_t index = 0; index < hitList.size(); ++index)
    {
        const Hit& hit = hitList[index];
        const Voice voice = voiceOf(hit.instrument);
        const int length = std::min(static_cast<int>(voice.seconds * rate), frames - hit.frame);
        Noise noise(static_cast<std::uint32_t>(index));
        double phase = 0.0;
        float highPass = 0.0f;
        for (int i = 0; i < length; ++i)
        {
            const float sample =
                voiceSample(hit.instrument, static_cast<double>(i) / rate, 1.0 / rate, phase, highPass, noise) *
                hit.velocity;
            leftChannel[hit.frame + i] += sample * voice.panLeft;
            rightChannel[hit.frame + i] += sample * voice.panRight;
        }
    }

    float peak = 0.0f;
    for (int i = 0; i < frames; ++i)
        peak = std::max({peak, std::fabs(leftChannel[i]), std::fabs(rightChannel[i])});
    const float scale = peakLevel / peak;
    for (int i = 0; i < frames; ++i)
    {
        leftChannel[i] *= scale;
        rightChannel[i] *= scale;
    }
}

const char* DemoDrumLoop::instrumentName(Instrument instrument)
{
    switch (instrument)
    {
        case Instrument::kick: return "kick";
        case Instrument::snare: return "snare";
        case Instrument::closedHat: return "hat";
        case Instrument::openHat: return "open hat";
    }
    return "";
}
