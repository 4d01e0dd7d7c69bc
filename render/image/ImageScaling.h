#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

// The image operations that need the renderer: the windowed-sinc resampler and the cutting and
// scaling of whole images built on it. The media library's Image cannot reach them (media does
// not depend on render), so they are free functions here.
//
// Pixels are premultiplied; results keep them so (no colour byte above its alpha).
//
// Thread contract: main thread, like all image work (Image pixels are unprotected).
namespace q1framework
{

// Scales source onto the whole of destination, writing only the given rectangles of destination
// (in its coordinates, cut to its picture). A separable filter (see ResamplingFilter): a
// horizontal pass into an intermediate image as wide as destination and as high as source, then
// a vertical pass, per channel in 16-bit arithmetic. The tap count follows quality (8 to 32) or,
// for a quality below 0, the scale of each axis. For a rectangle of odd width one more pixel to
// its right is written as well, when destination's line has room for it (picture or margin).
//
// A source whose margin is narrower than 16 pixels is read through a copy that has that margin.
// Returns destination; the null image when source is empty or destination has a side below 1;
// destination untouched when count is below 1. Each call makes its working memory anew; a caller
// that scales on every frame keeps an ImageResampler instead.
Image resampleImage(const Image& source, Image& destination, const Rectangle* rectangles, int count, int quality);

// A new image of size, margin 16, wholly resampled from image; null for an empty image or a size
// with a side below 1.
Image resized(const Image& image, const Point& size, int quality);

// Null for an empty image. The same size: image itself, shared, or a duplicate when forceCopy.
// Otherwise resized with quality 8.
Image getScaled(const Image& image, int width, int height, bool forceCopy);

// A new image, margin 16, holding the part of image inside area (area is first cut to the
// picture); null when nothing of it lies inside.
Image getSubImage(const Image& image, const Rectangle& area);

}  // namespace q1framework
