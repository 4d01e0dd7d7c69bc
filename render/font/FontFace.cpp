#include "render/font/FontFace.h"

#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <ft2build.h>
#include FT_FREETYPE_H

namespace q1framework
{

namespace
{
// Vertical hinting: the outline is hinted at this many times the horizontal resolution and then
// squeezed back by the transform, so heights snap to the pixel grid while widths and advances
// keep their true fractional values.
constexpr int horizontalOversampling = 64;
constexpr int dotsPerInch = 96;
constexpr uint32_t referenceCode = 'A';
// Larger sizes (and sizes that are not positive numbers) render nothing: a glyph's bitmap grows
// with the square of the size, and FreeType's 26.6 sizes end not far beyond.
constexpr double largestSize = 1000.0;

// Loads and renders glyph index into the face's slot; false when FreeType fails either step.
bool renderIntoSlot(FT_Face face, FT_UInt index, FT_Int32 loadFlags, FT_Render_Mode mode)
{
    return FT_Load_Glyph(face, index, loadFlags) == 0 && FT_Render_Glyph(face->glyph, mode) == 0;
}

// The slot's LCD bitmap as an image of one pixel per three coverage bytes (see Glyph). A face's
// embedded bitmaps are not rendered by FreeType and may come in another pixel mode; they give no
// image rather than being read with the wrong layout.
Image makeCoverageImage(const FT_Bitmap& bitmap)
{
    const int width = static_cast<int>(bitmap.width / 3);
    const int height = static_cast<int>(bitmap.rows);
    if (bitmap.pixel_mode != FT_PIXEL_MODE_LCD || width < 1 || height < 1 || !bitmap.buffer)
        return Image();
    Image image(width, height, false, 0);
    if (image.isEmpty())
        return Image();
    // A negative pitch means the rows run upwards in memory from the buffer's start.
    const unsigned char* sourceRow = bitmap.buffer;
    if (bitmap.pitch < 0)
        sourceRow -= static_cast<ptrdiff_t>(bitmap.pitch) * (height - 1);
    for (int y = 0; y < height; ++y, sourceRow += bitmap.pitch)
    {
        uint8_t* target = image.getLine(static_cast<unsigned>(y));
        const unsigned char* source = sourceRow;
        for (int x = 0; x < width; ++x, source += 3, target += 4)
        {
            target[0] = source[0];
            target[1] = source[1];
            target[2] = source[2];
            target[3] = static_cast<uint8_t>(source[0] | source[1] | source[2]);
        }
    }
    return image;
}
}  // namespace

FontFace::FontFace(FontEngine* engineValue, const MemoryBlock& dataValue, FT_FaceRec_* faceValue)
    : engine(engineValue), data(dataValue), face(faceValue)
{
}

FontFace::~FontFace()
{
    if (face)
        FT_Done_Face(face);
}

String FontFace::getName() const
{
    if (!face)
        return String();
    return String(face->family_name) + " " + String(face->style_name);
}

Glyph* FontFace::createGlyph(const Font& font, uint32_t code)
{
    const double size = font.getSize();
    if (!face || !(size > 0.0 && size <= largestSize))
        return nullptr;

    const bool hinted = font.isVerticallyHinted();
    const FT_Int32 loadFlags = hinted ? FT_LOAD_TARGET_LCD_V | FT_LOAD_FORCE_AUTOHINT : FT_LOAD_NO_HINTING;
    const int factor = hinted ? horizontalOversampling : 1;
    const FT_Render_Mode mode = font.isLcd() ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;

    if (FT_Set_Char_Size(face, static_cast<FT_F26Dot6>(size * 64), 0, static_cast<FT_UInt>(dotsPerInch * factor),
                         dotsPerInch)
        != 0)
        return nullptr;
    if (hinted)
    {
        FT_Matrix squeeze;
        squeeze.xx = static_cast<FT_Fixed>(65536 / factor);
        squeeze.xy = 0;
        squeeze.yx = 0;
        squeeze.yy = 0x10000;
        FT_Set_Transform(face, &squeeze, nullptr);
    }
    else
    {
        // The face is shared by every font on it: an unhinted font must not inherit the squeeze
        // that a hinted one left behind.
        FT_Set_Transform(face, nullptr, nullptr);
    }

    // The top of "A" is the line's top: every glyph's image is placed relative to it.
    FT_Int reference = 0;
    if (renderIntoSlot(face, FT_Get_Char_Index(face, referenceCode), loadFlags, mode))
        reference = face->glyph->bitmap_top;

    if (!renderIntoSlot(face, FT_Get_Char_Index(face, code), loadFlags, mode))
        return nullptr;

    const FT_GlyphSlot slot = face->glyph;
    Glyph* glyph = new Glyph();
    glyph->font = font;
    glyph->code = code;
    glyph->advance = static_cast<float>(slot->advance.x * 0.015625);
    glyph->offsetY = reference - slot->bitmap_top;
    glyph->offsetX = slot->bitmap_left;
    if (font.isLcd())
        glyph->image = makeCoverageImage(slot->bitmap);
    return glyph;
}

}  // namespace q1framework
