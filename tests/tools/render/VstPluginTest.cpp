// VstPlugin, the host side of kelvane-render, with the test plug-ins loaded in this program.

#include "VstPlugin.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace q1framework;

namespace
{
constexpr int showTransport = 2;

std::unique_ptr<VstPlugin> loaded(const char* path)
{
    std::string error;
    std::unique_ptr<VstPlugin> plugin = VstPlugin::load(path, error);
    EXPECT_NE(plugin, nullptr) << error;
    EXPECT_EQ(error, "");
    return plugin;
}

// Runs one block of `frames` through the plug-in and answers the first output frame.
std::pair<float, float> firstFrameOfBlock(VstPlugin& plugin, int frames)
{
    std::vector<float> silence(static_cast<std::size_t>(frames));
    std::vector<float> left(static_cast<std::size_t>(frames));
    std::vector<float> right(static_cast<std::size_t>(frames));
    float* inputs[2] = {silence.data(), silence.data()};
    float* outputs[2] = {left.data(), right.data()};
    plugin.process(inputs, outputs, frames);
    return {left[0], right[0]};
}
}

TEST(VstPlugin, LoadedPluginShowsItsRecordAndParameters)
{
    const std::unique_ptr<VstPlugin> plugin = loaded(TEST_GAIN_PLUGIN);
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->uniqueId(), fourCharacterCode('T', 'G', 'a', 'i'));
    EXPECT_EQ(plugin->version(), 1);
    EXPECT_EQ(plugin->inputCount(), 2);
    EXPECT_EQ(plugin->outputCount(), 2);
    EXPECT_EQ(plugin->parameterCount(), 3);
    EXPECT_TRUE(plugin->savesChunks());
    EXPECT_EQ(plugin->parameterName(2), "Show Transport");
    EXPECT_EQ(plugin->parameterDisplay(0), "1.00x");
    EXPECT_EQ(plugin->programName(), "");
}

TEST(VstPlugin, ParametersAreFoundByNameWithoutCaseOrByIndex)
{
    const std::unique_ptr<VstPlugin> plugin = loaded(TEST_GAIN_PLUGIN);
    EXPECT_EQ(plugin->parameterIndex("Swap"), 1);
    EXPECT_EQ(plugin->parameterIndex("show transport"), 2);
    EXPECT_EQ(plugin->parameterIndex("0"), 0);
    EXPECT_EQ(plugin->parameterIndex("2"), 2);
    EXPECT_EQ(plugin->parameterIndex("3"), -1);
    EXPECT_EQ(plugin->parameterIndex(""), -1);
    EXPECT_EQ(plugin->parameterIndex("Swa"), -1);
    EXPECT_EQ(plugin->parameterIndex("99999999999999999999"), -1);
}

TEST(VstPlugin, ChunkComesOutAndGoesBackIn)
{
    const std::unique_ptr<VstPlugin> plugin = loaded(TEST_GAIN_PLUGIN);
    plugin->setParameter(0, 0.125f);
    const std::vector<char> saved = plugin->chunk();
    ASSERT_EQ(saved.size(), 16u);
    plugin->setParameter(0, 0.875f);
    plugin->setChunk(saved);
    EXPECT_EQ(plugin->parameter(0), 0.125f);
}

TEST(VstPlugin, TransportStartsAtZeroAndAdvancesBlockByBlock)
{
    const std::unique_ptr<VstPlugin> plugin = loaded(TEST_GAIN_PLUGIN);
    plugin->prepare(96000.0, 4800);
    plugin->setParameter(showTransport, 1.0f);
    plugin->start();
    EXPECT_EQ(firstFrameOfBlock(*plugin, 4800), std::make_pair(0.0f, 0.0f));
    const VstTimeInfo& first = plugin->timeInfo();
    EXPECT_EQ(first.flags & kVstTransportChanged, kVstTransportChanged);
    EXPECT_EQ(first.flags & (kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstTimeSigValid),
              kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstTimeSigValid);
    EXPECT_EQ(first.tempo, 120.0);
    EXPECT_EQ(first.sampleRate, 96000.0);
    EXPECT_EQ(first.timeSigNumerator, 4);
    EXPECT_EQ(first.timeSigDenominator, 4);

    // 4800 frames at 96 kHz are 0.05 s, a tenth of a beat at 120 beats per minute.
    for (int block = 1; block < 50; ++block)
    {
        const std::pair<float, float> frame = firstFrameOfBlock(*plugin, 4800);
        ASSERT_FLOAT_EQ(frame.first, 0.1f * block) << "block " << block;
        ASSERT_FLOAT_EQ(frame.second, 0.05f * block) << "block " << block;
    }
    const VstTimeInfo& late = plugin->timeInfo();
    EXPECT_EQ(late.flags & kVstTransportChanged, 0);
    EXPECT_EQ(late.samplePos, 49 * 4800.0);
    EXPECT_NEAR(late.ppqPos, 4.9, 1e-12);
    EXPECT_EQ(late.barStartPos, 4.0);
    EXPECT_NEAR(late.nanoSeconds, 2.45e9, 1e-3);

    plugin->stop();
    plugin->start();
    EXPECT_EQ(firstFrameOfBlock(*plugin, 4800), std::make_pair(0.0f, 0.0f));
}

TEST(VstPlugin, LoadingAndUnloadingRepeatedlyLeavesNothingBehind)
{
    // The sanitizer build fails the program at exit if a round leaks.
    for (int round = 0; round < 20; ++round)
    {
        const std::unique_ptr<VstPlugin> plugin = loaded(round % 2 == 0 ? TEST_GAIN_PLUGIN : LEGACY_GAIN_PLUGIN);
        ASSERT_NE(plugin, nullptr);
        plugin->prepare(44100.0, 64);
        plugin->start();
        firstFrameOfBlock(*plugin, 64);
    }
}
