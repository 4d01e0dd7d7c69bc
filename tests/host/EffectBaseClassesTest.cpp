// AudioEffect's and AudioEffectX's dispatchers and record callbacks as a host meets them on
// Kelvane.so, loaded through dlopen: the guards against null pointers, unknown opcodes, negative
// sizes and orphan records, and the conventional answers to the 2.x opcodes Kelvane leaves to
// them. Last, the editor opcodes of the fixture effect made in this program, which has no editor
// (Kelvane always has one).

#include "TestHost.h"
#include "fixtures/GainEffect.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace q1framework;
using namespace EffectCalls;

namespace
{
class EffectBaseClasses : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure; }

    TestHost host;
};
}  // namespace

TEST_F(EffectBaseClasses, OpcodesWithoutTheirPointerUnknownOpcodesAndNegativeSizesAnswerZero)
{
    for (VstInt32 opcode : {effSetProgramName, effGetProgramName, effGetParamLabel, effGetParamDisplay,
                            effGetParamName, effEditGetRect, effGetChunk, effSetChunk, effCanDo, effGetEffectName,
                            effGetVendorString, effGetProductString, effProcessEvents, effString2Parameter,
                            effGetProgramNameIndexed, effGetInputProperties, effGetOutputProperties,
                            effGetParameterProperties, effGetSpeakerArrangement, effSetSpeakerArrangement,
                            effBeginLoadBank, effBeginLoadProgram})
        EXPECT_EQ(host.dispatch(opcode, 0, 16, nullptr), 0) << "opcode " << opcode;
    for (VstInt32 opcode : {effGetVu, effEditDraw, effIdentify, effGetNumProgramCategories, 80, 1000, -1})
        EXPECT_EQ(host.dispatch(opcode, 1, 1, nullptr, 1.0f), 0) << "opcode " << opcode;

    // A negative chunk size never reaches the effect.
    std::string saved = getChunk(host.effect);
    host.effect->setParameter(host.effect, gain, 0.1f);
    EXPECT_EQ(host.dispatch(effSetChunk, 0, -static_cast<VstIntPtr>(saved.size()), saved.data()), 0);
    EXPECT_EQ(host.effect->getParameter(host.effect, gain), 0.1f);
}

TEST_F(EffectBaseClasses, CallbacksOfARecordWithoutItsObjectDoNothing)
{
    AEffect orphan = *host.effect;
    orphan.object = nullptr;
    EXPECT_EQ(orphan.dispatcher(&orphan, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(orphan.getParameter(&orphan, gain), 0.0f);
    orphan.setParameter(&orphan, gain, 1.0f);
    EXPECT_EQ(host.effect->getParameter(host.effect, gain), 0.5f);
    float sample = 0.5f;
    float* channels[2] = {&sample, &sample};
    orphan.processReplacing(&orphan, channels, channels, 1);
    EXPECT_EQ(sample, 0.5f);
}

TEST_F(EffectBaseClasses, OpcodesTheEffectLeavesAloneAnswerTheConventionalDefaults)
{
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

    // Speaker arrangements are neither adopted nor given.
    VstSpeakerArrangement input{};
    VstSpeakerArrangement output{};
    input.type = output.type = kSpeakerArrMono;
    input.numChannels = output.numChannels = 1;
    EXPECT_EQ(host.dispatch(effSetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&input), &output), 0);
    EXPECT_EQ(host.effect->numInputs, 2);
    VstSpeakerArrangement* inputAnswer = &input;
    VstSpeakerArrangement* outputAnswer = &output;
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&inputAnswer), &outputAnswer), 0);
    EXPECT_EQ(inputAnswer, nullptr);
    EXPECT_EQ(outputAnswer, nullptr);
    // A null input slot is never written through.
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, 0, &outputAnswer), 0);
}

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
