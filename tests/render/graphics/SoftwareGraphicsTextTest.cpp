// The text operations of SoftwareGraphics: the LCD blend of drawGlyph on hand-made coverage
// images with hand-computed results, and drawText's placement, clipping and shadow with the
// system font.
#include "render/graphics/SoftwareGraphics.h"

#include "foundation/runtime/DeletedAtShutdown.h"
#include "media/image/Image.h"
#include "render/font/Font.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using q1framework::Alignment;
using q1framework::Colour;
using q1framework::Font;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
using Pixel = std::array<int, 4>;  // blue, green, red, alpha: the bytes in memory

Pixel pixelAt(const Image& image, int x, int y)
{
    const uint8_t* pixel = image.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Image makeCanvas(int width, int height, const Pixel& background)
{
    Image canvas(width, height, false);
    canvas.fill(background[2], background[1], background[0], background[3]);
    return canvas;
}

// The pixels whose colour differs from the background.
struct Ink
{
    int left = 1 << 20;
    int top = 1 << 20;
    int right = -1;   // last inked column
    int bottom = -1;  // last inked row
    bool isEmpty() const { return right < 0; }
};

Ink findInk(const Image& canvas, const Pixel& background, int channel = -1)
{
    Ink ink;
    for (int y = 0; y < canvas.getHeight(); ++y)
        for (int x = 0; x < canvas.getWidth(); ++x)
        {
            const Pixel pixel = pixelAt(canvas, x, y);
            bool changed = false;
            for (int c = 0; c < 3; ++c)
                changed |= (channel < 0 || channel == c) && pixel[c] != background[c];
            if (changed)
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

// The two-pixel glyph in ink at pixel 1 of a row of five background pixels, clipped to clip.
Image drawTwoPixelGlyphOnRow(int phase, const Rectangle& clip)
{
    Image canvas = makeCanvas(5, 1, background);
    SoftwareGraphics graphics(canvas);
    graphics.setClip(clip, false);
    graphics.drawGlyph(makeTwoPixelGlyph(), Point(1, 0), ink, phase);
    return canvas;
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

TEST_F(SoftwareGraphicsTextTest, TopLeftTextHangsFromTheAreaTop)
{
    const Pixel black = {0, 0, 0, 77};
    Image canvas = makeCanvas(60, 30, black);
    SoftwareGraphics graphics(canvas);
    graphics.drawText(Rectangle(10, 5, 40, 20), "A", Colour(0xFFFFFFFF), Alignment::TopLeft);

    // The top of "A" is the line's top; at 10 points its cap height covers 10 rows. Its image
    // starts one pixel left of the pen (left bearing -1), and the LCD filter spreads the ink.
    const Ink ink = findInk(canvas, black);
    EXPECT_EQ(ink.top, 5);
    EXPECT_EQ(ink.bottom, 14);
    EXPECT_GE(ink.left, 9);
    EXPECT_LE(ink.left, 10);
    EXPECT_GE(ink.right, 17);  // about 9 pixels wide
    EXPECT_LE(ink.right, 19);
    // The alpha bytes stay as they were.
    for (int y = 0; y < canvas.getHeight(); ++y)
        for (int x = 0; x < canvas.getWidth(); ++x)
            ASSERT_EQ(pixelAt(canvas, x, y)[3], 77);
}

TEST_F(SoftwareGraphicsTextTest, AlignmentPlacesThePen)
{
    const Pixel black = {0, 0, 0, 255};
    const Rectangle area(10, 5, 100, 30);
    const char* text = "AIA";
    const float width = Font::getFallback().getTextWidth(text);
    auto inkFor = [&](Alignment alignment, const Rectangle& where) {
        Image canvas = makeCanvas(130, 50, black);
        SoftwareGraphics(canvas).drawText(where, text, Colour(0xFFFFFFFF), alignment);
        return findInk(canvas, black);
    };
    const Ink topLeft = inkFor(Alignment::TopLeft, area);
    ASSERT_FALSE(topLeft.isEmpty());

    // Horizontal: the pen moves by (area width - text width) / 2 or by all of it; the ink follows
    // within the one pixel that the pen's fraction can add.
    const double centreShift = (area.w - width) * 0.5;
    const double rightShift = area.w - width;
    struct Case
    {
        Alignment alignment;
        double dx;
        int dy;
    };
    // Vertical: centring moves the line down by (30 - 10) / 2 rows.
    for (const Case& c : {Case{Alignment::TopCentre, centreShift, 0}, Case{Alignment::TopRight, rightShift, 0},
                          Case{Alignment::Centre, centreShift, 10}, Case{Alignment::CentreLeft, 0.0, 10},
                          Case{Alignment::CentreRight, rightShift, 10}, Case{Alignment::Stretch, 0.0, 0},
                          Case{static_cast<Alignment>(12), centreShift, 10}})
    {
        const Ink ink = inkFor(c.alignment, area);
        const int whole = static_cast<int>(std::floor(c.dx));
        SCOPED_TRACE("alignment " + std::to_string(static_cast<int>(c.alignment)));
        EXPECT_EQ(ink.top, topLeft.top + c.dy);
        EXPECT_EQ(ink.bottom, topLeft.bottom + c.dy);
        EXPECT_GE(ink.left, topLeft.left + whole);
        EXPECT_LE(ink.left, topLeft.left + whole + 1);
        EXPECT_GE(ink.right, topLeft.right + whole);
        EXPECT_LE(ink.right, topLeft.right + whole + 1);
    }
}

TEST_F(SoftwareGraphicsTextTest, BottomAlignmentCountsTheGapUpwards)
{
    const Pixel black = {0, 0, 0, 255};
    auto inkFor = [&](Alignment alignment, const Rectangle& area) {
        Image canvas = makeCanvas(60, 60, black);
        SoftwareGraphics graphics(canvas);
        graphics.translate(0, 30);
        graphics.drawText(area, "I", Colour(0xFFFFFFFF), alignment);
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
    const Pixel black = {0, 0, 0, 255};
    Image canvas = makeCanvas(60, 30, black);
    SoftwareGraphics graphics(canvas);
    graphics.translate(2, 0);
    graphics.setClip(Rectangle(1, 1, 50, 25), true);
    const Rectangle before = graphics.getClip(false);

    graphics.drawText(Rectangle(8, 5, 8, 20), "AIAIAI", Colour(0xFFFFFFFF), Alignment::TopLeft);
    const Ink ink = findInk(canvas, black);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_GE(ink.left, 10);
    EXPECT_LE(ink.right, 17);
    EXPECT_EQ(graphics.getClip(false), before);

    // Nothing to draw: a null text, an area outside the clip. The clip comes back each time.
    Image blank = makeCanvas(60, 30, black);
    SoftwareGraphics quiet(blank);
    quiet.setClip(Rectangle(0, 0, 30, 30), false);
    quiet.drawText(Rectangle(0, 0, 60, 30), nullptr, Colour(0xFFFFFFFF), Alignment::TopLeft);
    quiet.drawText(Rectangle(40, 0, 20, 30), "A", Colour(0xFFFFFFFF), Alignment::TopLeft);
    EXPECT_TRUE(findInk(blank, black).isEmpty());
    EXPECT_EQ(quiet.getClip(false), Rectangle(0, 0, 30, 30));
}

TEST_F(SoftwareGraphicsTextTest, ShadowIsTheInvertedColourMovedUp)
{
    const Pixel black = {0, 0, 0, 255};
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
            EXPECT_EQ(pixel[2], 0);
            EXPECT_LE(pixel[1], 127);
            EXPECT_LE(pixel[0], 127);
            brightest = std::max({brightest, pixel[0], pixel[1]});
        }
    EXPECT_GT(brightest, 100);
}

TEST_F(SoftwareGraphicsTextTest, FontSizeIsThePaintersOwn)
{
    const Pixel black = {0, 0, 0, 255};
    Image canvas = makeCanvas(60, 40, black);
    SoftwareGraphics graphics(canvas);
    EXPECT_EQ(graphics.getFontSize(), 10.0);
    graphics.setFontSize(20.0);
    EXPECT_EQ(graphics.getFontSize(), 20.0);
    EXPECT_EQ(Font::getFallback().getSize(), 10.0);

    // The cap height of "A" at 20 points snaps to 20 rows.
    graphics.drawText(Rectangle(5, 5, 50, 30), "A", Colour(0xFFFFFFFF), Alignment::TopLeft);
    const Ink ink = findInk(canvas, black);
    EXPECT_EQ(ink.top, 5);
    EXPECT_EQ(ink.bottom, 24);

    graphics.setFont(Font::getFallback());
    EXPECT_EQ(graphics.getFontSize(), 10.0);
    EXPECT_TRUE(graphics.getFont() == Font::getFallback());
}
