// Scaling filters: the half-band halving of getHalfSize, the box halving of opaque buffers and
// the nearest-neighbour resampler.
#include "media/image/Image.h"

#include "media/image/InternalImage.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace q1framework
{

namespace
{
// The half-band filter: taps at offsets -3, -1, 0, 1, 3 from the even source position 2j.
constexpr int tapCount = 5;
constexpr int tapOffsets[tapCount] = {-3, -1, 0, 1, 3};
constexpr int16_t tapWeights[tapCount] = {-910, 9648, 17164, 9648, -910};
// The filter reads this many pixels beyond the picture on each side.
constexpr int filterReach = 3;

// One tap in 16-bit lanes: the value scaled by 16, times the weight, keeping the high 16 bits of
// the product (an arithmetic shift, so negative products round towards minus infinity).
inline int16_t weighTap(uint8_t value, int16_t weight)
{
    return static_cast<int16_t>((static_cast<int32_t>(value << 4) * weight) >> 16);
}

// The filter's output for one channel: five taps step bytes apart around centre.
inline uint8_t filterAt(const uint8_t* centre, ptrdiff_t step)
{
    int16_t sum = 0;
    for (int tap = 0; tap < tapCount; ++tap)
        sum = static_cast<int16_t>(sum + weighTap(centre[tapOffsets[tap] * step], tapWeights[tap]));
    return static_cast<uint8_t>(std::clamp(sum >> 3, 0, 255));
}
}

Image Image::getHalfSize() const
{
    if (isEmpty() || internal->pixels == nullptr || internal->width < 2 || internal->height < 2)
        return Image();
    // The taps reach three pixels past the edge; a source with a narrower margin is read from a
    // copy that has the full one.
    Image source(*this);
    if (source.getMargin() < filterReach)
        source.setMargin(defaultMargin);

    const int halfWidth = internal->width / 2;
    const int height = internal->height;
    Image horizontal(halfWidth, height, false, defaultMargin);
    Image result(halfWidth, height / 2, false, defaultMargin);
    if (horizontal.isEmpty() || result.isEmpty())
        return Image();

    for (int y = 0; y < height; ++y)
    {
        const uint8_t* line = source.getLine(static_cast<unsigned>(y));
        uint8_t* output = horizontal.getLine(static_cast<unsigned>(y));
        for (int x = 0; x < halfWidth; ++x)
            for (int channel = 0; channel < 4; ++channel)
                output[x * 4 + channel] = filterAt(line + x * 8 + channel, 4);
    }
    const ptrdiff_t lineStep = horizontal.getStride();
    for (int y = 0; y < height / 2; ++y)
    {
        const uint8_t* centre = horizontal.getLine(static_cast<unsigned>(2 * y));
        uint8_t* output = result.getLine(static_cast<unsigned>(y));
        for (int byte = 0; byte < halfWidth * 4; ++byte)
            output[byte] = filterAt(centre + byte, lineStep);
    }
    return result;
}

void Image::boxHalve(uint8_t* pixels, int width, int height, int stride)
{
    if (pixels == nullptr)
        return;
    // Output (x, y) lies at or before every input it reads, so the work can go in place.
    for (int y = 0; y < height / 2; ++y)
    {
        const uint8_t* upper = pixels + static_cast<ptrdiff_t>(2 * y) * stride;
        const uint8_t* lower = upper + stride;
        uint8_t* output = pixels + static_cast<ptrdiff_t>(y) * stride;
        for (int x = 0; x < width / 2; ++x)
        {
            uint8_t pixel[4];
            for (int channel = 0; channel < 3; ++channel)
            {
                const int sum = upper[x * 8 + channel] + upper[x * 8 + 4 + channel] + lower[x * 8 + channel]
                                + lower[x * 8 + 4 + channel];
                pixel[channel] = static_cast<uint8_t>(sum >> 2);
            }
            pixel[3] = 255;
            std::memcpy(output + x * 4, pixel, 4);
        }
    }
}

void Image::resampleNearest(const uint8_t* source, int sourceWidth, int sourceHeight, int sourceStride,
                            uint8_t* target, int targetWidth, int targetHeight, int targetStride)
{
    if (source == nullptr || target == nullptr || sourceWidth < 1 || sourceHeight < 1 || targetWidth < 1
        || targetHeight < 1)
        return;
    // 64 bits: a source 32768 or more times wider than the target has a step of 2^31 or more.
    const auto columnStep = static_cast<int64_t>(static_cast<float>(sourceWidth) / static_cast<float>(targetWidth) * 65536.0f);
    const float lineRatio = static_cast<float>(sourceHeight) / static_cast<float>(targetHeight);
    for (int y = 0; y < targetHeight; ++y)
    {
        const int sourceLine = std::min(static_cast<int>(static_cast<float>(y) * lineRatio), sourceHeight - 1);
        const uint8_t* line = source + static_cast<ptrdiff_t>(sourceLine) * sourceStride;
        uint8_t* output = target + static_cast<ptrdiff_t>(y) * targetStride;
        int64_t column = 0;  // 16.16
        for (int x = 0; x < targetWidth; ++x, column += columnStep)
            std::memcpy(output + x * 4, line + static_cast<ptrdiff_t>(column >> 16) * 4, 4);
    }
}

}  // namespace q1framework
