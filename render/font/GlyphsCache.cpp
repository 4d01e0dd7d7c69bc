#include "render/font/GlyphsCache.h"

#include "render/font/FontFace.h"
#include "render/font/Glyph.h"

namespace q1framework
{

GlyphsCache::~GlyphsCache()
{
    for (Array<Glyph*>& bucket : buckets)
        for (Glyph* glyph : bucket)
            delete glyph;
}

const Glyph* GlyphsCache::getGlyph(const Font& font, uint32_t code)
{
    Array<Glyph*>& bucket = buckets[code & (bucketCount - 1)];
    for (const Glyph* glyph : bucket)
        if (glyph->code == code && glyph->font == font)
            return glyph;

    FontFace* face = font.getFace();
    Glyph* made = face ? face->createGlyph(font, code) : nullptr;
    if (made)
        bucket.add(made);
    return made;
}

int32_t GlyphsCache::getCount() const
{
    int32_t count = 0;
    for (const Array<Glyph*>& bucket : buckets)
        count += bucket.getCount();
    return count;
}

}  // namespace q1framework
