// Effects made in this program: VST2Wrapper around a plug-in that records what reaches it (the
// host's memory, transport and events), the framework's life across instances, and an effect
// without an editor.

#include "TestHost.h"
#include "fixtures/GainEffect.h"

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
// A stereo plug-in with one MIDI input that notes what each block brings it.
class ProbePlugin : public AudioPlugin
{
public:
    ProbePlugin()
    {
        replaceAudioBuses(2);
        addEventInput("MIDI");
    }

    bool getState(Stream&) override { return true; }
    bool setState(Stream&) override { return true; }
    bool hasEditor() override { return false; }
    bool hasNoSoundInStop() override { return false; }
    void setParameter(float, int) override {}
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

    TimeInfo seenTime;
    int seenFrames = 0;
    float* seenInput = nullptr;
    float* seenOutput = nullptr;
    int seenEvents = 0;
    AudioPlugin::EventBus::MidiEvent seenFirstEvent{};
};

std::vector<std::string> frameworkSteps;
}  // namespace

TEST(VST2Wrapper, BlockHandsOverTheHostsMemoryAndTransportAndUsesUpTheEvents)
{
    TestHost host;
    host.timeInfo.ppqPos = 12.5;
    host.timeInfo.tempo = 96.0;
    host.timeInfo.samplePos = 1000.0;
    ProbePlugin* probe = new ProbePlugin;
    PluginDescription description;
    description.numInputs = 2;
    description.numOutputs = 2;
    FrameworkInstances::add();  // as createEffectInstance does; effClose gives it back
    VST2Wrapper* wrapper = new VST2Wrapper(TestHost::callback(), probe, description);
    AEffect* effect = wrapper->getAeffect();

    VstMidiEvent noteOn{};
    noteOn.type = kVstMidiType;
    noteOn.deltaFrames = 17;
    noteOn.midiData[0] = static_cast<char>(0x90);
    noteOn.midiData[2] = 99;
    VstMidiSysexEvent sysex{};
    sysex.type = kVstSysExType;
    VstEvents events{};
    events.numEvents = 2;
    events.events[0] = reinterpret_cast<VstEvent*>(&sysex);
    events.events[1] = reinterpret_cast<VstEvent*>(&noteOn);
    EXPECT_EQ(wrapper->dispatcher(effProcessEvents, 0, 0, &events, 0.0f), 1);

    float in[2][8] = {};
    float out[2][8] = {};
    float* inputs[] = {in[0], in[1]};
    float* outputs[] = {out[0], out[1]};
    effect->processReplacing(effect, inputs, outputs, 8);
    EXPECT_EQ(probe->seenFrames, 8);
    EXPECT_TRUE(probe->seenInput == in[1] && probe->seenOutput == out[0]);
    EXPECT_EQ(probe->seenTime.ppqPosition, 12.5);
    EXPECT_EQ(probe->seenTime.tempo, 96.0);
    EXPECT_EQ(probe->seenTime.samplePosition, 0.0);  // only position and tempo are taken
    ASSERT_EQ(probe->seenEvents, 1);  // the sysex event is dropped
    const AudioPlugin::EventBus::MidiEvent& event = probe->seenFirstEvent;
    EXPECT_EQ(std::vector<int>({event.bytes[0], event.bytes[2], event.sampleOffset}), std::vector<int>({0x90, 99, 17}));

    // The next block, without a transport, gets the defaults and no events.
    host.giveTimeInfo = false;
    effect->processReplacing(effect, inputs, outputs, 4);
    EXPECT_EQ(probe->seenTime.tempo, 125.0);
    EXPECT_EQ(probe->seenEvents, 0);
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(FrameworkInstances::getCount(), 0);
}

TEST(VST2Wrapper, FrameworkComesUpWithTheFirstInstanceAndGoesDownWithTheLast)
{
    TestHost host;
    frameworkSteps.clear();
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, [] { frameworkSteps.push_back("up"); });
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, [] { frameworkSteps.push_back("down"); });
    AudioEffect* first = createEffectInstance(TestHost::callback());
    AudioEffect* second = createEffectInstance(TestHost::callback());
    first->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(frameworkSteps, std::vector<std::string>{"up"});
    second->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    AudioEffect* later = createEffectInstance(TestHost::callback());
    later->dispatcher(effClose, 0, 0, nullptr, 0.0f);
    EXPECT_EQ(frameworkSteps, (std::vector<std::string>{"up", "down", "up", "down"}));
    EXPECT_EQ(FrameworkInstances::getCount(), 0);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, nullptr);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, nullptr);
}

// The editor opcodes of an effect without an editor (Kelvane always has one): the dispatcher
// answers them itself, and never reaches for the editor that is not there.
TEST(AEffEditor, WithoutAnEditorEveryEditorOpcodeAnswersZero)
{
    TestHost host;
    GainEffect effect(TestHost::callback());
    EXPECT_EQ(effect.getAeffect()->flags & effFlagsHasEditor, 0);
    ERect* rect = nullptr;
    for (VstInt32 opcode : {effEditGetRect, effEditOpen, effEditIdle, effEditKeyDown, effEditKeyUp,
                            effSetEditKnobMode, effEditClose})
        EXPECT_EQ(effect.dispatcher(opcode, 'a', VKEY_UP, &rect, 0.0f), 0) << "opcode " << opcode;
    EXPECT_EQ(rect, nullptr);
}
