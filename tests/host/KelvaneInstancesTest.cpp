// Kelvane.so across instances, entry points and hosts that behave differently: several effects in
// one process, hosts that give no version or never set a rate, and a host that automates and
// saves state on one thread while its audio thread processes.

#include "TestHost.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <random>
#include <thread>
#include <vector>

using namespace q1framework;
using namespace EffectCalls;

namespace
{
// `blocks` blocks of noise bursts that decay as drum hits through the effect; the output, left
// channel then right.
std::vector<float> render(AEffect* effect, int blocks, int frames)
{
    std::vector<float> output;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> noise(-0.7f, 0.7f);
    std::vector<float> left(frames);
    std::vector<float> right(frames);
    for (int block = 0; block < blocks; ++block)
    {
        for (int frame = 0; frame < frames; ++frame)
        {
            const float envelope = std::exp(-0.01f * static_cast<float>((block * frames + frame) % 2000));
            left[frame] = envelope * noise(random);
            right[frame] = envelope * noise(random);
        }
        processStereo(effect, left, right);
        output.insert(output.end(), left.begin(), left.end());
        output.insert(output.end(), right.begin(), right.end());
    }
    return output;
}

void prepare(AEffect* effect, float rate, VstInt32 blockSize)
{
    effect->dispatcher(effect, effSetSampleRate, 0, 0, nullptr, rate);
    effect->dispatcher(effect, effSetBlockSize, 0, blockSize, nullptr, 0.0f);
    effect->dispatcher(effect, effMainsChanged, 0, 1, nullptr, 0.0f);
}
}  // namespace

TEST(KelvaneInstances, TwoInstancesShareTheProcessAndCloseInEitherOrder)
{
    for (bool firstClosesFirst : {true, false})
    {
        TestHost host;
        ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
        AEffect* second = host.anotherEffect();
        ASSERT_NE(second, nullptr);
        ASSERT_NE(second, host.effect);
        // The first instance is never given a rate or a block size, nor resumed: it sounds as one
        // prepared at 44.1 kHz, also in blocks larger than the default block size of 1024, which
        // are never split or limited. Program calls change nothing audible.
        prepare(second, 44100.0f, 512);
        for (AEffect* effect : {host.effect, second})
            effect->setParameter(effect, attack, 1.0f);
        host.dispatch(effSetProgram, 0, 0);
        host.dispatch(effBeginSetProgram);
        host.dispatch(effEndSetProgram);
        EXPECT_EQ(render(host.effect, 3, 2048), render(second, 3, 2048));
        // Each keeps its own settings.
        second->setParameter(second, attack, 0.0f);
        EXPECT_NE(render(host.effect, 4, 512), render(second, 4, 512));

        AEffect* survivor = second;
        if (firstClosesFirst)
            host.close();
        else
        {
            second->dispatcher(second, effClose, 0, 0, nullptr, 0.0f);
            survivor = host.effect;
        }
        // The one left keeps its own settings and still processes and saves.
        survivor->setParameter(survivor, gain, 0.25f);
        EXPECT_EQ(survivor->getParameter(survivor, attack), firstClosesFirst ? 0.0f : 1.0f);
        EXPECT_EQ(render(survivor, 2, 256).size(), 1024u);
        EXPECT_FALSE(getChunk(survivor).empty());
        if (firstClosesFirst)
            second->dispatcher(second, effClose, 0, 0, nullptr, 0.0f);
    }
}

TEST(KelvaneInstances, EveryEntryPointMakesAnEffectAndAHostWithoutAVersionGetsNone)
{
    for (const char* entryName : {"VSTPluginMain", "main_macho", "CreateEngine"})
    {
        TestHost host;
        ASSERT_TRUE(host.load(KELVANE_PLUGIN, entryName)) << entryName << ": " << host.failure;
        EXPECT_EQ(host.effect->uniqueID, fourCharacterCode('K', 'e', 'L', 'v'));
        // The first thing the entry does is ask for the host's version.
        ASSERT_FALSE(host.calls.empty());
        EXPECT_EQ(host.calls[0].opcode, audioMasterVersion);
    }
    TestHost host;
    host.versionAnswer = 0;
    EXPECT_FALSE(host.load(KELVANE_PLUGIN));
    EXPECT_EQ(host.failure, "no effect");
    ASSERT_EQ(host.calls.size(), 1u);
    EXPECT_EQ(host.calls[0].opcode, audioMasterVersion);
    const auto entry = reinterpret_cast<VstPluginEntryProc>(dlsym(host.library, "VSTPluginMain"));
    EXPECT_EQ(entry(nullptr), nullptr);
}

TEST(KelvaneInstances, ThreadedAutomationAndStateWhileTheAudioThreadProcesses)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN));
    AEffect* effect = host.effect;
    prepare(effect, 48000.0f, 256);
    std::atomic<bool> running{true};
    std::atomic<long> blocks{0};
    std::atomic<bool> allFinite{true};

    std::thread audio([&] {
        while (running.load())
        {
            const std::vector<float> output = render(effect, 1, 256);
            if (!std::all_of(output.begin(), output.end(), [](float sample) { return std::isfinite(sample); }))
                allFinite.store(false);
            blocks.fetch_add(1);
        }
    });

    // The host's other thread: automation, saving and loading state, a new rate and block size,
    // as some Linux hosts do from their own worker threads.
    std::mt19937 random(2);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    std::string saved = getChunk(effect);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    int round = 0;
    while (std::chrono::steady_clock::now() < end)
    {
        for (VstInt32 index = 0; index < 7; ++index)
            effect->setParameter(effect, index, unit(random));
        (void) effect->getParameter(effect, round % 7);
        if (round % 3 == 0)
            saved = getChunk(effect);
        if (round % 5 == 0)
            setChunk(effect, saved);
        if (round % 50 == 0)
        {
            effect->dispatcher(effect, effSetBlockSize, 0, 128 + 64 * (round % 4), nullptr, 0.0f);
            effect->dispatcher(effect, effSetSampleRate, 0, 0, nullptr, round % 100 == 0 ? 44100.0f : 48000.0f);
            effect->dispatcher(effect, effMainsChanged, 0, 0, nullptr, 0.0f);
        }
        ++round;
    }
    running.store(false);
    audio.join();
    EXPECT_TRUE(allFinite.load());
    EXPECT_GT(blocks.load(), 10);
    EXPECT_GT(round, 10);
}
