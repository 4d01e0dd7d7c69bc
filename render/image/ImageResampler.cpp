#include "render/image/ImageResampler.h"

#include "render/image/ResamplingFilter.h"
#include "render/kernels/PixelKernels.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
// The source margin lets the horizontal pass read past the picture without a test: half of the
// largest tap count, with the padding taps (coefficient 0) reaching into the next line's margin.
static_assert(ImageResampler::requiredSourceMargin == ResamplingFilter::maximumTaps / 2);
// Source lines computed beyond those under a rectangle, for the vertical taps.
constexpr int lineReach = 17;

// The horizontal taps are padded to a multiple of 4 for the vector kernels.
int padTaps(int taps)
{
    return (taps + 3) & ~3;
}

struct Passes
{
    const Image& source;
    Image& intermediate;
    Image& destination;
    const ResamplingFilter& across;
    const ResamplingFilter& down;
    const PixelKernels& kernels;
    std::vector<int32_t>& starts;
    std::vector<int16_t>& coefficients;

    void resampleRectangle(const Rectangle& area)
    {
        // Pairs of columns: an odd width also computes the column to its right.
        const int columns = (area.w + 1) / 2 * 2;
        const int horizontalTaps = padTaps(across.getTaps());
        across.computeRun(area.x, columns, horizontalTaps, 4, starts, coefficients);
        const float scaleY = down.getScale();
        const int firstLine = std::max(static_cast<int>(area.y * scaleY) - lineReach, 0);
        const int lastLine = std::min(static_cast<int>(area.getBottom() * scaleY) + lineReach, source.getHeight() - 1);
        for (int line = firstLine; line <= lastLine; ++line)
            kernels.filterLine(source.getLine(static_cast<unsigned>(line)),
                               intermediate.getPixelPointer(area.x, line), columns, starts.data(),
                               coefficients.data(), horizontalTaps);

        const int verticalTaps = down.getTaps();
        down.computeRun(area.y, area.h, verticalTaps, 1, starts, coefficients);
        const bool roomForPair = area.x + columns <= destination.getWidth() + destination.getMargin();
        const int written = roomForPair ? columns : area.w;
        for (int row = 0; row < area.h; ++row)
            kernels.filterColumns(intermediate.getPixelPointer(area.x, starts[static_cast<size_t>(row)]),
                                  intermediate.getStride(), destination.getPixelPointer(area.x, area.y + row), written,
                                  coefficients.data() + static_cast<size_t>(row) * verticalTaps, verticalTaps);
    }
};
}  // namespace

Image ImageResampler::resample(const Image& source, Image& destination, const Rectangle* rectangles, int count,
                               int quality)
{
    if (source.isEmpty() || source.getData() == nullptr || destination.getWidth() < 1
        || destination.getHeight() < 1 || destination.getData() == nullptr)
        return Image();
    if (count < 1 || rectangles == nullptr)
        return destination;
    Image readable(source);
    if (readable.getMargin() < requiredSourceMargin)
        readable.setMargin(Image::defaultMargin);
    const Point intermediateSize(destination.getWidth(), source.getHeight());
    if (intermediate.getSize() != intermediateSize)
        intermediate = Image(intermediateSize, false, Image::defaultMargin);
    if (readable.isEmpty() || intermediate.isEmpty())
        return destination;
    const ResamplingFilter across(source.getWidth(), destination.getWidth(), quality);
    const ResamplingFilter down(source.getHeight(), destination.getHeight(), quality);
    Passes passes{readable, intermediate, destination, across, down, PixelKernels::getBest(), starts, coefficients};
    for (int index = 0; index < count; ++index)
    {
        const Rectangle area = rectangles[index].getIntersection(destination.getBounds());
        if (!area.isEmpty())
            passes.resampleRectangle(area);
    }
    return destination;
}

namespace
{
// Along one axis: the output positions whose taps read any of the source pixels first to last
// (excluded). Output p reads from trunc(p * scale) - taps / 2 over taps pixels, so it reads the
// range when trunc(p * scale) lies in [first - taps / 2 + 1, last + taps / 2 - 1]; one more
// position on each side covers the float steps of the position.
void reachAlong(int first, int last, int sourceSize, int destinationSize, int quality, int& from, int& to)
{
    const ResamplingFilter filter(sourceSize, destinationSize, quality);
    const double scale = filter.getScale();
    const int half = filter.getTaps() / 2;
    from = static_cast<int>(std::floor((first - half + 1) / scale)) - 1;
    to = static_cast<int>(std::ceil((last + half) / scale)) + 1;
}
}  // namespace

Rectangle ImageResampler::getReachedArea(const Rectangle& sourceArea, const Point& sourceSize,
                                         const Point& destinationSize, int quality)
{
    if (sourceArea.isEmpty() || sourceSize.x < 1 || sourceSize.y < 1 || destinationSize.x < 1 || destinationSize.y < 1)
        return Rectangle(sourceArea.getPosition(), Point());
    int left = 0, right = 0, top = 0, bottom = 0;
    reachAlong(sourceArea.x, sourceArea.getRight(), sourceSize.x, destinationSize.x, quality, left, right);
    reachAlong(sourceArea.y, sourceArea.getBottom(), sourceSize.y, destinationSize.y, quality, top, bottom);
    return Rectangle(left, top, right - left, bottom - top);
}

}  // namespace q1framework
