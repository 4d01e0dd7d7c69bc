// kelvane-render with the real Kelvane.so, as a user runs it on the built plug-in: its parameter
// list, renders whose effect on the transients is measured, and presets.

#include "PresetFile.h"
#include "RenderTest.h"
#include "dsp/DemoDrumLoop.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int rate = 44100;
constexpr int hitSpacing = rate / 4;   // one hit every 250 ms
constexpr int hitCount = 8;
constexpr int onsetFrames = rate / 200;  // the first 5 ms of a hit

const char* const defaultList =
    "index  name          value     display\n"
    "    0  Attack        0.500000  0 %\n"
    "    1  Release       0.500000  0 %\n"
    "    2  Bypass        0.000000  Off\n"
    "    3  Gain          0.500000  0.00 dB\n"
    "    4  Attack Time   0.500000  mid\n"
    "    5  Release Time  0.500000  mid\n"
    "    6  Drive         0.000000  0 %\n";

// Drum-like hits on two channels: a decaying 180 Hz tone, a little softer on the right, on silence.
RenderTest::Audio hits()
{
    RenderTest::Audio audio;
    audio.channels = 2;
    audio.sampleRate = rate;
    for (int frame = 0; frame < hitCount * hitSpacing; ++frame)
    {
        const int age = frame % hitSpacing;
        const double tone = 0.5 * std::exp(-age / 2000.0) * std::sin(2.0 * M_PI * 180.0 * age / rate);
        audio.samples.insert(audio.samples.end(), {static_cast<float>(tone), static_cast<float>(tone * 0.8)});
    }
    return audio;
}

// The mean over the hits after the first of the peak in each hit's first 5 ms, left channel.
double onsetPeak(const RenderTest::Audio& audio)
{
    double sum = 0.0;
    for (int hit = 1; hit < hitCount; ++hit)
    {
        float peak = 0.0f;
        for (int frame = hit * hitSpacing; frame < hit * hitSpacing + onsetFrames; ++frame)
            peak = std::max(peak, std::fabs(audio.samples[static_cast<std::size_t>(2 * frame)]));
        sum += peak;
    }
    return sum / (hitCount - 1);
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

TEST_F(RenderingKelvane, AttackSettingsRaiseAndLowerTheOnsetsAndBypassPassesTheDemoLoop)
{
    const RenderTest::Audio dry = hits();
    writeAudio("hits.wav", dry);
    ASSERT_EQ(kelvane({"hits.wav", "default.wav"}).status, 0);
    ASSERT_EQ(kelvane({"--set", "Attack=1", "hits.wav", "attack-up.wav"}).status, 0);
    ASSERT_EQ(kelvane({"--set", "Attack=0", "hits.wav", "attack-down.wav"}).status, 0);

    const double neutral = onsetPeak(readAudio("default.wav"));
    // At the centre the shaper leaves the level alone (the drive stage is all but linear here).
    EXPECT_NEAR(neutral / onsetPeak(dry), 1.0, 0.02);
    EXPECT_GT(onsetPeak(readAudio("attack-up.wav")), 1.5 * neutral);
    EXPECT_LT(onsetPeak(readAudio("attack-down.wav")), 0.8 * neutral);

    // Bypassed, it passes the input as it is: here the built-in demo loop.
    ASSERT_EQ(kelvane({"--demo", "--set", "Bypass=1", "--block", "300", "bypassed.wav"}).status, 0);
    const DemoDrumLoop loop;
    std::vector<float> interleaved;
    for (int frame = 0; frame < DemoDrumLoop::frameCount; ++frame)
        interleaved.insert(interleaved.end(), {loop.left()[frame], loop.right()[frame]});
    const Audio bypassed = readAudio("bypassed.wav");
    EXPECT_EQ(bypassed.sampleRate, DemoDrumLoop::sampleRate);
    EXPECT_EQ(bypassed.samples, interleaved);
}
