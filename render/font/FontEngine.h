#pragma once

#include "foundation/runtime/DeletedAtShutdown.h"

struct FT_LibraryRec_;

namespace q1framework
{

class FontFace;
class GlyphsCache;
class MemoryBlock;

// The process's FreeType library and its glyph cache: one object, made on first use (or by the
// framework's bring-up, see FontServices.h) and deleted at the framework's shutdown, after the
// fallback font that was made later.
//
// FreeType filters LCD coverage with its default five-tap filter, set once for the library.
//
// Thread contract: main thread only.
class FontEngine : public DeletedAtShutdown
{
public:
    // The one engine, made now if there is none. Never null; when FreeType cannot start, the
    // engine has no library and loads no faces.
    static FontEngine* getInstance();
    // The engine if one exists, else null; never makes one.
    static FontEngine* getInstanceWithoutCreating();
    // Deletes the engine if one exists. Its cache and every glyph go with it; faces made by it
    // must have been deleted before.
    static void deleteInstance();

    ~FontEngine() override;

    // A face from the whole content of a font file (face index 0). The face keeps data alive, as
    // FreeType reads it in place. Null when FreeType refuses the data. The caller owns the face.
    FontFace* loadFace(const MemoryBlock& data);

    GlyphsCache& getGlyphsCache() { return *glyphsCache; }

private:
    FontEngine();

    FT_LibraryRec_* library = nullptr;
    GlyphsCache* glyphsCache = nullptr;
};

}  // namespace q1framework
