// The image effects of SoftwareGraphics on art of the editor's sizes: a knob-sized area (128 x 128)
// and a panel (400 x 200), each holding round opaque shapes with soft edges on transparency, the
// case the shadow and the glow are meant for. Every run starts from the same art (the copy is
// left out of the time), since each effect changes what the next one would read. Medians of
// repeated runs, processor time.
#include "media/image/Image.h"
#include "render/graphics/SoftwareGraphics.h"

#include <benchmark/benchmark.h>

#include <cstring>

using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
// Discs of about a third of the height, with room around them for the shadow and the glow.
Image makeArt(int width, int height)
{
    Image art(width, height, true);
    SoftwareGraphics painter(art);
    const float radius = static_cast<float>(height) / 3.0f;
    for (float centreX = radius + 16; centreX + radius + 16 <= static_cast<float>(width); centreX += 2 * radius + 24)
        painter.fillCircle(Colour(200, 190, 170, 255), centreX, static_cast<float>(height) / 2, radius);
    return art;
}

// Runs effect on a fresh copy of the art of state.range(0) by state.range(1) pixels.
template <typename Effect>
void runEffect(benchmark::State& state, Effect effect)
{
    const Image art = makeArt(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    Image target = art.duplicate();
    const size_t bytes = static_cast<size_t>(art.getHeight() + 2 * art.getMargin()) * art.getStride();
    for (auto _ : state)
    {
        state.PauseTiming();
        std::memcpy(target.getData(), art.getData(), bytes);
        state.ResumeTiming();
        SoftwareGraphics graphics(target);
        effect(graphics, target.getBounds());
        benchmark::ClobberMemory();
    }
}

void dropShadow(benchmark::State& state)
{
    runEffect(state, [](SoftwareGraphics& graphics, const Rectangle& area) {
        graphics.drawDropShadow(area, Colour(0, 0, 0, 180), Point(4, 4), 15);
    });
}

void glow(benchmark::State& state)
{
    runEffect(state, [](SoftwareGraphics& graphics, const Rectangle& area) {
        graphics.drawGlow(area, Colour(255, 160, 40, 220), 4);
    });
}

void blur(benchmark::State& state)
{
    runEffect(state, [](SoftwareGraphics& graphics, const Rectangle& area) { graphics.blurRect(area, 8); });
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Unit(benchmark::kMillisecond)->MinTime(0.2)->Repetitions(5)->ReportAggregatesOnly(true);
    benchmark->Args({128, 128})->Args({400, 200});
}
}

BENCHMARK(dropShadow)->Apply(sizes);
BENCHMARK(glow)->Apply(sizes);
BENCHMARK(blur)->Apply(sizes);

BENCHMARK_MAIN();
