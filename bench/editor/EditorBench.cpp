// Kelvane's editor open in a host at 1100 x 257 while the demo drum loop plays through the
// plug-in, so that the needles and the drive lamp move: the CPU time of the host's process per
// idle call, at a host's idle rate of 50 Hz, as a share of one core. Once through GL (Mesa's
// software GL, whose worker threads count too) and once through the X image put (MIT-SHM); the X
// server's own work is not counted. Each idle follows 20 ms of audio processed on the same
// thread (about 0.05 % of a core of the figure). Then the heap allocations of the editor's frames
// once the editor has drawn and sized everything: the framework's own, and those inside the X
// and GL libraries. Ends with one line:
//   editor: cpu ximage X %, gl G % at 1100x257

#include "FrameAllocations.h"
#include "XvfbServer.h"

#include "dsp/DemoDrumLoop.h"
#include "host/KelvaneServices.h"
#include "host/PluginEntry.h"
#include "host/VST2Wrapper.h"
#include "media/resource/ResourcePack.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLParameters.h"

#include <X11/Xlib.h>
#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace q1framework;

namespace
{
constexpr int editorWidth = 1100;
constexpr int editorHeight = 257;
constexpr int idleRate = 50;
constexpr int sampleRate = 44100;
constexpr int framesPerIdle = sampleRate / idleRate;

VstIntPtr hostCallback(AEffect*, VstInt32 opcode, VstInt32, VstIntPtr, void*, float)
{
    return opcode == audioMasterVersion ? kVstVersion : 0;
}

String packPath(const String& name)
{
    return String(KELVANE_BUNDLE_FOLDER "/") + name;
}

// A host with the editor open in a top-level window of its own, on the X server of DISPLAY,
// playing the demo loop with Drive at 60 %, so that the lamp glows too.
class EditorHost
{
public:
    EditorHost() : loop(sampleRate), left(framesPerIdle), right(framesPerIdle)
    {
        display = XOpenDisplay(nullptr);
        window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, editorWidth, editorHeight, 0, 0, 0);
        XMapWindow(display, window);
        XSync(display, False);
        effect = createEffectForHost(&hostCallback);
        dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(sampleRate));
        dispatch(effSetBlockSize, 0, framesPerIdle);
        dispatch(effMainsChanged, 0, 1);
        effect->setParameter(effect, KLParameters::drive, 0.6f);
        auto* wrapper = static_cast<VST2Wrapper*>(static_cast<AudioEffect*>(effect->object));
        static_cast<KLAudioPlugin*>(wrapper->getPlugin())->setEditorSize(editorWidth, editorHeight);
        opened = dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(static_cast<uintptr_t>(window))) == 1;
    }

    ~EditorHost()
    {
        dispatch(effEditClose);
        dispatch(effClose);
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }

    bool isOpen() const { return opened; }

    // 20 ms of the loop through the plug-in, then the host's idle call when it is due.
    void idle()
    {
        for (int frame = 0; frame < framesPerIdle; ++frame)
        {
            left[static_cast<size_t>(frame)] = loop.left()[position];
            right[static_cast<size_t>(frame)] = loop.right()[position];
            position = (position + 1) % loop.left().size();
        }
        float* channels[2] = {left.data(), right.data()};
        effect->processReplacing(effect, channels, channels, framesPerIdle);
        due += std::chrono::microseconds(1000000 / idleRate);
        std::this_thread::sleep_until(due);
        dispatch(effEditIdle);
    }

    void startClock() { due = std::chrono::steady_clock::now(); }

private:
    VstIntPtr dispatch(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* pointer = nullptr,
                       float opt = 0.0f)
    {
        return effect->dispatcher(effect, opcode, index, value, pointer, opt);
    }

    DemoDrumLoop loop;
    std::vector<float> left;
    std::vector<float> right;
    size_t position = 0;
    Display* display = nullptr;
    ::Window window = 0;
    AEffect* effect = nullptr;
    bool opened = false;
    std::chrono::steady_clock::time_point due;
};

// The servers, by path: with GLX for GL, without it for the image put.
std::map<std::string, std::unique_ptr<XvfbServer>> servers;

void useServer(const std::string& path)
{
    setenv("DISPLAY", servers.at(path)->getDisplayName().c_str(), 1);
}

void openEditor(benchmark::State& state, const std::string& path)
{
    useServer(path);
    EditorHost host;
    if (!host.isOpen())
    {
        state.SkipWithError("the editor did not open");
        return;
    }
    host.startClock();
    // The first frames draw everything and make the textures.
    for (int warmUp = 0; warmUp < idleRate; ++warmUp)
        host.idle();
    for (auto _ : state)
        host.idle();
}

void editorGL(benchmark::State& state)
{
    openEditor(state, "gl");
}

void editorXImage(benchmark::State& state)
{
    openEditor(state, "ximage");
}

void settings(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->Iterations(5 * idleRate)
        ->Repetitions(3)->ReportAggregatesOnly(true);
}

BENCHMARK(editorGL)->Apply(settings);
BENCHMARK(editorXImage)->Apply(settings);

// Allocations per idle after the warm-up, on one path, rounded up.
FrameAllocations::Counts allocationsPerIdle(const std::string& path)
{
    constexpr int idles = 100;
    useServer(path);
    EditorHost host;
    host.startClock();
    for (int warmUp = 0; warmUp < idleRate; ++warmUp)
        host.idle();
    FrameAllocations::Counts total;
    for (int idle = 0; idle < idles; ++idle)
    {
        FrameAllocations::start();
        host.idle();
        const FrameAllocations::Counts counts = FrameAllocations::stop();
        total.framework += counts.framework;
        total.libraries += counts.libraries;
    }
    total.framework = (total.framework + idles - 1) / idles;
    total.libraries = (total.libraries + idles - 1) / idles;
    return total;
}

// The median CPU share of one core of a benchmark, in per cent: processor time over real time per
// iteration; -1 when it did not run.
double cpuShare(const SummaryReporter& reporter, const std::string& function)
{
    const double real = reporter.realTime(function, "median");
    return real > 0.0 ? 100.0 * reporter.cpuTime(function, "median") / real : -1.0;
}
}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    servers["gl"] = std::make_unique<XvfbServer>();
    servers["ximage"] = std::make_unique<XvfbServer>(std::vector<std::string>{"-extension", "GLX"});
    for (const auto& server : servers)
        if (!server.second->isRunning())
        {
            std::fprintf(stderr, "editor-bench: Xvfb did not start (scripts/install-deps.sh installs it)\n");
            return 1;
        }
    KelvaneServices::registerAll();
    ResourcePack::setResourcePathFunction(&packPath);

    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    const double gl = cpuShare(reporter, "editorGL");
    const double image = cpuShare(reporter, "editorXImage");
    if (gl < 0.0 || image < 0.0)
        return 0;  // filtered runs: no summary
    const FrameAllocations::Counts imageAllocations = allocationsPerIdle("ximage");
    const FrameAllocations::Counts glAllocations = allocationsPerIdle("gl");
    std::printf("host idle rate %d Hz, the demo loop playing; target: ximage under 5 %% of a core %s\n", idleRate,
                image < 5.0 ? "met" : "MISSED");
    std::printf("allocations per idle after the first second: framework ximage %ld, gl %ld; inside the X and GL "
                "libraries ximage %ld, gl %ld\n",
                imageAllocations.framework, glAllocations.framework, imageAllocations.libraries,
                glAllocations.libraries);
    std::printf("editor: cpu ximage %.1f %%, gl %.1f %% at %dx%d\n", image, gl, editorWidth, editorHeight);
    return 0;
}
