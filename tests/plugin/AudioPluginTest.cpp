// AudioPlugin: its buses and their channel arrays across prepare.

#include "plugin/AudioBus.h"
#include "plugin/AudioPlugin.h"
#include "plugin/EventBus.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <vector>

using namespace q1framework;

namespace
{
// The smallest concrete plug-in: stereo audio buses and one event bus each way.
class BusPlugin : public AudioPlugin
{
public:
    BusPlugin()
    {
        replaceAudioBuses(2);
        addEventInput("MIDI In");
        addEventOutput("MIDI Out");
    }

    bool getState(Stream&) override { return true; }
    bool setState(Stream&) override { return true; }
    bool hasEditor() override { return false; }
    void setParameter(float, int) override {}
    bool hasNoSoundInStop() override { return false; }
    void process(TimeInfo&, int) override {}
};

const uint8_t noteOn[3] = {0x90, 60, 100};
}  // namespace

TEST(AudioPlugin, PrepareGivesEachBusAFreshZeroedArrayWithAlignedBuffersWhileItOwnsThem)
{
    BusPlugin plugin;
    AudioPlugin::AudioBus& input = plugin.getAudioInput(0);
    // Before the first prepare: an array of null channels.
    ASSERT_EQ(input.getNumChannels(), 2);
    EXPECT_EQ(input.getChannels()[0], nullptr);

    plugin.prepare(64, false, 48000.0);
    EXPECT_EQ(plugin.getMaxBlockSize(), 64);
    ASSERT_TRUE(input.ownsChannels());
    for (int channel = 0; channel < 2; ++channel)
    {
        float* buffer = input.getChannels()[channel];
        ASSERT_NE(buffer, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer) % 16, 0u);
        // Room for 64 doubles: 128 floats, all zero.
        EXPECT_EQ(std::vector<float>(buffer, buffer + 128), std::vector<float>(128, 0.0f));
        buffer[127] = 1.0f;
    }
    plugin.getAudioOutput(0).getChannels()[1][5] = 2.0f;
    plugin.clearOutputs(64);
    EXPECT_EQ(plugin.getAudioOutput(0).getChannels()[1][5], 0.0f);
    EXPECT_EQ(input.getChannels()[0][127], 1.0f);  // outputs only, and only `frames` samples
    plugin.clearInputs(false, 200);                // no more than the buffer holds
    EXPECT_EQ(input.getChannels()[0][127], 0.0f);

    // A block size no buffer is made for: null channels instead of an overflowing size.
    plugin.prepare(INT_MAX, true, 48000.0);
    EXPECT_EQ(plugin.getMaxBlockSize(), INT_MAX);
    EXPECT_EQ(input.getChannels()[0], nullptr);
}

TEST(AudioPlugin, ReleasedBusesTakeTheAdaptersPointersUpToTheirLength)
{
    BusPlugin plugin;
    plugin.prepare(32, true, 44100.0);
    plugin.releaseChannelBuffers();
    AudioPlugin::AudioBus& output = plugin.getAudioOutput(0);
    EXPECT_FALSE(output.ownsChannels());
    plugin.prepare(32, true, 44100.0);  // a fresh array, still without buffers
    EXPECT_EQ(output.getChannels()[1], nullptr);

    float left[4] = {};
    float right[4] = {};
    float spare[4] = {};
    float* pointers[] = {left, right, spare};
    output.setChannelPointers(pointers, 3);
    EXPECT_EQ(output.getNumChannels(), 2);
    EXPECT_EQ(output.getChannels()[1], right);
    output.setChannelPointers(nullptr, 2);
    EXPECT_EQ(output.getChannels()[0], nullptr);
    output.setChannelPointers(pointers, 1);
    EXPECT_EQ(output.getNumChannels(), 1);
    // Clearing never touches memory the bus does not own.
    left[0] = 3.0f;
    plugin.clearOutputs(4);
    EXPECT_EQ(left[0], 3.0f);
}

TEST(AudioPlugin, EventListsHoldTheirCapacityAndAreEmptiedOnRequest)
{
    BusPlugin plugin;
    AudioPlugin::EventBus& input = plugin.getEventInput(0);
    for (int event = 0; event < AudioPlugin::EventBus::capacity; ++event)
        ASSERT_TRUE(input.add(noteOn, event));
    EXPECT_FALSE(input.add(noteOn, 0));
    EXPECT_EQ(input.getNumEvents(), AudioPlugin::EventBus::capacity);
    EXPECT_EQ(input.getEvent(7).sampleOffset, 7);
    EXPECT_EQ(input.getEvent(7).bytes[1], 60);

    plugin.getEventOutput(0).add(noteOn, 0);
    plugin.clearInputs(false, 0);
    EXPECT_EQ(input.getNumEvents(), AudioPlugin::EventBus::capacity);
    plugin.clearOutputs(0);
    EXPECT_EQ(plugin.getEventOutput(0).getNumEvents(), 0);
    plugin.prepare(16, true, 44100.0);
    EXPECT_EQ(input.getNumEvents(), 0);
}
