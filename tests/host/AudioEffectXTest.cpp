// AudioEffectX's answers to the 2.x opcodes that Kelvane leaves to it, as a host meets them on
// Kelvane.so through dlopen.

#include "TestHost.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace q1framework;

TEST(AudioEffectX, OpcodesTheEffectLeavesAloneAnswerTheConventionalDefaults)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
    // opcode, index, value, answer
    const std::tuple<VstInt32, VstInt32, VstIntPtr, VstIntPtr> answers[] = {
        {effCanBeAutomated, 6, 0, 1}, {effSetBypass, 0, 1, 0}, {effGetTailSize, 0, 0, 0},
        {effStartProcess, 0, 0, 0}, {effStopProcess, 0, 0, 0}, {effSetProcessPrecision, 0, kVstProcessPrecision64, 0},
        {effSetTotalSampleToProcess, 0, 4410, 4410}, {effGetNumMidiInputChannels, 0, 0, 0},
        {effGetNumMidiOutputChannels, 0, 0, 0}, {effVendorSpecific, 1, 2, 0},
    };
    for (const auto& [opcode, index, value, answer] : answers)
        EXPECT_EQ(host.dispatch(opcode, index, value, nullptr, 3.0f), answer) << "opcode " << opcode;

    char text[] = "0.7";
    EXPECT_EQ(host.dispatch(effString2Parameter, 0, 0, text), 0);
    EXPECT_EQ(host.text(effGetProgramNameIndexed, 0), "garbage");
    VstPinProperties pin{};
    EXPECT_EQ(host.dispatch(effGetInputProperties, 0, 0, &pin), 0);
    EXPECT_EQ(host.dispatch(effGetOutputProperties, 1, 0, &pin), 0);
    VstParameterProperties properties{};
    EXPECT_EQ(host.dispatch(effGetParameterProperties, 0, 0, &properties), 0);
}

TEST(AudioEffectX, SpeakerArrangementsAreNeitherAdoptedNorGiven)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN));
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
