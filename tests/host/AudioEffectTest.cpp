// AudioEffect's dispatcher and record callbacks as a host meets them on Kelvane.so, loaded through
// dlopen: the guards against null pointers, unknown opcodes, negative sizes and orphan records.

#include "TestHost.h"

#include <gtest/gtest.h>

#include <vector>

using namespace q1framework;
using namespace EffectCalls;

TEST(AudioEffect, OpcodesWithoutTheirPointerAndUnknownOpcodesAnswerZero)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
    for (VstInt32 opcode : {effSetProgramName, effGetProgramName, effGetParamLabel, effGetParamDisplay,
                            effGetParamName, effEditGetRect, effGetChunk, effSetChunk, effCanDo, effGetEffectName,
                            effGetVendorString, effGetProductString, effProcessEvents, effString2Parameter,
                            effGetProgramNameIndexed, effGetInputProperties, effGetOutputProperties,
                            effGetParameterProperties, effGetSpeakerArrangement, effSetSpeakerArrangement,
                            effBeginLoadBank, effBeginLoadProgram})
        EXPECT_EQ(host.dispatch(opcode, 0, 16, nullptr), 0) << "opcode " << opcode;
    for (VstInt32 opcode : {effGetVu, effEditDraw, effIdentify, effGetNumProgramCategories, 80, 1000, -1})
        EXPECT_EQ(host.dispatch(opcode, 1, 1, nullptr, 1.0f), 0) << "opcode " << opcode;
}

TEST(AudioEffect, ANegativeChunkSizeNeverReachesTheEffect)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN));
    std::vector<char> saved = getChunk(host.effect);
    host.effect->setParameter(host.effect, gain, 0.1f);
    EXPECT_EQ(host.dispatch(effSetChunk, 0, -static_cast<VstIntPtr>(saved.size()), saved.data()), 0);
    EXPECT_EQ(host.effect->getParameter(host.effect, gain), 0.1f);
}

TEST(AudioEffect, CallbacksOfARecordWithoutItsObjectDoNothing)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN));
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
