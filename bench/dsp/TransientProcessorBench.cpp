// Cost of the transient processor per frame, in place, on the demo loop and on silence after 60 s
// of silence, at several block sizes. Ends with one summary line:
//   dsp: X ns/stereo frame @512, Y x realtime @48k, silence/signal Z

#include "dsp/DemoDrumLoop.h"
#include "dsp/TransientProcessor.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace
{
const DemoDrumLoop& demoLoop()
{
    static const DemoDrumLoop loop;
    return loop;
}

// A setting that keeps every branch of the path busy: attack and release both shaped, some drive.
TransientProcessor configuredProcessor()
{
    TransientProcessor processor;
    processor.setAttack(0.8f);
    processor.setRelease(0.3f);
    processor.setGain(0.55f);
    processor.setAttackTime(1.0f);
    processor.setReleaseTime(1.0f);
    processor.setDrive(0.3f);
    return processor;
}

enum class Input
{
    drumLoop,
    silenceAfterSilence
};

// Which buffers the host hands: each channel in place, or one buffer as both inputs and the left
// output, as a host does for a mono track into a stereo effect.
enum class Buffers
{
    inPlace,
    sharedInput
};

void process(benchmark::State& state, bool stereo, Input input, Buffers buffers = Buffers::inPlace)
{
    const int block = static_cast<int>(state.range(0));
    const DemoDrumLoop& loop = demoLoop();
    const int frames = DemoDrumLoop::frameCount;
    TransientProcessor processor = configuredProcessor();
    std::vector<float> left(frames, 0.0f);
    std::vector<float> right(frames, 0.0f);
    if (input == Input::drumLoop)
    {
        left = loop.left();
        right = loop.right();
    }
    else
    {
        // Let the detectors decay through 60 s of digital silence first.
        for (int done = 0; done < 60 * DemoDrumLoop::sampleRate; done += 512)
            processor.processStereo(left.data(), right.data(), left.data(), right.data(), 512, false);
    }

    int position = 0;
    for (auto _ : state)
    {
        if (position + block > frames)
        {
            if (input == Input::drumLoop)
            {
                left = loop.left();
                right = loop.right();
            }
            position = 0;
        }
        if (stereo && buffers == Buffers::sharedInput)
            processor.processStereo(&left[position], &left[position], &left[position], &right[position], block,
                                    false);
        else if (stereo)
            processor.processStereo(&left[position], &right[position], &left[position], &right[position], block,
                                    false);
        else
            processor.processMono(&left[position], &left[position], block, false);
        benchmark::ClobberMemory();
        position += block;
    }
    state.counters["s/frame"] = benchmark::Counter(static_cast<double>(state.iterations()) * block,
                                                    benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void stereoSignal(benchmark::State& state) { process(state, true, Input::drumLoop); }
void monoSignal(benchmark::State& state) { process(state, false, Input::drumLoop); }
void stereoSilence(benchmark::State& state) { process(state, true, Input::silenceAfterSilence); }
void monoSilence(benchmark::State& state) { process(state, false, Input::silenceAfterSilence); }
void stereoSharedInput(benchmark::State& state) { process(state, true, Input::drumLoop, Buffers::sharedInput); }

// Five repetitions of each, reported with their median and their fastest. The summary takes the
// fastest: on a machine shared with other work, that work only ever adds time to a run.
void blockSizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(32)->Arg(256)->Arg(512)->Arg(4096)->Repetitions(5)->ReportAggregatesOnly(true);
    benchmark->ComputeStatistics("min", fastest);
}

BENCHMARK(stereoSignal)->Apply(blockSizes);
BENCHMARK(monoSignal)->Apply(blockSizes);
BENCHMARK(stereoSilence)->Apply(blockSizes);
BENCHMARK(monoSilence)->Apply(blockSizes);
BENCHMARK(stereoSharedInput)->Arg(512)->Repetitions(5)->ReportAggregatesOnly(true)->ComputeStatistics("min", fastest);

// Nanoseconds per frame of the fastest repetition, from the counter each run keeps; 0 when the
// benchmark did not run.
double nanosecondsPerFrame(const SummaryReporter& reporter, const std::string& function)
{
    const benchmark::BenchmarkReporter::Run* run = reporter.find(function, "min", "512");
    return run != nullptr && run->counters.count("s/frame") != 0 ? run->counters.at("s/frame").value * 1e9 : 0.0;
}

}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    const double signal = nanosecondsPerFrame(reporter, "stereoSignal");
    const double silence = nanosecondsPerFrame(reporter, "stereoSilence");
    if (signal <= 0.0 || silence <= 0.0)
        return 0;  // filtered runs: no summary
    const double realtime = (1e9 / 48000.0) / signal;
    const double shared = nanosecondsPerFrame(reporter, "stereoSharedInput");
    if (shared > 0.0)
        std::printf("one buffer as both inputs and the left output: %.2f ns/stereo frame @512\n", shared);
    const double ratio = silence / signal;
    std::printf("targets: <= 10 ns/stereo frame @512 (%s), silence/signal <= 1.2 (%s)\n",
                signal <= 10.0 ? "met" : "MISSED", ratio <= 1.2 ? "met" : "MISSED");
    std::printf("dsp: %.2f ns/stereo frame @512, %.0f x realtime @48k, silence/signal %.2f\n", signal, realtime,
                ratio);
    return 0;
}
