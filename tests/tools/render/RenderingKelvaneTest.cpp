// kelvane-render with the real Kelvane.so, as a user runs it on the built plug-in: its parameter
// list, renders whose effect on the transients is measured, and presets.

#include "PresetFile.h"
#include "RenderTest.h"
#include "dsp/DemoDrumLoop.h"

#include <algorithm>
#include <cmath>

namespace
{
const char* const defaultList =
    "index  name          value     display\n"
    "    0  Attack        0.500000  0 %\n"
    "    1  Release       0.500000  0 %\n"
    "    2  Bypass        0.000000  Off\n"
    "    3  Gain          0.500000  0.00 dB\n"
    "    4  Attack Time   0.500000  mid\n"
    "    5  Release Time  0.500000  mid\n"
    "    6  Drive         0.000000  0 %\n";

// The mean of the peaks in the first 5 ms of the demo loop's kicks, left channel.
double onsetPeak(const DemoDrumLoop& loop, const std::vector<float>& interleaved)
{
    double sum = 0.0;
    int count = 0;
    for (const DemoDrumLoop::Hit& hit : loop.hits())
    {
        if (hit.instrument != DemoDrumLoop::Instrument::kick)
            continue;
        float peak = 0.0f;
        for (int frame = hit.frame; frame < std::min(hit.frame + DemoDrumLoop::sampleRate / 200, DemoDrumLoop::frameCount); ++frame)
            peak = std::max(peak, std::fabs(interleaved[static_cast<std::size_t>(2 * frame)]));
        sum += peak;
        ++count;
    }
    return sum / count;
}
}  // namespace

using RenderingKelvane = RenderTest;

TEST_F(RenderingKelvane, ListShowsTheSevenParametersAndSettingsByNameOrIndexComeBackFromTheState)
{
    const Run fresh = kelvane({"--list"});
    ASSERT_EQ(fresh.status, 0) << fresh.err;
    EXPECT_EQ(fresh.out, defaultList);
    ASSERT_EQ(kelvane({"--set", "attack=1", "--set", "4=0", "--set", "Release Time=0.9", "--set", "Drive=0.7",
                       "--save-state", "crunch.fxp"}).status, 0);
    Preset preset;
    ASSERT_EQ(PresetFile::read(path("crunch.fxp"), preset), "");
    EXPECT_EQ(preset.pluginId, q1framework::fourCharacterCode('K', 'e', 'L', 'v'));
    ASSERT_TRUE(preset.holdsChunk);
    EXPECT_EQ(std::string(preset.chunk.begin(), preset.chunk.begin() + 4), "VC2!");

    // Settings apply on top of a loaded state.
    const Run loaded = kelvane({"--load-state", "crunch.fxp", "--set", "Drive=0", "--list"});
    ASSERT_EQ(loaded.status, 0) << loaded.err;
    for (const char* line : {"    0  Attack        1.000000  100 %\n", "    4  Attack Time   0.000000  sharp\n",
                             "    5  Release Time  0.900000  soft\n", "    6  Drive         0.000000  0 %\n"})
        EXPECT_NE(loaded.out.find(line), std::string::npos) << loaded.out;
}

TEST_F(RenderingKelvane, AttackSettingsRaiseAndLowerTheOnsetsAndBypassPassesTheInput)
{
    ASSERT_EQ(kelvane({"--demo", "default.wav"}).status, 0);
    ASSERT_EQ(kelvane({"--demo", "--set", "Attack=1", "attack-up.wav"}).status, 0);
    ASSERT_EQ(kelvane({"--demo", "--set", "Attack=0", "attack-down.wav"}).status, 0);
    ASSERT_EQ(kelvane({"--demo", "--set", "Bypass=1", "--block", "300", "bypassed.wav"}).status, 0);
    const DemoDrumLoop loop;
    std::vector<float> dry;  // the demo loop as kelvane-render writes it, interleaved
    for (int frame = 0; frame < DemoDrumLoop::frameCount; ++frame)
        dry.insert(dry.end(), {loop.left()[frame], loop.right()[frame]});
    const double neutral = onsetPeak(loop, readAudio("default.wav").samples);
    // At the centre the shaper leaves the level alone (the drive stage is all but linear here).
    EXPECT_NEAR(neutral / onsetPeak(loop, dry), 1.0, 0.02);
    EXPECT_GT(onsetPeak(loop, readAudio("attack-up.wav").samples), 1.5 * neutral);
    EXPECT_LT(onsetPeak(loop, readAudio("attack-down.wav").samples), 0.8 * neutral);
    const Audio bypassed = readAudio("bypassed.wav");
    EXPECT_EQ(bypassed.sampleRate, DemoDrumLoop::sampleRate);
    EXPECT_EQ(bypassed.samples, dry);
}
