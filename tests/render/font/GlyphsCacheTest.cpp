#include "render/font/GlyphsCache.h"

#include "FontTestSupport.h"
#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

using q1framework::Font;
using q1framework::FontEngine;
using q1framework::Glyph;
using q1framework::GlyphsCache;

namespace
{
class GlyphsCacheTest : public SystemFaceTest
{
};
}  // namespace

TEST_F(GlyphsCacheTest, EqualFontsShareGlyphsAndAnotherSizeGetsItsOwn)
{
    GlyphsCache& cache = FontEngine::getInstance()->getGlyphsCache();
    Font font(face.get(), 10.0, true, true);
    const Font kept = font;
    const int32_t before = cache.getCount();
    const Glyph* small = font.getGlyph('A');
    ASSERT_NE(small, nullptr);
    EXPECT_EQ(small->code, uint32_t('A'));
    EXPECT_EQ(Font(face.get(), 10.0, true, true).getGlyph('A'), small);  // equal, not shared
    EXPECT_EQ(cache.getCount(), before + 1);

    font.setSize(20.0);
    const Glyph* large = font.getGlyph('A');
    ASSERT_NE(large, nullptr);
    EXPECT_NE(large, small);
    EXPECT_EQ(kept.getGlyph('A'), small);
    EXPECT_NEAR(small->advance, getDesignAdvance('A', 10.0), 1.0 / 64);
    EXPECT_NEAR(large->advance, getDesignAdvance('A', 20.0), 1.0 / 64);

    // 'A', U+0141 and U+0241 share bucket 65 but not a glyph.
    for (const uint32_t code : {0x141u, 0x241u})
    {
        const Glyph* glyph = font.getGlyph(code);
        ASSERT_NE(glyph, nullptr);
        EXPECT_EQ(glyph->code, code);
        EXPECT_EQ(font.getGlyph(code), glyph);
    }
    EXPECT_NEAR(font.getGlyph(0x141)->advance, getDesignAdvance(0x141, 20.0), 1.0 / 64);

    // Fonts without a face are neither rendered nor remembered.
    const int32_t count = cache.getCount();
    EXPECT_EQ(cache.getGlyph(Font(), 'A'), nullptr);
    EXPECT_EQ(cache.getGlyph(Font(nullptr, 10.0, true, true), 'A'), nullptr);
    EXPECT_EQ(cache.getCount(), count);
}
