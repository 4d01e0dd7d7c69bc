// kelvane-render as a user runs it: the built program in a process of its own, driving the test
// plug-ins (a stereo gain with "Gain" = amplitude / 2, "Swap" and "Show Transport").

#include "KelvaneRenderFixture.h"
#include "PresetFile.h"

#include "dsp/DemoDrumLoop.h"

#include <sndfile.h>

#include <cmath>
#include <fstream>

TEST_F(KelvaneRender, StereoRenderAppliesSettingsByNameAndIndexToEverySample)
{
    const Audio dry = signal(2, 3001, 48000);
    writeAudio(input, dry, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    const Run run = renderWith({"--set", "Gain=0.25", "--set", "1=1", input, output});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote " + output + " (stereo, 48000 Hz)\n");
    const Audio wet = readAudio(output);
    ASSERT_EQ(wet.channels, 2);
    EXPECT_EQ(wet.sampleRate, 48000);
    ASSERT_EQ(wet.samples.size(), dry.samples.size());
    // Gain 0.25 is an amplitude of 0.5, exact in float; Swap exchanges the channels.
    for (std::size_t frame = 0; frame < dry.samples.size() / 2; ++frame)
    {
        ASSERT_EQ(wet.samples[2 * frame], dry.samples[2 * frame + 1] * 0.5f) << "frame " << frame;
        ASSERT_EQ(wet.samples[2 * frame + 1], dry.samples[2 * frame] * 0.5f) << "frame " << frame;
    }
}

TEST_F(KelvaneRender, MonoInputGivesMonoOutput)
{
    const Audio dry = signal(1, 1000, 44100);
    writeAudio(input, dry, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    const Run run = renderWith({"--set", "gain=0.75", input, output});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("(mono, 44100 Hz)"), std::string::npos);
    const Audio wet = readAudio(output);
    ASSERT_EQ(wet.channels, 1);
    ASSERT_EQ(wet.samples.size(), dry.samples.size());
    for (std::size_t frame = 0; frame < dry.samples.size(); ++frame)
        ASSERT_EQ(wet.samples[frame], dry.samples[frame] * 1.5f) << "frame " << frame;
}

TEST_F(KelvaneRender, BlockSizeChangesNothingButTheCallPattern)
{
    writeAudio(input, signal(2, 1234, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(renderWith({"--set", "Gain=0.8", input, output}).status, 0);
    const std::string oddBlocks = path("odd.wav");
    ASSERT_EQ(renderWith({"--set", "Gain=0.8", "--block", "7", input, oddBlocks}).status, 0);
    const std::string oneBlock = path("one.wav");
    ASSERT_EQ(renderWith({"--set", "Gain=0.8", "--block=4096", input, oneBlock}).status, 0);
    const Audio reference = readAudio(output);
    EXPECT_EQ(reference.samples.size(), 2u * 1234u);
    EXPECT_EQ(readAudio(oddBlocks).samples, reference.samples);
    EXPECT_EQ(readAudio(oneBlock).samples, reference.samples);
}

TEST_F(KelvaneRender, TransportAdvancesWithTheRenderedPositionAt120Bpm)
{
    writeAudio(input, signal(2, 1000, 48000), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(renderWith({"--set", "Show Transport=1", "--block", "100", input, output}).status, 0);
    const Audio wet = readAudio(output);
    ASSERT_EQ(wet.samples.size(), 2000u);
    for (int frame = 0; frame < 1000; ++frame)
    {
        // The block's first sample: 100 frames at 48 kHz, 2 beats per second.
        const double seconds = (frame / 100) * 100 / 48000.0;
        ASSERT_FLOAT_EQ(wet.samples[2 * frame], static_cast<float>(seconds * 2.0)) << "frame " << frame;
        ASSERT_FLOAT_EQ(wet.samples[2 * frame + 1], static_cast<float>(seconds)) << "frame " << frame;
    }
}

TEST_F(KelvaneRender, FlacOutputIsChosenByTheExtensionAndIntegerInputIsRead)
{
    // A 16-bit input of known integers: libsndfile reads them as integer / 32768.
    std::vector<short> integers;
    for (int sample = 0; sample < 1000; ++sample)
        integers.push_back(static_cast<short>((sample * 7919) % 65536 - 32768));
    SF_INFO format{};
    format.channels = 2;
    format.samplerate = 44100;
    format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE* pcm = sf_open(input.c_str(), SFM_WRITE, &format);
    ASSERT_NE(pcm, nullptr);
    ASSERT_EQ(sf_writef_short(pcm, integers.data(), 500), 500);
    sf_close(pcm);

    const std::string flac = path("out.flac");
    ASSERT_EQ(renderWith({"--set", "Gain=0.25", input, flac}).status, 0);
    SF_INFO info{};
    SNDFILE* file = sf_open(flac.c_str(), SFM_READ, &info);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(info.format & SF_FORMAT_TYPEMASK, SF_FORMAT_FLAC);
    EXPECT_EQ(info.format & SF_FORMAT_SUBMASK, SF_FORMAT_PCM_24);
    sf_close(file);
    const Audio wet = readAudio(flac);
    ASSERT_EQ(wet.samples.size(), integers.size());
    for (std::size_t sample = 0; sample < integers.size(); ++sample)
    {
        // The 24-bit output is exact to about one step of 1/8388608.
        const double expected = integers[sample] / 32768.0 * 0.5;
        ASSERT_NEAR(wet.samples[sample], expected, 2.0 / 8388608.0) << "sample " << sample;
    }
}

TEST_F(KelvaneRender, ListShowsIndexNameValueAndDisplayAfterTheSettings)
{
    const Run run = renderWith({"--set", "Gain=0.3", "--list"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "index  name            value     display\n"
              "    0  Gain            0.300000  0.60x\n"
              "    1  Swap            0.000000  Off\n"
              "    2  Show Transport  0.000000  Off\n");
    EXPECT_EQ(run.err, "");
}

TEST_F(KelvaneRender, SavedStateComesBackAndSettingsApplyOnTopOfIt)
{
    const std::string state = path("punchy.fxp");
    ASSERT_EQ(renderWith({"--set", "Gain=0.3", "--set", "Swap=1", "--save-state", state}).status, 0);
    Preset preset;
    ASSERT_EQ(PresetFile::read(state, preset), "");
    EXPECT_EQ(preset.pluginId, q1framework::fourCharacterCode('T', 'G', 'a', 'i'));
    EXPECT_TRUE(preset.holdsChunk);

    const Run loaded = renderWith({"--load-state", state, "--list"});
    ASSERT_EQ(loaded.status, 0) << loaded.err;
    EXPECT_NE(loaded.out.find("0  Gain            0.300000  0.60x"), std::string::npos) << loaded.out;
    EXPECT_NE(loaded.out.find("1  Swap            1.000000  On"), std::string::npos) << loaded.out;

    const Audio dry = signal(2, 300, 44100);
    writeAudio(input, dry, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    ASSERT_EQ(renderWith({"--load-state", state, "--set", "Swap=0", input, output}).status, 0);
    const Audio wet = readAudio(output);
    ASSERT_EQ(wet.samples.size(), dry.samples.size());
    for (std::size_t sample = 0; sample < dry.samples.size(); ++sample)
        ASSERT_EQ(wet.samples[sample], dry.samples[sample] * (2.0f * 0.3f)) << "sample " << sample;
}

TEST_F(KelvaneRender, SavingOverAnExistingStateFileNeedsForce)
{
    const std::string state = path("preset.fxp");
    ASSERT_EQ(renderWith({"--save-state", state}).status, 0);
    expectFailure(renderWith({"--set", "Gain=1", "--save-state", state}), 1, "already exists; add --force");
    ASSERT_EQ(renderWith({"--set", "Gain=1", "--save-state", state, "--force"}).status, 0);
    EXPECT_NE(renderWith({"--load-state", state, "--list"}).out.find("1.000000  2.00x"), std::string::npos);
    EXPECT_EQ(files(), std::vector<std::string>{"preset.fxp"});
}

TEST_F(KelvaneRender, DemoRendersTheBuiltInDrumLoop)
{
    const Run run = renderWith({"--demo", "--set", "Gain=0.25", output});
    ASSERT_EQ(run.status, 0) << run.err;
    const Audio wet = readAudio(output);
    const DemoDrumLoop loop;
    ASSERT_EQ(wet.channels, 2);
    EXPECT_EQ(wet.sampleRate, DemoDrumLoop::sampleRate);
    ASSERT_EQ(wet.samples.size(), 2u * DemoDrumLoop::frameCount);
    for (int frame = 0; frame < DemoDrumLoop::frameCount; ++frame)
    {
        ASSERT_EQ(wet.samples[2 * frame], loop.left()[frame] * 0.5f) << "frame " << frame;
        ASSERT_EQ(wet.samples[2 * frame + 1], loop.right()[frame] * 0.5f) << "frame " << frame;
    }
}

TEST_F(KelvaneRender, WithoutPluginOptionTheInstalledBundleIsUsed)
{
    for (const char* place : {"vst/Kelvane", "home/.vst/Kelvane"})
    {
        std::filesystem::create_directories(path(place));
        std::filesystem::copy_file(TEST_GAIN_PLUGIN, path(place) + "/Kelvane.so");
    }
    // A Kelvane.so that is no plug-in marks which folder was chosen.
    std::ofstream(path("home/.vst/Kelvane/Kelvane.so")) << "not a plug-in";
    const Run fromVstPath = render({"--list"}, {"VST_PATH=" + path("vst") + ":/nowhere", "HOME=" + path("home")});
    EXPECT_EQ(fromVstPath.status, 0) << fromVstPath.err;
    EXPECT_NE(fromVstPath.out.find("Gain"), std::string::npos);
    const Run fromHome = render({"--list"}, {"VST_PATH=", "HOME=" + path("home")});
    expectFailure(fromHome, 1, "cannot load plug-in " + path("home") + "/.vst/Kelvane/Kelvane.so");
}

TEST_F(KelvaneRender, OlderPluginsWithTheEntryNameMainLoad)
{
    const Run run = render({"--plugin", LEGACY_GAIN_PLUGIN, "--list"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_NE(run.out.find("Show Transport"), std::string::npos);
}

TEST_F(KelvaneRender, ForceReplacesAnExistingOutputAndWithoutItTheOutputStays)
{
    writeAudio(input, signal(1, 100, 44100), SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    std::ofstream(output) << "precious";
    expectFailure(renderWith({input, output}), 1, output + " already exists; add --force to replace it");
    std::ifstream kept(output);
    std::string text;
    kept >> text;
    EXPECT_EQ(text, "precious");
    ASSERT_EQ(renderWith({"--force", input, output}).status, 0);
    EXPECT_EQ(readAudio(output).samples.size(), 100u);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
}
