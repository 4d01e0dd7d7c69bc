#pragma once

#include "ArtCatalogue.h"
#include "CairoHandles.h"
#include "SvgSource.h"

#include <string>

// Renders the pictures of the catalogue from their SVG sources.
namespace PictureRenderer
{
// Renders `picture` from `source`: all its frames stacked top to bottom, picture.width x
// (picture.height x picture.frames) pixels. The background is an opaque RGB surface, every other
// picture ARGB with premultiplied alpha. The source must be exactly one frame in size, and have
// the layers that the picture's kind draws. Returns an empty string on success, with `surface`
// set; otherwise a one-line reason.
std::string render(const ArtPicture& picture, const SvgSource& source, CairoSurface& surface);
}
