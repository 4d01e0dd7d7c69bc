// Cost of one block of 512 frames through Kelvane's VST 2.4 adapter (processReplacing: the host's
// transport, the plug-in's mutex, the channel pointers into the buses, the level meters' check)
// against the bare TransientProcessor on the same audio with the same settings. Ends with one
// summary line:
//   host: adapter X ns/block @512, bare processor Y ns/block, overhead Z % (target <= 5 %)

#include "dsp/DemoDrumLoop.h"
#include "dsp/TransientProcessor.h"
#include "host/VST2Wrapper.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace q1framework;

namespace
{
constexpr int blockSize = 512;
constexpr double overheadTarget = 5.0;  // percent

// The settings of both sides, as parameter values 0..1 in index order.
constexpr float settings[7] = {0.8f, 0.3f, 0.0f, 0.55f, 0.5f, 0.5f, 0.3f};

const DemoDrumLoop& demoLoop()
{
    static const DemoDrumLoop loop;
    return loop;
}

// A host that answers what a DAW answers during playback: its version and its transport.
VstIntPtr playingHost(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float)
{
    static VstTimeInfo transport = [] {
        VstTimeInfo info{};
        info.sampleRate = 44100.0;
        info.tempo = 120.0;
        info.flags = kVstTransportPlaying | kVstPpqPosValid | kVstTempoValid;
        return info;
    }();
    if (opcode == audioMasterVersion)
        return kVstVersion;
    if (opcode == audioMasterGetTime)
        return reinterpret_cast<VstIntPtr>(&transport);
    return 0;
}

// The loop's channels, processed in place block after block and refilled when they run out.
class LoopBlocks
{
public:
    LoopBlocks() : left(demoLoop().left()), right(demoLoop().right()) {}

    // The next block's start in each channel.
    void next(float*& leftBlock, float*& rightBlock)
    {
        if (position + blockSize > DemoDrumLoop::frameCount)
        {
            left = demoLoop().left();
            right = demoLoop().right();
            position = 0;
        }
        leftBlock = &left[static_cast<std::size_t>(position)];
        rightBlock = &right[static_cast<std::size_t>(position)];
        position += blockSize;
    }

private:
    std::vector<float> left;
    std::vector<float> right;
    int position = 0;
};

void bareProcessor(benchmark::State& state)
{
    TransientProcessor processor;
    processor.setAttack(settings[0]);
    processor.setRelease(settings[1]);
    processor.setBypass(false);
    processor.setGain(settings[3]);
    processor.setAttackTime(1.0f);
    processor.setReleaseTime(1.0f);
    processor.setDrive(settings[6]);
    LoopBlocks blocks;
    for (auto _ : state)
    {
        float* left;
        float* right;
        blocks.next(left, right);
        processor.processStereo(left, right, left, right, blockSize, false);
        benchmark::ClobberMemory();
    }
}

void throughAdapter(benchmark::State& state)
{
    AEffect* effect = createEffectInstance(playingHost)->getAeffect();
    effect->dispatcher(effect, effSetSampleRate, 0, 0, nullptr, 44100.0f);
    effect->dispatcher(effect, effSetBlockSize, 0, blockSize, nullptr, 0.0f);
    effect->dispatcher(effect, effMainsChanged, 0, 1, nullptr, 0.0f);
    for (VstInt32 index = 0; index < 7; ++index)
        effect->setParameter(effect, index, settings[index]);
    LoopBlocks blocks;
    for (auto _ : state)
    {
        float* channels[2];
        blocks.next(channels[0], channels[1]);
        effect->processReplacing(effect, channels, channels, blockSize);
        benchmark::ClobberMemory();
    }
    effect->dispatcher(effect, effClose, 0, 0, nullptr, 0.0f);
}

// Repetitions of the two interleaved in random order (see main), each side taken by its fastest
// repetition (BenchmarkSummary.h).
BENCHMARK(bareProcessor)->Repetitions(15)->MinTime(0.2)->ReportAggregatesOnly(true)->ComputeStatistics("min", fastest);
BENCHMARK(throughAdapter)->Repetitions(15)->MinTime(0.2)->ReportAggregatesOnly(true)->ComputeStatistics("min", fastest);
}  // namespace

int main(int argc, char** argv)
{
    if (!initialiseInterleaved(argc, argv))
        return 1;
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    const double adapter = reporter.cpuTime("throughAdapter", "min");
    const double bare = reporter.cpuTime("bareProcessor", "min");
    if (adapter <= 0.0 || bare <= 0.0)
        return 0;  // filtered runs: no summary
    const double overhead = (adapter / bare - 1.0) * 100.0;
    std::printf("host: adapter %.0f ns/block @%d, bare processor %.0f ns/block, overhead %.1f %% (target <= %.0f %%, %s)\n",
                adapter, blockSize, bare, overhead, overheadTarget, overhead <= overheadTarget ? "met" : "MISSED");
    return 0;
}
