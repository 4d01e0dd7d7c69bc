// Kelvane.so as a host meets it: loaded through dlopen, driven only through its entry point and
// its AEffect record; also the answers its base classes AudioEffect and AudioEffectX give for it.

#include "TestHost.h"

#include "support/StateChunk.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace q1framework;
using namespace EffectCalls;

namespace
{
// The dynamic symbols a shared object defines, as `nm -D --defined-only` lists them.
std::set<std::string> exportedSymbols(const char* path)
{
    std::set<std::string> symbols;
    FILE* pipe = popen((std::string("nm -D --defined-only ") + path).c_str(), "r");
    char line[512];
    char name[512];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr)
        if (std::sscanf(line, "%*s %*s %511s", name) == 1)
            symbols.insert(name);
    if (pipe != nullptr)
        pclose(pipe);
    return symbols;
}

class Kelvane : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
        effect = host.effect;
    }

    // One block of `frames` of the steady level `level` on both channels; the left output.
    std::vector<float> steadyBlock(int frames, float level)
    {
        std::vector<float> left(static_cast<std::size_t>(frames), level);
        std::vector<float> right = left;
        processStereo(effect, left, right);
        EXPECT_EQ(left, right);
        return left;
    }

    TestHost host;
    AEffect* effect = nullptr;
};
}  // namespace

TEST_F(Kelvane, RecordIdentityAndEditorRectangleAreThoseOfAStereoEffectWithChunksAndAnEditor)
{
    // magic; flags: editor, replacing, program chunks, no sound in stop; inputs, outputs,
    // parameters, programs, version, delay, ID
    EXPECT_EQ(std::vector<VstInt32>({effect->magic, effect->flags, effect->numInputs, effect->numOutputs, effect->numParams,
                                     effect->numPrograms, effect->version, effect->initialDelay, effect->uniqueID}),
              std::vector<VstInt32>({kEffectMagic, 0x231, 2, 2, 7, 1, 1, 0, fourCharacterCode('K', 'e', 'L', 'v')}));
    EXPECT_EQ(effect->ioRatio, 1.0f);
    EXPECT_TRUE(effect->resvd1 == 0 && effect->resvd2 == 0 && effect->user == nullptr);
    EXPECT_TRUE(effect->process != nullptr && effect->processDoubleReplacing != nullptr);
    EXPECT_EQ(std::string(effect->future, sizeof effect->future), std::string(sizeof effect->future, '\0'));
    EXPECT_EQ(host.text(effGetEffectName), "Kelvane");
    EXPECT_EQ(host.text(effGetProductString), "Kelvane");
    EXPECT_EQ(host.text(effGetVendorString), "Morvenna Audio Technologies");
    // 2.5.3.0 read big-endian.
    EXPECT_EQ(host.dispatch(effGetVendorVersion), 33882880);
    EXPECT_EQ(host.dispatch(effGetPlugCategory), kPlugCategUnknown);
    EXPECT_EQ(host.dispatch(effGetVstVersion), 2400);
    // Units are part of the display text; the label is empty.
    EXPECT_EQ(host.text(effGetParamLabel, gain), "");
    // Only the entry points are visible: two plug-ins of the framework share a process safely.
    EXPECT_EQ(exportedSymbols(KELVANE_PLUGIN), (std::set<std::string>{"CreateEngine", "VSTPluginMain", "main_macho"}));
    // The editor's rectangle is the initial one until an editor opens, and no editor opens in a
    // window that does not exist.
    ERect* rect = nullptr;
    ASSERT_EQ(host.dispatch(effEditGetRect, 0, 0, &rect), 1);
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(std::vector<int>({rect->top, rect->left, rect->bottom, rect->right}), std::vector<int>({0, 0, 1000, 1000}));
    int parent = 0;
    EXPECT_EQ(host.dispatch(effEditOpen, 0, 0, &parent), 0);
    host.dispatch(effEditIdle);
    host.dispatch(effEditClose);
}

TEST_F(Kelvane, CanDoAnswersYesForItsFiveCapabilitiesAndDontKnowForTheRest)
{
    const std::pair<const char*, VstIntPtr> answers[] = {
        {"sendVstEvents", 1}, {"receiveVstEvents", 1}, {"sendVstMidiEvent", 1}, {"receiveVstMidiEvent", 1},
        {"receiveVstTimeInfo", 1}, {"bypass", 0}, {"SendVstEvents", 0}, {"sendVstEvents ", 0}, {"offline", 0}, {"", 0}};
    for (const auto& [name, answer] : answers)
    {
        std::string text = name;
        EXPECT_EQ(host.dispatch(effCanDo, 0, 0, text.data()), answer) << name;
    }
}

TEST_F(Kelvane, ParameterNamesAndTextsAtTheirBoundaries)
{
    const char* names[] = {"Attack", "Release", "Bypass", "Gain", "Attack Time", "Release Time", "Drive", ""};
    for (VstInt32 index = 0; index < 8; ++index)
        EXPECT_EQ(host.text(effGetParamName, index), names[index]);
    EXPECT_EQ(host.text(effGetParamDisplay, 7), "");
    effect->setParameter(effect, 7, 0.5f);
    EXPECT_EQ(effect->getParameter(effect, 7), 0.0f);

    const std::tuple<VstInt32, float, const char*> texts[] = {
        {attack, 0.0f, "-100 %"}, {attack, 1.0f, "100 %"}, {gain, 0.5f, "0.00 dB"}, {gain, 0.0f, "-9.00 dB"},
        // 0.2451 x 200 - 100 = -50.98: truncated towards zero.
        {release, 0.2451f, "-50 %"}, {release, 0.7549f, "50 %"}, {drive, 1.0f, "100 %"}, {drive, 0.555f, "55 %"},
        {attackTime, 0.333f, "mid"}, {releaseTime, 0.666f, "soft"}, {bypass, 0.499f, "Off"}, {bypass, 0.5f, "On"},
        // A host outside 0..1 still gets a text, not an undefined conversion.
        {attack, 1e30f, "2147483647 %"}, {drive, -1e30f, "-2147483648 %"},
    };
    for (const auto& [index, value, text] : texts)
    {
        effect->setParameter(effect, index, value);
        EXPECT_EQ(host.text(effGetParamDisplay, index), text) << index << " at " << value;
        EXPECT_EQ(effect->getParameter(effect, index), value);
    }
}

TEST_F(Kelvane, AutomationReachesTheSoundInTheNextBlock)
{
    // A steady quiet signal with the amounts at their centre: the gain is the only change. The
    // drive ramps from its start to its default within the first block.
    const int frames = 256;
    steadyBlock(frames, 0.1f);
    const float unity = steadyBlock(frames, 0.1f)[frames - 1];
    EXPECT_NEAR(unity, 0.1f, 1e-4f);

    effect->setParameter(effect, gain, 1.0f);  // +9 dB, a factor of 2.818383
    // The block ramps from the old gain at its first sample towards the new one at its end.
    const std::vector<float> ramp = steadyBlock(frames, 0.1f);
    EXPECT_FLOAT_EQ(ramp[0], unity);
    EXPECT_NEAR(ramp[frames - 1] / unity, 1.0f + 1.818383f * (frames - 1) / frames, 1e-3f);
    EXPECT_NEAR(steadyBlock(frames, 0.1f)[0] / unity, 2.818383f, 1e-3f);
}

TEST_F(Kelvane, ChunkSavesAndLoadsValuesToSixDecimalsAndTheEditorSizeAndProgramCallsChangeNothing)
{
    const float values[] = {0.1234567f, 0.9f, 1.0f, 0.0000004f, 0.25f, 0.75f, 0.333333f};
    for (VstInt32 index = 0; index < 7; ++index)
        effect->setParameter(effect, index, values[index]);
    const std::string saved = getChunk(effect);
    EXPECT_EQ(saved.substr(0, 4), "VC2!");
    EXPECT_EQ(getChunk(effect), saved);  // a second request gives the same content

    effect->setParameter(effect, attack, 0.1f);
    effect->setParameter(effect, gain, 0.9f);
    EXPECT_EQ(setChunk(effect, saved), 0);
    for (VstInt32 index = 0; index < 7; ++index)
        EXPECT_NEAR(effect->getParameter(effect, index), values[index], 0.000001) << index;
    // Program calls leave the program alone: there is one program, without a name.
    for (VstIntPtr program : {1, -1, 0})
    {
        EXPECT_EQ(host.dispatch(effSetProgram, 0, program), 0);
        EXPECT_EQ(host.dispatch(effGetProgram), 0);
    }
    char name[] = "Drums";
    host.dispatch(effSetProgramName, 0, 0, name);
    EXPECT_EQ(host.text(effGetProgramName), "");
    EXPECT_EQ(getChunk(effect), saved);  // loaded and saved again: the same bytes

    // The editor size travels with the state; a chunk without it means the default size.
    setChunk(effect, chunkOf("<KELVANE uiWidthNew=\"1100\" uiHeightNew=\"257\"><Program attack=\"0.3\"/></KELVANE>"));
    EXPECT_NE(getChunk(effect).find("uiWidthNew=\"1100\" uiHeightNew=\"257\""), std::string::npos);
    EXPECT_FLOAT_EQ(effect->getParameter(effect, attack), 0.3f);
    EXPECT_FLOAT_EQ(effect->getParameter(effect, drive), 0.333333f);  // a partial program is merged
    setChunk(effect, chunkOf("<KELVANE><Program/></KELVANE>"));
    EXPECT_NE(getChunk(effect).find("uiWidthNew=\"750\" uiHeightNew=\"175\""), std::string::npos);
}

TEST_F(Kelvane, DamagedChunksAnswerZeroAndChangeNothing)
{
    effect->setParameter(effect, gain, 0.7f);
    setChunk(effect, chunkOf("<KELVANE uiWidthNew=\"900\" uiHeightNew=\"210\"><Program/></KELVANE>"));
    const std::string good = getChunk(effect);
    const std::string other = "<KELVANE uiWidthNew=\"1400\"><Program gain=\"0.1\"/></KELVANE>";
    // Arbitrary bytes are the chunk fuzzer's; here each way a chunk can be damaged.
    const std::string damaged[] = {
        good.substr(0, good.size() / 2),  // cut off
        "v" + chunkOf(other).substr(1),    // the magic in another case
        "2CV!" + chunkOf(other).substr(4),  // or byte order
        "VC2!",                            // shorter than the header
        std::string("VC2!\0\0\0\0", 8) + other,  // a length of 0
        chunkOf("not XML at all"),
        chunkOf("<KELVANE"),
        chunkOf("<KELVANO uiWidthNew=\"1400\"><Program gain=\"0.1\"/></KELVANO>"),  // another root
        std::string(1, '\0'),
    };
    for (const std::string& garbage : damaged)
    {
        EXPECT_EQ(setChunk(effect, garbage), 0);
        EXPECT_EQ(getChunk(effect), good);
    }

    // Within a good document, values that are no finite number count as missing ones; numbers
    // outside 0..1 are taken as they stand.
    std::vector<float> expected = parameters(effect);
    expected[gain] = 1.5f;
    expected[attack] = -0.1f;
    setChunk(effect, chunkOf("<KELVANE><Program gain=\"1.5\" attack=\"-0.1\" release=\"nan\" drive=\"inf\" "
                             "attackTime=\"x\"/></KELVANE>"));
    EXPECT_EQ(parameters(effect), expected);
}

TEST_F(Kelvane, ResumeAsksForMidiAndEveryBlockAsksForTheTransport)
{
    host.dispatch(effMainsChanged, 0, 1);
    ASSERT_FALSE(host.calls.empty());
    EXPECT_EQ(host.calls.back().opcode, audioMasterWantMidi);
    EXPECT_EQ(host.calls.back().value, 1);
    host.calls.clear();
    steadyBlock(32, 0.0f);
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterGetTime);
    EXPECT_EQ(host.calls[0].value, 0x3E00);
}

// What AudioEffect and AudioEffectX answer for Kelvane: the guards against null pointers, unknown
// opcodes, negative sizes and orphan records, and the conventional answers to the 2.x opcodes
// Kelvane leaves to them.

TEST_F(Kelvane, OpcodesWithoutTheirPointerUnknownOpcodesAndNegativeSizesAnswerZero)
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
    std::string saved = getChunk(effect);
    effect->setParameter(effect, gain, 0.1f);
    EXPECT_EQ(host.dispatch(effSetChunk, 0, -static_cast<VstIntPtr>(saved.size()), saved.data()), 0);
    EXPECT_EQ(effect->getParameter(effect, gain), 0.1f);
}

TEST_F(Kelvane, CallbacksOfARecordWithoutItsObjectDoNothing)
{
    AEffect orphan = *effect;
    orphan.object = nullptr;
    EXPECT_EQ(orphan.dispatcher(&orphan, effGetVstVersion, 0, 0, nullptr, 0.0f), 0);
    EXPECT_EQ(orphan.getParameter(&orphan, gain), 0.0f);
    orphan.setParameter(&orphan, gain, 1.0f);
    EXPECT_EQ(effect->getParameter(effect, gain), 0.5f);
    float sample = 0.5f;
    float* channels[2] = {&sample, &sample};
    orphan.processReplacing(&orphan, channels, channels, 1);
    EXPECT_EQ(sample, 0.5f);
}

TEST_F(Kelvane, OpcodesTheEffectLeavesAloneAnswerTheConventionalDefaults)
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
    EXPECT_EQ(effect->numInputs, 2);
    VstSpeakerArrangement* inputAnswer = &input;
    VstSpeakerArrangement* outputAnswer = &output;
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, reinterpret_cast<VstIntPtr>(&inputAnswer), &outputAnswer), 0);
    EXPECT_EQ(inputAnswer, nullptr);
    EXPECT_EQ(outputAnswer, nullptr);
    // A null input slot is never written through.
    EXPECT_EQ(host.dispatch(effGetSpeakerArrangement, 0, 0, &outputAnswer), 0);
}
