#pragma once

#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

class Font;
class Glyph;

// Every glyph rendered in the process, kept until the cache goes with the font engine at the
// framework's shutdown: no eviction, no limit, no atlas (each glyph has its own image).
//
// 256 buckets chosen by the code's low byte; a bucket is searched from its start, so a lookup
// costs a scan of the few glyphs of one bucket.
//
// Thread contract: main thread only.
class GlyphsCache
{
public:
    static constexpr int bucketCount = 256;

    GlyphsCache() = default;
    // Deletes every glyph.
    virtual ~GlyphsCache();

    GlyphsCache(const GlyphsCache&) = delete;
    GlyphsCache& operator=(const GlyphsCache&) = delete;

    // The glyph of code for a font equal to font: the one kept, or a new one rendered now and
    // kept. Null when font has no face or rendering fails; a failure is not remembered, so a later
    // call tries again.
    const Glyph* getGlyph(const Font& font, uint32_t code);

    // Number of glyphs kept.
    int32_t getCount() const;

private:
    Array<Glyph*> buckets[bucketCount];
};

}  // namespace q1framework
