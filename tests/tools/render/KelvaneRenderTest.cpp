// kelvane-render as a user runs it: the built program in a process of its own, driving the test
// plug-ins (a stereo gain with "Gain" = amplitude / 2, "Swap" and "Show Transport"), whose output
// the tests work out sample by sample.

#include "RenderTest.h"

#include "dsp/DemoDrumLoop.h"

#include <sndfile.h>

#include <filesystem>

using KelvaneRender = RenderTest;

TEST_F(KelvaneRender, StereoRenderAppliesSettingsByNameAndIndexToEverySample)
{
    const Audio dry = signal(2, 3001, 48000);
    writeAudio("in.wav", dry);
    const Run run = gain({"--set", "Gain=0.25", "--set", "1=1", "in.wav", "out.wav"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote out.wav (stereo, 48000 Hz)\n");
    const Audio wet = readAudio("out.wav");
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

TEST_F(KelvaneRender, MonoInputGivesMonoOutputAndTheBlockSizeChangesNothing)
{
    const Audio dry = signal(1, 1234, 44100);
    writeAudio("in.wav", dry);
    // With Swap the left output is the right input: the one channel feeds both inputs.
    const Run run = gain({"--set", "gain=0.75", "--set", "swap=1", "in.wav", "out.wav"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote out.wav (mono, 44100 Hz)\n");
    const Audio wet = readAudio("out.wav");
    ASSERT_EQ(wet.channels, 1);
    ASSERT_EQ(wet.samples.size(), dry.samples.size());
    for (std::size_t frame = 0; frame < dry.samples.size(); ++frame)
        ASSERT_EQ(wet.samples[frame], dry.samples[frame] * 1.5f) << "frame " << frame;

    ASSERT_EQ(gain({"--set", "gain=0.75", "--set", "swap=1", "--block", "7", "in.wav", "odd.wav"}).status, 0);
    ASSERT_EQ(gain({"--set", "gain=0.75", "--set", "swap=1", "--block=4096", "in.wav", "one.wav"}).status, 0);
    EXPECT_EQ(readAudio("odd.wav").samples, wet.samples);
    EXPECT_EQ(readAudio("one.wav").samples, wet.samples);
}

TEST_F(KelvaneRender, TransportAdvancesWithTheRenderedPositionAt120Bpm)
{
    writeAudio("in.wav", signal(2, 1000, 48000));
    ASSERT_EQ(gain({"--set", "Show Transport=1", "--block", "100", "in.wav", "out.wav"}).status, 0);
    const Audio wet = readAudio("out.wav");
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
    SNDFILE* pcm = sf_open(path("in.wav").c_str(), SFM_WRITE, &format);
    ASSERT_NE(pcm, nullptr);
    ASSERT_EQ(sf_writef_short(pcm, integers.data(), 500), 500);
    sf_close(pcm);

    ASSERT_EQ(gain({"--set", "Gain=0.25", "in.wav", "out.flac"}).status, 0);
    SF_INFO info{};
    SNDFILE* flac = sf_open(path("out.flac").c_str(), SFM_READ, &info);
    ASSERT_NE(flac, nullptr);
    EXPECT_EQ(info.format, SF_FORMAT_FLAC | SF_FORMAT_PCM_24);
    sf_close(flac);
    const Audio wet = readAudio("out.flac");
    ASSERT_EQ(wet.samples.size(), integers.size());
    // The 24-bit output is exact to about one step of 1/8388608.
    for (std::size_t sample = 0; sample < integers.size(); ++sample)
        ASSERT_NEAR(wet.samples[sample], integers[sample] / 32768.0 * 0.5, 2.0 / 8388608.0) << "sample " << sample;
}

TEST_F(KelvaneRender, DemoRendersTheBuiltInDrumLoop)
{
    ASSERT_EQ(gain({"--demo", "--set", "Gain=0.25", "out.wav"}).status, 0);
    const Audio wet = readAudio("out.wav");
    const DemoDrumLoop loop;
    EXPECT_EQ(wet.sampleRate, DemoDrumLoop::sampleRate);
    ASSERT_EQ(wet.samples.size(), 2u * DemoDrumLoop::frameCount);
    for (int frame = 0; frame < DemoDrumLoop::frameCount; ++frame)
    {
        ASSERT_EQ(wet.samples[2 * frame], loop.left()[frame] * 0.5f) << "frame " << frame;
        ASSERT_EQ(wet.samples[2 * frame + 1], loop.right()[frame] * 0.5f) << "frame " << frame;
    }
}

TEST_F(KelvaneRender, ExistingOutputsAreReplacedOnlyWithForce)
{
    writeAudio("in.wav", signal(1, 100, 44100));
    write("out.wav", "precious");
    expectFailure(gain({"in.wav", "out.wav"}), 1, "out.wav already exists; add --force to replace it");
    EXPECT_EQ(read("out.wav"), "precious");
    ASSERT_EQ(gain({"--force", "in.wav", "out.wav"}).status, 0);
    EXPECT_EQ(readAudio("out.wav").samples.size(), 100u);

    // A state file alike: the gain plug-in keeps no chunk, so its state is its parameter values.
    ASSERT_EQ(gain({"--save-state", "preset.fxp"}).status, 0);
    expectFailure(gain({"--set", "Gain=1", "--save-state", "preset.fxp"}), 1, "already exists; add --force");
    ASSERT_EQ(gain({"--set", "Gain=1", "--save-state", "preset.fxp", "--force"}).status, 0);
    EXPECT_NE(gain({"--load-state", "preset.fxp", "--list"}).out.find("    0  Gain            1.000000  2.00x\n"),
              std::string::npos);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav", "preset.fxp"}));
}

TEST_F(KelvaneRender, WithoutPluginOptionTheInstalledBundleIsUsedAndOldEntryNamesLoad)
{
    for (const char* place : {"vst/Kelvane", "home/.vst/Kelvane"})
    {
        std::filesystem::create_directories(path(place));
        std::filesystem::copy_file(TEST_GAIN_PLUGIN, path(place) + "/Kelvane.so");
    }
    // A Kelvane.so that is no plug-in marks which folder was chosen.
    write("home/.vst/Kelvane/Kelvane.so", "not a plug-in");
    const Run fromVstPath = run({"--list"}, {"VST_PATH=" + path("vst") + ":/nowhere", "HOME=" + path("home")});
    EXPECT_EQ(fromVstPath.status, 0) << fromVstPath.err;
    EXPECT_NE(fromVstPath.out.find("Gain"), std::string::npos);
    expectFailure(run({"--list"}, {"VST_PATH=", "HOME=" + path("home")}), 1,
                  "cannot load plug-in " + path("home") + "/.vst/Kelvane/Kelvane.so");

    const Run legacy = renderWith(LEGACY_GAIN_PLUGIN, {"--list"});
    EXPECT_EQ(legacy.status, 0) << legacy.err;
    EXPECT_NE(legacy.out.find("Show Transport"), std::string::npos);
}
