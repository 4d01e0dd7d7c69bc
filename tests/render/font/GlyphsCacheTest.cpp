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
protected:
    GlyphsCache& cache() { return FontEngine::getInstance()->getGlyphsCache(); }
};
}  // namespace

TEST_F(GlyphsCacheTest, AnEqualFontGetsTheSameGlyphOnce)
{
    const Font font(face.get(), 10.0, true, true);
    const int32_t before = cache().getCount();
    const Glyph* first = font.getGlyph('A');
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->code, uint32_t('A'));
    EXPECT_TRUE(first->font == font);

    EXPECT_EQ(font.getGlyph('A'), first);
    EXPECT_EQ(Font(font).getGlyph('A'), first);
    EXPECT_EQ(Font(face.get(), 10.0, true, true).getGlyph('A'), first);  // equal, not shared
    EXPECT_EQ(cache().getGlyph(font, 'A'), first);
    EXPECT_EQ(cache().getCount(), before + 1);
}

TEST_F(GlyphsCacheTest, ASizeChangeGetsEntriesOfItsOwn)
{
    Font small(face.get(), 10.0, true, true);
    const Font kept = small;
    const Glyph* smallGlyph = small.getGlyph('A');
    small.setSize(20.0);
    const Glyph* largeGlyph = small.getGlyph('A');
    ASSERT_NE(smallGlyph, nullptr);
    ASSERT_NE(largeGlyph, nullptr);

    EXPECT_NE(largeGlyph, smallGlyph);
    EXPECT_EQ(kept.getGlyph('A'), smallGlyph);
    EXPECT_EQ(smallGlyph->font.getSize(), 10.0);
    EXPECT_EQ(largeGlyph->font.getSize(), 20.0);
    EXPECT_NEAR(largeGlyph->advance, getDesignAdvance('A', 20.0), 1.0 / 64);
    EXPECT_NEAR(smallGlyph->advance, getDesignAdvance('A', 10.0), 1.0 / 64);
}

TEST_F(GlyphsCacheTest, CodesInOneBucketStayApart)
{
    const Font font(face.get(), 10.0, true, true);
    // 'A', U+0141 (Ł) and U+0241 all fall in bucket 65.
    const Glyph* a = font.getGlyph(0x41);
    const Glyph* lStroke = font.getGlyph(0x141);
    const Glyph* third = font.getGlyph(0x241);
    ASSERT_TRUE(a && lStroke && third);
    EXPECT_EQ(a->code, 0x41u);
    EXPECT_EQ(lStroke->code, 0x141u);
    EXPECT_EQ(third->code, 0x241u);
    EXPECT_NE(a, lStroke);
    EXPECT_NE(lStroke, third);
    EXPECT_NEAR(lStroke->advance, getDesignAdvance(0x141, 10.0), 1.0 / 64);
    EXPECT_EQ(font.getGlyph(0x141), lStroke);
}

TEST_F(GlyphsCacheTest, FontsWithoutFaceAreNeitherRenderedNorRemembered)
{
    const int32_t before = cache().getCount();
    EXPECT_EQ(cache().getGlyph(Font(), 'A'), nullptr);
    EXPECT_EQ(cache().getGlyph(Font(nullptr, 10.0, true, true), 'A'), nullptr);
    EXPECT_EQ(cache().getCount(), before);
}
