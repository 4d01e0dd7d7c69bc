#pragma once

#include "media/geometry/Colour.h"
#include "render/effects/FloatImage.h"

// The kernels of the image effects: small float images whose pixels are a weight times a
// premultiplied colour, for convolve (see Convolution.h), which places a kernel's pixel
// (width / 2, height / 2) on the pixel it spreads. Distances are measured between pixel centres.
// Kernels have no margin.
//
// Thread contract: any thread; the results are owned by the caller.
namespace q1framework
{

// A disc of the given radius in pixels, side 2 * radius + 1, centred on pixel (radius, radius).
// With d the distance from that pixel: weight 1 where d <= radius, radius + 1 - d in the ring
// radius < d < radius + 1 (a one-pixel anti-aliased edge), 0 beyond. Convolved with a shape's
// coverage and limited to 1, it grows the shape by radius. The empty image for a radius below 1.
FloatImage makeDiscKernel(int radius, const Colour& colour);

// A soft round kernel of side size, centred at ((size - 1) / 2, (size - 1) / 2), which is the
// middle of a pixel for an odd size and a corner for an even one. With d the distance from the
// centre: weight (1 - 2 * d / size)^power where the base is above 0, else 0, times 15 / size^2,
// limited to 0..1. The factor keeps the weights' sum near 1 for powers near 3 (about 2 at power
// 2, 1.2 at power 3, 0.8 at power 4), whatever the size. The empty image for a size below 1 or a
// power below 0 (or not a number).
FloatImage makePowerKernel(int size, float power, const Colour& colour);

}  // namespace q1framework
