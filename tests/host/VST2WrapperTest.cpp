// VST2Wrapper around a plug-in made in this program, which records what reaches it: preparation,
// the audio path, events, latency, the editor's calls towards the host, and the framework's life
// across instances.

#include "TestHost.h"

#include "foundation/runtime/FrameworkInitialiser.h"
#include "host/FrameworkInstances.h"
#include "host/VST2Wrapper.h"
#include "plugin/AudioBus.h"
#include "plugin/EventBus.h"
#include "plugin/PluginDescription.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace q1framework;

namespace
{
// A stereo plug-in with one MIDI input that notes every call it gets.
class ProbePlugin : public AudioPlugin
{
public:
    explicit ProbePlugin(std::vector<std::string>& log) : log(log)
    {
        replaceAudioBuses(2);
        addEventInput("MIDI");
    }
    ~ProbePlugin() override { log.push_back("deleted with " + std::to_string(FrameworkInstances::getCount()) + " instances"); }

    bool getState(Stream&) override { return true; }
    bool setState(Stream&) override { return true; }
    bool hasEditor() override { return false; }
    bool hasDoublePrecision() override { return true; }
    bool hasNoSoundInStop() override { return false; }
    int getLatency() override { return latency; }
    int getNumParameters() override { return 4; }
    void setParameter(float value, int index) override
    {
        log.push_back("parameter " + std::to_string(index) + "=" + std::to_string(value));
    }
    void prepare(int blockSize, bool clearBuffers, double sampleRate) override
    {
        AudioPlugin::prepare(blockSize, clearBuffers, sampleRate);
        log.push_back("prepare " + std::to_string(blockSize) + " " + std::to_string(static_cast<int>(sampleRate)));
    }
    void process(TimeInfo& timeInfo, int frames) override
    {
        seenTime = timeInfo;
        seenFrames = frames;
        seenInput = getAudioInput(0).getChannels()[1];
        seenOutput = getAudioOutput(0).getChannels()[0];
        seenEvents = getEventInput(0).getNumEvents();
        if (seenEvents > 0)
            seenFirstEvent = getEventInput(0).getEvent(0);
    }
    int64_t vendorSpecific(int32_t index, int64_t value, void*, float) override { return index + value; }

    std::vector<std::string>& log;
    int latency = 0;
    TimeInfo seenTime;
    int seenFrames = 0;
    float* seenInput = nullptr;
    float* seenOutput = nullptr;
    int seenEvents = 0;
    AudioPlugin::EventBus::MidiEvent seenFirstEvent{};
};

// A wrapper around a ProbePlugin, counted as a framework instance as createEffectInstance does.
struct Wrapped
{
    explicit Wrapped(std::vector<std::string>& log, uint32_t flags = 0) : plugin(new ProbePlugin(log))
    {
        PluginDescription description;
        description.flags = flags;
        description.numInputs = 2;
        description.numOutputs = 2;
        description.uniqueId = PluginDescription::fourCharacterCode("Prb1");
        FrameworkInstances::add();
        wrapper = new VST2Wrapper(TestHost::callback(), plugin, description);
    }
    ~Wrapped() { wrapper->dispatcher(effClose, 0, 0, nullptr, 0.0f); }

    ProbePlugin* plugin;
    VST2Wrapper* wrapper;
};

std::vector<std::string> frameworkSteps;
}  // namespace

TEST(VST2Wrapper, RecordFollowsThePluginAndItsDescription)
{
    TestHost host;
    std::vector<std::string> log;
    {
        Wrapped probe(log, PluginDescription::isSynthFlag | PluginDescription::extraFlagBit);
        const AEffect& effect = *probe.wrapper->getAeffect();
        EXPECT_EQ(effect.flags, effFlagsHasEditor | effFlagsCanReplacing | effFlagsProgramChunks | effFlagsIsSynth
                                    | effFlagsCanDoubleReplacing);
        EXPECT_EQ(effect.numParams, 4);
        EXPECT_EQ(effect.numPrograms, 1);
        EXPECT_EQ(effect.uniqueID, fourCharacterCode('P', 'r', 'b', '1'));
        EXPECT_TRUE(probe.wrapper->getExtraFlag());
        EXPECT_EQ(probe.wrapper->dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), kPlugCategSynth);
        EXPECT_EQ(probe.wrapper->dispatcher(effVendorSpecific, 40, 2, nullptr, 0.0f), 42);
        // The host's buffers take the place of the plug-in's own.
        EXPECT_FALSE(probe.plugin->getAudioInput(0).ownsChannels());
    }
    EXPECT_EQ(log, std::vector<std::string>{"deleted with 1 instances"});
}

TEST(VST2Wrapper, RateAndBlockSizePrepareThePluginWithTheOtherValueKept)
{
    TestHost host;
    std::vector<std::string> log;
    Wrapped probe(log);
    probe.wrapper->dispatcher(effSetSampleRate, 0, 0, nullptr, 48000.0f);
    probe.wrapper->dispatcher(effSetBlockSize, 0, 256, nullptr, 0.0f);
    probe.wrapper->dispatcher(effSetSampleRate, 0, 0, nullptr, 96000.0f);
    EXPECT_EQ(log, (std::vector<std::string>{"prepare 1024 48000", "prepare 256 48000", "prepare 256 96000"}));
    EXPECT_EQ(probe.plugin->getMaxBlockSize(), 256);
}

TEST(VST2Wrapper, BlockHandsOverTheHostsMemoryAndTransportAndUsesUpTheEvents)
{
    TestHost host;
    host.timeInfo.ppqPos = 12.5;
    host.timeInfo.tempo = 96.0;
    host.timeInfo.samplePos = 1000.0;
    std::vector<std::string> log;
    Wrapped probe(log);

    VstMidiEvent noteOn{};
    noteOn.type = kVstMidiType;
    noteOn.deltaFrames = 17;
    noteOn.midiData[0] = static_cast<char>(0x90);
    noteOn.midiData[1] = 64;
    noteOn.midiData[2] = 99;
    VstMidiSysexEvent sysex{};
    sysex.type = kVstSysExType;
    VstEvents events{};
    events.numEvents = 2;
    events.events[0] = reinterpret_cast<VstEvent*>(&sysex);
    events.events[1] = reinterpret_cast<VstEvent*>(&noteOn);
    EXPECT_EQ(probe.wrapper->dispatcher(effProcessEvents, 0, 0, &events, 0.0f), 1);

    float in[2][8] = {};
    float out[2][8] = {};
    float* inputs[] = {in[0], in[1]};
    float* outputs[] = {out[0], out[1]};
    probe.wrapper->getAeffect()->processReplacing(probe.wrapper->getAeffect(), inputs, outputs, 8);
    EXPECT_EQ(probe.plugin->seenFrames, 8);
    EXPECT_EQ(probe.plugin->seenInput, in[1]);
    EXPECT_EQ(probe.plugin->seenOutput, out[0]);
    EXPECT_EQ(probe.plugin->seenTime.ppqPosition, 12.5);
    EXPECT_EQ(probe.plugin->seenTime.tempo, 96.0);
    EXPECT_EQ(probe.plugin->seenTime.samplePosition, 0.0);  // only position and tempo are taken
    ASSERT_EQ(probe.plugin->seenEvents, 1);
    EXPECT_EQ(probe.plugin->seenFirstEvent.bytes[0], 0x90);
    EXPECT_EQ(probe.plugin->seenFirstEvent.bytes[2], 99);
    EXPECT_EQ(probe.plugin->seenFirstEvent.sampleOffset, 17);
    EXPECT_EQ(probe.plugin->getEventInput(0).getNumEvents(), 0);

    // Without a transport the block gets the defaults.
    host.giveTimeInfo = false;
    probe.wrapper->getAeffect()->processReplacing(probe.wrapper->getAeffect(), inputs, outputs, 4);
    EXPECT_EQ(probe.plugin->seenTime.tempo, 125.0);
    EXPECT_EQ(probe.plugin->seenEvents, 0);
}

TEST(VST2Wrapper, LatencyChangesAndEditorGesturesReachTheHost)
{
    TestHost host;
    std::vector<std::string> log;
    Wrapped probe(log);
    probe.plugin->latency = 64;
    probe.plugin->notifyPluginChanged(1);
    EXPECT_EQ(probe.wrapper->getAeffect()->initialDelay, 0);
    probe.plugin->notifyPluginChanged(AudioPlugin::Listener::latencyChanged);
    EXPECT_EQ(probe.wrapper->getAeffect()->initialDelay, 64);

    probe.wrapper->editGestureBegan(3);
    probe.wrapper->editValueChanged(3, 0.75f);
    probe.wrapper->editGestureEnded(3);
    EXPECT_TRUE(probe.wrapper->editorSizeChanged(640, 480));
    host.acceptAnswer = 0;
    EXPECT_FALSE(probe.wrapper->editorSizeChanged(640, 480));

    const VstInt32 opcodes[] = {audioMasterIOChanged, audioMasterBeginEdit, audioMasterAutomate,
                                audioMasterEndEdit, audioMasterSizeWindow, audioMasterSizeWindow};
    ASSERT_EQ(host.calls.size(), 6u);
    for (std::size_t call = 0; call < host.calls.size(); ++call)
        EXPECT_EQ(host.calls[call].opcode, opcodes[call]) << call;
    EXPECT_EQ(host.calls[2].index, 3);
    EXPECT_EQ(host.calls[2].opt, 0.75f);
    EXPECT_EQ(host.calls[4].index, 640);
    EXPECT_EQ(host.calls[4].value, 480);
    EXPECT_EQ(log, std::vector<std::string>{"parameter 3=0.750000"});
}

TEST(VST2Wrapper, FrameworkComesUpWithTheFirstInstanceAndGoesDownWithTheLast)
{
    TestHost host;
    frameworkSteps.clear();
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, [] { frameworkSteps.push_back("up"); });
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, [] { frameworkSteps.push_back("down"); });
    AudioEffect* first = createEffectInstance(TestHost::callback());
    AudioEffect* second = createEffectInstance(TestHost::callback());
    EXPECT_EQ(FrameworkInstances::getCount(), 2);
    first->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(frameworkSteps, std::vector<std::string>{"up"});
    second->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(frameworkSteps, (std::vector<std::string>{"up", "down"}));
    AudioEffect* later = createEffectInstance(TestHost::callback());
    later->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(frameworkSteps, (std::vector<std::string>{"up", "down", "up", "down"}));
    EXPECT_EQ(FrameworkInstances::getCount(), 0);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, nullptr);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, nullptr);
}
