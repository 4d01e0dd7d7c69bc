#include "render/font/FontEngine.h"

#include "foundation/memory/MemoryBlock.h"
#include "render/font/FontFace.h"
#include "render/font/GlyphsCache.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_LCD_FILTER_H

namespace q1framework
{

namespace
{
FontEngine* instance = nullptr;
}

FontEngine* FontEngine::getInstance()
{
    if (!instance)
        instance = new FontEngine();
    return instance;
}

FontEngine* FontEngine::getInstanceWithoutCreating() { return instance; }

void FontEngine::deleteInstance() { delete instance; }

FontEngine::FontEngine()
{
    if (FT_Init_FreeType(&library) != 0)
        library = nullptr;
    else
        FT_Library_SetLcdFilter(library, FT_LCD_FILTER_DEFAULT);
    glyphsCache = new GlyphsCache();
}

FontEngine::~FontEngine()
{
    // The glyphs hold Font copies whose faces may be gone already; they are only released here.
    delete glyphsCache;
    if (library)
        FT_Done_FreeType(library);
    if (instance == this)
        instance = nullptr;
}

FontFace* FontEngine::loadFace(const MemoryBlock& data)
{
    if (!library || data.getSize() <= 0)
        return nullptr;
    FT_Face face = nullptr;
    if (FT_New_Memory_Face(library, static_cast<const FT_Byte*>(data.getData()), static_cast<FT_Long>(data.getSize()),
                           0, &face)
        != 0)
        return nullptr;
    return new FontFace(this, data, face);
}

}  // namespace q1framework
