// kelvane-render as a user runs it: the built program in a process of its own, driving the test
// plug-ins (a stereo gain with "Gain" = amplitude / 2, "Swap" and "Show Transport"), whose output
// the tests work out sample by sample.

#include "RenderTest.h"

#include <sndfile.h>
#include <filesystem>

using KelvaneRender = RenderTest;

TEST_F(KelvaneRender, SettingsByNameOrIndexReachEverySampleOfAStereoOrMonoFileAtAnyBlockSize)
{
    const Audio stereo = signal(2, 3001, 48000);
    writeAudio("stereo.wav", stereo);
    Run run = gain({"--set", "Gain=0.25", "--set", "1=1", "stereo.wav", "out.wav"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "wrote out.wav (stereo, 48000 Hz)\n");
    Audio wet = readAudio("out.wav");
    ASSERT_EQ(wet.channels, 2);
    EXPECT_EQ(wet.sampleRate, 48000);
    ASSERT_EQ(wet.samples.size(), stereo.samples.size());
    // Gain 0.25 is an amplitude of 0.5, exact in float; Swap exchanges the channels.
    for (std::size_t frame = 0; frame < stereo.samples.size() / 2; ++frame)
    {
        ASSERT_EQ(wet.samples[2 * frame], stereo.samples[2 * frame + 1] * 0.5f) << "frame " << frame;
        ASSERT_EQ(wet.samples[2 * frame + 1], stereo.samples[2 * frame] * 0.5f) << "frame " << frame;
    }

    // With Swap the left output is the right input: the one channel of a mono file feeds both.
    // Each run replaces the output of the one before, with --force.
    const Audio mono = signal(1, 1234, 44100);
    writeAudio("mono.wav", mono);
    // Block sizes from 1 to 65536 are taken, and options may follow the files.
    for (const std::string block : {"--block=1024", "--block=1", "--block=65536"})
    {
        run = gain({"--set", "gain=0.75", "--set", "swap=1", block, "mono.wav", "out.wav", "--force"});
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out, "wrote out.wav (mono, 44100 Hz)\n");
        wet = readAudio("out.wav");
        ASSERT_EQ(wet.channels, 1);
        ASSERT_EQ(wet.samples.size(), mono.samples.size());
        for (std::size_t frame = 0; frame < mono.samples.size(); ++frame)
            ASSERT_EQ(wet.samples[frame], mono.samples[frame] * 1.5f) << block << ", frame " << frame;
    }
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
    writeAudio("in.wav", signal(2, 500, 44100), SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    const Audio dry = readAudio("in.wav");  // the integers / 32768, as libsndfile reads them
    ASSERT_EQ(gain({"--set", "Gain=0.25", "in.wav", "out.flac"}).status, 0);
    const Audio wet = readAudio("out.flac");
    EXPECT_EQ(wet.format, SF_FORMAT_FLAC | SF_FORMAT_PCM_24);
    ASSERT_EQ(wet.samples.size(), dry.samples.size());
    // The 24-bit output is exact to about one step of 1/8388608.
    for (std::size_t sample = 0; sample < dry.samples.size(); ++sample)
        ASSERT_NEAR(wet.samples[sample], dry.samples[sample] * 0.5, 2.0 / 8388608.0) << "sample " << sample;
}

TEST_F(KelvaneRender, StateFileIsReplacedWithForceAndComesBack)
{
    // The gain plug-in keeps no chunk, so its state is its parameter values.
    ASSERT_EQ(gain({"--save-state", "preset.fxp"}).status, 0);
    ASSERT_EQ(gain({"--set", "Gain=1", "--save-state", "preset.fxp", "--force"}).status, 0);
    EXPECT_NE(gain({"--load-state", "preset.fxp", "--list"}).out.find("    0  Gain            1.000000  2.00x\n"),
              std::string::npos);
}

TEST_F(KelvaneRender, WithoutPluginOptionTheInstalledBundleIsUsedAndOldEntryNamesLoad)
{
    std::filesystem::create_directories(path("vst/Kelvane"));
    std::filesystem::copy_file(TEST_GAIN_PLUGIN, path("vst/Kelvane/Kelvane.so"));
    // The user's folder holds a Kelvane.so that is no plug-in: its refusal shows that folder was chosen.
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
