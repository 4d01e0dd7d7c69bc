// Kelvane.so's audio path as hosts drive it in the field: buffers that a host shares between
// channels, and values outside 0..1 from automation and from state chunks.

#include "TestHost.h"

#include "support/BufferSharing.h"
#include "support/StateChunk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <random>
#include <string>
#include <vector>

using namespace q1framework;
using namespace EffectCalls;

namespace
{
constexpr int blockFrames = 256;

// Decaying noise bursts, a drum hit every 2000 frames, different on each channel.
std::vector<float> bursts(int frames, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-0.8f, 0.8f);
    std::vector<float> samples(static_cast<std::size_t>(frames));
    for (int frame = 0; frame < frames; ++frame)
        samples[frame] = std::exp(-0.004f * static_cast<float>(frame % 2000)) * noise(random);
    return samples;
}

std::vector<float> slice(const std::vector<float>& samples, int block)
{
    return {samples.begin() + block * blockFrames, samples.begin() + (block + 1) * blockFrames};
}

bool allFinite(const std::vector<float>& samples)
{
    return std::all_of(samples.begin(), samples.end(), [](float sample) { return std::isfinite(sample); });
}

// One block through processReplacing with the four channel pointers given.
void process(AEffect* effect, float* inLeft, float* inRight, float* outLeft, float* outRight)
{
    float* inputs[2] = {inLeft, inRight};
    float* outputs[2] = {outLeft, outRight};
    effect->processReplacing(effect, inputs, outputs, blockFrames);
}

// The same settings on several effects, as automation of one track would set them.
void setEverywhere(std::initializer_list<AEffect*> effects, VstInt32 index, float value)
{
    for (AEffect* effect : effects)
        effect->setParameter(effect, index, value);
}

// Values hosts and damaged chunks have sent, none of them in 0..1: as a float, 1e39 is infinity.
const float hostileValues[] = {1e30f, -1e30f, 40.0f, -40.0f, 60.0f, 1e10f, std::numeric_limits<float>::infinity(),
                               FLT_MAX, -FLT_MAX};
// The same as they stand in a chunk's text.
const char* const hostileTexts[] = {"1e30", "-1e30", "40", "-40", "60", "1e10", "1e39", "3.4028235e38", "-3.4028235e38"};

// A chunk whose program sets every value to `value` and Bypass to `bypass`.
std::string programChunk(const std::string& value, const std::string& bypass)
{
    std::string text = "<KELVANE><Program name=\"hostile\"";
    for (const char* name : {"attack", "release", "gain", "attackTime", "releaseTime", "drive"})
        text += std::string(" ") + name + "=\"" + value + "\"";
    return chunkOf(text + " bypass=\"" + bypass + "\"/></KELVANE>");
}

class KelvaneAudioPath : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
        effect = host.effect;
        reference = host.anotherEffect();
        ASSERT_NE(reference, nullptr);
    }

    void TearDown() override
    {
        if (reference != nullptr)
            reference->dispatcher(reference, effClose, 0, 0, nullptr, 0.0f);
    }

    // One block in separate buffers, in place on copies of the input; the two outputs.
    static std::array<std::vector<float>, 2> separately(AEffect* effect, const std::vector<float>& left,
                                                        const std::vector<float>& right)
    {
        std::vector<float> inLeft = left, inRight = right;
        std::vector<float> outLeft(left.size(), 99.0f), outRight(left.size(), 99.0f);
        process(effect, inLeft.data(), inRight.data(), outLeft.data(), outRight.data());
        return {outLeft, outRight};
    }

    TestHost host;
    AEffect* effect = nullptr;     // the instance under test
    AEffect* reference = nullptr;  // an instance that is treated well
};
}  // namespace

TEST_F(KelvaneAudioPath, EverySharingOfTheHostsBuffersSoundsAsSeparateBuffers)
{
    const int blocks = 12;
    const std::vector<float> left = bursts(blocks * blockFrames, 3);
    const std::vector<float> right = bursts(blocks * blockFrames, 4);
    for (const std::array<int, 4>& sharing : everyBufferSharing())
    {
        SCOPED_TRACE(describeBufferSharing(sharing));
        AEffect* const shared = host.anotherEffect();
        AEffect* const separate = host.anotherEffect();
        ASSERT_TRUE(shared != nullptr && separate != nullptr);
        // Inputs that share a buffer carry one signal: a mono track into a stereo effect.
        const bool monoInput = sharing[0] == sharing[1];
        for (int block = 0; block < blocks; ++block)
        {
            // Automation on every block, so that the ramps move, and one block in bypass.
            setEverywhere({shared, separate}, attack, block % 3 == 0 ? 1.0f : 0.1f);
            setEverywhere({shared, separate}, release, 0.2f + 0.07f * static_cast<float>(block));
            setEverywhere({shared, separate}, drive, block % 2 == 0 ? 0.6f : 0.05f);
            setEverywhere({shared, separate}, bypass, block == 5 ? 1.0f : 0.0f);

            const std::vector<float> blockLeft = slice(left, block);
            const std::vector<float> blockRight = monoInput ? blockLeft : slice(right, block);
            std::vector<std::vector<float>> buffers(4, std::vector<float>(blockFrames, 99.0f));
            buffers[sharing[0]] = blockLeft;
            buffers[sharing[1]] = blockRight;
            process(shared, buffers[sharing[0]].data(), buffers[sharing[1]].data(), buffers[sharing[2]].data(),
                    buffers[sharing[3]].data());

            const std::array<std::vector<float>, 2> expected = separately(separate, blockLeft, blockRight);
            // Outputs that share a buffer hold the right channel, written last.
            if (sharing[2] != sharing[3])
            {
                ASSERT_EQ(buffers[sharing[2]], expected[0]) << "left output, block " << block;
            }
            ASSERT_EQ(buffers[sharing[3]], expected[1]) << "right output, block " << block;
        }
        for (AEffect* instance : {shared, separate})
            instance->dispatcher(instance, effClose, 0, 0, nullptr, 0.0f);
    }
}

TEST_F(KelvaneAudioPath, HostileParameterValuesKeepTheOutputAndTheAnswersFinite)
{
    const std::vector<float> signal = bursts(blockFrames * 4, 5);
    for (const float value : hostileValues)
        for (VstInt32 index = 0; index < 7; ++index)
        {
            SCOPED_TRACE(testing::Message() << "parameter " << index << " at " << value);
            effect->setParameter(effect, index, value);
            for (int block = 0; block < 4; ++block)
            {
                std::vector<float> left = slice(signal, block), right = left;
                processStereo(effect, left, right);
                ASSERT_TRUE(allFinite(left) && allFinite(right));
            }
            ASSERT_TRUE(allFinite(parameters(effect)));
        }
}

TEST_F(KelvaneAudioPath, HostileChunkValuesKeepTheOutputAndTheAnswersFinite)
{
    const std::vector<float> signal = bursts(blockFrames * 4, 6);
    for (const char* value : hostileTexts)
        for (const char* bypassValue : {"0", value})
        {
            SCOPED_TRACE(testing::Message() << "values " << value << ", bypass " << bypassValue);
            setChunk(effect, programChunk(value, bypassValue));
            for (int block = 0; block < 4; ++block)
            {
                std::vector<float> left = slice(signal, block), right = left;
                processStereo(effect, left, right);
                ASSERT_TRUE(allFinite(left) && allFinite(right));
            }
            ASSERT_TRUE(allFinite(parameters(effect)));
        }
}

TEST_F(KelvaneAudioPath, SoundReturnsToThatOfAnUntouchedInstanceOnceValuesAreBackInRange)
{
    // Both instances hear the same audio throughout. The one under test meets hostile values on
    // the four ramped controls, through automation and through a chunk; the time controls stay,
    // since a new detector time would rightly change how the envelopes have moved. Then both get
    // the same settings in range.
    const int blocks = 40;
    const std::vector<float> left = bursts(blocks * blockFrames, 7);
    const std::vector<float> right = bursts(blocks * blockFrames, 8);
    const float settings[7] = {0.8f, 0.3f, 0.0f, 0.6f, 0.5f, 0.5f, 0.3f};
    for (int block = 0; block < blocks; ++block)
    {
        if (block < 18)
        {
            // Each hostile value in turn, from automation on even blocks and from a chunk on odd
            // ones.
            const int which = (block / 2) % 9;
            if (block % 2 == 0)
                for (VstInt32 index : {attack, release, gain, drive})
                    effect->setParameter(effect, index, hostileValues[which]);
            else
            {
                const std::string value = hostileTexts[which];
                setChunk(effect, chunkOf("<KELVANE><Program attack=\"" + value + "\" release=\"" + value + "\" gain=\""
                                         + value + "\" drive=\"" + value + "\"/></KELVANE>"));
            }
        }
        else if (block == 18)
        {
            for (AEffect* instance : {effect, reference})
                for (VstInt32 index = 0; index < 7; ++index)
                    instance->setParameter(instance, index, settings[index]);
        }

        const std::array<std::vector<float>, 2> heard = separately(effect, slice(left, block), slice(right, block));
        const std::array<std::vector<float>, 2> expected =
            separately(reference, slice(left, block), slice(right, block));
        // The ramps reach the settings within block 18. From then on the two differ only by
        // the rounding of the ramps' additions, a few units in the last place of a factor.
        if (block < 19)
            continue;
        for (int channel = 0; channel < 2; ++channel)
            for (int frame = 0; frame < blockFrames; ++frame)
                ASSERT_NEAR(heard[channel][frame], expected[channel][frame],
                            1e-5f * std::max(1.0f, std::fabs(expected[channel][frame])))
                    << "block " << block << ", channel " << channel << ", frame " << frame;
    }
}
