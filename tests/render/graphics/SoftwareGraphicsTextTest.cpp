// The text operations of SoftwareGraphics: the LCD blend of drawGlyph on a hand-made coverage
// image with hand-computed bytes, and drawText's placement, clipping and shadow with the system
// font, checked sample by sample against the glyphs it draws.
#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "foundation/runtime/DeletedAtShutdown.h"
#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

using q1framework::Alignment;
using q1framework::Colour;
using q1framework::Font;
using q1framework::Glyph;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
// A glyph image of two pixels, one row: coverage triples (255, 128, 0) and (64, 255, 1). Byte 3
// holds a value the blend must not read.
Image makeTwoPixelGlyph()
{
    Image glyph(2, 1, true, 0);
    const uint8_t bytes[8] = {255, 128, 0, 7, 64, 255, 1, 7};
    std::copy(bytes, bytes + 8, glyph.getPixelPointer(0, 0));
    return glyph;
}

// Checks the first two pixel columns of every row of glyph as drawn on black in colour with its
// pen at penX (fractional) and the line's top at lineTop. Sample s of a row lands on subpixel
// 3 * (floor(penX) + offsetX) + phase + s, phase being the pen's fraction in thirds, and
// subpixels go red, green, blue. On black a sample gives channel * weight >> 8, with weight
// alpha * sample / 255; subpixels before the first sample stay 0.
void expectGlyphStart(const Image& canvas, const Glyph& glyph, double penX, int lineTop, const Colour& colour)
{
    const int left = static_cast<int>(std::floor(penX)) + glyph.offsetX;
    const int phase = static_cast<int>((penX - std::floor(penX)) * 3);
    const int channels[3] = {colour.getRed(), colour.getGreen(), colour.getBlue()};
    for (int row = 0; row < glyph.image.getHeight(); ++row)
        for (int subpixel = 0; subpixel < 6; ++subpixel)
        {
            const int sample = subpixel - phase;
            const int coverage =
                sample >= 0 && sample < glyph.image.getWidth() * 3 ? glyph.image.getPixelPointer(sample / 3, row)[sample % 3] : 0;
            const PixelValue pixel = readPixel(canvas, left + subpixel / 3, lineTop + glyph.offsetY + row);
            ASSERT_EQ(pixel[static_cast<size_t>(2 - subpixel % 3)],
                      channels[subpixel % 3] * (colour.getAlpha() * coverage / 255) >> 8)
                << "row " << row << ", subpixel " << subpixel;
        }
}

class SoftwareGraphicsTextTest : public ::testing::Test
{
protected:
    void TearDown() override { q1framework::DeletedAtShutdown::deleteAll(); }
};
}  // namespace

// Subpixel results, with weight a = colour alpha * coverage / 255 and d the old byte:
// ((a ^ 255) * d + channel * a) >> 8. For example coverage 128 on green 20 with channel 100:
// (127 * 20 + 100 * 128) >> 8 = 59. The glyph goes to pixel 1 of a row of five. Coverage below
// one step of weight is skipped, and nothing is drawn outside the clip or the buffer.
TEST_F(SoftwareGraphicsTextTest, GlyphsBlendEachSubpixelIntoItsChannelInsideTheClipAndTheBuffer)
{
    const PixelValue ground{200, 20, 30, 40};
    const Rectangle whole(0, 0, 5, 1), fromPixel2(2, 0, 3, 1), toPixel2(0, 0, 3, 1);
    const struct { int phase; Rectangle clip; PixelValue first, second, third; } cases[] = {
        // Samples 255, 128, 0 | 64, 255, 1 on red, green, blue | red, green, blue: 199, 59, -;
        // 72, 99, (254 * 200 + 50) >> 8 = 198.
        {0, whole, {200, 59, 199, 40}, {198, 99, 72, 40}, ground},
        // Phase 1: green, blue | red, green, blue | red.
        {1, whole, {124, 99, 30, 40}, {49, 39, 30, 40}, {200, 20, 30, 40}},
        // Phase 2: blue | red, green, blue | red, green.
        {2, whole, {49, 20, 30, 40}, {161, 20, 114, 40}, {200, 20, 199, 40}},
        // Cut on the left at phase 2, the walk begins at pixel 2 with sample 1 (128) and runs for
        // the glyph's width from there: the last two samples, which would reach pixel 3, are left
        // out. At phase 0 the cut is at a pixel boundary. A cut on the right stops at its edge.
        {2, fromPixel2, ground, {161, 20, 114, 40}, ground},
        {0, fromPixel2, ground, {198, 99, 72, 40}, ground},
        {2, toPixel2, {49, 20, 30, 40}, {161, 20, 114, 40}, ground},
        // Phases other than 0, 1 and 2 draw nothing.
        {3, whole, ground, ground, ground}, {-1, whole, ground, ground, ground},
    };
    for (const auto& each : cases)
    {
        Scene scene(5, 1, ground);
        scene.graphics.setClip(each.clip, false);
        scene.graphics.drawGlyph(makeTwoPixelGlyph(), Point(1, 0), Colour(200, 100, 50, 255), each.phase);
        SCOPED_TRACE("phase " + std::to_string(each.phase) + ", clip from " + std::to_string(each.clip.x));
        scene.expect({{0, 0, ground}, {1, 0, each.first}, {2, 0, each.second}, {3, 0, each.third}, {4, 0, ground}});
    }

    // Over either edge, under a clip that reaches past the buffer, the margin's zeros stay and the
    // part inside is drawn: pixel 4 at phase 2 takes sample 255 on blue, (1 * 0 + 50 * 255) >> 8 = 49.
    Image canvas(5, 1, true, 16);
    SoftwareGraphics graphics(canvas);
    graphics.setClip(Rectangle(-10, -10, 40, 40), false);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(4, 0), Colour(200, 100, 50, 255), 2);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(-1, 0), Colour(200, 100, 50, 255), 1);
    EXPECT_TRUE(marginIsClear(canvas));
    EXPECT_EQ(readPixel(canvas, 4, 0)[0], 49);

    // At alpha 1, 1 * 254 < 255 leaves red alone; 1 * 255 gives weight 1 on green:
    // (254 * 255 + 100 * 1) >> 8 = 253. An empty image draws nothing.
    Image glyph(1, 1, true, 0);
    glyph.getPixelPointer(0, 0)[0] = 254;
    glyph.getPixelPointer(0, 0)[1] = 255;
    Scene scene(1, 1, opaqueWhite);
    scene.graphics.drawGlyph(glyph, Point(0, 0), Colour(200, 100, 50, 1), 0);
    scene.graphics.drawGlyph(Image(), Point(0, 0), Colour(200, 100, 50, 255), 1);
    scene.expect({{0, 0, {255, 253, 255, 255}}});
}

TEST_F(SoftwareGraphicsTextTest, TextScene)
{
    Scene scene(240, 162, opaqueBlack);
    SoftwareGraphics& graphics = scene.graphics;
    const Colour white(0xFFFFFFFF), frame(0xFF505050);
    const Font& font = graphics.getFont();
    const Glyph& k = *font.getGlyph('K');
    const double width = font.getTextWidth("Kel");

    // Every alignment, one area each, outlined, drawn from an origin at the area. The pen: left,
    // centred ((48 - width) / 2 in) or right (48 - width in); the line's top at the area's top, or
    // (30 - 10) / 2 = 10 rows lower when centred. The bottom row's areas are one line tall: there
    // bottom placement (font size - area height) coincides with the top.
    const int alignments[9] = {0, 3, 1, 5, 2, 6, 7, 4, 8};  // left, centre, right; top, centre, bottom
    for (int cell = 0; cell < 9; ++cell)
    {
        const int column = cell % 3, row = cell / 3;
        const Rectangle area(4 + 52 * column, 4 + 34 * row, 48, row < 2 ? 30 : 10);
        scene.moveTo(0, 0);
        graphics.drawRect(Rectangle(area.x - 1, area.y - 1, area.w + 2, area.h + 2), frame);
        scene.moveTo(area.x, area.y);
        graphics.drawText(Rectangle(0, 0, area.w, area.h), "Kel", white, static_cast<Alignment>(alignments[cell]));
        const double penX = area.x + (column == 0 ? 0.0 : column == 1 ? (area.w - width) * 0.5 : area.w - width);
        SCOPED_TRACE("cell " + std::to_string(cell));
        expectGlyphStart(scene.image, k, static_cast<float>(penX), area.y + (row == 1 ? 10 : 0), white);
    }

    // Bottom placement puts the line's top at font size - area height whatever the area's y: an
    // area 20 tall at y -15 gets it at 10 - 20 = -10, five rows below the area's top, not at the
    // area's bottom less one line (-5).
    scene.moveTo(4, 110);
    graphics.drawRect(Rectangle(-1, -16, 42, 22), frame);
    graphics.drawText(Rectangle(0, -15, 40, 20), "Kel", white, Alignment::BottomLeft);
    expectGlyphStart(scene.image, k, 4, 100, white);

    // The shadow: the inverted colour at alpha 128, moved up by 12.5 truncated, far enough not to
    // touch the text.
    scene.moveTo(0, 0);
    graphics.drawTextWithShadow(Rectangle(56, 102, 48, 20), "Kel", Colour(255, 0, 0, 255), Alignment::TopLeft, 128, 12.5f);
    expectGlyphStart(scene.image, k, 56, 90, Colour(0, 255, 255, 128));
    expectGlyphStart(scene.image, k, 56, 102, Colour(255, 0, 0, 255));

    // Text stays inside its area and the clip comes back; a null text, and an area outside the
    // clip, draw nothing.
    const Rectangle clip(108, 88, 50, 30), narrow(110, 92, 8, 20);
    graphics.setClip(clip, false);
    graphics.drawText(narrow, "AIAIAI", white, Alignment::TopLeft);
    graphics.drawText(Rectangle(130, 92, 20, 20), nullptr, white, Alignment::TopLeft);
    graphics.drawText(Rectangle(108, 120, 40, 12), "AI", white, Alignment::TopLeft);
    EXPECT_EQ(graphics.getClip(false), clip);
    graphics.setClip(scene.image.getBounds(), false);
    EXPECT_GT(countOther(scene.image, narrow, opaqueBlack), 20);
    EXPECT_EQ(countOther(scene.image, Rectangle(108, 88, 50, 44), opaqueBlack), countOther(scene.image, narrow, opaqueBlack));

    // Right-aligned "Output" starts its pen 46.3125 left of the area's right edge, at phase 2. Drawn
    // again with the clip's left edge inside its first glyph, the walk starts there (the cut walk is
    // checked sample by sample on a hand-made glyph above).
    const double penX = 74 - static_cast<double>(font.getTextWidth("Output"));
    const Glyph& o = *font.getGlyph('O');
    graphics.drawText(Rectangle(4, 130, 70, 14), "Output", white, Alignment::TopRight);
    graphics.setClip(Rectangle(static_cast<int>(std::floor(penX)) + o.offsetX + 2, 146, 80, 14), false);
    graphics.drawText(Rectangle(4, 146, 70, 14), "Output", white, Alignment::TopRight);
    graphics.setClip(scene.image.getBounds(), false);
    expectGlyphStart(scene.image, o, penX, 130, white);

    // One line at each of several sizes. The painter's size is its own: the fallback font keeps 10.
    int top = 3;
    for (const double size : {8.0, 10.0, 13.0, 17.0, 22.0, 28.0})
    {
        graphics.setFontSize(size);
        graphics.drawText(Rectangle(166, top, 72, 40), "Kel", white, Alignment::TopLeft);
        SCOPED_TRACE("size " + std::to_string(size));
        expectGlyphStart(scene.image, *graphics.getFont().getGlyph('K'), 166, top, white);
        top += static_cast<int>(size) + 4;
    }
    EXPECT_EQ(Font::getFallback().getSize(), 10.0);
    graphics.setFont(Font::getFallback());
    EXPECT_EQ(graphics.getFontSize(), 10.0);
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "text"));
}
