#include "FontTestSupport.h"

#include <ft2build.h>
#include FT_FREETYPE_H

double getDesignAdvance(uint32_t code, double size)
{
    const q1framework::MemoryBlock data = q1framework::MemoryBlock::loadFromFile(q1framework::getFallbackFontPath());
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    double advance = -1.0;
    if (FT_Init_FreeType(&library) != 0)
        return advance;
    if (FT_New_Memory_Face(library, static_cast<const FT_Byte*>(data.getData()), static_cast<FT_Long>(data.getSize()),
                           0, &face)
            == 0
        && FT_Load_Glyph(face, FT_Get_Char_Index(face, code), FT_LOAD_NO_SCALE) == 0)
        advance = static_cast<double>(face->glyph->advance.x) * size * 96.0 / 72.0 / face->units_per_EM;
    if (face)
        FT_Done_Face(face);
    FT_Done_FreeType(library);
    return advance;
}
