#include "render/font/Font.h"

#include "FontTestSupport.h"
#include "render/font/FallbackFont.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::Font;

namespace
{
class FontTest : public SystemFaceTest
{
};
}  // namespace

TEST_F(FontTest, FallbackIsTheSystemFaceAtTenPoints)
{
    const Font& fallback = Font::getFallback();
    EXPECT_EQ(&fallback, q1framework::FallbackFont::getInstanceWithoutCreating());
    ASSERT_NE(fallback.getFace(), nullptr);
    EXPECT_EQ(std::string(fallback.getFace()->getName().getCString()), "DejaVu Sans Book");
    EXPECT_TRUE(fallback == Font(fallback.getFace(), 10.0, true, true));
}

TEST_F(FontTest, EqualityComparesEveryFieldAndCopiesKeepTheirSize)
{
    const Font base(face.get(), 10.0, true, true, 1, 2, 3.0);
    EXPECT_TRUE(base == Font(face.get(), 10.0, true, true, 1, 2, 3.0));
    for (const Font& other : {Font(face.get(), 10.5, true, true, 1, 2, 3.0), Font(face.get(), 10.0, false, true, 1, 2, 3.0),
                              Font(face.get(), 10.0, true, false, 1, 2, 3.0), Font(face.get(), 10.0, true, true, 0, 2, 3.0),
                              Font(face.get(), 10.0, true, true, 1, 0, 3.0), Font(face.get(), 10.0, true, true, 1, 2, 0.0),
                              Font(nullptr, 10.0, true, true, 1, 2, 3.0), Font()})
        EXPECT_TRUE(base != other) << other.getSize();

    // A copy (or an assignment) shares the font until one of them changes its size; the other
    // keeps its own. Back to the old size the two are equal again, by value.
    Font copy;
    copy = base;
    copy = copy;
    copy.setSize(20.0);
    EXPECT_EQ(base.getSize(), 10.0);
    EXPECT_EQ(copy.getSize(), 20.0);
    EXPECT_EQ(copy.getFace(), face.get());
    copy.setSize(10.0);
    EXPECT_TRUE(copy == base);
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
    for (const char* empty : {"", static_cast<const char*>(nullptr)})
        EXPECT_EQ(font.getTextWidth(empty), 0.0f);
    EXPECT_EQ(font.getTextWidth("AIA", 0), 0.0f);

    // "AIé": the count before the first character whose running sum reaches the width.
    const double fitA = font.getGlyph('A')->advance, fitI = font.getGlyph('I')->advance;
    const double widths[] = {0.0, fitA, fitA + 0.01, fitA + fitI, fitA + fitI + 0.01, 1000.0};
    const int counts[] = {0, 0, 1, 1, 2, 3};
    for (int index = 0; index < 6; ++index)
        EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", widths[index]), counts[index]) << widths[index];
    EXPECT_EQ(font.getCharsThatFit("", 0.0), 0);
    EXPECT_EQ(font.getCharsThatFit(nullptr, 10.0), 0);

    // Without a face nothing has a width and everything fits.
    for (const Font& faceless : {Font(), Font(nullptr, 10.0, true, true)})
    {
        EXPECT_EQ(faceless.getTextWidth("ABC"), 0.0f);
        EXPECT_EQ(faceless.getCharsThatFit("\xC3\xA9t\xC3\xA9", 0.0), 3);
    }
}
