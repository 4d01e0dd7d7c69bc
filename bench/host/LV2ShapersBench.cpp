// Kelvane's LV2 build against the transient shapers Debian ships (mda-lv2, swh-lv2,
// calf-plugins), all through the same lilv host on the same machine in one run, fed the demo drum
// loop in blocks of 64 and 512 frames (lv2bench feeds silence, which measures nothing here). Each
// is set to shape: a raised attack and a shortened release. A mono plug-in runs as two instances,
// so every figure is for a stereo frame. Every plug-in has its meter outputs connected, as hosts
// connect them; Kelvane runs once more without, where it measures no levels. Ends with one
// summary line:
//   lv2: ns/stereo frame @64/@512: Kelvane A/B (without meters C/D); <shaper> E/F (Kelvane/it x/y); ...

#include "BenchmarkSummary.h"
#include "LV2BenchHost.h"

#include "dsp/DemoDrumLoop.h"
#include "plugin/PluginDescription.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr int blockSizes[] = {64, 512};

struct Shaper
{
    std::string label;  // the package and the plug-in, as the summary names it
    std::string uri;
    std::vector<std::pair<std::string, float>> settings;
    bool withMeters;
    std::unique_ptr<LV2BenchHost::Effect> effect;
    std::string failure;
};

const DemoDrumLoop& demoLoop()
{
    static const DemoDrumLoop loop;
    return loop;
}

std::string kelvaneUri()
{
    const std::unique_ptr<q1framework::PluginDescription> description(q1framework::createPluginDescription());
    return description->uri.getCString();
}

// The loop into separate output buffers, block after block, from the start again at its end.
void processLoop(benchmark::State& state, LV2BenchHost::Effect& effect, int blockSize)
{
    const DemoDrumLoop& loop = demoLoop();
    std::vector<float> left(static_cast<std::size_t>(blockSize)), right(static_cast<std::size_t>(blockSize));
    int position = 0;
    for (auto _ : state)
    {
        if (position + blockSize > DemoDrumLoop::frameCount)
            position = 0;
        effect.process(&loop.left()[position], &loop.right()[position], left.data(), right.data(), blockSize);
        position += blockSize;
        benchmark::ClobberMemory();
    }
}

std::string benchmarkName(const Shaper& shaper, int blockSize)
{
    return shaper.label + "/" + std::to_string(blockSize);
}

// Nanoseconds per stereo frame of a shaper at a block size, 0 when its benchmark did not run.
double perFrame(const SummaryReporter& reporter, const Shaper& shaper, int blockSize)
{
    return reporter.cpuTime(benchmarkName(shaper, blockSize), "min") / blockSize;
}

std::string summary(const std::vector<Shaper>& shapers, const SummaryReporter& reporter)
{
    char text[256];
    const Shaper& kelvane = shapers[0];
    const Shaper& withoutMeters = shapers[1];
    std::snprintf(text, sizeof text, "lv2: ns/stereo frame @64/@512: %s %.2f/%.2f (without meters %.2f/%.2f)",
                  kelvane.label.c_str(), perFrame(reporter, kelvane, 64), perFrame(reporter, kelvane, 512),
                  perFrame(reporter, withoutMeters, 64), perFrame(reporter, withoutMeters, 512));
    std::string line = text;
    for (std::size_t index = 2; index < shapers.size(); ++index)
    {
        const Shaper& other = shapers[index];
        if (other.effect == nullptr)
        {
            line += "; " + other.label + " MISSING (" + other.failure + ")";
            continue;
        }
        const double small = perFrame(reporter, other, 64), large = perFrame(reporter, other, 512);
        std::snprintf(text, sizeof text, "; %s %.2f/%.2f (Kelvane/it %.2f/%.2f)", other.label.c_str(), small, large,
                      small > 0.0 ? perFrame(reporter, kelvane, 64) / small : 0.0,
                      large > 0.0 ? perFrame(reporter, kelvane, 512) / large : 0.0);
        line += text;
    }
    return line;
}
}  // namespace

int main(int argc, char** argv)
{
    if (!initialiseInterleaved(argc, argv))
        return 1;

    // The host outlives the effects it makes. Kelvane first, with its meters and without: the
    // ratios are its time with them over each other's.
    LV2BenchHost host(KELVANE_LV2_BUNDLE_FOLDER);
    const std::vector<std::pair<std::string, float>> kelvaneSettings = {{"attack", 60.0f}, {"release", -20.0f}};
    std::vector<Shaper> shapers;
    shapers.push_back({"Kelvane", kelvaneUri(), kelvaneSettings, true, nullptr, ""});
    shapers.push_back({"Kelvane without meters", kelvaneUri(), kelvaneSettings, false, nullptr, ""});
    shapers.push_back({"mda-lv2 Transient", "http://drobilla.net/plugins/mda/Transient",
                       {{"attack", 0.8f}, {"release", 0.4f}}, true, nullptr, ""});
    shapers.push_back({"swh-lv2 Transient mangler", "http://plugin.org.uk/swh-plugins/transient",
                       {{"attack", 0.6f}, {"sustain", -0.2f}}, true, nullptr, ""});
    shapers.push_back({"calf TransientDesigner", "http://calf.sourceforge.net/plugins/TransientDesigner",
                       {{"attack_boost", 0.6f}, {"release_boost", -0.2f}}, true, nullptr, ""});

    const int largest = *std::max_element(std::begin(blockSizes), std::end(blockSizes));
    for (Shaper& shaper : shapers)
    {
        shaper.effect = host.makeEffect(shaper.uri, largest, shaper.settings, shaper.withMeters, shaper.failure);
        if (shaper.effect == nullptr)
        {
            std::fprintf(stderr, "lv2-bench: %s (%s): %s\n", shaper.label.c_str(), shaper.uri.c_str(),
                         shaper.failure.c_str());
            continue;
        }
        for (const int blockSize : blockSizes)
            benchmark::RegisterBenchmark(benchmarkName(shaper, blockSize).c_str(),
                                         [&shaper, blockSize](benchmark::State& state) {
                                             processLoop(state, *shaper.effect, blockSize);
                                         })
                ->Repetitions(10)
                ->MinTime(0.1)
                ->ReportAggregatesOnly(true)
                ->ComputeStatistics("min", fastest);
    }

    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    if (shapers[0].effect == nullptr || shapers[1].effect == nullptr)
    {
        std::printf("lv2: Kelvane's LV2 build did not load (%s)\n", shapers.front().failure.c_str());
        return 1;
    }
    std::printf("%s\n", summary(shapers, reporter).c_str());
    return 0;
}
