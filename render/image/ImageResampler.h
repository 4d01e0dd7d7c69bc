#pragma once

#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

#include <cstdint>
#include <vector>

namespace q1framework
{

// The resampler of resampleImage (see ImageScaling.h) with its working memory kept between
// calls: the intermediate picture and the filter runs. A window that scales the same tree size to
// the same window size on every frame keeps one of these, and after its first frame a call
// allocates nothing, provided the source has a margin of at least 16 pixels (a narrower one is
// read through a copy that has it, made on every call).
//
// Thread contract: main thread, like all image work; an object belongs to its caller.
class ImageResampler
{
public:
    ImageResampler() = default;

    ImageResampler(const ImageResampler&) = delete;
    ImageResampler& operator=(const ImageResampler&) = delete;

    // The same result as resampleImage with the same arguments.
    Image resample(const Image& source, Image& destination, const Rectangle* rectangles, int count, int quality);

    // The source margin read without a copy.
    static constexpr int requiredSourceMargin = 16;

    // The part of a destination of destinationSize that resampling from a source of sourceSize
    // (with quality as above) changes when the pixels of sourceArea change: the area scaled,
    // widened on every side by the filter's reach, in whole pixels. Not cut to the destination.
    static Rectangle getReachedArea(const Rectangle& sourceArea, const Point& sourceSize, const Point& destinationSize,
                                    int quality);

private:
    Image intermediate;                 // destination width by source height, margin 16
    std::vector<int32_t> starts;        // per output position, the first source pixel read
    std::vector<int16_t> coefficients;  // per output position, its taps
};

}  // namespace q1framework
