// The audio path of Kelvane.so allocates nothing after its first block, also when the host
// automates from the audio thread, hands it events, or runs blocks larger than it announced.

#include "AllocationCounter.h"
#include "TestHost.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace q1framework;

TEST(KelvaneAllocation, CounterSeesAnAllocationOfThisThread)
{
    AllocationCounter::start();
    char* copy = strdup("counted");
    const long counted = AllocationCounter::stop();
    std::free(copy);
    EXPECT_EQ(counted, 1);
}

TEST(KelvaneAllocation, AudioThreadAllocatesNothingAfterTheFirstBlock)
{
    TestHost host;
    ASSERT_TRUE(host.load(KELVANE_PLUGIN)) << host.failure;
    AEffect* effect = host.effect;
    host.dispatch(effSetSampleRate, 0, 0, nullptr, 48000.0f);
    host.dispatch(effSetBlockSize, 0, 512);
    host.dispatch(effMainsChanged, 0, 1);
    host.calls.reserve(4096);  // the test host's own record of calls must not grow meanwhile
    std::vector<float> left(2048);
    std::vector<float> right(2048);
    EffectCalls::processStereo(effect, left, right);

    VstMidiEvent note{};
    note.type = kVstMidiType;
    note.midiData[0] = static_cast<char>(0x90);
    VstEvents events{};
    events.numEvents = 1;
    events.events[0] = reinterpret_cast<VstEvent*>(&note);
    float* channels[2] = {left.data(), right.data()};

    AllocationCounter::start();
    for (int block = 0; block < 200; ++block)
    {
        for (std::size_t frame = 0; frame < left.size(); ++frame)
            left[frame] = right[frame] = 0.5f * std::sin(0.01f * static_cast<float>(block * 2048 + static_cast<int>(frame)));
        // Automation and events from the audio thread, as some hosts send them.
        effect->setParameter(effect, block % 7, static_cast<float>(block % 11) / 10.0f);
        effect->dispatcher(effect, effProcessEvents, 0, 0, &events, 0.0f);
        (void) effect->getParameter(effect, 0);
        effect->processReplacing(effect, channels, channels, block % 2 == 0 ? 512 : 2048);
    }
    EXPECT_EQ(AllocationCounter::stop(), 0);
}
