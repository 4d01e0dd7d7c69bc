#pragma once

#include "media/image/Image.h"
#include "render/font/Font.h"

#include <cstdint>

namespace q1framework
{

// One rendered character of one font, as the glyph cache keeps it for the life of the process.
//
// Positions are in whole pixels relative to the pen: the pen's x, and the top of the line, where
// the top of the font's letter "A" lies. The image has one 32-bit pixel per three horizontal
// LCD coverage samples: bytes 0, 1 and 2 are the coverages of the pixel's left, middle and right
// thirds (0 to 255), byte 3 their bitwise or. Glyphs of a font without LCD rendering have a
// null image and draw nothing; their advance still counts.
class Glyph
{
public:
    Font font;               // the font it was rendered for
    uint32_t code = 0;       // the character code it was asked for
    float advance = 0.0f;    // pixels the pen moves on, fractional
    int32_t offsetY = 0;     // image top minus the top of "A", pixels, down positive
    int32_t offsetX = 0;     // image left minus the pen, pixels
    Image image;             // margin 0; null or empty for blank or non-LCD glyphs
};

}  // namespace q1framework
