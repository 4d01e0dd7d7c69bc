// Presenting the editor's frame on X11, through GL (Mesa's software GL) and through the X image
// surface (MIT-SHM): a 1500 x 350 window with one dirty knob-sized rectangle per frame, run by
// the frame loop as the host's idle runs it. Real time per frame, the whole process's CPU time
// per frame (GL's worker threads included, the X server's not) as a share of one core at 60
// frames a second, and the heap allocations of the frame's thread per frame after the first:
// the framework's own (the figure of the last line), and, on a line of their own, those that
// the X and GL libraries make inside their calls.
// Runs on an Xvfb of its own. Ends with one line:
//   present: gl G ms, ximage X ms per frame; cpu at 60 fps gl A %, ximage B %; allocations per frame N

#include "FrameAllocations.h"
#include "XvfbServer.h"

#include "native/window/Window.h"
#include "native/window/WindowFlags.h"
#include "native/x11/X11Connection.h"
#include "render/context/RenderingContext.h"
#include "render/surface/Surface.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

using namespace q1framework;

namespace
{
constexpr int frameWidth = 1500;
constexpr int frameHeight = 350;
constexpr int knobSide = 90;

// The editor's window as the toolkit draws it: the whole surface painted once, then per frame
// one knob repainted in software and its rectangle presented.
class EditorWindow : public q1framework::Window
{
public:
    EditorWindow(int flags, ::Window host)
        : q1framework::Window(Rectangle(0, 0, frameWidth, frameHeight), flags, String(),
                 reinterpret_cast<void*>(static_cast<uintptr_t>(host)))
    {
        RenderingContext* context = getRenderingContext();
        surface.reset(Surface::create(context, context != nullptr ? Surface::openGLKind : Surface::imageKind,
                                      getClientSize(), getImagePresenter()));
        paintKnob(Rectangle(0, 0, frameWidth, frameHeight));
        dirty.add(Rectangle(0, 0, frameWidth, frameHeight));
    }
    ~EditorWindow() override { surface.reset(); }

    void frameTick() override
    {
        // Without a rendering context the window paints what was invalidated.
        ++frame;
        invalidate(knob());
    }

    void paint() override
    {
        RenderingContext* context = getRenderingContext();
        paintKnob(knob());
        if (context != nullptr)
            context->beginFrame();
        surface->update(dirty, nullptr, nullptr);
        surface->present();
        if (context != nullptr)
            context->endFrame();
        dirty.clear();
        dirty.add(knob());
    }

    bool isReady() const { return surface != nullptr; }

private:
    // The knob of this frame: its place wanders, as needles and knobs move.
    Rectangle knob() const { return Rectangle(100 + (frame * 37) % 1200, 40 + (frame * 13) % 200, knobSide, knobSide); }

    void paintKnob(const Rectangle& area)
    {
        int stride = 0;
        uint8_t* pixels = surface->getPixels(&stride);
        const uint32_t colour = 0xff000000u | uint32_t(frame * 29 & 0xff) << 16 | 0x4080u;
        for (int y = area.y; y < area.getBottom(); ++y)
            for (int x = area.x; x < area.getRight(); ++x)
                std::memcpy(pixels + y * stride + x * 4, &colour, 4);
    }

    std::unique_ptr<Surface> surface;
    RectangleList dirty;
    int frame = 0;
};

// A host window on the benchmark's own display connection, and the editor inside it.
struct Host
{
    Display* display = XOpenDisplay(nullptr);
    ::Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, frameWidth, frameHeight, 0, 0, 0);
    std::unique_ptr<EditorWindow> editor;

    explicit Host(int flags)
    {
        XMapWindow(display, window);
        XSync(display, False);
        editor = std::make_unique<EditorWindow>(flags, window);
    }
    ~Host()
    {
        editor.reset();
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }
};

// One frame, as the host's idle runs it, through to the X server having taken it.
void runFrame()
{
    q1framework::Window::runFrame();
    XSync(X11Connection::get()->getDisplay(), False);
}

void present(benchmark::State& state, int flags)
{
    Host host(flags);
    if (!host.editor->isReady() || (flags == WindowFlags::openGL && host.editor->getRenderingContext() == nullptr))
    {
        state.SkipWithError("the window has no surface");
        return;
    }
    for (int warmUp = 0; warmUp < 10; ++warmUp)
        runFrame();
    for (auto _ : state)
        runFrame();
}

void presentGL(benchmark::State& state)
{
    present(state, WindowFlags::openGL);
}

void presentXImage(benchmark::State& state)
{
    present(state, WindowFlags::imageSurface);
}

void settings(benchmark::internal::Benchmark* benchmark)
{
    benchmark->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond)->MinTime(1.0)->Repetitions(5)
        ->ReportAggregatesOnly(true);
}

BENCHMARK(presentGL)->Apply(settings);
BENCHMARK(presentXImage)->Apply(settings);

// The heap allocations of the frame's thread per frame, after the first frames, over both paths:
// the framework's own, and those inside the X and GL libraries (replies, the driver's buffers).
FrameAllocations::Counts allocationsPerFrame()
{
    constexpr int frames = 50;
    FrameAllocations::Counts total;
    for (int flags : {WindowFlags::openGL, WindowFlags::imageSurface})
    {
        Host host(flags);
        runFrame();
        runFrame();
        for (int frame = 0; frame < frames; ++frame)
        {
            // The frame alone: the benchmark's wait for the server is not part of it.
            FrameAllocations::start();
            q1framework::Window::runFrame();
            const FrameAllocations::Counts counts = FrameAllocations::stop();
            total.framework += counts.framework;
            total.libraries += counts.libraries;
            XSync(X11Connection::get()->getDisplay(), False);
        }
    }
    // Rounded up, so that one allocation in all these frames still shows.
    total.framework = (total.framework + 2 * frames - 1) / (2 * frames);
    total.libraries = (total.libraries + 2 * frames - 1) / (2 * frames);
    return total;
}

// Median real and process CPU time per iteration of a benchmark, in milliseconds.
struct Times
{
    double realMs = 0.0;
    double cpuMs = 0.0;
};

Times timesOf(const SummaryReporter& reporter, const std::string& function)
{
    return {reporter.realTime(function, "median"), reporter.cpuTime(function, "median")};
}

const char* verdict(bool met)
{
    return met ? "met" : "MISSED";
}
}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    XvfbServer server;
    if (!server.isRunning())
    {
        std::fprintf(stderr, "present-bench: Xvfb did not start (scripts/install-deps.sh installs it)\n");
        return 1;
    }
    setenv("DISPLAY", server.getDisplayName().c_str(), 1);

    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    const Times gl = timesOf(reporter, "presentGL");
    const Times image = timesOf(reporter, "presentXImage");
    if (gl.realMs <= 0.0 || image.realMs <= 0.0)
        return 0;  // filtered runs: no summary
    const FrameAllocations::Counts allocations = allocationsPerFrame();
    // A core's share at 60 frames a second: CPU milliseconds per frame times 60, over 1000 ms.
    const double glShare = gl.cpuMs * 60.0 / 10.0;
    const double imageShare = image.cpuMs * 60.0 / 10.0;
    std::printf("targets: ximage < 0.5 ms %s, gl < 3 ms %s, framework allocations 0 %s\n",
                verdict(image.realMs < 0.5), verdict(gl.realMs < 3.0), verdict(allocations.framework == 0));
    std::printf("allocations per frame inside the X and GL libraries (not the framework's): %ld\n",
                allocations.libraries);
    std::printf("present: gl %.2f ms, ximage %.2f ms per frame; cpu at 60 fps gl %.1f %%, ximage %.1f %%; "
                "allocations per frame %ld\n",
                gl.realMs, image.realMs, glShare, imageShare, allocations.framework);
    return 0;
}
