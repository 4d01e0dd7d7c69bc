// AudioPlugin: its buses, their channel arrays across prepare, listeners and editors.

#include "plugin/AudioBus.h"
#include "plugin/AudioPlugin.h"
#include "plugin/EventBus.h"
#include "plugin/PluginEditorView.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
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
        configureStereo();
        addEventInput("MIDI In");
        addEventOutput("MIDI Out");
    }

    bool getState(Stream&) override { return true; }
    bool setState(Stream&) override { return true; }
    bool hasEditor() override { return false; }
    void setParameter(float, int) override {}
    bool hasNoSoundInStop() override { return false; }
    void process(TimeInfo&, int) override {}
    bool configureStereo() override
    {
        replaceAudioBuses(2);
        return true;
    }
};

class Log : public AudioPlugin::Listener
{
public:
    explicit Log(std::vector<std::string>& calls, const char* name) : calls(calls), name(name) {}
    void pluginChanged(int kind) override { calls.push_back(name + " changed " + std::to_string(kind)); }
    void gestureBegan(AudioPlugin*, int index) override { calls.push_back(name + " began " + std::to_string(index)); }
    void valueChanged(float value, AudioPlugin*, int index) override
    {
        calls.push_back(name + " value " + std::to_string(index) + "=" + std::to_string(value));
    }
    void gestureEnded(AudioPlugin*, int index) override { calls.push_back(name + " ended " + std::to_string(index)); }

private:
    std::vector<std::string>& calls;
    std::string name;
};

class NullView : public PluginEditorView
{
public:
    void refreshControl(int) override {}
    void refreshAllControls() override {}
};

const uint8_t noteOn[3] = {0x90, 60, 100};
}  // namespace

TEST(AudioPlugin, PrepareGivesEachBusAFreshZeroedArrayWithAlignedBuffersWhileItOwnsThem)
{
    BusPlugin plugin;
    ASSERT_EQ(plugin.getNumAudioInputs(), 1);
    ASSERT_EQ(plugin.getNumAudioOutputs(), 1);
    AudioPlugin::AudioBus& input = plugin.getAudioInput(0);
    EXPECT_EQ(input.getName(), "Input");
    EXPECT_EQ(plugin.getAudioOutput(0).getName(), "Output");
    EXPECT_EQ(&input.getOwner(), &plugin);
    EXPECT_EQ(plugin.getMaxBlockSize(), 0);
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
        for (int sample = 0; sample < 128; ++sample)
            ASSERT_EQ(buffer[sample], 0.0f);
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
    EXPECT_EQ(output.getChannels()[0], nullptr);
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
    ASSERT_EQ(plugin.getNumEventInputs(), 1);
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

TEST(AudioPlugin, ListenersAreToldInOrderOnceEach)
{
    BusPlugin plugin;
    std::vector<std::string> calls;
    Log first(calls, "first");
    Log second(calls, "second");
    EXPECT_TRUE(plugin.addListener(&first));
    EXPECT_TRUE(plugin.addListener(&second));
    EXPECT_FALSE(plugin.addListener(&first));
    EXPECT_FALSE(plugin.addListener(nullptr));
    plugin.notifyPluginChanged(AudioPlugin::Listener::latencyChanged);
    plugin.notifyGestureBegan(3);
    plugin.notifyValueChanged(0.25f, 3);
    plugin.notifyGestureEnded(3);
    plugin.removeListener(&first);
    plugin.notifyPluginChanged(1);
    EXPECT_EQ(calls, (std::vector<std::string>{"first changed 0", "second changed 0", "first began 3", "second began 3",
                                               "first value 3=0.250000", "second value 3=0.250000", "first ended 3",
                                               "second ended 3", "second changed 1"}));
}

TEST(AudioPlugin, EditorsAttachOnceAndDetach)
{
    BusPlugin plugin;
    NullView first;
    NullView second;
    plugin.addEditor(&first);
    plugin.addEditor(&first);
    plugin.addEditor(&second);
    plugin.addEditor(nullptr);
    EXPECT_EQ(plugin.getNumEditors(), 2);
    plugin.removeEditor(&first);
    plugin.removeEditor(&first);
    EXPECT_EQ(plugin.getNumEditors(), 1);
}
