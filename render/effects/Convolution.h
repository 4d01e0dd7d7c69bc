#pragma once

#include "media/geometry/Colour.h"
#include "media/geometry/Point.h"
#include "render/effects/FloatImage.h"

namespace q1framework
{

// The coverage (alpha) of source spread by kernel, composited with top over background: the
// step that makes shadows, glows and outlines of a shape in the kernel's colour.
//
// 1. Each source pixel q spreads its alpha a(q) over the pixels around q + offset: the result
//    pixel p is the sum over the kernel's pixels k of a(q) * kernel(k), for every q with
//    p = q + offset + k - (kernel width / 2, kernel height / 2). Only result pixels inside the
//    picture are kept; coverage spread beyond its edge is lost.
// 2. Each sum is limited to a premultiplied colour (FloatImage::limitToPremultiplied): a sum
//    beyond full coverage is scaled back to alpha 1, so a kernel whose weights add up to more
//    than 1 saturates in its own colour instead of overflowing.
// 3. The result is placed over background, and top over the result.
//
// A result of source's size and margin; the empty image for an empty source or kernel, or for a
// top that is neither empty nor of source's size. Transparent source pixels cost nothing; each
// other one costs a multiply-add per channel and kernel pixel.
//
// Thread contract: any thread; the caller owns the result.
FloatImage convolve(const FloatImage& source, const FloatImage& kernel, const Point& offset, const FloatImage& top,
                    const Colour& background);

}  // namespace q1framework
