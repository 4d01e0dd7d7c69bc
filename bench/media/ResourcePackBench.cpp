// Loading a resource pack of the size the editor's art reaches (about 30 MB: a 1500 x 350
// background and four film-strip knobs of 101 frames), against merely reading the same file's
// bytes into memory. The pack is made in a temporary folder of its own. Ends with one summary
// line:
//   media: pack load X ms, file read Y ms, load/read Z

#include "foundation/memory/FileStream.h"
#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "media/resource/ResourcePack.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using q1framework::FileStream;
using q1framework::Image;
using q1framework::ResourcePack;
using q1framework::String;

namespace
{
std::string& packFolder()
{
    static std::string folder;
    return folder;
}

String pathInPackFolder(const String& name)
{
    return String((packFolder() + "/").c_str()) + name;
}

// A picture with varied, deterministic pixels.
Image picture(int width, int height, unsigned seed)
{
    Image image(width, height, false);
    uint32_t state = seed;
    for (int y = 0; y < height; ++y)
    {
        uint8_t* line = image.getLine(static_cast<unsigned>(y));
        for (int byte = 0; byte < width * 4; ++byte)
        {
            state = state * 1664525u + 1013904223u;
            line[byte] = static_cast<uint8_t>(state >> 24);
        }
    }
    return image;
}

// Writes resources.bin into a new temporary folder; its size in bytes, 0 on failure.
int64_t makePack()
{
    const char* temporary = std::getenv("TMPDIR");
    std::string pattern = std::string(temporary != nullptr ? temporary : "/tmp") + "/media-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
        return 0;
    packFolder() = pattern;
    ResourcePack pack;
    pack.addImage("KL.0001.tif", picture(1500, 350, 1));
    // Knob strips: the knobs' frame sizes, 101 frames stacked.
    pack.addImage("slice_knbAttack", picture(127, 129 * 101, 2));
    pack.addImage("slice_knbDrive", picture(101, 106 * 101, 3));
    pack.addImage("slice_knbRelease", picture(123, 131 * 101, 4));
    pack.addImage("slice_knbGain", picture(96, 105 * 101, 5));
    FileStream file(pathInPackFolder("resources.bin"), FileStream::forWriting);
    if (!pack.write(file))
        return 0;
    return file.getPosition();
}

void removePack()
{
    if (packFolder().empty())
        return;
    std::remove((packFolder() + "/resources.bin").c_str());
    rmdir(packFolder().c_str());
}

void loadPack(benchmark::State& state)
{
    for (auto _ : state)
    {
        ResourcePack* pack = ResourcePack::loadResourcePack("resources.bin");
        if (pack == nullptr || pack->getNumResources() != 5)
        {
            state.SkipWithError("the pack did not load");
            delete pack;
            break;
        }
        benchmark::DoNotOptimize(pack);
        delete pack;
    }
}

// The same bytes into a fresh buffer, as one stdio read: what loading can at best approach.
void readFile(benchmark::State& state)
{
    const std::string path = packFolder() + "/resources.bin";
    for (auto _ : state)
    {
        FILE* file = std::fopen(path.c_str(), "rb");
        std::fseek(file, 0, SEEK_END);
        const long size = std::ftell(file);
        std::fseek(file, 0, SEEK_SET);
        void* bytes = std::malloc(static_cast<size_t>(size));
        const size_t read = std::fread(bytes, 1, static_cast<size_t>(size), file);
        std::fclose(file);
        benchmark::DoNotOptimize(bytes);
        std::free(bytes);
        if (read != static_cast<size_t>(size))
        {
            state.SkipWithError("short read");
            break;
        }
    }
}

BENCHMARK(loadPack)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(readFile)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

}

int main(int argc, char** argv)
{
    // Every large block comes fresh from the system, for the plain read as for the pack, as when
    // the plug-in loads its pack once. Left adaptive, the allocator keeps the plain read's one
    // buffer mapped between iterations (its threshold rises to that size) but not the pack's five
    // pictures, and the comparison would set page faults against none.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const int64_t packBytes = makePack();
    if (packBytes <= 0)
    {
        std::fprintf(stderr, "media-bench: cannot write the pack in %s\n", packFolder().c_str());
        removePack();
        return 1;
    }
    ResourcePack::setResourcePathFunction(pathInPackFolder);
    std::printf("pack: %.1f MB in %s\n", static_cast<double>(packBytes) / 1e6, packFolder().c_str());
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    removePack();

    const double load = reporter.realTime("loadPack", "median");
    const double read = reporter.realTime("readFile", "median");
    if (load <= 0.0 || read <= 0.0)
        return 0;  // filtered runs: no summary
    std::printf("target: load/read <= 1.5 (%s)\n", load / read <= 1.5 ? "met" : "MISSED");
    std::printf("media: pack load %.2f ms, file read %.2f ms, load/read %.2f\n", load, read, load / read);
    return 0;
}
