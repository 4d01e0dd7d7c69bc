// The text operations of SoftwareGraphics: the LCD blend of drawGlyph on hand-made coverage
// images with hand-computed results, and drawText's placement, clipping and shadow with the
// system font.
#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "foundation/runtime/DeletedAtShutdown.h"
#include "media/image/Image.h"
#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

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
using Pixel = PixelValue;

Pixel pixelAt(const Image& image, int x, int y) { return readPixel(image, x, y); }

// The pixels whose colour differs from the background.
struct Ink
{
    int left = 1 << 20;
    int top = 1 << 20;
    int right = -1;   // last inked column
    int bottom = -1;  // last inked row
    bool isEmpty() const { return right < 0; }
};

// channel: 0 blue, 1 green, 2 red, or -1 for any.
Ink findInk(const Image& canvas, const Pixel& background, int channel = -1)
{
    Ink ink;
    for (int y = 0; y < canvas.getHeight(); ++y)
        for (int x = 0; x < canvas.getWidth(); ++x)
        {
            const Pixel pixel = pixelAt(canvas, x, y);
            const bool changed = (channel < 0 || channel == 0) && pixel.blue != background.blue;
            if (changed || ((channel < 0 || channel == 1) && pixel.green != background.green)
                || ((channel < 0 || channel == 2) && pixel.red != background.red))
            {
                ink.left = std::min(ink.left, x);
                ink.top = std::min(ink.top, y);
                ink.right = std::max(ink.right, x);
                ink.bottom = std::max(ink.bottom, y);
            }
        }
    return ink;
}

// A glyph image of two pixels, one row: coverage triples (255, 128, 0) and (64, 255, 1). Byte 3
// holds a value the blend must not read.
Image makeTwoPixelGlyph()
{
    Image glyph(2, 1, true, 0);
    const uint8_t bytes[8] = {255, 128, 0, 7, 64, 255, 1, 7};
    for (int i = 0; i < 8; ++i)
        glyph.getPixelPointer(0, 0)[i] = bytes[i];
    return glyph;
}

const Pixel background = {200, 20, 30, 40};
const Colour ink(200, 100, 50, 255);
const Pixel black = {0, 0, 0, 255};
const Colour white(0xFFFFFFFF);

// The two-pixel glyph in ink at pixel 1 of a row of five background pixels, clipped to clip.
Image drawTwoPixelGlyphOnRow(int phase, const Rectangle& clip)
{
    Image canvas = makeCanvas(5, 1, background);
    SoftwareGraphics graphics(canvas);
    graphics.setClip(clip, false);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(1, 0), ink, phase);
    return canvas;
}

// Checks the first two pixel columns of glyph as white text drew them on black, with its pen at
// penX (fractional) and the line's top at lineTop, in buffer pixels. On black the blend reduces
// to channel = (255 * sample) >> 8, and sample s of a glyph row lands on subpixel
// 3 * (floor(penX) + offsetX) + phase + s, phase being the pen's fraction in thirds; subpixels go
// red, green, blue. Subpixels before the first sample stay black.
void expectGlyphStart(const Image& canvas, const Glyph& glyph, double penX, int lineTop)
{
    const int left = static_cast<int>(std::floor(penX)) + glyph.offsetX;
    const int phase = static_cast<int>((penX - std::floor(penX)) * 3);
    const int samples = glyph.image.getWidth() * 3;
    for (int row = 0; row < glyph.image.getHeight(); ++row)
        for (int subpixel = 0; subpixel < 6; ++subpixel)
        {
            const int sample = subpixel - phase;
            const int coverage =
                sample >= 0 && sample < samples ? glyph.image.getPixelPointer(sample / 3, row)[sample % 3] : 0;
            const Pixel pixel = pixelAt(canvas, left + subpixel / 3, lineTop + glyph.offsetY + row);
            const int channel = subpixel % 3 == 0 ? pixel.red : subpixel % 3 == 1 ? pixel.green : pixel.blue;
            ASSERT_EQ(channel, (255 * coverage) >> 8) << "row " << row << ", subpixel " << subpixel;
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
// (127 * 20 + 100 * 128) >> 8 = 15340 >> 8 = 59.
TEST_F(SoftwareGraphicsTextTest, GlyphBlendsEachSubpixelIntoItsChannel)
{
    const Image glyph = makeTwoPixelGlyph();
    Image canvas = makeCanvas(5, 3, background);
    SoftwareGraphics graphics(canvas);
    graphics.translate(1, 0);
    graphics.drawGlyph(glyph, Point(0, 1), ink, 0);

    // Red, green, blue from the left third: 255 -> 199, 128 -> 59, 0 -> unchanged.
    EXPECT_EQ(pixelAt(canvas, 1, 1), (Pixel{200, 59, 199, 40}));
    // 64 on red 30 -> 72, 255 on green -> 99, 1 on blue 200 -> (254 * 200 + 50) >> 8 = 198.
    EXPECT_EQ(pixelAt(canvas, 2, 1), (Pixel{198, 99, 72, 40}));
    EXPECT_EQ(pixelAt(canvas, 0, 1), background);
    EXPECT_EQ(pixelAt(canvas, 3, 1), background);
    EXPECT_EQ(pixelAt(canvas, 1, 0), background);
    EXPECT_EQ(pixelAt(canvas, 1, 2), background);
}

TEST_F(SoftwareGraphicsTextTest, PhaseShiftsTheSamplesBySubpixels)
{
    // The samples 255, 128 | 0, 64, 255 | 1 fall on green, blue | red, green, blue | red.
    const Image one = drawTwoPixelGlyphOnRow(1, Rectangle(0, 0, 5, 1));
    EXPECT_EQ(pixelAt(one, 1, 0), (Pixel{124, 99, 30, 40}));
    EXPECT_EQ(pixelAt(one, 2, 0), (Pixel{49, 39, 30, 40}));
    EXPECT_EQ(pixelAt(one, 3, 0), (Pixel{200, 20, 30, 40}));  // (254 * 30 + 200) >> 8 = 30

    // 255 | 128, 0, 64 | 255, 1 on blue | red, green, blue | red, green.
    const Image two = drawTwoPixelGlyphOnRow(2, Rectangle(0, 0, 5, 1));
    EXPECT_EQ(pixelAt(two, 1, 0), (Pixel{49, 20, 30, 40}));
    EXPECT_EQ(pixelAt(two, 2, 0), (Pixel{161, 20, 114, 40}));
    EXPECT_EQ(pixelAt(two, 3, 0), (Pixel{200, 20, 199, 40}));  // green: (254 * 20 + 100) >> 8 = 20

    // Phases other than 0, 1 and 2 draw nothing.
    EXPECT_TRUE(findInk(drawTwoPixelGlyphOnRow(3, Rectangle(0, 0, 5, 1)), background).isEmpty());
    EXPECT_TRUE(findInk(drawTwoPixelGlyphOnRow(-1, Rectangle(0, 0, 5, 1)), background).isEmpty());
}

TEST_F(SoftwareGraphicsTextTest, AGlyphCutOnTheLeftStartsInsideItsSamples)
{
    // The walk begins at pixel 2 with the glyph's sample 1 (128), as unclipped, and runs for the
    // glyph's width from there: the last two samples, which would reach pixel 3, are left out.
    const Image two = drawTwoPixelGlyphOnRow(2, Rectangle(2, 0, 3, 1));
    EXPECT_EQ(pixelAt(two, 1, 0), background);
    EXPECT_EQ(pixelAt(two, 2, 0), (Pixel{161, 20, 114, 40}));
    EXPECT_EQ(pixelAt(two, 3, 0), background);

    // With phase 0 the cut is at a pixel boundary: pixel 2 gets the glyph's second pixel whole.
    const Image zero = drawTwoPixelGlyphOnRow(0, Rectangle(2, 0, 3, 1));
    EXPECT_EQ(pixelAt(zero, 1, 0), background);
    EXPECT_EQ(pixelAt(zero, 2, 0), (Pixel{198, 99, 72, 40}));

    // A clip on the right stops the walk at its edge.
    const Image cut = drawTwoPixelGlyphOnRow(2, Rectangle(0, 0, 3, 1));
    EXPECT_EQ(pixelAt(cut, 2, 0), (Pixel{161, 20, 114, 40}));
    EXPECT_EQ(pixelAt(cut, 3, 0), background);
}

TEST_F(SoftwareGraphicsTextTest, AClipBeyondTheBufferWritesNothingOutsideIt)
{
    // The canvas has a margin: a glyph hanging over the right edge under a clip that reaches past
    // the buffer must leave the margin's zeros alone, and still draw its part inside.
    Image canvas(5, 1, true, 16);
    SoftwareGraphics graphics(canvas);
    graphics.setClip(Rectangle(-10, -10, 40, 40), false);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(4, 0), ink, 2);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(-1, 0), ink, 1);
    for (int x = -3; x < 0; ++x)
        EXPECT_EQ(pixelAt(canvas, x, 0), (Pixel{0, 0, 0, 0})) << "left margin " << x;
    for (int x = 5; x < 9; ++x)
        EXPECT_EQ(pixelAt(canvas, x, 0), (Pixel{0, 0, 0, 0})) << "right margin " << x;
    // Pixel 4 takes the glyph's first samples 255 and 128 on green and blue (phase 2 puts 255 on
    // blue): blue (1 * 0 + 50 * 255) >> 8 = 49.
    EXPECT_EQ(pixelAt(canvas, 4, 0).blue, 49);
}

TEST_F(SoftwareGraphicsTextTest, CoverageBelowOneStepWritesNothing)
{
    Image glyph(1, 1, true, 0);
    glyph.getPixelPointer(0, 0)[0] = 254;
    glyph.getPixelPointer(0, 0)[1] = 255;
    Image canvas = makeCanvas(1, 1, {255, 255, 255, 255});
    // Alpha 1: 1 * 254 < 255 leaves red alone; 1 * 255 gives weight 1 on green:
    // (254 * 255 + 100 * 1) >> 8 = 253.
    SoftwareGraphics(canvas).drawGlyph(glyph, Point(0, 0), Colour(200, 100, 50, 1), 0);
    EXPECT_EQ(pixelAt(canvas, 0, 0), (Pixel{255, 253, 255, 255}));

    // An empty or null image draws nothing.
    SoftwareGraphics(canvas).drawGlyph(Image(), Point(0, 0), ink, 1);
    EXPECT_EQ(pixelAt(canvas, 0, 0), (Pixel{255, 253, 255, 255}));
}

// Every alignment, one area each, outlined. The bottom row's areas are one line tall: there the
// bottom placement (font size - area height above y 0) coincides with the top.
TEST_F(SoftwareGraphicsTextTest, AlignmentsScene)
{
    Image canvas = makeCanvas(160, 100, black);
    SoftwareGraphics graphics(canvas);
    const Font& font = graphics.getFont();
    const char* text = "Kel";
    const double width = font.getTextWidth(text);
    const Glyph& k = *font.getGlyph('K');

    const Alignment alignments[9] = {Alignment::TopLeft,    Alignment::TopCentre,    Alignment::TopRight,
                                     Alignment::CentreLeft, Alignment::Centre,       Alignment::CentreRight,
                                     Alignment::BottomLeft, Alignment::BottomCentre, Alignment::BottomRight};
    for (int cell = 0; cell < 9; ++cell)
    {
        const int column = cell % 3;
        const int row = cell / 3;
        const Rectangle area(4 + 52 * column, 4 + 34 * row, 48, row < 2 ? 30 : 10);
        graphics.drawRect(Rectangle(area.x - 1, area.y - 1, area.w + 2, area.h + 2), Colour(0xFF505050));
        // Cells are drawn from an origin at the area, so that the bottom row's y is 0.
        graphics.translate(area.x, area.y);
        graphics.drawText(Rectangle(0, 0, area.w, area.h), text, white, alignments[cell]);
        graphics.translate(-area.x, -area.y);

        // The pen: left, centred ((48 - width) / 2 to the right) or right (48 - width); the line's
        // top at the area's top, or (30 - 10) / 2 = 10 rows lower when centred.
        const double penX = area.x + (column == 0 ? 0.0 : column == 1 ? (area.w - width) * 0.5 : area.w - width);
        const int lineTop = area.y + (row == 1 ? 10 : 0);
        SCOPED_TRACE("cell " + std::to_string(cell));
        expectGlyphStart(canvas, k, static_cast<float>(penX), lineTop);
    }
    EXPECT_TRUE(GoldenImage::matchesGolden(canvas, "text"));
}

TEST_F(SoftwareGraphicsTextTest, BottomAlignmentCountsTheGapUpwards)
{
    auto inkFor = [&](Alignment alignment, const Rectangle& area) {
        Image canvas = makeCanvas(60, 60, black);
        SoftwareGraphics graphics(canvas);
        graphics.translate(0, 30);
        graphics.drawText(area, "I", white, alignment);
        return findInk(canvas, black);
    };

    // An area one line tall: bottom and top placement agree.
    const Rectangle line(10, 0, 40, 10);
    const Ink top = inkFor(Alignment::TopLeft, line);
    ASSERT_EQ(top.top, 30);
    const std::pair<Alignment, Alignment> pairs[] = {{Alignment::BottomLeft, Alignment::TopLeft},
                                                     {Alignment::BottomCentre, Alignment::TopCentre},
                                                     {Alignment::BottomRight, Alignment::TopRight}};
    for (const auto& [bottomAligned, topAligned] : pairs)
    {
        const Ink bottomInk = inkFor(bottomAligned, line);
        const Ink topInk = inkFor(topAligned, line);
        EXPECT_EQ(bottomInk.top, topInk.top);
        EXPECT_EQ(bottomInk.left, topInk.left);
    }

    // An area 20 rows tall at y -15: the line's top goes to 10 - 20 = -10, five rows below the
    // area's top (buffer row 20), not to the area's bottom less one line (-5, row 25).
    const Ink bottom = inkFor(Alignment::BottomLeft, Rectangle(10, -15, 40, 20));
    EXPECT_EQ(bottom.top, 20);
    // At y 5 the same area puts the line at -10, above it, where the clip leaves nothing.
    EXPECT_TRUE(inkFor(Alignment::BottomLeft, Rectangle(10, 5, 40, 20)).isEmpty());
}

TEST_F(SoftwareGraphicsTextTest, TextStaysInsideItsAreaAndTheClipComesBack)
{
    Image canvas = makeCanvas(60, 30, black);
    SoftwareGraphics graphics(canvas);
    graphics.translate(2, 0);
    graphics.setClip(Rectangle(1, 1, 50, 25), true);
    const Rectangle before = graphics.getClip(false);

    graphics.drawText(Rectangle(8, 5, 8, 20), "AIAIAI", white, Alignment::TopLeft);
    const Ink ink = findInk(canvas, black);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_GE(ink.left, 10);
    EXPECT_LE(ink.right, 17);
    EXPECT_EQ(graphics.getClip(false), before);

    // Nothing to draw: a null text, an area outside the clip. The clip comes back each time.
    Image blank = makeCanvas(60, 30, black);
    SoftwareGraphics quiet(blank);
    quiet.setClip(Rectangle(0, 0, 30, 30), false);
    quiet.drawText(Rectangle(0, 0, 60, 30), nullptr, white, Alignment::TopLeft);
    quiet.drawText(Rectangle(40, 0, 20, 30), "A", white, Alignment::TopLeft);
    EXPECT_TRUE(findInk(blank, black).isEmpty());
    EXPECT_EQ(quiet.getClip(false), Rectangle(0, 0, 30, 30));
}

TEST_F(SoftwareGraphicsTextTest, ShadowIsTheInvertedColourMovedUp)
{
    Image canvas = makeCanvas(40, 30, black);
    SoftwareGraphics(canvas).drawTextWithShadow(Rectangle(5, 10, 30, 15), "I", Colour(255, 0, 0, 255),
                                                Alignment::TopLeft, 128, 3.5f);
    // The text in red from row 10, its shadow in cyan at alpha 128 from row 10 - 3 (the offset is
    // truncated). At alpha 128 no shadow sample can exceed (255 * 128) >> 8 = 127, and cyan has
    // no red.
    const Ink red = findInk(canvas, black, 2);
    const Ink green = findInk(canvas, black, 1);
    EXPECT_EQ(red.top, 10);
    EXPECT_EQ(green.top, 7);
    int brightest = 0;
    for (int y = 7; y < 10; ++y)
        for (int x = 0; x < canvas.getWidth(); ++x)
        {
            const Pixel pixel = pixelAt(canvas, x, y);
            EXPECT_EQ(pixel.red, 0);
            EXPECT_LE(pixel.green, 127);
            EXPECT_LE(pixel.blue, 127);
            brightest = std::max({brightest, pixel.blue, pixel.green});
        }
    EXPECT_GT(brightest, 100);
}

// One line at each of several sizes. The painter's size is its own: the fallback font keeps 10.
TEST_F(SoftwareGraphicsTextTest, SizesScene)
{
    Image canvas = makeCanvas(160, 128, black);
    SoftwareGraphics graphics(canvas);
    EXPECT_EQ(graphics.getFontSize(), 10.0);
    int top = 3;
    for (const double size : {8.0, 10.0, 13.0, 17.0, 22.0, 28.0})
    {
        graphics.setFontSize(size);
        EXPECT_EQ(graphics.getFontSize(), size);
        graphics.drawText(Rectangle(4, top, 156, 40), "Kelvane", white, Alignment::TopLeft);
        SCOPED_TRACE("size " + std::to_string(size));
        expectGlyphStart(canvas, *graphics.getFont().getGlyph('K'), 4.0, top);
        top += static_cast<int>(size) + 4;
    }
    EXPECT_EQ(Font::getFallback().getSize(), 10.0);
    graphics.setFont(Font::getFallback());
    EXPECT_EQ(graphics.getFontSize(), 10.0);
    EXPECT_TRUE(graphics.getFont() == Font::getFallback());
    EXPECT_TRUE(GoldenImage::matchesGolden(canvas, "text"));
}

// Right-aligned "Output" starts its pen 46.3125 pixels left of the area's right edge, at a
// fraction of 0.6875: phase 2. Drawn twice, the second time with the clip's left edge inside its
// first glyph. From that edge on, the clipped line must match the whole one, except where the
// first glyph's last two samples land: the clipped walk stops one glyph width after its start
// subpixel, and leaves them out.
TEST_F(SoftwareGraphicsTextTest, PhaseTwoLeftOfTheClipScene)
{
    Image canvas = makeCanvas(80, 40, black);
    SoftwareGraphics graphics(canvas);
    const char* text = "Output";
    const double penX = 74 - static_cast<double>(graphics.getFont().getTextWidth(text));
    ASSERT_EQ(static_cast<int>((penX - std::floor(penX)) * 3), 2) << "pen at " << penX;
    const Glyph& o = *graphics.getFont().getGlyph('O');
    const int glyphLeft = static_cast<int>(std::floor(penX)) + o.offsetX;
    const int clipLeft = glyphLeft + 2;

    graphics.drawText(Rectangle(4, 4, 70, 14), text, white, Alignment::TopRight);
    graphics.setClip(Rectangle(clipLeft, 0, 80 - clipLeft, 40), false);
    graphics.drawText(Rectangle(4, 22, 70, 14), text, white, Alignment::TopRight);

    expectGlyphStart(canvas, o, penX, 4);
    const int droppedColumn = glyphLeft + o.image.getWidth();
    for (int row = 0; row < 14; ++row)
        for (int x = 0; x < 80; ++x)
        {
            const Pixel whole = pixelAt(canvas, x, 4 + row);
            const Pixel clipped = pixelAt(canvas, x, 22 + row);
            if (x < clipLeft)
                EXPECT_EQ(clipped, black) << x << ", " << row;
            else if (x == droppedColumn)
                EXPECT_EQ(clipped.blue, whole.blue) << "row " << row;  // red and green are the dropped samples'
            else
                EXPECT_EQ(clipped, whole) << x << ", " << row;
        }
    EXPECT_TRUE(GoldenImage::matchesGolden(canvas, "text"));
}
