// The software renderer against pixman on the editor's own sizes, in one run: a translucent solid
// fill (and, for information, an opaque one) and a premultiplied picture blended over a 1500 x 350
// surface, and a 1500 x 350 picture
// scaled to 1000 x 233 and to 1100 x 257 (ours: resampleImage with the window's tap count;
// pixman: its separable-convolution filter with a Lanczos-3 sampling kernel, which spans about as
// many source pixels as our taps at these scales). Medians of repeated runs, processor time.
// Ends with one line:
//   render: ours/pixman fill F, blend B, scale to 1000x233 S1, to 1100x257 S2; repaint R ms

#include "media/image/Image.h"
#include "render/graphics/SoftwareGraphics.h"
#include "render/image/ImageScaling.h"
#include "render/kernels/PixelKernels.h"

#include "BenchmarkSummary.h"

#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cstdio>
#include <string>

using q1framework::Colour;
using q1framework::Image;
using q1framework::PixelKernels;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
constexpr int surfaceWidth = 1500;
constexpr int surfaceHeight = 350;

Image makeSurface()
{
    Image surface(surfaceWidth, surfaceHeight, false);
    surface.fill(30, 40, 50, 255);
    return surface;
}

// Picture art as the editor has it: opaque areas, transparent areas and soft translucent edges
// between them, premultiplied.
const Image& picture()
{
    static const Image art = [] {
        Image image(surfaceWidth, surfaceHeight, true);
        for (int y = 0; y < surfaceHeight; ++y)
        {
            uint8_t* pixel = image.getLine(static_cast<unsigned>(y));
            for (int x = 0; x < surfaceWidth; ++x, pixel += 4)
            {
                const int wave = (x * 7 + y * 3) % 512;
                const int alpha = wave < 128 ? 255 : wave < 256 ? 0 : (wave - 256);
                pixel[0] = static_cast<uint8_t>((x & 255) * alpha / 255);
                pixel[1] = static_cast<uint8_t>((y & 255) * alpha / 255);
                pixel[2] = static_cast<uint8_t>(((x + y) & 255) * alpha / 255);
                pixel[3] = static_cast<uint8_t>(alpha);
            }
        }
        return image;
    }();
    return art;
}

// A pixman image over an Image's pixels (a8r8g8b8 is the same word, premultiplied alike).
class PixmanView
{
public:
    explicit PixmanView(const Image& image)
        : view(pixman_image_create_bits(PIXMAN_a8r8g8b8, image.getWidth(), image.getHeight(),
                                        reinterpret_cast<uint32_t*>(image.getPixelPointer(0, 0)), image.getStride()))
    {
    }
    ~PixmanView() { pixman_image_unref(view); }
    PixmanView(const PixmanView&) = delete;
    PixmanView& operator=(const PixmanView&) = delete;

    pixman_image_t* get() const { return view; }

private:
    pixman_image_t* view;
};

void fillOurs(benchmark::State& state)
{
    Image surface = makeSurface();
    SoftwareGraphics graphics(surface);
    for (auto _ : state)
    {
        Colour colour(220, 120, 40, 150);
        graphics.fillRect(Rectangle(0, 0, surfaceWidth, surfaceHeight), colour, true);
        benchmark::ClobberMemory();
    }
}

void fillPixman(benchmark::State& state)
{
    Image surface = makeSurface();
    PixmanView target(surface);
    const pixman_color_t colour = {0x8100, 0x4600, 0x1700, 0x9600};  // premultiplied, alpha 150
    const pixman_rectangle16_t whole = {0, 0, surfaceWidth, surfaceHeight};
    for (auto _ : state)
    {
        pixman_image_fill_rectangles(PIXMAN_OP_OVER, target.get(), &colour, 1, &whole);
        benchmark::ClobberMemory();
    }
}

void opaqueFillOurs(benchmark::State& state)
{
    Image surface = makeSurface();
    SoftwareGraphics graphics(surface);
    for (auto _ : state)
    {
        Colour colour(220, 120, 40, 255);
        graphics.fillRect(Rectangle(0, 0, surfaceWidth, surfaceHeight), colour, true);
        benchmark::ClobberMemory();
    }
}

void opaqueFillPixman(benchmark::State& state)
{
    Image surface = makeSurface();
    PixmanView target(surface);
    const pixman_color_t colour = {0xDC00, 0x7800, 0x2800, 0xFFFF};
    const pixman_rectangle16_t whole = {0, 0, surfaceWidth, surfaceHeight};
    for (auto _ : state)
    {
        pixman_image_fill_rectangles(PIXMAN_OP_SRC, target.get(), &colour, 1, &whole);
        benchmark::ClobberMemory();
    }
}

void blendOurs(benchmark::State& state)
{
    Image surface = makeSurface();
    SoftwareGraphics graphics(surface);
    for (auto _ : state)
    {
        graphics.drawImage(picture(), Point(0, 0), true, 255);
        benchmark::ClobberMemory();
    }
}

void blendPixman(benchmark::State& state)
{
    Image surface = makeSurface();
    PixmanView target(surface);
    PixmanView source(picture());
    for (auto _ : state)
    {
        pixman_image_composite32(PIXMAN_OP_OVER, source.get(), nullptr, target.get(), 0, 0, 0, 0, 0, 0, surfaceWidth,
                                 surfaceHeight);
        benchmark::ClobberMemory();
    }
}

// state.range(0), range(1): the target size.
void scaleOurs(benchmark::State& state)
{
    Image target(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), false);
    const Rectangle whole = target.getBounds();
    for (auto _ : state)
    {
        q1framework::resampleImage(picture(), target, &whole, 1, -1);
        benchmark::ClobberMemory();
    }
}

void scalePixman(benchmark::State& state)
{
    const int width = static_cast<int>(state.range(0));
    const int height = static_cast<int>(state.range(1));
    Image target(width, height, false);
    PixmanView destination(target);
    PixmanView source(picture());
    const double scaleX = static_cast<double>(surfaceWidth) / width;
    const double scaleY = static_cast<double>(surfaceHeight) / height;
    pixman_transform_t transform;
    pixman_transform_init_scale(&transform, pixman_double_to_fixed(scaleX), pixman_double_to_fixed(scaleY));
    pixman_image_set_transform(source.get(), &transform);
    int count = 0;
    pixman_fixed_t* parameters = pixman_filter_create_separable_convolution(
        &count, pixman_double_to_fixed(scaleX), pixman_double_to_fixed(scaleY), PIXMAN_KERNEL_IMPULSE,
        PIXMAN_KERNEL_IMPULSE, PIXMAN_KERNEL_LANCZOS3, PIXMAN_KERNEL_LANCZOS3, 4, 4);
    pixman_image_set_filter(source.get(), PIXMAN_FILTER_SEPARABLE_CONVOLUTION, parameters, count);
    free(parameters);
    for (auto _ : state)
    {
        pixman_image_composite32(PIXMAN_OP_SRC, source.get(), nullptr, destination.get(), 0, 0, 0, 0, 0, 0, width,
                                 height);
        benchmark::ClobberMemory();
    }
}

void settings(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Unit(benchmark::kMicrosecond)->MinTime(0.2)->Repetitions(9)->ReportAggregatesOnly(true);
}

void scaledSizes(benchmark::internal::Benchmark* benchmark)
{
    settings(benchmark);
    benchmark->Args({1000, 233})->Args({1100, 257});
}

BENCHMARK(fillOurs)->Apply(settings);
BENCHMARK(fillPixman)->Apply(settings);
BENCHMARK(opaqueFillOurs)->Apply(settings);
BENCHMARK(opaqueFillPixman)->Apply(settings);
BENCHMARK(blendOurs)->Apply(settings);
BENCHMARK(blendPixman)->Apply(settings);
BENCHMARK(scaleOurs)->Apply(scaledSizes);
BENCHMARK(scalePixman)->Apply(scaledSizes);

// The median processor time of a benchmark in microseconds, 0 when it did not run. Processor time
// rather than wall time: other work on the machine then lengthens neither side.
double median(const SummaryReporter& reporter, const std::string& function, const std::string& arguments = "")
{
    return reporter.cpuTime(function, "median", arguments);
}

double ratio(double ours, double theirs)
{
    return theirs > 0.0 ? ours / theirs : 0.0;
}

const char* verdict(bool met)
{
    return met ? "met" : "MISSED";
}
}

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    std::printf("kernels: %s; pixman %s\n", PixelKernels::getBest().name, pixman_version_string());
    SummaryReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    const double fill = ratio(median(reporter, "fillOurs"), median(reporter, "fillPixman"));
    const double opaqueFill = ratio(median(reporter, "opaqueFillOurs"), median(reporter, "opaqueFillPixman"));
    const double blend = ratio(median(reporter, "blendOurs"), median(reporter, "blendPixman"));
    const double repaint = median(reporter, "scaleOurs", "1100/257");
    const double scaleSmall =
        ratio(median(reporter, "scaleOurs", "1000/233"), median(reporter, "scalePixman", "1000/233"));
    const double scaleLarge = ratio(repaint, median(reporter, "scalePixman", "1100/257"));
    if (fill <= 0.0 || blend <= 0.0 || scaleSmall <= 0.0 || scaleLarge <= 0.0)
        return 0;  // filtered runs: no summary
    std::printf("ours/pixman: fill %.2f, blend %.2f (targets <= 1.0: %s, %s); scale to 1000x233 %.2f, "
                "to 1100x257 %.2f (targets <= 1.5: %s, %s)\n",
                fill, blend, verdict(fill <= 1.0), verdict(blend <= 1.0), scaleSmall, scaleLarge,
                verdict(scaleSmall <= 1.5), verdict(scaleLarge <= 1.5));
    std::printf("opaque fill (not a target): ours/pixman %.2f\n", opaqueFill);
    std::printf("scaled repaint 1500x350 to 1100x257: %.2f ms (target <= 4 ms: %s)\n", repaint / 1000.0,
                verdict(repaint <= 4000.0));
    std::printf("render: ours/pixman fill %.2f, blend %.2f, scale to 1000x233 %.2f, to 1100x257 %.2f; "
                "repaint %.2f ms\n",
                fill, blend, scaleSmall, scaleLarge, repaint / 1000.0);
    return 0;
}
