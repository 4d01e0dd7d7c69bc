// The font family: faces, fonts, their widths and the glyph cache, each test on a face of its own
// on the system font that scripts/install-deps.sh installs, and the font services' lifetime.
// FreeType itself serves as an oracle of the font's unhinted design advances.
#include "render/font/Font.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "foundation/string/String.h"
#include "render/font/FallbackFont.h"
#include "render/font/FontEngine.h"
#include "render/font/FontFace.h"
#include "render/font/FontServices.h"
#include "render/font/Glyph.h"
#include "render/font/GlyphsCache.h"
#include "render/font/SystemFontPaths.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>

using q1framework::FallbackFont;
using q1framework::Font;
using q1framework::FontEngine;
using q1framework::FrameworkInitialiser;
using q1framework::Glyph;
using q1framework::MemoryBlock;

namespace
{
// The advance of code in the font file's own design units, scaled to pixels for a size in points
// at 96 dpi, read by FreeType without hinting or rounding: what a glyph's advance should be, to
// within the 1/64 pixel that the renderer's 26.6 fixed point can tell.
double getDesignAdvance(uint32_t code, double size)
{
    const MemoryBlock data = MemoryBlock::loadFromFile(q1framework::getFallbackFontPath());
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    double advance = -1.0;
    if (FT_Init_FreeType(&library) != 0)
        return advance;
    if (FT_New_Memory_Face(library, static_cast<const FT_Byte*>(data.getData()), static_cast<FT_Long>(data.getSize()), 0, &face) == 0
        && FT_Load_Glyph(face, FT_Get_Char_Index(face, code), FT_LOAD_NO_SCALE) == 0)
        advance = static_cast<double>(face->glyph->advance.x) * size * 96.0 / 72.0 / face->units_per_EM;
    if (face)
        FT_Done_Face(face);
    FT_Done_FreeType(library);
    return advance;
}

// Each test ends with the framework's shutdown of its singletons, so that the next one starts with
// no engine, no fallback font and an empty glyph cache (whose entries name faces by address).
class FontTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        face.reset(FontEngine::getInstance()->loadFace(MemoryBlock::loadFromFile(q1framework::getFallbackFontPath())));
        ASSERT_NE(face, nullptr) << "the system font " << q1framework::getFallbackFontPath().getCString()
                                 << " is missing (scripts/install-deps.sh installs it)";
    }
    void TearDown() override
    {
        face.reset();
        q1framework::DeletedAtShutdown::deleteAll();
    }

    std::unique_ptr<q1framework::FontFace> face;
};
using FontFaceTest = FontTest;
using GlyphsCacheTest = FontTest;
}  // namespace

TEST_F(FontFaceTest, WhatIsNotAFontOrASizeGivesNothingAndCodesTheFaceLacksDrawItsGlyphZero)
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

TEST_F(FontTest, FallbackIsTheSystemFaceAtTenPointsAndEqualityComparesEveryField)
{
    const Font& fallback = Font::getFallback();
    ASSERT_NE(fallback.getFace(), nullptr);
    EXPECT_EQ(std::string(fallback.getFace()->getName().getCString()), "DejaVu Sans Book");
    EXPECT_TRUE(fallback == Font(fallback.getFace(), 10.0, true, true));

    const Font base(face.get(), 10.0, true, true, 1, 2, 3.0);
    EXPECT_TRUE(base == Font(face.get(), 10.0, true, true, 1, 2, 3.0));
    for (const Font& other : {Font(face.get(), 10.5, true, true, 1, 2, 3.0), Font(face.get(), 10.0, false, true, 1, 2, 3.0),
                              Font(face.get(), 10.0, true, false, 1, 2, 3.0), Font(face.get(), 10.0, true, true, 0, 2, 3.0),
                              Font(face.get(), 10.0, true, true, 1, 0, 3.0), Font(face.get(), 10.0, true, true, 1, 2, 0.0),
                              Font(nullptr, 10.0, true, true, 1, 2, 3.0), Font()})
        EXPECT_TRUE(base != other) << other.getSize();
}

TEST_F(FontTest, WidthsSumTheAdvancesOfCharactersAndFitsStopAtTheWidth)
{
    const Font font(face.get(), 10.0, true, true);
    const double a = getDesignAdvance('A', 10.0), i = getDesignAdvance('I', 10.0);
    ASSERT_GT(a, 5.0);
    EXPECT_NEAR(font.getTextWidth("AIA"), 2 * a + i, 3.0 / 64);  // 1 / 64 a character, the 26.6 fixed point
    EXPECT_NEAR(font.getTextWidth("AIA", 2), a + i, 2.0 / 64);
    // Characters, not bytes: the two bytes of "é" are one advance. A continuation byte that is not
    // 10xxxxxx ends the text.
    EXPECT_NEAR(font.getTextWidth("\xC3\xA9" "A", 1), getDesignAdvance(0xE9, 10.0), 1.0 / 64);
    EXPECT_EQ(font.getTextWidth("A\xC3(A"), font.getTextWidth("A"));
    EXPECT_EQ(font.getTextWidth(nullptr), 0.0f);

    // "AIé": the count before the first character whose running sum reaches the width.
    const double fitA = font.getGlyph('A')->advance, fitI = font.getGlyph('I')->advance;
    const double widths[] = {0.0, fitA, fitA + 0.01, fitA + fitI, fitA + fitI + 0.01, 1000.0};
    const int counts[] = {0, 0, 1, 1, 2, 3};
    for (int index = 0; index < 6; ++index)
        EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", widths[index]), counts[index]) << widths[index];
    EXPECT_EQ(font.getCharsThatFit(nullptr, 10.0), 0);

    // Without a face nothing has a width and everything fits.
    EXPECT_EQ(Font().getTextWidth("ABC"), 0.0f);
    EXPECT_EQ(Font(nullptr, 10.0, true, true).getCharsThatFit("\xC3\xA9t\xC3\xA9", 0.0), 3);
}

// Equal fonts share glyphs; a copy shares the font until one of them changes its size, and then
// each keeps its own size and glyphs. Back to the old size the two are equal again, by value.
TEST_F(GlyphsCacheTest, EqualFontsShareGlyphsAndAnotherSizeGetsItsOwn)
{
    q1framework::GlyphsCache& cache = FontEngine::getInstance()->getGlyphsCache();
    Font font(face.get(), 10.0, true, true);
    Font kept;
    kept = font;
    kept = kept;
    const int32_t before = cache.getCount();
    const Glyph* small = font.getGlyph('A');
    ASSERT_NE(small, nullptr);
    EXPECT_EQ(Font(face.get(), 10.0, true, true).getGlyph('A'), small);  // equal, not shared
    EXPECT_EQ(cache.getCount(), before + 1);

    font.setSize(20.0);
    const Glyph* large = font.getGlyph('A');
    ASSERT_NE(large, nullptr);
    EXPECT_EQ(kept.getSize(), 10.0);
    EXPECT_EQ(kept.getGlyph('A'), small);
    EXPECT_NEAR(large->advance, getDesignAdvance('A', 20.0), 1.0 / 64);

    // 'A', U+0141 and U+0241 share bucket 65 but not a glyph.
    for (const uint32_t code : {0x141u, 0x241u})
    {
        const Glyph* glyph = font.getGlyph(code);
        ASSERT_NE(glyph, nullptr);
        EXPECT_EQ(glyph->code, code);
        EXPECT_EQ(font.getGlyph(code), glyph);
    }
    font.setSize(10.0);
    EXPECT_TRUE(font == kept);

    // Fonts without a face are neither rendered nor remembered.
    const int32_t count = cache.getCount();
    EXPECT_EQ(cache.getGlyph(Font(), 'A'), nullptr);
    EXPECT_EQ(cache.getGlyph(Font(nullptr, 10.0, true, true), 'A'), nullptr);
    EXPECT_EQ(cache.getCount(), count);
}

// Without the hooks the engine comes on first use and goes with the framework's shutdown. With
// them (registered twice, which must not double them) it comes with every framework and goes with
// it, and the fallback font works in every round.
TEST(FontServicesTest, TheFrameworkBringsFontsUpAndTakesThemDownEachTime)
{
    q1framework::DeletedAtShutdown::deleteAll();
    {
        FrameworkInitialiser framework;
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
        EXPECT_NE(Font::getFallback().getFace(), nullptr);
    }
    EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
    EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);

    q1framework::registerFontServices();
    q1framework::registerFontServices();
    for (int round = 0; round < 2; ++round)
    {
        auto framework = std::make_unique<FrameworkInitialiser>();
        EXPECT_NE(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_GT(Font::getFallback().getTextWidth("Kelvane"), 30.0f);
        framework.reset();
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);
    }
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, nullptr);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, nullptr);
}
