// One frame of the toolkit the scaled way: a 1500 x 350 tree of 200 controls (knobs, sliders,
// toggles and buttons drawn by the default look) in a window of 1100 x 257 of the null backend,
// with one knob changed per frame. A frame is the frame loop's tick: the tick walk, the paint of
// the dirty part of the tree into its surface in memory, the scaled blit of the changed part into
// the window's surface, and the put into the window's screen in memory. Median processor time of
// repeated runs; then the heap allocations of the frames after the first, which must be none.
// Ends with one line:
//   ui: frame F ms, allocations per frame N

#include "AllocationCounter.h"

#include "native/null/NullWindowPeer.h"
#include "native/window/WindowFlags.h"
#include "render/graphics/SoftwareGraphics.h"
#include "ui/component/Component.h"
#include "ui/controls/Button.h"
#include "ui/controls/Knob.h"
#include "ui/controls/Slider.h"
#include "ui/controls/ToggleButton.h"
#include "ui/lookandfeel/LookAndFeel.h"
#include "ui/window/ComponentsWindow.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

using namespace q1framework;

namespace
{
constexpr int treeWidth = 1500;
constexpr int treeHeight = 350;
constexpr int windowWidth = 1100;
constexpr int windowHeight = 257;
constexpr int columns = 20;
constexpr int rows = 10;  // 200 controls, one per cell of 75 x 35

// The panel behind the controls: the palette's background, opaque.
class Panel : public Component
{
public:
    Panel() { setOpaque(true); }
    void paint(SoftwareGraphics& graphics) override
    {
        Colour background = getLookAndFeel()->getColour(LookAndFeel::backgroundColourId);
        graphics.fillAll(background, false);
    }
};

Component* makeControl(int index)
{
    switch (index % 4)
    {
    case 0:
    {
        auto* knob = new Knob();
        knob->setValue((index % 7) / 7.0, false);
        return knob;
    }
    case 1:
    {
        auto* slider = new Slider();
        slider->setValue((index % 5) / 5.0, false);
        return slider;
    }
    case 2:
    {
        auto* toggle = new ToggleButton(String("Mute"));
        toggle->setOn(index % 3 == 0, false);
        return toggle;
    }
    default:
        return new Button(String("Solo"));
    }
}

// The window and its tree, with the knob that changes in every frame.
class ScaledEditor
{
public:
    ScaledEditor()
        : window(Rectangle(0, 0, windowWidth, windowHeight), WindowFlags::imageSurface | WindowFlags::scaledContent,
                 String(), this)
    {
        auto* panel = new Panel();
        panel->setBounds(Rectangle(0, 0, treeWidth, treeHeight), false);
        const int cellWidth = treeWidth / columns;
        const int cellHeight = treeHeight / rows;
        for (int index = 0; index < columns * rows; ++index)
        {
            Component* control = makeControl(index);
            const Rectangle cell((index % columns) * cellWidth, (index / columns) * cellHeight, cellWidth, cellHeight);
            control->setBounds(Rectangle(cell.x + 4, cell.y + 2, index % 4 == 0 ? 30 : cell.w - 8, 30), false);
            panel->addAndMakeVisible(control);
            if (index == 84)
                changing = control;
        }
        window.setContent(panel, true);
        peer = NullWindowPeer::of(window);
        peer->injectResize(Point(windowWidth, windowHeight));
    }

    // One frame with the knob at a new value.
    void frame()
    {
        value = value > 0.9 ? 0.0 : value + 0.05;
        changing->setValue(value, true);
        Window::runFrame();
        peer->clearInvalidated();
    }

    int getPresentCount() const { return peer->getPresentCount(); }

private:
    ComponentsWindow window;
    NullWindowPeer* peer = nullptr;
    Component* changing = nullptr;
    double value = 0.0;
};

void scaledFrame(benchmark::State& state)
{
    ScaledEditor editor;
    editor.frame();
    editor.frame();
    for (auto _ : state)
        editor.frame();
    state.counters["presents"] = editor.getPresentCount();
}

BENCHMARK(scaledFrame)->Unit(benchmark::kMillisecond)->MinTime(0.5)->Repetitions(9)->ReportAggregatesOnly(true);

// Allocations per frame over frames after the first, in a tree of its own.
double measureAllocations()
{
    constexpr int frames = 200;
    ScaledEditor editor;
    editor.frame();
    AllocationCounter::start();
    for (int frame = 0; frame < frames; ++frame)
        editor.frame();
    return static_cast<double>(AllocationCounter::stop()) / frames;
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
    const double frame = reporter.cpuTime("scaledFrame", "median");
    if (frame <= 0.0)
        return 0;  // filtered runs: no summary
    const double allocations = measureAllocations();
    std::printf("ui: frame %.3f ms, allocations per frame %g\n", frame, allocations);
    return 0;
}
