#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"
#include "media/image/Image.h"

#include <gtest/gtest.h>

using q1framework::Alignment;
using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;

namespace
{
// Pixel (x, y) of a labelled picture: blue 10 * x + 1, green 10 * y + 1, red 200, opaque.
PixelValue label(int x, int y)
{
    return {10 * x + 1, 10 * y + 1, 200, 255};
}

Image makeLabelled(int width, int height)
{
    Image image(width, height, true);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            uint8_t* pixel = image.getPixelPointer(x, y);
            const PixelValue value = label(x, y);
            pixel[0] = uint8_t(value.blue);
            pixel[1] = uint8_t(value.green);
            pixel[2] = uint8_t(value.red);
            pixel[3] = uint8_t(value.alpha);
        }
    return image;
}

Image makeSolid(int width, int height, const PixelValue& value)
{
    return makeCanvas(width, height, value);
}

// The labels of count pixels from (x, y) on, a step of (stepX, stepY) apart: the label's x
// (or its y, when going down), -1 for black.
std::vector<int> labelsAlong(const Image& image, int x, int y, int stepX, int stepY, int count)
{
    std::vector<int> labels;
    for (int index = 0; index < count; ++index, x += stepX, y += stepY)
    {
        const PixelValue pixel = readPixel(image, x, y);
        labels.push_back(pixel == opaqueBlack ? -1 : ((stepY != 0 ? pixel.green : pixel.blue) - 1) / 10);
    }
    return labels;
}

std::vector<int> labelColumns(const Image& image, int y, int from, int count)
{
    return labelsAlong(image, from, y, 1, 0, count);
}

std::vector<int> labelRows(const Image& image, int x, int from, int count)
{
    return labelsAlong(image, x, from, 0, 1, count);
}
}

TEST(SoftwareGraphicsImagesTest, APartCutAtItsLeftIsNotShiftedAndTheClipPicksTheSourcePixels)
{
    const Image labelled = makeLabelled(4, 2);
    Image image = makeCanvas(8, 4, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.drawImagePart(labelled, Rectangle(-2, 0, 4, 2), Point(3, 1), false, 255);  // source (0, 0, 2, 2)
    EXPECT_EQ(readPixel(image, 3, 1), label(0, 0));
    EXPECT_EQ(readPixel(image, 4, 2), label(1, 1));
    EXPECT_EQ(readPixel(image, 5, 1), opaqueBlack);
    EXPECT_EQ(readPixel(image, 2, 1), opaqueBlack);

    graphics.drawImagePart(labelled, Rectangle(2, 0, 5, 1), Point(0, 0), false, 255);  // source (2, 0, 2, 1)
    EXPECT_EQ(labelColumns(image, 0, 0, 3), (std::vector<int>{2, 3, -1}));

    graphics.setClip(Rectangle(5, 0, 3, 4), false);
    graphics.translate(1, 0);
    graphics.drawImage(labelled, Point(3, 3), false, 0);  // at (4, 3); the clip starts at column 1
    EXPECT_EQ(labelColumns(image, 3, 3, 5), (std::vector<int>{-1, -1, 1, 2, 3}));
    EXPECT_TRUE(marginIsClear(image));
}

TEST(SoftwareGraphicsImagesTest, OpacityAppliesToBlendedBlitsOnlyAndScalingIgnoresIt)
{
    const Image sprite = makeSolid(1, 1, PixelValue{40, 80, 120, 160});
    const PixelValue background{200, 100, 50, 255};
    Image image = makeCanvas(6, 6, background);
    SoftwareGraphics graphics(image);

    // Opacity 99: k = 100, source scaled to 15, 31, 46, 62; 256 - 62 = 194 keeps
    // 200 * 194 >> 8 = 151, 75, 37, 193 of the background.
    graphics.drawImage(sprite, Point(0, 0), true, 99);
    EXPECT_EQ(readPixel(image, 0, 0), (PixelValue{166, 106, 83, 255}));
    graphics.drawImage(sprite, Point(1, 0), false, 99);  // copied as it is
    EXPECT_EQ(readPixel(image, 1, 0), (PixelValue{40, 80, 120, 160}));
    graphics.drawImage(sprite, Point(2, 0), true, 500);  // beyond 255: full opacity
    // 256 - 160 = 96: 200 * 96 >> 8 = 75 + 40, 37 + 80, 18 + 120, 95 + 160.
    EXPECT_EQ(readPixel(image, 2, 0), (PixelValue{115, 117, 138, 255}));

    // Equal sizes go through drawImagePart with the opacity; a real scale blends at full opacity.
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(3, 0, 1, 1), true, 99, Alignment::Centre);
    EXPECT_EQ(readPixel(image, 3, 0), (PixelValue{166, 106, 83, 255}));
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(0, 2, 2, 2), true, 99, Alignment::Centre);
    for (auto [x, y] : {std::pair{0, 2}, {1, 2}, {0, 3}, {1, 3}})
        EXPECT_EQ(readPixel(image, x, y), (PixelValue{115, 117, 138, 255})) << x << ", " << y;
    EXPECT_EQ(readPixel(image, 2, 2), background);
}

TEST(SoftwareGraphicsImagesTest, NearestNeighbourScalingStepsInSixteenDotSixteen)
{
    Image image = makeCanvas(10, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    const Image labelled = makeLabelled(4, 3);
    // 3 columns onto 7: step (3 << 16) / 7 = 28086; u = 0, 28086, ... 168516 gives columns
    // 0, 0, 0, 1, 1, 2, 2.
    graphics.drawImageScaled(labelled, Rectangle(0, 0, 3, 1), Rectangle(0, 0, 7, 1), false, 255, Alignment::TopLeft);
    EXPECT_EQ(labelColumns(image, 0, 0, 8), (std::vector<int>{0, 0, 0, 1, 1, 2, 2, -1}));
    // A source that starts at column 1: 2 columns onto 4 from u = 1 << 16, step 32768.
    graphics.drawImageScaled(labelled, Rectangle(1, 0, 2, 1), Rectangle(0, 1, 4, 1), false, 255, Alignment::TopLeft);
    EXPECT_EQ(labelColumns(image, 1, 0, 5), (std::vector<int>{1, 1, 2, 2, -1}));
    // 3 rows onto 5: step (3 << 16) / 5 = 39321 gives rows 0, 0, 1, 1, 2.
    graphics.drawImageScaled(labelled, Rectangle(3, 0, 1, 3), Rectangle(9, 2, 1, 5), false, 255, Alignment::Stretch);
    EXPECT_EQ(labelRows(image, 9, 2, 6), (std::vector<int>{0, 0, 1, 1, 2, -1}));
    // A clip that starts inside the destination picks the same source pixels there.
    graphics.setClip(Rectangle(3, 3, 7, 1), false);
    graphics.drawImageScaled(labelled, Rectangle(0, 0, 3, 1), Rectangle(0, 3, 7, 1), false, 255, Alignment::TopLeft);
    EXPECT_EQ(labelColumns(image, 3, 0, 8), (std::vector<int>{-1, -1, -1, 1, 1, 2, 2, -1}));
}

TEST(SoftwareGraphicsImagesTest, AlignedImagesAreScaledOnlyWhenTheSizesDiffer)
{
    const Image labelled = makeLabelled(2, 2);
    Image image = makeCanvas(8, 8, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.drawImageAligned(labelled, Rectangle(3, 3, 2, 2), false, 255, Alignment::BottomRight);
    EXPECT_EQ(readPixel(image, 3, 3), label(0, 0));
    graphics.drawImageAligned(labelled, Rectangle(0, 4, 4, 4), false, 255, Alignment::TopLeft);  // twice the size
    EXPECT_EQ(labelColumns(image, 7, 0, 5), (std::vector<int>{0, 0, 1, 1, -1}));
    EXPECT_EQ(labelRows(image, 0, 3, 5), (std::vector<int>{-1, 0, 0, 1, 1}));
}

TEST(SoftwareGraphicsImagesTest, TilesRepeatTheSourceAndTheLastOnesAreClipped)
{
    const Image labelled = makeLabelled(10, 1);
    Image image = makeCanvas(30, 2, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.setClip(Rectangle(0, 0, 28, 2), false);
    graphics.tileImage(labelled, Rectangle(0, 0, 10, 1), Rectangle(0, 0, 25, 2), false);
    for (int x = 0; x < 30; ++x)
    {
        const PixelValue expected = x < 25 ? label(x % 10, 0) : opaqueBlack;
        EXPECT_EQ(readPixel(image, x, 0), expected) << x;
        EXPECT_EQ(readPixel(image, x, 1), expected) << x;
    }
    EXPECT_EQ(graphics.getClip(false), Rectangle(0, 0, 28, 2));  // restored

    // A destination outside the clip, or a source outside the image, leaves the clip as it was.
    graphics.tileImage(labelled, Rectangle(0, 0, 10, 1), Rectangle(40, 0, 5, 1), false);
    EXPECT_EQ(graphics.getClip(false), Rectangle(0, 0, 28, 2));
    graphics.tileImage(labelled, Rectangle(12, 0, 3, 1), Rectangle(0, 0, 5, 1), false);
    EXPECT_EQ(graphics.getClip(false), Rectangle(0, 0, 28, 2));
}

TEST(SoftwareGraphicsImagesTest, ThreePartImagesKeepTheirCapsAndTileTheMiddle)
{
    Image image = makeCanvas(16, 6, opaqueBlack);
    SoftwareGraphics graphics(image);
    // Thirds of 9 columns: caps 0..2 and 6..8, middle 3..5 tiled over 8 columns; the image's 2
    // rows, not the destination's 5.
    graphics.drawThreePartHorizontal(makeLabelled(9, 2), Rectangle(0, 0, 14, 5), false);
    EXPECT_EQ(labelColumns(image, 0, 0, 15), (std::vector<int>{0, 1, 2, 3, 4, 5, 3, 4, 5, 3, 4, 6, 7, 8, -1}));
    EXPECT_EQ(labelColumns(image, 1, 0, 1), (std::vector<int>{0}));
    EXPECT_EQ(labelColumns(image, 2, 0, 1), (std::vector<int>{-1}));

    // Width 10: thirds of 3, so column 6 is never read; narrower than two caps, the caps
    // overlap (the right one on top) and there is no middle.
    Image narrow = makeCanvas(8, 1, opaqueBlack);
    SoftwareGraphics narrowGraphics(narrow);
    narrowGraphics.drawThreePartHorizontal(makeLabelled(10, 1), Rectangle(0, 0, 4, 1), false);
    EXPECT_EQ(labelColumns(narrow, 0, 0, 5), (std::vector<int>{0, 7, 8, 9, -1}));
}

TEST(SoftwareGraphicsImagesTest, VerticalThreePartIsACentredColumnThatIsNeverStretched)
{
    Image image = makeCanvas(8, 14, opaqueBlack);
    SoftwareGraphics graphics(image);
    // Thirds of 9 rows; the 2-wide column sits at 0 + (6 - 2) / 2 = 2.
    graphics.drawThreePartVertical(makeLabelled(2, 9), Rectangle(0, 0, 6, 12), false);
    EXPECT_EQ(labelRows(image, 2, 0, 13), (std::vector<int>{0, 1, 2, 3, 4, 5, 3, 4, 5, 6, 7, 8, -1}));
    EXPECT_EQ(readPixel(image, 3, 0), label(1, 0));
    EXPECT_EQ(readPixel(image, 1, 0), opaqueBlack);
    EXPECT_EQ(readPixel(image, 4, 0), opaqueBlack);

    // A column wider than the destination overhangs it on both sides: x = 4 + (2 - 6) / 2 = 2.
    Image wide = makeCanvas(10, 3, opaqueBlack);
    SoftwareGraphics wideGraphics(wide);
    wideGraphics.drawThreePartVertical(makeLabelled(6, 3), Rectangle(4, 0, 2, 3), false);
    EXPECT_EQ(labelColumns(wide, 0, 0, 10), (std::vector<int>{-1, -1, 0, 1, 2, 3, 4, 5, -1, -1}));
}

TEST(SoftwareGraphicsImagesTest, NinePartCornersStayAndEdgesAndCentreTile)
{
    Image image = makeCanvas(12, 10, opaqueBlack);
    SoftwareGraphics graphics(image);
    graphics.drawNinePart(makeLabelled(6, 6), Rectangle(1, 1, 10, 8), false);
    // Columns: corner 0, 1; middle 2, 3 tiled over 6; corner 4, 5. Rows alike over 8.
    const std::vector<int> across{-1, 0, 1, 2, 3, 2, 3, 2, 3, 4, 5, -1};
    const std::vector<int> down{-1, 0, 1, 2, 3, 2, 3, 4, 5, -1};
    EXPECT_EQ(labelColumns(image, 1, 0, 12), across);
    EXPECT_EQ(labelColumns(image, 5, 0, 12), across);
    EXPECT_EQ(labelColumns(image, 8, 0, 12), across);
    EXPECT_EQ(labelRows(image, 1, 0, 10), down);
    EXPECT_EQ(labelRows(image, 6, 0, 10), down);
    EXPECT_EQ(readPixel(image, 10, 8), label(5, 5));
}

TEST(SoftwareGraphicsImagesTest, ImagesScene)
{
    // A soft disc sprite drawn by the renderer itself on a transparent image, a framed panel
    // for the three- and nine-part images, and a striped tile.
    Image sprite(20, 20, true);
    {
        SoftwareGraphics painter(sprite);
        painter.fillCircle(Colour(255, 180, 60, 255), 9.5f, 9.5f, 9.5f);
        painter.fillCircle(Colour(255, 255, 255, 200), 7.0f, 7.0f, 3.0f);
    }
    Image frame(12, 12, true);
    {
        SoftwareGraphics painter(frame);
        painter.fillRoundedRect(Rectangle(0, 0, 12, 12), 4, Colour(80, 160, 255, 220));
        painter.drawRect(Rectangle(1, 1, 10, 10), Colour(255, 255, 255, 255));
    }
    Image tile = makeCanvas(6, 6, PixelValue{0, 0, 0, 0});
    {
        SoftwareGraphics painter(tile);
        Colour stripe(255, 255, 255, 96);
        painter.fillRect(Rectangle(0, 0, 3, 6), stripe, true);
        painter.fillRect(Rectangle(0, 0, 6, 2), stripe, true);
    }
    const Image solid = makeSolid(8, 8, PixelValue{40, 80, 120, 160});

    Image image = makeCanvas(160, 120, PixelValue{200, 100, 50, 255});
    SoftwareGraphics graphics(image);
    for (int i = 0; i < 5; ++i)
        graphics.drawImage(sprite, Point(4 + 22 * i, 4), true, 255 - 50 * i);
    graphics.drawImage(sprite, Point(114, 4), false, 255);
    graphics.drawImage(solid, Point(140, 8), true, 99);
    graphics.tileImage(tile, tile.getBounds(), Rectangle(4, 30, 70, 26), true);
    graphics.drawThreePartHorizontal(frame, Rectangle(80, 30, 76, 12), true);
    graphics.drawThreePartVertical(frame, Rectangle(80, 46, 20, 70), true);
    graphics.drawNinePart(frame, Rectangle(104, 46, 52, 40), true);
    graphics.drawImageScaled(sprite, sprite.getBounds(), Rectangle(4, 60, 56, 56), true, 255, Alignment::Stretch);
    graphics.drawImageScaled(sprite, sprite.getBounds(), Rectangle(64, 60, 11, 11), true, 255, Alignment::Stretch);
    graphics.drawImageAligned(sprite, Rectangle(104, 90, 52, 26), true, 255, Alignment::CentreRight);

    // The solid picture at opacity 99 over the background (see the opacity test): 166, 106,
    // 83, 255. The unblended sprite's corner is transparent, copied as it is.
    EXPECT_EQ(readPixel(image, 143, 11), (PixelValue{166, 106, 83, 255}));
    EXPECT_EQ(readPixel(image, 114, 4), (PixelValue{0, 0, 0, 0}));
    EXPECT_TRUE(GoldenImage::matchesGolden(image, "images"));
}
