// Kelvane's LV2 state: saved and restored through lilv as hosts do, holding the same document as
// the VST 2.4 chunk, so that a setting moves between the formats; bad state changes nothing.

#include "LV2TestHost.h"
#include "TestHost.h"

#include "dsp/DemoDrumLoop.h"
#include "plugin/KLParameters.h"
#include "support/StateChunk.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace q1framework;

namespace
{
constexpr int blockLength = 512;

// Physical settings far from the defaults, and their 0..1 values on the VST 2.4 side.
struct Setting
{
    int parameter;
    float physical;
};
const Setting settings[] = {{KLParameters::attack, 60.0f},     {KLParameters::release, -35.0f},
                            {KLParameters::gain, -2.5f},       {KLParameters::attackTime, 0.0f},
                            {KLParameters::releaseTime, 2.0f}, {KLParameters::drive, 25.0f}};

class LV2WrapperState : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(lv2.plugin, nullptr) << "no plug-in " << lv2.uri << " in " << KELVANE_LV2_BUNDLE;
        ASSERT_TRUE(vst.load(KELVANE_PLUGIN)) << vst.failure;
        vst.dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
        vst.dispatch(effSetBlockSize, 0, blockLength);
        vst.dispatch(effMainsChanged, 0, 1);
    }

    // The settings on the LV2 instance's ports, or as the VST 2.4 side's 0..1 values.
    static void applySettings(LV2TestInstance& instance)
    {
        for (const Setting& setting : settings)
            instance.port(KLParameters::getSymbol(setting.parameter)) = setting.physical;
    }

    static void applySettings(AEffect* effect)
    {
        for (const Setting& setting : settings)
        {
            const float value = KLParameters::fromPhysical(setting.physical, setting.parameter);
            effect->setParameter(effect, setting.parameter, value);
        }
    }

    // A block of silence: the ports' values reach the plug-in, and its detectors rest as those of a
    // fresh instance.
    static void silence(LV2TestInstance& instance)
    {
        std::vector<float> left(blockLength, 0.0f), right(blockLength, 0.0f);
        instance.processStereo(left, right);
    }

    static void silence(AEffect* effect)
    {
        std::vector<float> left(blockLength, 0.0f), right(blockLength, 0.0f);
        float* channels[2] = {left.data(), right.data()};
        effect->processReplacing(effect, channels, channels, blockLength);
    }

    // The first second of the loop through the instance, block by block.
    std::vector<float> render(LV2TestInstance& instance) const
    {
        std::vector<float> left = loop.left(), right = loop.right();
        for (int start = 0; start < 44100; start += blockLength)
            instance.process(&left[start], &right[start], &left[start], &right[start], blockLength);
        left.resize(44100);
        return left;
    }

    std::vector<float> render(AEffect* effect) const
    {
        std::vector<float> left = loop.left(), right = loop.right();
        for (int start = 0; start < 44100; start += blockLength)
        {
            float* channels[2] = {&left[start], &right[start]};
            effect->processReplacing(effect, channels, channels, blockLength);
        }
        left.resize(44100);
        return left;
    }

    const DemoDrumLoop loop;
    LV2TestHost lv2;
    TestHost vst;
};
}  // namespace

TEST_F(LV2WrapperState, StateSavedThroughLilvRestoresTheControlsAndTheSound)
{
    LV2TestInstance original(lv2);
    applySettings(original);
    silence(original);
    const std::string turtle = original.saveState();

    LV2TestInstance restored(lv2);
    restored.restoreState(turtle);
    for (const Setting& setting : settings)
        EXPECT_EQ(restored.port(KLParameters::getSymbol(setting.parameter)), setting.physical)
            << KLParameters::getName(setting.parameter);
    EXPECT_EQ(restored.saveDocument(), original.saveDocument());
    // Both from the same point: the original's detectors rested on the block of silence.
    silence(restored);
    EXPECT_EQ(render(restored), render(original));
}

TEST_F(LV2WrapperState, SavedDocumentIsTheVstChunkOfTheSameSettings)
{
    LV2TestInstance instance(lv2);
    applySettings(instance);
    applySettings(vst.effect);
    silence(instance);

    std::vector<LV2TestInstance::SavedProperty> properties;
    ASSERT_EQ(instance.saveProperties(properties), LV2_STATE_SUCCESS);
    ASSERT_EQ(properties.size(), 1u);
    EXPECT_EQ(properties[0].key, lv2.uri + "#state");
    EXPECT_EQ(properties[0].type, LV2_ATOM__Chunk);
    EXPECT_EQ(properties[0].flags, static_cast<uint32_t>(LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE));
    EXPECT_EQ(properties[0].value, EffectCalls::getChunk(vst.effect));
}

TEST_F(LV2WrapperState, VstChunkRestoredIntoTheLV2BuildSoundsTheSame)
{
    applySettings(vst.effect);
    LV2TestInstance instance(lv2);
    ASSERT_EQ(instance.restoreProperty(EffectCalls::getChunk(vst.effect), LV2_ATOM__Chunk), LV2_STATE_SUCCESS);
    EXPECT_EQ(render(instance), render(vst.effect));
}

TEST_F(LV2WrapperState, LV2DocumentRestoredIntoTheVstBuildSoundsTheSame)
{
    LV2TestInstance instance(lv2);
    applySettings(instance);
    silence(instance);
    const std::string document = instance.saveDocument();

    AEffect* other = vst.anotherEffect();
    ASSERT_NE(other, nullptr);
    other->dispatcher(other, effSetSampleRate, 0, 0, nullptr, 44100.0f);
    other->dispatcher(other, effSetBlockSize, 0, blockLength, nullptr, 0.0f);
    EffectCalls::setChunk(other, document);
    silence(other);
    EXPECT_EQ(render(other), render(instance));
    other->dispatcher(other, effClose, 0, 0, nullptr, 0.0f);
}

TEST_F(LV2WrapperState, StateOfAnotherTypeIsRefusedAndChangesNothing)
{
    LV2TestInstance instance(lv2);
    const std::string before = instance.saveDocument();
    EXPECT_EQ(instance.restoreProperty(chunkOf("<KELVANE><Program attack=\"1\"/></KELVANE>"), LV2_ATOM__String),
              LV2_STATE_ERR_BAD_TYPE);
    EXPECT_EQ(instance.saveDocument(), before);
}

TEST_F(LV2WrapperState, DamagedDocumentLeavesTheStateAsItWas)
{
    LV2TestInstance instance(lv2);
    instance.port("attack") = 60.0f;
    silence(instance);
    const std::string before = instance.saveDocument();
    for (const std::string& damaged : {std::string(), std::string("VC2"), std::string("vc2!\x05\0\0\0<a/>", 12),
                                       chunkOf("<OTHER attack=\"1\"/>"), chunkOf("<KELVANE><Program")})
    {
        EXPECT_EQ(instance.restoreProperty(damaged, LV2_ATOM__Chunk), LV2_STATE_SUCCESS);
        EXPECT_EQ(instance.saveDocument(), before);
    }
}

TEST_F(LV2WrapperState, StoreWithoutTheDocumentChangesNothing)
{
    // As lilv restores a preset of port values alone.
    LV2TestInstance instance(lv2);
    instance.port("release") = 40.0f;
    silence(instance);
    const std::string before = instance.saveDocument();
    EXPECT_EQ(instance.restoreProperty(std::string(), nullptr), LV2_STATE_SUCCESS);
    EXPECT_EQ(instance.saveDocument(), before);
}

TEST_F(LV2WrapperState, StateNeedsAUridMapOfTheInstanceOrOfTheCall)
{
    LV2TestInstance instance(lv2, 44100.0, false);
    ASSERT_NE(instance.instance, nullptr);
    const LV2_State_Status withoutMap = instance.stateInterface()->save(
        instance.handle(), [](LV2_State_Handle, uint32_t, const void*, size_t, uint32_t, uint32_t) {
            return LV2_STATE_SUCCESS;
        },
        nullptr, 0, nullptr);
    EXPECT_EQ(withoutMap, LV2_STATE_ERR_NO_FEATURE);
    std::vector<LV2TestInstance::SavedProperty> properties;
    EXPECT_EQ(instance.saveProperties(properties), LV2_STATE_SUCCESS);
    EXPECT_EQ(properties.size(), 1u);
}

TEST_F(LV2WrapperState, ThreadedSaveAndRestoreWhileTheAudioThreadRuns)
{
    // LV2 lets a host save beside run; Kelvane's restore is safe there too.
    LV2TestInstance instance(lv2);
    const std::string document = chunkOf("<KELVANE><Program attack=\"0.9\" gain=\"0.25\"/></KELVANE>");
    float& release = instance.port("release");
    std::vector<float> left(blockLength), right(blockLength);
    instance.process(left.data(), right.data(), left.data(), right.data(), blockLength);
    std::atomic<bool> running{true};
    std::thread audio([&] {
        for (int block = 0; running.load(); ++block)
        {
            left.assign(blockLength, 0.25f);
            right.assign(blockLength, -0.25f);
            release = static_cast<float>(block % 200 - 100);
            lilv_instance_run(instance.instance, blockLength);
        }
    });
    for (int round = 0; round < 200; ++round)
    {
        EXPECT_EQ(instance.saveDocument().compare(0, 4, "VC2!"), 0);
        EXPECT_EQ(instance.restoreProperty(document, LV2_ATOM__Chunk), LV2_STATE_SUCCESS);
    }
    running.store(false);
    audio.join();
}
