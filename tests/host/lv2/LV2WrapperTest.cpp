// Kelvane's LV2 build as a lilv host drives it, against its VST 2.4 build: the same settings give
// the same samples, whatever the host shares between its buffers; controls follow the ports by
// change; the meters report the levels.

#include "LV2TestHost.h"
#include "TestHost.h"

#include "dsp/DemoDrumLoop.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "support/BufferSharing.h"
#include "support/StateChunk.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace q1framework;

namespace
{
// Block lengths as hosts vary them, from a single frame to more than a nominal buffer.
constexpr int blockLengths[] = {512, 64, 1, 300, 4096, 128};

// One block's settings in physical units, by parameter index.
using Settings = std::array<float, KLParameters::count>;

// Automation as LV2 hosts send it: sliders on whole per cents and hundredths of a dB, and values
// in between; every step of the time choices; Bypass on for an occasional block.
Settings randomSettings(std::mt19937& random, int block)
{
    Settings settings{};
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    for (int parameter = 0; parameter < KLParameters::count; ++parameter)
    {
        const float minimum = KLParameters::getMinimum(parameter);
        const float maximum = KLParameters::getMaximum(parameter);
        float value = minimum + unit(random) * (maximum - minimum);
        switch (KLParameters::getKind(parameter))
        {
        case KLParameters::Kind::toggle:
            value = block % 9 == 4 ? 1.0f : 0.0f;
            break;
        case KLParameters::Kind::steps:
            value = std::floor(value + 0.5f);
            break;
        case KLParameters::Kind::linear:
        default:
            if (block % 2 == 0)
                value = parameter == KLParameters::gain ? std::round(value * 100.0f) / 100.0f : std::round(value);
            break;
        }
        settings[parameter] = value;
    }
    return settings;
}

void setLV2(LV2TestInstance& instance, const Settings& settings)
{
    for (int parameter = 0; parameter < KLParameters::count; ++parameter)
        instance.port(KLParameters::getSymbol(parameter)) = settings[parameter];
}

// The VST 2.4 side of the same settings: each physical value as the 0..1 value that displays it.
void setVst(AEffect* effect, const Settings& settings)
{
    for (int parameter = 0; parameter < KLParameters::count; ++parameter)
        effect->setParameter(effect, parameter, KLParameters::fromPhysical(settings[parameter], parameter));
}

void prepareVst(TestHost& host)
{
    host.dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    host.dispatch(effSetBlockSize, 0, 4096);
    host.dispatch(effMainsChanged, 0, 1);
}

std::vector<float> slice(const std::vector<float>& samples, int start, int length)
{
    return {samples.begin() + start, samples.begin() + start + length};
}

class LV2Wrapper : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(lv2.plugin, nullptr) << "no plug-in " << lv2.uri << " in " << KELVANE_LV2_BUNDLE;
        ASSERT_TRUE(vst.load(KELVANE_PLUGIN)) << vst.failure;
        prepareVst(vst);
    }

    const DemoDrumLoop loop;
    LV2TestHost lv2;
    TestHost vst;
};
}  // namespace

TEST_F(LV2Wrapper, AudioEqualsTheVstEntryBitForBitUnderTheSameAutomation)
{
    LV2TestInstance instance(lv2);
    ASSERT_NE(instance.instance, nullptr);
    std::mt19937 random(14);
    int start = 0;
    for (int block = 0; start < DemoDrumLoop::frameCount / 2; ++block)
    {
        SCOPED_TRACE(testing::Message() << "block " << block << " at frame " << start);
        const int length = blockLengths[block % std::size(blockLengths)];
        const Settings settings = randomSettings(random, block);
        setLV2(instance, settings);
        setVst(vst.effect, settings);
        std::vector<float> lv2Left = slice(loop.left(), start, length), lv2Right = slice(loop.right(), start, length);
        std::vector<float> vstLeft = lv2Left, vstRight = lv2Right;
        instance.processStereo(lv2Left, lv2Right);
        EffectCalls::processStereo(vst.effect, vstLeft, vstRight);
        ASSERT_EQ(lv2Left, vstLeft);
        ASSERT_EQ(lv2Right, vstRight);
        start += length;
    }
}

TEST_F(LV2Wrapper, EverySharingOfTheHostsBuffersSoundsAsSeparateBuffers)
{
    constexpr int length = 256;
    for (const std::array<int, 4>& sharing : everyBufferSharing())
    {
        SCOPED_TRACE(describeBufferSharing(sharing));
        LV2TestInstance shared(lv2);
        LV2TestInstance separate(lv2);
        std::mt19937 random(3);
        // Inputs that share a buffer carry one signal: a mono track into a stereo effect.
        const bool monoInput = sharing[0] == sharing[1];
        for (int block = 0; block < 12; ++block)
        {
            const Settings settings = randomSettings(random, block);
            setLV2(shared, settings);
            setLV2(separate, settings);
            const std::vector<float> left = slice(loop.left(), block * length, length);
            const std::vector<float> right = monoInput ? left : slice(loop.right(), block * length, length);
            std::vector<std::vector<float>> buffers(4, std::vector<float>(length, 99.0f));
            buffers[sharing[0]] = left;
            buffers[sharing[1]] = right;
            shared.process(buffers[sharing[0]].data(), buffers[sharing[1]].data(), buffers[sharing[2]].data(),
                           buffers[sharing[3]].data(), length);
            std::vector<float> expectedLeft = left, expectedRight = right;
            std::vector<float> outLeft(length, 99.0f), outRight(length, 99.0f);
            separate.process(expectedLeft.data(), expectedRight.data(), outLeft.data(), outRight.data(), length);
            // Outputs that share a buffer hold the right channel, written last.
            if (sharing[2] != sharing[3])
            {
                ASSERT_EQ(buffers[sharing[2]], outLeft) << "left output, block " << block;
            }
            ASSERT_EQ(buffers[sharing[3]], outRight) << "right output, block " << block;
        }
    }
}

TEST_F(LV2Wrapper, RestoredStateHoldsUntilTheHostMovesAPort)
{
    LV2TestInstance instance(lv2);
    std::vector<float> left(64, 0.1f), right(64, 0.1f);
    // Ports at their defaults; the state sets Attack to +100 % and Drive to 50 %.
    ASSERT_EQ(instance.restoreProperty(chunkOf("<KELVANE><Program attack=\"1\" drive=\"0.5\"/></KELVANE>"),
                                       LV2_ATOM__Chunk),
              LV2_STATE_SUCCESS);
    instance.processStereo(left, right);
    EXPECT_NE(instance.saveDocument().find("attack=\"1.000000\""), std::string::npos);
    EXPECT_NE(instance.saveDocument().find("drive=\"0.500000\""), std::string::npos);

    instance.port("attack") = -100.0f;
    instance.processStereo(left, right);
    EXPECT_NE(instance.saveDocument().find("attack=\"0.000000\""), std::string::npos);
    EXPECT_NE(instance.saveDocument().find("drive=\"0.500000\""), std::string::npos);
}

TEST_F(LV2Wrapper, NotANumberOnAControlPortLeavesTheParameterAsItWas)
{
    LV2TestInstance instance(lv2);
    std::vector<float> left(64, 0.1f), right(64, 0.1f);
    instance.port("gain") = 4.5f;
    instance.processStereo(left, right);
    instance.port("gain") = NAN;
    instance.processStereo(left, right);
    EXPECT_NE(instance.saveDocument().find("gain=\"0.750000\""), std::string::npos);
}

TEST_F(LV2Wrapper, MetersReportTheLevelsAndTheDrivePeakOfEachBlock)
{
    LV2TestInstance instance(lv2);
    instance.port("drive") = 50.0f;
    std::vector<float> left(441, 0.5f), right(441, -0.25f);
    instance.processStereo(left, right);
    // The input's peak, less the meter's fall after the block's last frame.
    EXPECT_FLOAT_EQ(instance.port("input_level"), 0.5f - 0.25f / 44100.0f);
    EXPECT_GT(instance.port("output_level"), 0.0f);
    const float drivePeak = instance.port("drive_level");
    EXPECT_GT(drivePeak, 0.0f);
    EXPECT_LE(drivePeak, KLMeters::getMaximum(KLMeters::driveLevel));

    // A block of silence: the levels fall by 0.25 a second, the drive stage saw nothing.
    left.assign(441, 0.0f);
    right.assign(441, 0.0f);
    instance.processStereo(left, right);
    EXPECT_NEAR(instance.port("input_level"), 0.5f - 442 * (0.25f / 44100.0f), 1e-5f);
    EXPECT_EQ(instance.port("drive_level"), 0.0f);
}

TEST_F(LV2Wrapper, UnconnectedMeterPortIsNotWritten)
{
    LV2TestInstance instance(lv2);
    instance.disconnect("output_level");
    instance.port("output_level") = 42.0f;
    std::vector<float> left(64, 0.5f), right(64, 0.5f);
    instance.processStereo(left, right);
    EXPECT_EQ(instance.port("output_level"), 42.0f);
    EXPECT_GT(instance.port("input_level"), 0.0f);
}

TEST_F(LV2Wrapper, UnconnectedAudioPortLeavesTheOutputsAlone)
{
    LV2TestInstance instance(lv2);
    std::vector<float> input(64, 0.5f), outLeft(64, 99.0f), outRight(64, 99.0f);
    instance.process(input.data(), nullptr, outLeft.data(), outRight.data(), 64);
    EXPECT_EQ(outLeft, std::vector<float>(64, 99.0f));
    EXPECT_EQ(outRight, std::vector<float>(64, 99.0f));
}

TEST_F(LV2Wrapper, InstancesComeAndGoWithTheSharedObjectAndLeaveNothingBehind)
{
    // lilv opens the shared object for each instance and closes it with the instance; the
    // sanitizer build's leak check sees what any of them leaves.
    for (int round = 0; round < 8; ++round)
    {
        LV2TestInstance first(lv2);
        LV2TestInstance second(lv2, 96000.0);
        ASSERT_TRUE(first.instance != nullptr && second.instance != nullptr);
        std::vector<float> left(128, 0.3f), right(128, 0.3f);
        first.processStereo(left, right);
        second.processStereo(left, right);
    }
}
