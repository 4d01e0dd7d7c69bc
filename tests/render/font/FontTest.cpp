#include "render/font/Font.h"

#include "FontTestSupport.h"
#include "render/font/FallbackFont.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::Font;

namespace
{
// Within the 1/64 pixel of 26.6 fixed point, per character.
constexpr double advanceTolerance = 1.0 / 64;

class FontTest : public SystemFaceTest
{
};
}  // namespace

TEST_F(FontTest, FallbackIsTheSystemFaceAtTenPoints)
{
    const Font& fallback = Font::getFallback();
    EXPECT_EQ(&fallback, &Font::getFallback());
    EXPECT_EQ(&fallback, q1framework::FallbackFont::getInstanceWithoutCreating());
    ASSERT_NE(fallback.getFace(), nullptr);
    EXPECT_EQ(std::string(fallback.getFace()->getName().getCString()), "DejaVu Sans Book");
    EXPECT_EQ(fallback.getSize(), 10.0);
    EXPECT_TRUE(fallback.isLcd());
    EXPECT_TRUE(fallback.isVerticallyHinted());
    EXPECT_EQ(fallback.getStyleFlag(), 0);
    EXPECT_EQ(fallback.getStyleCode(), 0);
    EXPECT_EQ(fallback.getStyleMeasure(), 0.0);
}

TEST_F(FontTest, CopiesShareUntilOneChangesItsSize)
{
    Font original(face.get(), 12.0, true, true);
    Font copy = original;
    EXPECT_TRUE(copy == original);

    copy.setSize(20.0);
    EXPECT_EQ(original.getSize(), 12.0);
    EXPECT_EQ(copy.getSize(), 20.0);
    EXPECT_TRUE(copy != original);
    EXPECT_EQ(copy.getFace(), face.get());

    // Back to the old size: equal again, by value.
    copy.setSize(12.0);
    EXPECT_TRUE(copy == original);

    // Assignment shares; the source keeps its own size when the target changes.
    Font assigned;
    assigned = original;
    assigned = assigned;
    assigned.setSize(8.0);
    EXPECT_EQ(original.getSize(), 12.0);
    EXPECT_EQ(assigned.getSize(), 8.0);
}

TEST_F(FontTest, EqualityComparesEveryField)
{
    const Font base(face.get(), 10.0, true, true, 1, 2, 3.0);
    EXPECT_TRUE(base == Font(face.get(), 10.0, true, true, 1, 2, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.5, true, true, 1, 2, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.0, false, true, 1, 2, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.0, true, false, 1, 2, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.0, true, true, 0, 2, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.0, true, true, 1, 0, 3.0));
    EXPECT_TRUE(base != Font(face.get(), 10.0, true, true, 1, 2, 0.0));
    EXPECT_TRUE(base != Font(nullptr, 10.0, true, true, 1, 2, 3.0));
    EXPECT_TRUE(base != Font());
    EXPECT_TRUE(Font() == Font());
}

TEST_F(FontTest, AFontWithoutFaceMeasuresNothing)
{
    for (const Font& faceless : {Font(), Font(nullptr, 10.0, true, true)})
    {
        EXPECT_EQ(faceless.getGlyph('A'), nullptr);
        EXPECT_EQ(faceless.getTextWidth("ABC"), 0.0f);
        EXPECT_EQ(faceless.getCharsThatFit("ABC", 0.0), 3);
        EXPECT_EQ(faceless.getCharsThatFit("\xC3\xA9t\xC3\xA9", 5.0), 3);
    }
    Font sized;
    sized.setSize(14.0);
    EXPECT_EQ(sized.getSize(), 14.0);
    EXPECT_EQ(sized.getFace(), nullptr);
}

TEST_F(FontTest, TextWidthSumsTheAdvancesOfTheFirstCharacters)
{
    const Font font(face.get(), 10.0, true, true);
    const double a = getDesignAdvance('A', 10.0);
    const double i = getDesignAdvance('I', 10.0);
    const double eAcute = getDesignAdvance(0xE9, 10.0);
    ASSERT_GT(a, 5.0);

    EXPECT_EQ(font.getTextWidth(""), 0.0f);
    EXPECT_EQ(font.getTextWidth(nullptr), 0.0f);
    EXPECT_NEAR(font.getTextWidth("AIA"), 2 * a + i, 3 * advanceTolerance);
    EXPECT_NEAR(font.getTextWidth("AIA", 2), a + i, 2 * advanceTolerance);
    EXPECT_EQ(font.getTextWidth("AIA", 0), 0.0f);
    // Characters, not bytes: the two bytes of "é" are one advance.
    EXPECT_NEAR(font.getTextWidth("\xC3\xA9" "A", 1), eAcute, advanceTolerance);
    // A continuation byte that is not 10xxxxxx ends the text.
    EXPECT_EQ(font.getTextWidth("A\xC3(A"), font.getTextWidth("A"));
}

TEST_F(FontTest, CharsThatFitStopAtTheFirstCharacterThatReachesTheWidth)
{
    const Font font(face.get(), 10.0, true, true);
    const double a = font.getGlyph('A')->advance;
    const double i = font.getGlyph('I')->advance;

    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", 0.0), 0);
    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", a), 0);
    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", a + 0.01), 1);
    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", a + i), 1);
    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", a + i + 0.01), 2);
    EXPECT_EQ(font.getCharsThatFit("AI\xC3\xA9", 1000.0), 3);
    EXPECT_EQ(font.getCharsThatFit("", 0.0), 0);
    EXPECT_EQ(font.getCharsThatFit(nullptr, 10.0), 0);
}
