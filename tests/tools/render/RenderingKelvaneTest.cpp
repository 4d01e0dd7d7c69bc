// kelvane-render with the real Kelvane.so, as a user runs it on the built or installed plug-in:
// its parameter list, renders whose effect on the transients is measured, and presets.

#include "PresetFile.h"
#include "RenderTestFixture.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

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

class RenderingKelvane : public RenderTestFixture
{
protected:
    Run renderKelvane(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--plugin", KELVANE_PLUGIN});
        return render(arguments);
    }

    // Drum-like hits: a decaying 180 Hz tone, a little different on each channel, on silence.
    static Audio hits(int channels)
    {
        Audio audio;
        audio.channels = channels;
        audio.sampleRate = rate;
        for (int frame = 0; frame < hitCount * hitSpacing; ++frame)
        {
            const int age = frame % hitSpacing;
            const double tone = 0.5 * std::exp(-age / 2000.0) * std::sin(2.0 * M_PI * 180.0 * age / rate);
            for (int channel = 0; channel < channels; ++channel)
                audio.samples.push_back(static_cast<float>(tone * (channel == 0 ? 1.0 : 0.8)));
        }
        return audio;
    }

    // The mean over the hits after the first of the peak in each hit's first 5 ms, channel 0.
    static double onsetPeak(const Audio& audio)
    {
        double sum = 0.0;
        for (int hit = 1; hit < hitCount; ++hit)
        {
            float peak = 0.0f;
            for (int frame = hit * hitSpacing; frame < hit * hitSpacing + onsetFrames; ++frame)
                peak = std::max(peak, std::fabs(audio.samples[static_cast<std::size_t>(frame * audio.channels)]));
            sum += peak;
        }
        return sum / (hitCount - 1);
    }
};
}  // namespace

TEST_F(RenderingKelvane, ListShowsTheSevenParametersAndTheSettingsByNameOrIndex)
{
    const Run fresh = renderKelvane({"--list"});
    ASSERT_EQ(fresh.status, 0) << fresh.err;
    EXPECT_EQ(fresh.out, defaultList);
    const Run set = renderKelvane({"--set", "attack=1", "--set", "4=0", "--set", "Release Time=0.9", "--list"});
    ASSERT_EQ(set.status, 0) << set.err;
    EXPECT_NE(set.out.find("    0  Attack        1.000000  100 %\n"), std::string::npos) << set.out;
    EXPECT_NE(set.out.find("    4  Attack Time   0.000000  sharp\n"), std::string::npos) << set.out;
    EXPECT_NE(set.out.find("    5  Release Time  0.900000  soft\n"), std::string::npos) << set.out;
}

TEST_F(RenderingKelvane, AttackSettingsRaiseAndLowerTheOnsetsAndBypassPassesTheInput)
{
    const Audio dry = hits(2);
    const std::string input = path("hits.wav");
    writeAudio(input, dry, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(renderKelvane({input, path("default.wav")}).status, 0);
    ASSERT_EQ(renderKelvane({"--set", "Attack=1", input, path("attack-up.wav")}).status, 0);
    ASSERT_EQ(renderKelvane({"--set", "Attack=0", input, path("attack-down.wav")}).status, 0);
    ASSERT_EQ(renderKelvane({"--set", "Bypass=1", "--block", "300", input, path("bypassed.wav")}).status, 0);

    const double neutral = onsetPeak(readAudio(path("default.wav")));
    // At the centre the shaper leaves the level alone (the drive stage is all but linear here).
    EXPECT_NEAR(neutral / onsetPeak(dry), 1.0, 0.02);
    EXPECT_GT(onsetPeak(readAudio(path("attack-up.wav"))), 1.5 * neutral);
    EXPECT_LT(onsetPeak(readAudio(path("attack-down.wav"))), 0.8 * neutral);
    EXPECT_EQ(readAudio(path("bypassed.wav")).samples, dry.samples);
}

TEST_F(RenderingKelvane, MonoInputIsProcessedAsBothChannelsAndWrittenMono)
{
    Audio mono = hits(1);
    Audio twin = mono;
    twin.channels = 2;
    twin.samples.clear();
    for (float sample : mono.samples)
        twin.samples.insert(twin.samples.end(), {sample, sample});
    writeAudio(path("mono.wav"), mono, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    writeAudio(path("twin.wav"), twin, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(renderKelvane({"--set", "Release=0.9", path("mono.wav"), path("mono-out.wav")}).status, 0);
    ASSERT_EQ(renderKelvane({"--set", "Release=0.9", path("twin.wav"), path("twin-out.wav")}).status, 0);
    const Audio monoOut = readAudio(path("mono-out.wav"));
    const Audio twinOut = readAudio(path("twin-out.wav"));
    ASSERT_EQ(monoOut.channels, 1);
    ASSERT_EQ(monoOut.samples.size() * 2, twinOut.samples.size());
    for (std::size_t frame = 0; frame < monoOut.samples.size(); ++frame)
        ASSERT_EQ(monoOut.samples[frame], twinOut.samples[2 * frame]) << "frame " << frame;
    EXPECT_NE(monoOut.samples, mono.samples);
}

TEST_F(RenderingKelvane, SavedStateHoldsKelvanesChunkAndComesBack)
{
    const std::string state = path("crunch.fxp");
    ASSERT_EQ(renderKelvane({"--set", "Drive=0.7", "--set", "Release Time=1", "--save-state", state}).status, 0);
    Preset preset;
    ASSERT_EQ(PresetFile::read(state, preset), "");
    EXPECT_EQ(preset.pluginId, q1framework::fourCharacterCode('K', 'e', 'L', 'v'));
    ASSERT_TRUE(preset.holdsChunk);
    EXPECT_EQ(std::string(preset.chunk.begin(), preset.chunk.begin() + 4), "VC2!");

    const Run loaded = renderKelvane({"--load-state", state, "--list"});
    ASSERT_EQ(loaded.status, 0) << loaded.err;
    EXPECT_NE(loaded.out.find("    5  Release Time  1.000000  soft\n"), std::string::npos) << loaded.out;
    EXPECT_NE(loaded.out.find("    6  Drive         0.700000  70 %\n"), std::string::npos) << loaded.out;
    // Settings apply on top of a loaded state.
    const Run over = renderKelvane({"--load-state", state, "--set", "Drive=0", "--list"});
    EXPECT_NE(over.out.find("    6  Drive         0.000000  0 %\n"), std::string::npos) << over.out;
}

TEST_F(RenderingKelvane, TheInstalledBundleIsUsedWithoutPluginOption)
{
    std::filesystem::create_directories(path("vst/Kelvane"));
    std::filesystem::copy_file(KELVANE_PLUGIN, path("vst/Kelvane/Kelvane.so"));
    const std::vector<std::string> environment = {"VST_PATH=" + path("vst")};
    const Run list = render({"--list"}, environment);
    ASSERT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.out, defaultList);
    const Run run = render({"--demo", "--set", "Gain=1", path("demo.wav")}, environment);
    ASSERT_EQ(run.status, 0) << run.err;
    const Audio wet = readAudio(path("demo.wav"));
    EXPECT_EQ(wet.sampleRate, 44100);
    EXPECT_EQ(wet.samples.size(), 2u * 8u * 44100u);
}
