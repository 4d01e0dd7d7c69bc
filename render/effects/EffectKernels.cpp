#include "render/effects/EffectKernels.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace q1framework
{

namespace
{
// Every pixel of kernel becomes colour times the weight that weightAt gives for the distance of
// its centre from (centre, centre).
template <typename WeightAt>
void fillKernel(FloatImage& kernel, double centre, const Colour& colour, WeightAt weightAt)
{
    const FloatImage::Pixel premultiplied = FloatImage::premultiplied(colour);
    for (int y = 0; y < kernel.getHeight(); ++y)
    {
        float* pixel = kernel.getPixel(0, y);
        for (int x = 0; x < kernel.getWidth(); ++x, pixel += FloatImage::channels)
        {
            const auto weight = static_cast<float>(weightAt(std::hypot(x - centre, y - centre)));
            for (size_t channel = 0; channel < FloatImage::channels; ++channel)
                pixel[channel] = premultiplied[channel] * weight;
        }
    }
}
}

FloatImage makeDiscKernel(int radius, const Colour& colour)
{
    if (radius < 1 || radius > (std::numeric_limits<int>::max() - 1) / 2)
        return FloatImage();
    FloatImage kernel(2 * radius + 1, 2 * radius + 1, 0);
    fillKernel(kernel, radius, colour, [radius](double distance) {
        return distance <= radius ? 1.0 : std::max(radius + 1.0 - distance, 0.0);
    });
    return kernel;
}

FloatImage makePowerKernel(int size, float power, const Colour& colour)
{
    if (size < 1 || !(power >= 0.0f))
        return FloatImage();
    FloatImage kernel(size, size, 0);
    const double scale = 15.0 / (static_cast<double>(size) * size);
    fillKernel(kernel, (size - 1) / 2.0, colour, [size, power, scale](double distance) {
        const double base = 1.0 - 2.0 * distance / size;
        return base > 0.0 ? std::min(std::pow(base, static_cast<double>(power)) * scale, 1.0) : 0.0;
    });
    return kernel;
}

}  // namespace q1framework
