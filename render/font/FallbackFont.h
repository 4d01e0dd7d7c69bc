#pragma once

#include "foundation/runtime/DeletedAtShutdown.h"
#include "render/font/Font.h"

namespace q1framework
{

// The one real font of the process: a system font at 10 points, LCD-rendered and vertically
// hinted, whose face it owns. There is no per-character fallback beyond it: a code its face lacks
// is drawn as the face's glyph 0.
//
// Made on first use by Font::getFallback, after the font engine (so the shutdown, which deletes
// newest first, deletes it before the engine), and deleted at the framework's shutdown.
//
// Thread contract: main thread only.
class FallbackFont : public Font, public DeletedAtShutdown
{
public:
    // The one fallback font, made now from the first system font path that exists (see
    // SystemFontPaths.h) if there is none. When the file cannot be read or FreeType refuses it,
    // the font has no face.
    static FallbackFont& getInstance();
    // The fallback font if one exists, else null; never makes one.
    static FallbackFont* getInstanceWithoutCreating();

    // Deletes the face and forgets the instance; copies of this font keep a dangling face and
    // must not be asked for glyphs any more.
    ~FallbackFont() override;

private:
    explicit FallbackFont(FontFace* face);

    FontFace* const ownedFace;
};

}  // namespace q1framework
