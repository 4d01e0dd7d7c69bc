// The processor's block paths against the plain per-sample path, on random input with fixed
// seeds: outputs and state must agree bit for bit, for every block path this machine runs and
// through the processor's own entry points, in every mode.

#include "ReferenceTransientPath.h"

#include "dsp/DenormalGuard.h"
#include "dsp/TransientBlockPaths.h"
#include "dsp/TransientProcessor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace
{
using BlockPath = void (*)(TransientProcessor&, const TransientBlockPaths::Buffers&, int, int, bool);

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Every block path this machine runs; null stands for the processor's entry points.
std::vector<BlockPath> blockPaths()
{
    std::vector<BlockPath> paths = {nullptr, &TransientBlockPaths::processPortable};
    if (TransientBlockPaths::hasEightLanes())
        paths.push_back(&TransientBlockPaths::processEightLanes);
    if (TransientBlockPaths::hasSixteenLanes())
        paths.push_back(&TransientBlockPaths::processSixteenLanes);
    return paths;
}

// One block through `path`, with the entry points' own handling of bypass and the floating-point
// mode (the block lengths here are never below 1).
void processWith(BlockPath path, TransientProcessor& p, const float* inLeft, const float* inRight, float* outLeft,
                 float* outRight, int channels, int count, bool accumulate)
{
    if (path == nullptr && channels == 2)
        p.processStereo(inLeft, inRight, outLeft, outRight, count, accumulate);
    else if (path == nullptr)
        p.processMono(inLeft, outLeft, count, accumulate);
    else if (p.bypassed)
        referenceProcess(p, inLeft, inRight, outLeft, outRight, channels, count, accumulate);
    else
    {
        const DenormalGuard guard;
        path(p, {inLeft, channels == 2 ? inRight : nullptr, outLeft, channels == 2 ? outRight : nullptr}, channels,
             count, accumulate);
    }
}

// Drum-like bursts, runs of digital silence (both signs of zero), loud peaks, and now and then a
// non-finite sample or one so large that two of them overflow the detector level.
std::vector<float> randomSignal(std::mt19937& random, int frames)
{
    std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
    std::vector<float> signal(frames);
    float envelope = 0.0f;
    int silent = 0;
    for (float& sample : signal)
    {
        if (silent > 0 || random() % 500 == 0)
        {
            silent = silent > 0 ? silent - 1 : static_cast<int>(random() % 40);
            sample = random() % 3 == 0 ? -0.0f : 0.0f;
            continue;
        }
        if (random() % 2000 < 4)
            envelope = 4.0f * std::fabs(unit(random));
        envelope *= 0.999f;
        sample = unit(random) * (envelope + 1e-4f);
        const unsigned special = random() % 5000;
        if (special < 3)
        {
            const float specials[] = {std::numeric_limits<float>::quiet_NaN(), -std::numeric_limits<float>::infinity(),
                                      3e38f};
            sample = specials[special];
        }
    }
    return signal;
}

// Which of the four buffers (input left, input right, output left, output right) are one and the
// same: the entry at each place names the buffer used there, numbered in order of first use. Every
// way of sharing four buffers, from four separate ones to a single one. One channel uses the left
// places only.
using Sharing = std::array<int, 4>;

std::vector<Sharing> everySharing(int channels)
{
    if (channels == 1)
        return {{0, 1, 2, 3}, {0, 1, 0, 3}};
    std::vector<Sharing> sharings;
    for (int b = 0; b <= 1; ++b)
        for (int c = 0; c <= b + 1; ++c)
            for (int d = 0; d <= std::max(b, c) + 1; ++d)
                sharings.push_back({0, b, c, d});
    return sharings;
}

// One block's four buffers laid out by `sharing`: inputs shared between channels carry the left
// signal, an output of its own holds `held` (what an accumulating output adds to).
struct SharedBuffers
{
    SharedBuffers(const Sharing& sharing, const std::vector<float>& left, const std::vector<float>& right,
                  const std::vector<float>& held)
        : sharing(sharing), buffers(4, held)
    {
        buffers[sharing[1]] = right;
        buffers[sharing[0]] = left;
    }

    float* at(int place) { return buffers[sharing[place]].data(); }

    Sharing sharing;
    std::vector<std::vector<float>> buffers;
};

void compareOnRandomBlocks(BlockPath path, int channels, bool accumulate, const Sharing& sharing, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    TransientProcessor fast;
    TransientProcessor plain;
    const int blockSizes[] = {1, 2, 3, 4, 5, 7, 15, 17, 63, 64, 65, 128, 300, 512, 1023, 4096};
    for (int round = 0; round < 40; ++round)
    {
        if (round % 3 == 0)
        {
            // Controls change every few blocks, so ramps move and then stand.
            const float controls[] = {unit(random), unit(random), unit(random), unit(random)};
            const float times[] = {0.5f, 1.0f, 2.0f};
            const float attackTime = times[random() % 3], releaseTime = times[random() % 3];
            for (TransientProcessor* p : {&fast, &plain})
            {
                p->setAttack(controls[0]);
                p->setRelease(controls[1]);
                p->setGain(controls[2]);
                p->setDrive(controls[3]);
                p->setAttackTime(attackTime);
                p->setReleaseTime(releaseTime);
                p->setBypass((round / 3) % 5 == 4);
            }
        }
        const int count = blockSizes[random() % std::size(blockSizes)];
        const std::vector<float> left = randomSignal(random, count);
        const std::vector<float> right = randomSignal(random, count);
        std::vector<float> held(count);  // what an accumulating output holds
        for (float& sample : held)
            sample = unit(random) - 0.5f;

        // The per-sample path on the same layout is the oracle: it reads both inputs of a frame
        // before it writes either output of it.
        SharedBuffers fastBuffers(sharing, left, right, held);
        SharedBuffers plainBuffers(sharing, left, right, held);
        processWith(path, fast, fastBuffers.at(0), fastBuffers.at(1), fastBuffers.at(2), fastBuffers.at(3), channels,
                    count, accumulate);
        referenceProcess(plain, plainBuffers.at(0), plainBuffers.at(1), plainBuffers.at(2), plainBuffers.at(3),
                         channels, count, accumulate);
        for (int i = 0; i < count; ++i)
        {
            ASSERT_TRUE(sameBits(fastBuffers.at(2)[i], plainBuffers.at(2)[i])
                        && sameBits(fastBuffers.at(3)[i], plainBuffers.at(3)[i]))
                << "round " << round << ", frame " << i << " of " << count << ": " << fastBuffers.at(2)[i] << " "
                << fastBuffers.at(3)[i] << " vs " << plainBuffers.at(2)[i] << " " << plainBuffers.at(3)[i];
        }
        const float fastState[] = {fast.drivePeak, fast.driveCurrent, fast.attackCurrent, fast.releaseCurrent,
                                   fast.outputGainCurrent, fast.fastEnvelope, fast.slowEnvelope,
                                   fast.releaseEnvelope, fast.releaseFollower, fast.sustainEnvelope};
        const float plainState[] = {plain.drivePeak, plain.driveCurrent, plain.attackCurrent, plain.releaseCurrent,
                                    plain.outputGainCurrent, plain.fastEnvelope, plain.slowEnvelope,
                                    plain.releaseEnvelope, plain.releaseFollower, plain.sustainEnvelope};
        for (std::size_t field = 0; field < std::size(fastState); ++field)
            ASSERT_TRUE(sameBits(fastState[field], plainState[field])) << "round " << round << ", field " << field;
        if (round % 7 == 0)
        {
            ASSERT_TRUE(sameBits(fast.takeDrivePeak(), plain.takeDrivePeak()));
        }
    }
}
}

TEST(TransientProcessorBlock, EveryPathEqualsThePerSamplePathInEveryModeAndEverySharingOfBuffers)
{
    for (BlockPath path : blockPaths())
        for (int channels : {2, 1})
            for (bool accumulate : {false, true})
                for (const Sharing& sharing : everySharing(channels))
                    for (unsigned seed : {1u, 2u})
                        compareOnRandomBlocks(path, channels, accumulate, sharing, seed + 10u * channels);
}
