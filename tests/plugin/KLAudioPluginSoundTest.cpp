// How Kelvane sounds where it surprises people, measured on the demo drum loop: the figures that
// the README's "How it behaves" quotes. Each behaviour is by design; these tests keep the figures
// true.

#include "dsp/DemoDrumLoop.h"
#include "plugin/AudioBus.h"
#include "plugin/KLAudioPlugin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

using namespace q1framework;

namespace
{
constexpr int blockFrames = 512;

struct Rendering
{
    std::vector<float> left;
    std::vector<float> right;
};

// The loop through `plugin`, prepared at the loop's rate, in blocks as a host plays it.
Rendering render(KLAudioPlugin& plugin, const DemoDrumLoop& loop)
{
    plugin.prepare(blockFrames, true, loop.getSampleRate());
    plugin.releaseChannelBuffers();
    Rendering rendering{loop.left(), loop.right()};
    const int frames = static_cast<int>(rendering.left.size());
    for (int start = 0; start < frames; start += blockFrames)
    {
        float* channels[2] = {&rendering.left[start], &rendering.right[start]};
        plugin.getAudioInput(0).setChannelPointers(channels, 2);
        plugin.getAudioOutput(0).setChannelPointers(channels, 2);
        TimeInfo timeInfo;
        plugin.process(timeInfo, std::min(blockFrames, frames - start));
    }
    return rendering;
}

Rendering render(const DemoDrumLoop& loop, std::initializer_list<std::pair<int, float>> settings)
{
    KLAudioPlugin plugin;
    for (const auto& [index, value] : settings)
        plugin.setParameter(value, index);
    return render(plugin, loop);
}

// The peak of both channels over the first 20 ms of the hit starting at `frame`.
float hitPeak(const Rendering& rendering, int frame, int rate)
{
    const int end = std::min(frame + rate / 50, static_cast<int>(rendering.left.size()));
    float peak = 0.0f;
    for (int i = frame; i < end; ++i)
        peak = std::max({peak, std::fabs(rendering.left[i]), std::fabs(rendering.right[i])});
    return peak;
}

double decibels(double ratio)
{
    return 20.0 * std::log10(ratio);
}

// The mean change of the hits' peaks, in dB, of a rendering against the dry loop: of every hit,
// or of the kicks alone.
double meanPeakChange(const DemoDrumLoop& loop, const Rendering& processed, bool kicksAlone = false)
{
    const Rendering dry{loop.left(), loop.right()};
    double sum = 0.0;
    int count = 0;
    for (const DemoDrumLoop::Hit& hit : loop.hits())
    {
        if (kicksAlone && hit.instrument != DemoDrumLoop::Instrument::kick)
            continue;
        const int rate = loop.getSampleRate();
        sum += decibels(hitPeak(processed, hit.frame, rate) / hitPeak(dry, hit.frame, rate));
        ++count;
    }
    return sum / count;
}

// A second of silence through the plug-in: the ramps reach the settings, the detectors rest.
void silence(KLAudioPlugin& plugin)
{
    std::vector<float> left(44100, 0.0f), right(44100, 0.0f);
    for (int start = 0; start < 44100; start += blockFrames)
    {
        float* channels[2] = {&left[start], &right[start]};
        plugin.getAudioInput(0).setChannelPointers(channels, 2);
        plugin.getAudioOutput(0).setChannelPointers(channels, 2);
        TimeInfo timeInfo;
        plugin.process(timeInfo, std::min(blockFrames, 44100 - start));
    }
}

float largestSample(const Rendering& rendering)
{
    float peak = 0.0f;
    for (std::size_t i = 0; i < rendering.left.size(); ++i)
        peak = std::max({peak, std::fabs(rendering.left[i]), std::fabs(rendering.right[i])});
    return peak;
}
}  // namespace

TEST(KLAudioPluginSound, AttackRaisesTheKicksLessAtHigherRatesSinceTheDetectorTimesAreInSamples)
{
    // Attack +60 %: the detector's onset lasts as many samples at any rate, so a shorter time.
    const DemoDrumLoop loop44(44100);
    const DemoDrumLoop loop96(96000);
    EXPECT_NEAR(meanPeakChange(loop44, render(loop44, {{KLParameters::attack, 0.8f}}), true), 4.8, 0.2);
    EXPECT_NEAR(meanPeakChange(loop96, render(loop96, {{KLParameters::attack, 0.8f}}), true), 4.0, 0.2);
}

TEST(KLAudioPluginSound, FullDriveLowersTheHitsPeaksInsteadOfRaisingThem)
{
    const DemoDrumLoop loop;
    EXPECT_NEAR(meanPeakChange(loop, render(loop, {{KLParameters::drive, 1.0f}})), -13.0, 0.3);
}

TEST(KLAudioPluginSound, AttackBoostsCanTakePeaksAboveFullScaleAndDriveHoldsThemBelow)
{
    // The loop peaks at -6 dBFS; Attack +100 % takes it to about +2.9 dBFS.
    const DemoDrumLoop loop;
    EXPECT_NEAR(decibels(largestSample(render(loop, {{KLParameters::attack, 1.0f}}))), 2.9, 0.2);
    // The soft clip's output never exceeds 1 and is divided by a drive factor of 1 or more from
    // Drive 10 % on: at a gain of 0 dB or less no peak passes full scale, whatever Attack does.
    EXPECT_LE(largestSample(render(loop, {{KLParameters::attack, 1.0f}, {KLParameters::drive, 0.1f}})), 1.0f);
}

TEST(KLAudioPluginSound, ASecondExportDiffersAtItsFirstHitSinceTheEnvelopesAreNeverReset)
{
    // A host exports the loop twice from one instance, the first time after a second of
    // silence, the second time straight after the first, with suspend and resume between.
    const DemoDrumLoop loop;
    KLAudioPlugin plugin;
    plugin.setParameter(1.0f, KLParameters::attack);
    plugin.prepare(blockFrames, true, 44100.0);
    plugin.releaseChannelBuffers();
    silence(plugin);
    const Rendering first = render(plugin, loop);
    plugin.suspend();
    plugin.resume();
    const Rendering second = render(plugin, loop);
    const int rate = loop.getSampleRate();
    const int firstHit = loop.hits().front().frame;
    EXPECT_NEAR(decibels(hitPeak(second, firstHit, rate) / hitPeak(first, firstHit, rate)), -0.6, 0.1);
    // A bar later the envelopes have all but caught up.
    const int nextBar = loop.hits()[loop.hits().size() / 4].frame;
    EXPECT_NEAR(decibels(hitPeak(second, nextBar, rate) / hitPeak(first, nextBar, rate)), 0.0, 0.01);
}
