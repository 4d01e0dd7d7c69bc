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
using q1framework::MemoryBlock;

namespace
{
class FontFaceTest : public SystemFaceTest
{
};
}  // namespace

TEST_F(FontFaceTest, WhatIsNotAFontOrASizeGivesNothing)
{
    const char garbage[] = "This is plainly not a TrueType or OpenType font file.";
    EXPECT_EQ(FontEngine::getInstance()->loadFace(MemoryBlock(garbage, sizeof garbage, true)), nullptr);
    EXPECT_EQ(FontEngine::getInstance()->loadFace(MemoryBlock()), nullptr);
    for (const double size : {0.0, -10.0, 1000.5, 1e300, std::nan("")})
    {
        const Font font(face.get(), size, true, true);
        EXPECT_EQ(font.getGlyph('A'), nullptr) << size;
        EXPECT_EQ(font.getTextWidth("AB"), 0.0f);
    }
    EXPECT_NE(Font(face.get(), 0.5, true, true).getGlyph('A'), nullptr);
}

TEST_F(FontFaceTest, GlyphsHangFromTheTopOfCapitalAWithThreeSamplesAPixel)
{
    const Font font(face.get(), 10.0, true, true);
    const Glyph *a = font.getGlyph('A'), *x = font.getGlyph('x'), *g = font.getGlyph('g');
    ASSERT_TRUE(a && x && g);
    // "A" defines the top, and its cap height (1493 of 2048 units, 9.72 pixels at 10 points and 96
    // dpi) snaps to 10 whole rows; "x" starts lower and ends where "A" ends; "g" goes below.
    EXPECT_EQ(a->offsetY, 0);
    EXPECT_EQ(a->image.getHeight(), 10);
    EXPECT_GT(x->offsetY, 0);
    EXPECT_EQ(x->offsetY + x->image.getHeight(), 10);
    EXPECT_GT(g->offsetY + g->image.getHeight(), 10);
    // Byte 3 of a coverage pixel is the OR of the three samples; the crossbar is one solid row.
    int fullyCovered = 0;
    for (int row = 0; row < a->image.getHeight(); ++row)
        for (int column = 0; column < a->image.getWidth(); ++column)
        {
            const uint8_t* pixel = a->image.getPixelPointer(column, row);
            EXPECT_EQ(pixel[3], pixel[0] | pixel[1] | pixel[2]) << column << ", " << row;
            fullyCovered += pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 255;
        }
    EXPECT_GE(fullyCovered, 3);
    EXPECT_TRUE(font.getGlyph(' ')->image.isEmpty());
}

TEST_F(FontFaceTest, AdvancesKeepTheirFractionAndLoadModesFollowTheFont)
{
    // Hinted vertically only, advances keep the design's fraction: hinting at the full horizontal
    // resolution would round every one to whole pixels.
    const Font hinted(face.get(), 10.0, true, true), unhinted(face.get(), 10.0, true, false), grey(face.get(), 10.0, false, true);
    int fractional = 0;
    for (const uint32_t code : {uint32_t('A'), uint32_t('I'), uint32_t('W'), uint32_t('g'), uint32_t('.'), 0xE9u})
        fractional += hinted.getGlyph(code)->advance != std::floor(hinted.getGlyph(code)->advance);
    EXPECT_GE(fractional, 4);
    // The unhinted font comes after a hinted one on the same face and must not inherit its
    // squeeze. Without LCD rendering a glyph measures but draws nothing.
    const Glyph *plain = unhinted.getGlyph('W'), *measured = grey.getGlyph('W');
    ASSERT_TRUE(plain && measured);
    EXPECT_NEAR(plain->advance, getDesignAdvance('W', 10.0), 1.0 / 64);
    EXPECT_FALSE(plain->image.isEmpty());
    EXPECT_TRUE(measured->image.isNull());
    EXPECT_EQ(measured->advance, hinted.getGlyph('W')->advance);
}

TEST_F(FontFaceTest, CodesTheFaceLacksDrawItsGlyphZero)
{
    // A four-byte sequence decodes with 0x400000 added, beyond Unicode; U+10FFFD is private use.
    const Font font(face.get(), 10.0, true, true);
    const Glyph *first = font.getGlyph(0x41F600), *second = font.getGlyph(0x10FFFD);
    ASSERT_TRUE(first && second && !first->image.isEmpty());
    EXPECT_EQ(first->code, 0x41F600u);
    EXPECT_EQ(first->advance, second->advance);
    ASSERT_EQ(first->image.getSize(), second->image.getSize());
    for (int y = 0; y < first->image.getHeight(); ++y)
        EXPECT_EQ(std::memcmp(first->image.getLine(y), second->image.getLine(y), first->image.getWidth() * 4), 0);
}
