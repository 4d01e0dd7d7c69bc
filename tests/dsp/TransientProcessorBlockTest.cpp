// The processor's block paths against the plain per-sample path, on random input with fixed
// seeds: the outputs and the whole state must agree bit for bit, for every block path this machine
// runs and through the processor's own entry points.

#include "ReferenceTransientPath.h"

#include "dsp/DenormalGuard.h"
#include "dsp/TransientBlockPaths.h"
#include "dsp/TransientProcessor.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace
{
bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void expectSameState(const TransientProcessor& a, const TransientProcessor& b, const char* where)
{
    const float fieldsA[] = {a.drivePeak, a.driveCurrent, a.attackCurrent, a.releaseCurrent, a.outputGainCurrent,
                             a.fastEnvelope, a.slowEnvelope, a.releaseEnvelope, a.releaseFollower, a.sustainEnvelope};
    const float fieldsB[] = {b.drivePeak, b.driveCurrent, b.attackCurrent, b.releaseCurrent, b.outputGainCurrent,
                             b.fastEnvelope, b.slowEnvelope, b.releaseEnvelope, b.releaseFollower, b.sustainEnvelope};
    for (std::size_t i = 0; i < std::size(fieldsA); ++i)
        ASSERT_TRUE(sameBits(fieldsA[i], fieldsB[i])) << where << ": field " << i << " " << fieldsA[i] << " vs " << fieldsB[i];
}

// Random controls within and beyond the usual ranges, as a host may send them.
void randomiseControls(std::mt19937& random, TransientProcessor& a, TransientProcessor& b)
{
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    const float attack = unit(random), release = unit(random), gain = unit(random), drive = unit(random);
    const float times[] = {0.5f, 1.0f, 2.0f};
    const float attackTime = times[random() % 3], releaseTime = times[random() % 3];
    for (TransientProcessor* p : {&a, &b})
    {
        p->setAttack(attack);
        p->setRelease(release);
        p->setGain(gain);
        p->setDrive(drive);
        p->setAttackTime(attackTime);
        p->setReleaseTime(releaseTime);
    }
}

// Drum-like bursts, quiet noise, runs of digital silence (both signs of zero), loud peaks, and now
// and then a non-finite sample or one so large that two of them overflow the detector level.
std::vector<float> randomSignal(std::mt19937& random, int frames)
{
    std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
    std::vector<float> signal(frames);
    float envelope = 0.0f;
    int silent = 0;  // frames of digital silence still to come
    for (int i = 0; i < frames; ++i)
    {
        if (silent > 0 || random() % 500 == 0)
        {
            silent = silent > 0 ? silent - 1 : static_cast<int>(random() % 40);
            signal[i] = random() % 3 == 0 ? -0.0f : 0.0f;
            continue;
        }
        const unsigned event = random() % 2000;
        if (event == 0)
            envelope = 0.0f;
        else if (event < 4)
            envelope = 4.0f * std::fabs(unit(random));
        envelope *= 0.999f;
        signal[i] = unit(random) * (envelope + 1e-4f);
        const unsigned special = random() % 5000;
        if (special == 0)
            signal[i] = std::numeric_limits<float>::quiet_NaN();
        else if (special == 1)
            signal[i] = -std::numeric_limits<float>::infinity();
        else if (special == 2)
            signal[i] = 3e38f;
    }
    return signal;
}

using BlockPath = void (*)(TransientProcessor&, const TransientBlockPaths::Buffers&, int, int, bool);

// Runs one block through `path` (null: the processor's entry points) with the entry points' own
// handling of empty blocks, bypass and the floating-point mode.
void processWith(BlockPath path, TransientProcessor& p, const float* inLeft, const float* inRight, float* outLeft,
                 float* outRight, int channels, int count, bool accumulate)
{
    if (path == nullptr)
    {
        if (channels == 2)
            p.processStereo(inLeft, inRight, outLeft, outRight, count, accumulate);
        else
            p.processMono(inLeft, outLeft, count, accumulate);
        return;
    }
    if (p.bypassed)
    {
        for (int i = 0; i < count; ++i)
        {
            outLeft[i] = inLeft[i];
            if (channels == 2)
                outRight[i] = inRight[i];
        }
        return;
    }
    const DenormalGuard guard;
    path(p, {inLeft, channels == 2 ? inRight : nullptr, outLeft, channels == 2 ? outRight : nullptr}, channels, count,
         accumulate);
}

// Every block path this machine runs, and the entry points.
std::vector<BlockPath> blockPaths()
{
    std::vector<BlockPath> paths = {nullptr, &TransientBlockPaths::processPortable};
    if (TransientBlockPaths::hasEightLanes())
        paths.push_back(&TransientBlockPaths::processEightLanes);
    if (TransientBlockPaths::hasSixteenLanes())
        paths.push_back(&TransientBlockPaths::processSixteenLanes);
    return paths;
}

void compareOnRandomBlocks(BlockPath path, int channels, bool accumulate, bool inPlace, unsigned seed)
{
    std::mt19937 random(seed);
    TransientProcessor fast;
    TransientProcessor plain;
    const int blockSizes[] = {1, 2, 3, 4, 5, 7, 63, 64, 65, 128, 300, 512, 1023, 4096};
    for (int round = 0; round < 40; ++round)
    {
        if (round % 3 == 0)
            randomiseControls(random, fast, plain);
        if (round % 17 == 5)
        {
            fast.setBypass(round % 2 == 0);
            plain.setBypass(round % 2 == 0);
        }
        const int count = blockSizes[random() % std::size(blockSizes)];
        const std::vector<float> left = randomSignal(random, count);
        const std::vector<float> right = randomSignal(random, count);
        std::vector<float> start = randomSignal(random, count);  // what an accumulating output holds
        for (float& sample : start)
            if (!std::isfinite(sample))
                sample = 0.5f;

        std::vector<float> fastLeft = inPlace ? left : start, fastRight = inPlace ? right : start;
        std::vector<float> plainLeft = fastLeft, plainRight = fastRight;
        const float* fastInLeft = inPlace ? fastLeft.data() : left.data();
        const float* fastInRight = inPlace ? fastRight.data() : right.data();
        const float* plainInLeft = inPlace ? plainLeft.data() : left.data();
        const float* plainInRight = inPlace ? plainRight.data() : right.data();
        processWith(path, fast, fastInLeft, fastInRight, fastLeft.data(), fastRight.data(), channels, count,
                    accumulate);
        if (channels == 2)
            referenceProcessStereo(plain, plainInLeft, plainInRight, plainLeft.data(), plainRight.data(), count,
                                   accumulate);
        else
            referenceProcessMono(plain, plainInLeft, plainLeft.data(), count, accumulate);
        for (int i = 0; i < count; ++i)
        {
            ASSERT_TRUE(sameBits(fastLeft[i], plainLeft[i]))
                << "round " << round << " frame " << i << " of " << count << ": " << fastLeft[i] << " vs " << plainLeft[i];
            ASSERT_TRUE(sameBits(fastRight[i], plainRight[i]))
                << "round " << round << " frame " << i << " of " << count << ": " << fastRight[i] << " vs " << plainRight[i];
        }
        expectSameState(fast, plain, "after a block");
        if (round % 7 == 0)
        {
            ASSERT_TRUE(sameBits(fast.takeDrivePeak(), plain.takeDrivePeak()));
        }
    }
}
}

TEST(TransientProcessorBlock, StereoEqualsThePerSamplePath)
{
    for (BlockPath path : blockPaths())
        for (unsigned seed : {1u, 2u, 3u})
            compareOnRandomBlocks(path, 2, false, false, seed);
}

TEST(TransientProcessorBlock, StereoInPlaceAndAccumulatingEqualsThePerSamplePath)
{
    for (BlockPath path : blockPaths())
        for (unsigned seed : {4u, 5u})
        {
            compareOnRandomBlocks(path, 2, false, true, seed);
            compareOnRandomBlocks(path, 2, true, false, seed);
            compareOnRandomBlocks(path, 2, true, true, seed);
        }
}

TEST(TransientProcessorBlock, MonoEqualsThePerSamplePathInEveryMode)
{
    for (BlockPath path : blockPaths())
        for (unsigned seed : {6u, 7u})
            for (bool accumulate : {false, true})
                for (bool inPlace : {false, true})
                    compareOnRandomBlocks(path, 1, accumulate, inPlace, seed);
}
