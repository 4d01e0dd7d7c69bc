// AudioEffect as a host meets it: the fixture plug-ins are loaded through dlopen and driven only
// through their entry point and the AEffect record.

#include "EffectCalls.h"
#include "TestHost.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <set>
#include <string>
#include <vector>

using namespace q1framework;

namespace
{
constexpr VstInt32 gainIndex = 0;
constexpr VstInt32 swapIndex = 1;

void process(AEffect* effect, std::vector<float>& left, std::vector<float>& right)
{
    float* channels[2] = {left.data(), right.data()};
    effect->processReplacing(effect, channels, channels, static_cast<VstInt32>(left.size()));
}
}

TEST(AudioEffect, RecordOfAFreshEffectHasTheConventionalDefaultsAndTheEffectsOwnFields)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN)) << host.failure;
    const AEffect& effect = *host.effect;
    EXPECT_EQ(effect.magic, 0x56737450);
    EXPECT_EQ(effect.version, 1);
    EXPECT_EQ(effect.numPrograms, 1);
    EXPECT_EQ(effect.numParams, 3);
    EXPECT_EQ(effect.numInputs, 2);
    EXPECT_EQ(effect.numOutputs, 2);
    // editor, replacing, chunks: bits 0, 4 and 5
    EXPECT_EQ(effect.flags, 0x31);
    EXPECT_EQ(effect.uniqueID, 0x54476169);  // "TGai"
    EXPECT_EQ(effect.initialDelay, 0);
    EXPECT_EQ(effect.ioRatio, 1.0f);
    EXPECT_EQ(effect.resvd1, 0);
    EXPECT_EQ(effect.resvd2, 0);
    EXPECT_NE(effect.object, nullptr);
    EXPECT_EQ(effect.user, nullptr);
    EXPECT_NE(effect.process, nullptr);
    EXPECT_NE(effect.processReplacing, nullptr);
    EXPECT_NE(effect.processDoubleReplacing, nullptr);
    for (char byte : effect.future)
        ASSERT_EQ(byte, 0);
}

TEST(AudioEffect, AnEffectWithoutEditorDoesNotClaimOne)
{
    TestHost host;
    ASSERT_TRUE(host.load(BARE_GAIN_PLUGIN)) << host.failure;
    EXPECT_EQ(host.effect->flags, 0x30);
}

TEST(AudioEffect, EntryPointAsksTheHostVersionFirstAndGivesNoEffectWithoutOne)
{
    TestHost host;
    host.versionAnswer = 0;
    EXPECT_FALSE(host.load(TEST_GAIN_PLUGIN));
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterVersion);
}

TEST(AudioEffect, OldEffectsAreFoundUnderTheEntryNameMain)
{
    TestHost host;
    ASSERT_TRUE(host.load(LEGACY_GAIN_PLUGIN, "main")) << host.failure;
    EXPECT_EQ(host.effect->magic, kEffectMagic);
    EXPECT_EQ(dlsym(host.library, "VSTPluginMain"), nullptr);
}

TEST(AudioEffect, SharedObjectExportsOnlyItsEntryPoint)
{
    EXPECT_EQ(EffectCalls::exportedSymbols(TEST_GAIN_PLUGIN), std::set<std::string>{"VSTPluginMain"});
    EXPECT_EQ(EffectCalls::exportedSymbols(LEGACY_GAIN_PLUGIN), std::set<std::string>{"main"});
}

TEST(AudioEffect, LoadingAndClosingManyTimesInOneProcessKeepsWorking)
{
    // Under the sanitizer build a leak of any round fails the program at exit.
    for (int round = 0; round < 25; ++round)
    {
        TestHost host;
        ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN)) << "round " << round << ": " << host.failure;
        host.dispatch(effOpen);
        host.effect->setParameter(host.effect, gainIndex, 0.25f);
        EXPECT_EQ(host.effect->getParameter(host.effect, gainIndex), 0.25f);
        EXPECT_EQ(host.close(), 1);
    }
}

TEST(AudioEffect, ProgramsStoreOnlyAnIndexBelowTheProgramCountAndHaveNoName)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    EXPECT_EQ(host.dispatch(effGetProgram), 0);
    host.dispatch(effSetProgram, 0, 1);
    EXPECT_EQ(host.dispatch(effGetProgram), 0);
    host.dispatch(effSetProgram, 0, -1);
    EXPECT_EQ(host.dispatch(effGetProgram), 0);
    char name[] = "Lead";
    host.dispatch(effSetProgramName, 0, 0, name);
    EXPECT_EQ(host.text(effGetProgramName), "");
}

TEST(AudioEffect, ParameterTextsComeFromTheEffectAndTheLabelIsEmptyByDefault)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    EXPECT_EQ(host.text(effGetParamName, gainIndex), "Gain");
    EXPECT_EQ(host.text(effGetParamName, 2), "Show Transport");
    EXPECT_EQ(host.text(effGetParamDisplay, gainIndex), "1.00x");
    EXPECT_EQ(host.text(effGetParamLabel, gainIndex), "");
    host.effect->setParameter(host.effect, gainIndex, 0.125f);
    host.effect->setParameter(host.effect, swapIndex, 0.5f);
    EXPECT_EQ(host.text(effGetParamDisplay, gainIndex), "0.25x");
    EXPECT_EQ(host.text(effGetParamDisplay, swapIndex), "On");
}

TEST(AudioEffect, OpcodesThatNeedAPointerAnswerZeroWhenItIsNull)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    for (VstInt32 opcode : {effSetProgramName, effGetProgramName, effGetParamLabel, effGetParamDisplay,
                            effGetParamName, effEditGetRect, effGetChunk, effSetChunk, effCanDo,
                            effGetEffectName, effGetVendorString, effProcessEvents,
                            effGetInputProperties, effGetSpeakerArrangement})
        EXPECT_EQ(host.dispatch(opcode, 0, 16, nullptr), 0) << "opcode " << opcode;
    EXPECT_EQ(host.dispatch(effGetVstVersion), kVstVersion);
}

TEST(AudioEffect, UnknownAndDeprecatedOpcodesAnswerZero)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    for (VstInt32 opcode : {effGetVu, effEditDraw, effIdentify, effGetNumProgramCategories, 80, 1000, -1})
        EXPECT_EQ(host.dispatch(opcode, 1, 1, nullptr, 1.0f), 0) << "opcode " << opcode;
}

TEST(AudioEffect, ChunkTravelsThroughTheDispatcherBothWays)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    host.effect->setParameter(host.effect, gainIndex, 0.75f);
    void* data = nullptr;
    const VstIntPtr size = host.dispatch(effGetChunk, 1, 0, &data);
    ASSERT_EQ(size, 16);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(std::memcmp(data, "TGCk", 4), 0);
    const std::vector<char> saved(static_cast<char*>(data), static_cast<char*>(data) + size);

    host.effect->setParameter(host.effect, gainIndex, 0.1f);
    std::vector<char> copy = saved;
    EXPECT_EQ(host.dispatch(effSetChunk, 1, size, copy.data()), 1);
    EXPECT_EQ(host.effect->getParameter(host.effect, gainIndex), 0.75f);

    // A negative size never reaches the effect.
    host.effect->setParameter(host.effect, gainIndex, 0.1f);
    EXPECT_EQ(host.dispatch(effSetChunk, 1, -16, copy.data()), 0);
    EXPECT_EQ(host.effect->getParameter(host.effect, gainIndex), 0.1f);
}

TEST(AudioEffect, SampleRateBlockSizeAndMainsReachTheEffectWithoutAnswer)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    EXPECT_EQ(host.dispatch(effOpen), 0);
    EXPECT_EQ(host.dispatch(effSetSampleRate, 0, 0, nullptr, 48000.0f), 0);
    EXPECT_EQ(host.dispatch(effSetBlockSize, 0, 256), 0);
    EXPECT_EQ(host.dispatch(effMainsChanged, 0, 1), 0);
    EXPECT_EQ(host.dispatch(effMainsChanged, 0, 0), 0);
}

TEST(AudioEffect, ProcessReplacingOverwritesTheOutputsInPlace)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    std::vector<float> left = {0.5f, -0.25f, 1.0f};
    std::vector<float> right = {0.125f, 0.75f, -1.0f};
    host.effect->setParameter(host.effect, gainIndex, 0.25f);  // amplitude 0.5
    host.effect->setParameter(host.effect, swapIndex, 1.0f);
    process(host.effect, left, right);
    EXPECT_EQ(left, (std::vector<float>{0.0625f, 0.375f, -0.5f}));
    EXPECT_EQ(right, (std::vector<float>{0.25f, -0.125f, 0.5f}));
}

TEST(AudioEffect, DeprecatedAccumulatingProcessLeavesTheOutputsAsTheyWere)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    std::vector<float> input = {1.0f, 1.0f};
    std::vector<float> left = {0.5f, 0.25f};
    std::vector<float> right = {-0.5f, -0.25f};
    float* inputs[2] = {input.data(), input.data()};
    float* outputs[2] = {left.data(), right.data()};
    host.effect->process(host.effect, inputs, outputs, 2);
    EXPECT_EQ(left, (std::vector<float>{0.5f, 0.25f}));
    EXPECT_EQ(right, (std::vector<float>{-0.5f, -0.25f}));
}

TEST(AudioEffect, CallbacksOfARecordWithoutItsObjectDoNothing)
{
    TestHost host;
    ASSERT_TRUE(host.load(TEST_GAIN_PLUGIN));
    AEffect orphan = *host.effect;
    orphan.object = nullptr;
    EXPECT_EQ(orphan.dispatcher(&orphan, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(orphan.getParameter(&orphan, gainIndex), 0.0f);
    orphan.setParameter(&orphan, gainIndex, 1.0f);
    EXPECT_EQ(host.effect->getParameter(host.effect, gainIndex), 0.5f);
}
