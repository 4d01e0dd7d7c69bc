// AudioEffectX: the 2.x opcodes as a host meets them through dlopen, and the calls towards the
// host, on the fixture effect made in this program.

#include "TestHost.h"
#include "fixtures/GainEffect.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q1framework;

TEST(AudioEffectX, UnsupportedQueriesAnswerTheConventionalDefaults)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN)) << host.failure;
    for (VstInt32 index : {0, 2, 7})
        EXPECT_EQ(host.dispatch(effCanBeAutomated, index), 1);
    EXPECT_EQ(host.dispatch(effSetBypass, 0, 1), 0);
    EXPECT_EQ(host.dispatch(effGetPlugCategory), kPlugCategUnknown);
    EXPECT_EQ(host.dispatch(effGetTailSize), 0);
    EXPECT_EQ(host.dispatch(effGetVstVersion), 2400);
    EXPECT_EQ(host.dispatch(effStartProcess), 0);
    EXPECT_EQ(host.dispatch(effStopProcess), 0);
    EXPECT_EQ(host.dispatch(effSetProcessPrecision, 0, kVstProcessPrecision64), 0);
    EXPECT_EQ(host.dispatch(effSetTotalSampleToProcess, 0, 4410), 4410);
    EXPECT_EQ(host.dispatch(effGetNumMidiInputChannels), 0);
    EXPECT_EQ(host.dispatch(effVendorSpecific, 1, 2, nullptr, 3.0f), 0);

    char text[] = "0.7";
    EXPECT_EQ(host.dispatch(effString2Parameter, 0, 0, text), 0);
    EXPECT_EQ(host.text(effGetProgramNameIndexed, 0), "garbage");

    VstPinProperties pin{};
    EXPECT_EQ(host.dispatch(effGetInputProperties, 0, 0, &pin), 0);
    EXPECT_EQ(host.dispatch(effGetOutputProperties, 1, 0, &pin), 0);
    VstParameterProperties properties{};
    EXPECT_EQ(host.dispatch(effGetParameterProperties, 0, 0, &properties), 0);

    VstEvents events{};
    EXPECT_EQ(host.dispatch(effProcessEvents, 0, 0, &events), 0);
}

TEST(AudioEffectX, SpeakerArrangementsAreNeitherAdoptedNorGiven)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    VstSpeakerArrangement input{};
    VstSpeakerArrangement output{};
    input.type = output.type = kSpeakerArrMono;
    input.numChannels = output.numChannels = 1;
    EXPECT_EQ(host.dispatch(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input), &output), 0);
    EXPECT_EQ(host.effect->numInputs, 2);

    VstSpeakerArrangement* inputAnswer = &input;
    VstSpeakerArrangement* outputAnswer = &output;
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&inputAnswer),
                            &outputAnswer), 0);
    EXPECT_EQ(inputAnswer, nullptr);
    EXPECT_EQ(outputAnswer, nullptr);
    // A null input slot is never written through.
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, 0, &outputAnswer), 0);
}

TEST(AudioEffectX, IdentityAndCanDoComeFromTheEffect)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    EXPECT_EQ(host.text(effGetEffectName), "Test Gain");
    EXPECT_EQ(host.text(effGetVendorString), "Kelvane Test Fixtures");
    EXPECT_EQ(host.text(effGetProductString), "Test Gain");
    EXPECT_EQ(host.dispatch(effGetVendorVersion), 1);
    char timeInfo[] = "receiveVstTimeInfo";
    char bypass[] = "bypass";
    EXPECT_EQ(host.dispatch(effCanDo, 0, 0, timeInfo), 1);
    EXPECT_EQ(host.dispatch(effCanDo, 0, 0, bypass), 0);
}

TEST(AudioEffectX, CallsTowardsTheHostCarryTheirArgumentsInThePublishedSlots)
{
    TestHost host;
    GainEffect effect(TestHost::callback());
    EXPECT_TRUE(effect.beginEdit(2));
    effect.setParameterAutomated(2, 0.75f);
    EXPECT_TRUE(effect.endEdit(2));
    EXPECT_TRUE(effect.sizeWindow(640, 480));
    effect.setInitialDelay(64);
    EXPECT_TRUE(effect.ioChanged());
    effect.wantEvents();
    EXPECT_EQ(effect.getParameter(2), 0.75f);
    EXPECT_EQ(effect.getAeffect()->initialDelay, 64);

    ASSERT_EQ(host.calls.size(), 6u);
    const VstInt32 opcodes[] = {audioMasterBeginEdit, audioMasterAutomate, audioMasterEndEdit,
                                audioMasterSizeWindow, audioMasterIOChanged, audioMasterWantMidi};
    for (std::size_t call = 0; call < host.calls.size(); ++call)
        EXPECT_EQ(host.calls[call].opcode, opcodes[call]) << "call " << call;
    EXPECT_EQ(host.calls[0].index, 2);
    EXPECT_EQ(host.calls[1].index, 2);
    EXPECT_EQ(host.calls[1].opt, 0.75f);
    EXPECT_EQ(host.calls[3].index, 640);
    EXPECT_EQ(host.calls[3].value, 480);
    EXPECT_EQ(host.calls[5].value, 1);
}

TEST(AudioEffectX, AHostThatDeclinesIsReportedAsFalse)
{
    TestHost host;
    host.acceptAnswer = 0;
    GainEffect effect(TestHost::callback());
    EXPECT_FALSE(effect.beginEdit(0));
    EXPECT_FALSE(effect.sizeWindow(10, 10));
    EXPECT_FALSE(effect.ioChanged());
}

TEST(AudioEffectX, WithoutAHostCallbackEveryHostCallIsSkipped)
{
    GainEffect effect(nullptr);
    EXPECT_FALSE(effect.beginEdit(0));
    EXPECT_FALSE(effect.endEdit(0));
    effect.setParameterAutomated(0, 0.25f);
    EXPECT_EQ(effect.getParameter(0), 0.25f);
    EXPECT_FALSE(effect.sizeWindow(10, 10));
    EXPECT_FALSE(effect.ioChanged());
    effect.wantEvents();
    EXPECT_EQ(effect.getTimeInfo(kVstTempoValid), nullptr);
    EXPECT_EQ(effect.getMasterVersion(), 1);
    EXPECT_EQ(effect.getCurrentProcessLevel(), kVstProcessLevelUnknown);
    char text[8] = "garbage";
    EXPECT_FALSE(effect.getHostVendorString(text));
    EXPECT_STREQ(text, "");
    EXPECT_FALSE(effect.canHostDo("sizeWindow"));
    EXPECT_EQ(effect.updateSampleRate(), 44100.0f);
}

TEST(AudioEffectX, TimeInfoIsTheHostsRecord)
{
    TestHost host;
    GainEffect effect(TestHost::callback());
    EXPECT_EQ(effect.getTimeInfo(kVstPpqPosValid), &host.timeInfo);
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterGetTime);
    EXPECT_EQ(host.calls[0].value, kVstPpqPosValid);
    host.giveTimeInfo = false;
    EXPECT_EQ(effect.getTimeInfo(kVstPpqPosValid), nullptr);
}

TEST(AudioEffectX, RateAndBlockSizeDefaultTo44100And1024UntilTheHostSetsThem)
{
    TestHost host;
    GainEffect effect(TestHost::callback());
    EXPECT_EQ(effect.getSampleRate(), 44100.0f);
    EXPECT_EQ(effect.getBlockSize(), 1024);
    effect.dispatcher(effSetSampleRate, 0, 0, nullptr, 48000.0f);
    EXPECT_EQ(effect.getSampleRate(), 48000.0f);
    EXPECT_EQ(effect.getBlockSize(), 1024);
    effect.dispatcher(effSetBlockSize, 0, 96, nullptr, 0.0f);
    EXPECT_EQ(effect.getBlockSize(), 96);
    EXPECT_EQ(effect.getMasterVersion(), 2400);
}

TEST(AudioEffectX, InstrumentFlagMakesTheCategorySynth)
{
    GainEffect effect(nullptr);
    effect.isSynth();
    EXPECT_EQ(effect.dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), kPlugCategSynth);
    EXPECT_EQ(effect.getAeffect()->flags & effFlagsIsSynth, effFlagsIsSynth);
    effect.isSynth(false);
    effect.noTail();
    EXPECT_EQ(effect.dispatcher(effGetPlugCategory, 0, 0, nullptr, 0.0f), kPlugCategUnknown);
    EXPECT_EQ(effect.getAeffect()->flags, effFlagsCanReplacing | effFlagsProgramChunks | effFlagsNoSoundInStop);
}
