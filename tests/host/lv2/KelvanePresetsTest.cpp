// Kelvane's factory presets: every one loads through lilv from the bundle and sounds as the VST
// 2.4 build at the same values, and each does to the demo loop's drums what its name says.

#include "LV2TestHost.h"
#include "TestHost.h"

#include "dsp/DemoDrumLoop.h"
#include "host/lv2/KelvanePresets.h"
#include "plugin/KLParameters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

using namespace q1framework;

namespace
{
constexpr int blockLength = 512;

const DemoDrumLoop& demoLoop()
{
    static const DemoDrumLoop loop;
    return loop;
}

// The whole loop through a VST 2.4 instance set to the preset's values, in place, left and right.
std::vector<std::vector<float>> render(AEffect* effect, const KelvanePresets::Preset* preset)
{
    if (preset != nullptr)
        for (int parameter = 0; parameter < KLParameters::count; ++parameter)
            effect->setParameter(effect, parameter, KLParameters::fromPhysical(preset->physical[parameter], parameter));
    std::vector<std::vector<float>> channels = {demoLoop().left(), demoLoop().right()};
    for (int start = 0; start + blockLength <= DemoDrumLoop::frameCount; start += blockLength)
    {
        float* block[2] = {&channels[0][start], &channels[1][start]};
        effect->processReplacing(effect, block, block, blockLength);
    }
    return channels;
}

double decibels(double ratio)
{
    return 20.0 * std::log10(ratio);
}

// What a preset does to the hits of one instrument (all of them when `instrument` is null), in
// dB against the dry loop, averaged over the loop: the peak of each hit's first 20 ms, and the RMS
// level from 60 to 120 ms after its start, where the drum and the room ring on.
struct HitChange
{
    double peak;
    double after;
};

HitChange hitChange(const std::vector<std::vector<float>>& processed, const DemoDrumLoop::Instrument* instrument)
{
    const std::vector<std::vector<float>> dry = {demoLoop().left(), demoLoop().right()};
    const int rate = demoLoop().getSampleRate();
    auto peak = [rate](const std::vector<std::vector<float>>& signal, int frame) {
        float level = 0.0f;
        for (int i = frame; i < frame + rate / 50; ++i)
            level = std::max({level, std::fabs(signal[0][i]), std::fabs(signal[1][i])});
        return static_cast<double>(level);
    };
    auto rms = [rate](const std::vector<std::vector<float>>& signal, int frame) {
        double sum = 0.0;
        const int first = frame + rate * 60 / 1000, last = frame + rate * 120 / 1000;
        for (int i = first; i < last; ++i)
            sum += signal[0][i] * signal[0][i] + signal[1][i] * signal[1][i];
        return std::sqrt(sum / (2.0 * (last - first)));
    };
    HitChange change{0.0, 0.0};
    int count = 0;
    for (const DemoDrumLoop::Hit& hit : demoLoop().hits())
    {
        if (instrument != nullptr && hit.instrument != *instrument)
            continue;
        if (hit.frame + rate / 5 > DemoDrumLoop::frameCount - blockLength)
            continue;
        change.peak += decibels(peak(processed, hit.frame) / peak(dry, hit.frame));
        change.after += decibels(rms(processed, hit.frame) / rms(dry, hit.frame));
        ++count;
    }
    return {change.peak / count, change.after / count};
}

const KelvanePresets::Preset& presetNamed(const std::string& name)
{
    for (int index = 0; index < KelvanePresets::getCount(); ++index)
        if (name == KelvanePresets::get(index).name)
            return KelvanePresets::get(index);
    ADD_FAILURE() << "no preset " << name;
    return KelvanePresets::get(0);
}

// A fixture with Kelvane's VST 2.4 build loaded and prepared at the loop's rate.
class WithVstEntry : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(vst.load(KELVANE_PLUGIN)) << vst.failure;
        vst.dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
        vst.dispatch(effSetBlockSize, 0, blockLength);
        vst.dispatch(effMainsChanged, 0, 1);
    }

    // What the preset called `name` does to the hits of `instrument`, or of every hit.
    HitChange change(const std::string& name, const DemoDrumLoop::Instrument* instrument = nullptr)
    {
        AEffect* effect = vst.anotherEffect();
        const HitChange result = hitChange(render(effect, &presetNamed(name)), instrument);
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
        return result;
    }

    TestHost vst;
};
class KelvanePresetsBundle : public WithVstEntry
{
};
class KelvanePresetsSound : public WithVstEntry
{
};

const DemoDrumLoop::Instrument kick = DemoDrumLoop::Instrument::kick;
const DemoDrumLoop::Instrument snare = DemoDrumLoop::Instrument::snare;
}  // namespace

TEST_F(KelvanePresetsBundle, EveryPresetIsListedForThePluginUnderItsName)
{
    LV2TestHost lv2;
    ASSERT_NE(lv2.plugin, nullptr);
    std::vector<std::string> listed = lv2.presetUris();
    std::vector<std::string> expected;
    for (int index = 0; index < KelvanePresets::getCount(); ++index)
        expected.push_back(lv2.uri + "/presets/" + KelvanePresets::get(index).slug);
    std::sort(listed.begin(), listed.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(listed, expected);
}

TEST_F(KelvanePresetsBundle, EveryPresetLoadsThroughLilvAndSoundsAsTheVstEntryAtItsValues)
{
    LV2TestHost lv2;
    ASSERT_NE(lv2.plugin, nullptr);
    for (int index = 0; index < KelvanePresets::getCount(); ++index)
    {
        const KelvanePresets::Preset& preset = KelvanePresets::get(index);
        SCOPED_TRACE(preset.name);
        LV2TestInstance instance(lv2);
        instance.applyPreset(lv2.uri + "/presets/" + preset.slug);
        for (int parameter = 0; parameter < KLParameters::count; ++parameter)
            EXPECT_EQ(instance.port(KLParameters::getSymbol(parameter)), preset.physical[parameter])
                << KLParameters::getName(parameter);

        std::vector<float> left = demoLoop().left(), right = demoLoop().right();
        for (int start = 0; start + blockLength <= DemoDrumLoop::frameCount; start += blockLength)
            instance.process(&left[start], &right[start], &left[start], &right[start], blockLength);
        AEffect* effect = vst.anotherEffect();
        const std::vector<std::vector<float>> expected = render(effect, &preset);
        effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
        EXPECT_TRUE(left == expected[0] && right == expected[1]);
    }
}

TEST_F(KelvanePresetsBundle, EveryPresetValueIsInsideItsControlsRange)
{
    for (int index = 0; index < KelvanePresets::getCount(); ++index)
        for (int parameter = 0; parameter < KLParameters::count; ++parameter)
        {
            const float value = KelvanePresets::get(index).physical[parameter];
            EXPECT_GE(value, KLParameters::getMinimum(parameter)) << KelvanePresets::get(index).name;
            EXPECT_LE(value, KLParameters::getMaximum(parameter)) << KelvanePresets::get(index).name;
        }
}

TEST_F(KelvanePresetsSound, PunchierKickRaisesTheKicksOnsets)
{
    EXPECT_GT(change("Punchier Kick", &kick).peak, 2.0);
}

TEST_F(KelvanePresetsSound, SnappierSnareRaisesTheSnaresOnsets)
{
    EXPECT_GT(change("Snappier Snare", &snare).peak, 1.5);
}

TEST_F(KelvanePresetsSound, DrierRoomLowersWhatRingsAfterEachHit)
{
    EXPECT_LT(change("Drier Room").after, -4.0);
}

TEST_F(KelvanePresetsSound, SofterHitsLowerTheOnsets)
{
    EXPECT_LT(change("Softer Hits").peak, -2.0);
}

TEST_F(KelvanePresetsSound, LongerTomsRaiseWhatRingsAfterEachHit)
{
    EXPECT_GT(change("Longer Toms").after, 2.0);
}

TEST_F(KelvanePresetsSound, CrunchyDrumBusFlattensTheOnsetsAgainstTheBody)
{
    const HitChange crunchy = change("Crunchy Drum Bus");
    EXPECT_LT(crunchy.peak - crunchy.after, -3.0);
}
