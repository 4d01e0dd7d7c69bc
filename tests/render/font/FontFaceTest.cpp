#include "render/font/FontFace.h"

#include "FontTestSupport.h"
#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

using q1framework::Font;
using q1framework::FontEngine;
using q1framework::Glyph;
using q1framework::Image;
using q1framework::MemoryBlock;

namespace
{
class FontFaceTest : public SystemFaceTest
{
};

int getBottom(const Glyph& glyph) { return glyph.offsetY + glyph.image.getHeight(); }
}  // namespace

TEST_F(FontFaceTest, FreeTypeRefusesWhatIsNotAFont)
{
    const char garbage[] = "This is plainly not a TrueType or OpenType font file.";
    EXPECT_EQ(FontEngine::getInstance()->loadFace(MemoryBlock(garbage, sizeof garbage, true)), nullptr);
    EXPECT_EQ(FontEngine::getInstance()->loadFace(MemoryBlock()), nullptr);
    EXPECT_EQ(FontEngine::getInstance()->loadFace(MemoryBlock::loadFromFile("/nonexistent/font.ttf")), nullptr);
}

TEST_F(FontFaceTest, SizesOutsideTheRenderedRangeGiveNoGlyph)
{
    for (const double size : {0.0, -10.0, 1000.5, 1e300, std::nan("")})
    {
        const Font font(face.get(), size, true, true);
        EXPECT_EQ(font.getGlyph('A'), nullptr) << size;
        EXPECT_EQ(font.getTextWidth("AB"), 0.0f);
    }
    EXPECT_NE(Font(face.get(), 0.5, true, true).getGlyph('A'), nullptr);
}

TEST_F(FontFaceTest, GlyphsHangFromTheTopOfCapitalA)
{
    const Font font(face.get(), 10.0, true, true);
    const Glyph* a = font.getGlyph('A');
    const Glyph* x = font.getGlyph('x');
    const Glyph* dot = font.getGlyph('.');
    const Glyph* g = font.getGlyph('g');
    ASSERT_TRUE(a && x && dot && g);

    // "A" defines the top, and its cap height (1493 of 2048 units, 9.72 pixels at 10 points and
    // 96 dpi) snaps to 10 whole rows.
    EXPECT_EQ(a->offsetY, 0);
    EXPECT_EQ(a->image.getHeight(), 10);
    // Glyphs on the baseline end where "A" ends; lower-case and punctuation start further down;
    // descenders go below.
    EXPECT_GT(x->offsetY, 0);
    EXPECT_EQ(getBottom(*x), getBottom(*a));
    EXPECT_GT(dot->offsetY, x->offsetY);
    EXPECT_EQ(getBottom(*dot), getBottom(*a));
    EXPECT_GT(getBottom(*g), getBottom(*a));

    // Twice the size: the cap height snaps to 19.4 -> 20 rows.
    Font large = font;
    large.setSize(20.0);
    EXPECT_EQ(large.getGlyph('A')->image.getHeight(), 20);
}

TEST_F(FontFaceTest, CoverageImagesHoldThreeSamplesAPixel)
{
    const Font font(face.get(), 10.0, true, true);
    const Glyph* a = font.getGlyph('A');
    ASSERT_NE(a, nullptr);
    const Image& image = a->image;
    ASSERT_FALSE(image.isEmpty());
    EXPECT_EQ(image.getMargin(), 0);

    int fullyCovered = 0;
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
        {
            const uint8_t* pixel = image.getPixelPointer(x, y);
            EXPECT_EQ(pixel[3], pixel[0] | pixel[1] | pixel[2]) << x << ", " << y;
            fullyCovered += pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 255;
        }
    // The crossbar of "A" is one solid row.
    EXPECT_GE(fullyCovered, 3);

    // Blank glyphs have an advance but no image.
    const Glyph* space = font.getGlyph(' ');
    ASSERT_NE(space, nullptr);
    EXPECT_TRUE(space->image.isEmpty());
    EXPECT_NEAR(space->advance, getDesignAdvance(' ', 10.0), 1.0 / 64);
}

TEST_F(FontFaceTest, AdvancesKeepTheirFractionWithVerticalHinting)
{
    const Font hinted(face.get(), 10.0, true, true);
    int fractional = 0;
    for (const uint32_t code : {uint32_t('A'), uint32_t('I'), uint32_t('W'), uint32_t('g'), uint32_t('.'), 0xE9u})
    {
        const float advance = hinted.getGlyph(code)->advance;
        EXPECT_NEAR(advance, getDesignAdvance(code, 10.0), 1.0 / 64) << "code " << code;
        fractional += advance != std::floor(advance);
    }
    // Hinting at the full horizontal resolution would have rounded every advance to whole pixels.
    EXPECT_GE(fractional, 4);
}

TEST_F(FontFaceTest, LoadModesFollowTheFont)
{
    const Font hinted(face.get(), 10.0, true, true);
    const Font unhinted(face.get(), 10.0, true, false);
    const Font grey(face.get(), 10.0, false, true);

    // The unhinted font comes after a hinted one on the same face and must not inherit its squeeze.
    ASSERT_NE(hinted.getGlyph('W'), nullptr);
    const Glyph* plain = unhinted.getGlyph('W');
    ASSERT_NE(plain, nullptr);
    EXPECT_NEAR(plain->advance, getDesignAdvance('W', 10.0), 1.0 / 64);
    EXPECT_FALSE(plain->image.isEmpty());
    EXPECT_NE(plain, hinted.getGlyph('W'));

    // Without LCD rendering a glyph measures but draws nothing.
    const Glyph* measured = grey.getGlyph('W');
    ASSERT_NE(measured, nullptr);
    EXPECT_TRUE(measured->image.isNull());
    EXPECT_EQ(measured->advance, hinted.getGlyph('W')->advance);
}

TEST_F(FontFaceTest, CodesTheFaceLacksDrawItsGlyphZero)
{
    const Font font(face.get(), 10.0, true, true);
    // A four-byte sequence decodes with 0x400000 added, beyond Unicode; U+10FFFD is private use.
    const Glyph* first = font.getGlyph(0x41F600);
    const Glyph* second = font.getGlyph(0x10FFFD);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->code, 0x41F600u);
    EXPECT_EQ(first->advance, second->advance);
    ASSERT_EQ(first->image.getSize(), second->image.getSize());
    ASSERT_FALSE(first->image.isEmpty());
    for (int y = 0; y < first->image.getHeight(); ++y)
        EXPECT_EQ(std::memcmp(first->image.getLine(y), second->image.getLine(y), first->image.getWidth() * 4), 0);
}
