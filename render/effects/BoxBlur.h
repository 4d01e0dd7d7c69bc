#pragma once

#include "render/effects/FloatImage.h"

namespace q1framework
{

// A box blur of all four channels: one pass across, then one down, each a running sum over span
// pixels divided by span. The result pixel (x, y) is the mean of the span by span source pixels
// from (x - span / 2, y - span / 2); pixels beyond the picture count as transparent, so the
// edges fade. A single pixel of value v becomes a square of span by span pixels of v / span^2.
//
// The passes read span / 2 pixels past the picture's edges, from the margin: the source's margin
// is first made at least span / 2 by FloatImage::setMargin, which replaces source by a copy.
//
// A result of source's size with a margin of span / 2 (enough for another pass of the same
// span); the empty image for an empty source, a span below 1, or memory that cannot be had.
// The sums are kept in double, so that adding and dropping values leaves no drift.
//
// Thread contract: any thread; the caller owns the result.
FloatImage boxBlur(FloatImage& source, int span);

}  // namespace q1framework
