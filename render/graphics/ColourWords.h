#pragma once

#include "media/geometry/Colour.h"

#include <cstdint>

// Pixel words (0xAARRGGBB, stored blue, green, red, alpha) made from a straight Colour, for the
// drawing code of SoftwareGraphics.
namespace q1framework
{
namespace ColourWords
{
// The colour as it stands, alpha included: the word written by opaque fills, and by fills of a
// colour already premultiplied in place.
inline uint32_t packed(const Colour& colour)
{
    return colour.getARGB();
}

// The colour at full alpha: what an opaque pixel is written as.
inline uint32_t opaque(const Colour& colour)
{
    return 0xFF000000u | (colour.getARGB() & 0x00FFFFFFu);
}

// The addend of the straight colour form at alpha (0 to 255): each colour byte c * alpha >> 8,
// the alpha byte alpha itself. Blending this word with PixelKernels::blendWord is the straight
// form.
inline uint32_t straightAddend(const Colour& colour, int alpha)
{
    const auto scaled = [alpha](uint32_t channel) { return (channel * static_cast<uint32_t>(alpha)) >> 8; };
    return static_cast<uint32_t>(alpha) << 24 | scaled(colour.getRed()) << 16 | scaled(colour.getGreen()) << 8
           | scaled(colour.getBlue());
}
}
}
