#pragma once

#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

#include <cstdint>
#include <vector>

namespace q1framework
{

// The windowed-sinc resampler of resampleImage (see ImageScaling.h) as an object that keeps its
// working memory, the intermediate picture and the coefficient tables, from one call to the next.
// A window that scales its tree every frame calls it with the same sizes each time and, once the
// tables have reached the largest rectangle, allocates nothing.
//
// Thread contract: main thread, like all image work; an object serves one caller at a time.
class ImageResampler
{
public:
    ImageResampler() = default;
    ImageResampler(const ImageResampler&) = delete;
    ImageResampler& operator=(const ImageResampler&) = delete;

    // resampleImage of source onto destination for the given rectangles, with the same results
    // and the same answers for empty input. A source with a margin below 16 pixels is read
    // through a copy that has one, which allocates.
    Image resample(const Image& source, Image& destination, const Rectangle* rectangles, int count, int quality);

    // The part of a destination of destinationSize that resampling from a source of sourceSize
    // (with quality as above) changes when the pixels of sourceArea change: the area scaled,
    // widened on every side by the filter's reach, in whole pixels. Not cut to the destination.
    static Rectangle getReachedArea(const Rectangle& sourceArea, const Point& sourceSize, const Point& destinationSize,
                                    int quality);

private:
    Image intermediate;                 // destination width by source height, margin 16
    std::vector<int32_t> starts;        // first source pixel of each output position
    std::vector<int16_t> coefficients;  // taps of each output position
};

}  // namespace q1framework
