// Time to load a state chunk into KLAudioPlugin on the host's thread: a real one, and the two
// hostile shapes that once held a host for most of a minute (an element with a hundred thousand
// attributes, a megabyte in one attribute). Ends with one summary line:
//   state: real chunk R us, 100000 attributes A ms, 1 MB attribute B ms (target < 10 ms)

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "plugin/KLAudioPlugin.h"
#include "support/StateChunk.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>

using namespace q1framework;

namespace
{
constexpr double targetMilliseconds = 10.0;

std::string realChunk()
{
    KLAudioPlugin plugin;
    MemoryStream stream;
    plugin.getState(stream);
    return std::string(static_cast<const char*>(stream.getData()), static_cast<std::size_t>(stream.getSize()));
}

std::string manyAttributes()
{
    std::string text = "<KELVANE><Program drive=\"0.5\"";
    for (int attribute = 0; attribute < 100000; ++attribute)
        text += " a" + std::to_string(attribute) + "=\"1\"";
    return chunkOf(text + "/></KELVANE>");
}

std::string oneLargeAttribute()
{
    return chunkOf("<KELVANE><Program name=\"" + std::string(1 << 20, 'k') + "\" drive=\"0.5\"/></KELVANE>");
}

// The host's setChunk: its bytes copied into a block, read through a stream.
void load(benchmark::State& state, const std::string& chunk)
{
    KLAudioPlugin plugin;
    for (auto _ : state)
    {
        MemoryStream stream(MemoryBlock(chunk.data(), static_cast<int64_t>(chunk.size()), true));
        plugin.setState(stream);
    }
}

void realState(benchmark::State& state) { load(state, realChunk()); }
void hundredThousandAttributes(benchmark::State& state) { load(state, manyAttributes()); }
void megabyteAttribute(benchmark::State& state) { load(state, oneLargeAttribute()); }

void fastestOfFive(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Repetitions(5)->ReportAggregatesOnly(true)->Unit(benchmark::kMicrosecond);
    benchmark->ComputeStatistics("min", fastest);
}

BENCHMARK(realState)->Apply(fastestOfFive);
BENCHMARK(hundredThousandAttributes)->Apply(fastestOfFive);
BENCHMARK(megabyteAttribute)->Apply(fastestOfFive);

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    const double real = reporter.realTime("realState", "min");
    const double many = reporter.realTime("hundredThousandAttributes", "min") / 1000.0;
    const double large = reporter.realTime("megabyteAttribute", "min") / 1000.0;
    if (real <= 0.0 || many <= 0.0 || large <= 0.0)
        return 0;  // filtered runs: no summary
    std::printf("state: real chunk %.0f us, 100000 attributes %.2f ms, 1 MB attribute %.2f ms (target < %.0f ms, %s)\n",
                real, many, large, targetMilliseconds,
                std::max(many, large) < targetMilliseconds ? "met" : "MISSED");
    return 0;
}
