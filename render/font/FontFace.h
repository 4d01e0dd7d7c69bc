#pragma once

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"

#include <cstdint>

struct FT_FaceRec_;

namespace q1framework
{

class Font;
class FontEngine;
class Glyph;

// A FreeType face over the whole content of a font file, which it keeps alive because FreeType
// reads it in place. Made by FontEngine::loadFace; the owner deletes it, before the engine goes.
//
// Thread contract: main thread only.
class FontFace
{
public:
    // Takes over face, which FreeType opened on data; engine is not owned.
    FontFace(FontEngine* engine, const MemoryBlock& data, FT_FaceRec_* face);
    ~FontFace();

    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    // The family name, a blank and the style name ("DejaVu Sans Book").
    String getName() const;
    FontEngine* getEngine() const { return engine; }

    // Renders the glyph of code for font, whose face must be this one: a new glyph owned by the
    // caller, or null when FreeType fails to load or render it, or when the font's size is not
    // above 0 and at most 1000 points. A code the face lacks gives the face's glyph 0. Sizes,
    // hinting and rendering mode follow the font (see Font).
    Glyph* createGlyph(const Font& font, uint32_t code);

private:
    FontEngine* const engine;
    const MemoryBlock data;
    FT_FaceRec_* const face;
};

}  // namespace q1framework
