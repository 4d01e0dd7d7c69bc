#include "render/effects/BoxBlur.h"

#include <cstddef>
#include <vector>

namespace q1framework
{

namespace
{
constexpr int channels = FloatImage::channels;

// Line y of target from line y of source: output x is the mean of source pixels x - half to
// x - half + span - 1.
void blurAcross(const FloatImage& source, FloatImage& target, int y, int span)
{
    const float* window = source.getPixel(-(span / 2), y);
    double sums[channels] = {};
    for (int index = 0; index < span * channels; ++index)
        sums[index % channels] += window[index];
    float* output = target.getPixel(0, y);
    for (int x = 0;; ++x, window += channels, output += channels)
    {
        for (int channel = 0; channel < channels; ++channel)
            output[channel] = static_cast<float>(sums[channel] / span);
        if (x + 1 == source.getWidth())
            return;  // the window must not move past the margin
        for (int channel = 0; channel < channels; ++channel)
            sums[channel] += static_cast<double>(window[span * channels + channel]) - window[channel];
    }
}

// Every line of target from source down the columns, one running sum per channel of a line.
void blurDown(const FloatImage& source, FloatImage& target, int span, std::vector<double>& sums)
{
    const int half = span / 2;
    const size_t count = static_cast<size_t>(source.getWidth()) * channels;
    for (int row = 0; row < span; ++row)
    {
        const float* line = source.getPixel(0, row - half);
        for (size_t index = 0; index < count; ++index)
            sums[index] += line[index];
    }
    for (int y = 0;; ++y)
    {
        float* output = target.getPixel(0, y);
        for (size_t index = 0; index < count; ++index)
            output[index] = static_cast<float>(sums[index] / span);
        if (y + 1 == source.getHeight())
            return;  // the window must not move past the margin
        const float* leaving = source.getPixel(0, y - half);
        const float* entering = source.getPixel(0, y - half + span);
        for (size_t index = 0; index < count; ++index)
            sums[index] += static_cast<double>(entering[index]) - leaving[index];
    }
}
}

FloatImage boxBlur(FloatImage& source, int span)
{
    if (source.isEmpty() || span < 1)
        return FloatImage();
    const int half = span / 2;
    if (source.getMargin() < half && !source.setMargin(half))
        return FloatImage();
    FloatImage across(source.getWidth(), source.getHeight(), half);
    FloatImage result(source.getWidth(), source.getHeight(), half);
    if (across.isEmpty() || result.isEmpty())
        return FloatImage();
    for (int y = 0; y < source.getHeight(); ++y)
        blurAcross(source, across, y, span);
    std::vector<double> sums(static_cast<size_t>(source.getWidth()) * channels, 0.0);
    blurDown(across, result, span, sums);
    return result;
}

}  // namespace q1framework
