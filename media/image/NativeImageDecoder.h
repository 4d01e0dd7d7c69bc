#pragma once

#include "media/image/Image.h"

#include <cstdint>

namespace q1framework
{

// The platform's picture decoders behind Image::decode; each platform supplies decode in a
// source file of its own.
class NativeImageDecoder
{
public:
    enum Format
    {
        png = 0,
        jpeg = 1,
        // Anything else: no decoder on this platform, the result is empty.
    };

    // Larger pictures are refused before anything is allocated for them.
    static constexpr int maximumSide = 32768;
    static constexpr int64_t maximumPixels = int64_t(1) << 26;

    // The picture in size bytes of the given format, premultiplied, in the framework's pixel
    // order, margin 16; the null handle when the bytes do not decode.
    static Image decode(const void* data, unsigned size, int format);

    // Whether a decoded picture of this size is accepted.
    static bool isAcceptedSize(int64_t width, int64_t height)
    {
        return width >= 1 && height >= 1 && width <= maximumSide && height <= maximumSide
               && width * height <= maximumPixels;
    }

    // In place on one decoded line of count pixels in the order blue, green, red, alpha with
    // straight colour: each colour channel becomes channel * alpha / 255, rounded to nearest.
    static void premultiplyLine(uint8_t* pixels, int count);
};

}  // namespace q1framework
