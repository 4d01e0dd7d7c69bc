#include "render/graphics/SoftwareGraphics.h"

#include "GoldenImage.h"
#include "PixelAssertions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

using q1framework::Alignment;
using q1framework::Colour;
using q1framework::Image;
using q1framework::Point;
using q1framework::Rectangle;
using q1framework::SoftwareGraphics;
using Labels = std::vector<int>;

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
            std::copy_n(label(x, y).begin(), 4, image.getPixelPointer(x, y));
    return image;
}

// Of count pixels from (x, y) on (relative to the origin), across or down, the label's x (across)
// or y (down), -1 for black.
Labels labels(const Scene& scene, int x, int y, int count, bool down = false)
{
    Labels found;
    const Point start = scene.graphics.getOrigin() + Point(x, y);
    for (int index = 0; index < count; ++index)
    {
        const PixelValue pixel = readPixel(scene.image, start.x + (down ? 0 : index), start.y + (down ? index : 0));
        found.push_back(pixel == opaqueBlack ? -1 : ((down ? pixel[1] : pixel[0]) - 1) / 10);
    }
    return found;
}
}  // namespace

// Groups of blits of labelled pictures on black, each checked for the source pixel that lands on
// each destination pixel, above a panel of blended, tiled, cut and scaled images.
TEST(SoftwareGraphicsImagesTest, ImagesScene)
{
    Scene scene(160, 124, opaqueBlack);
    SoftwareGraphics& graphics = scene.graphics;
    const Rectangle everywhere = scene.image.getBounds();

    // A source cut at its left is not shifted: (-2, 0, 4, 2) is (0, 0, 2, 2), drawn at (3, 1). The
    // clip picks the source pixels: an image at (4, 3) clipped from column 5 shows labels 1 on.
    // Without blend opacity does nothing.
    scene.moveTo(2, 2);
    const Image labelled = makeLabelled(4, 2);
    graphics.drawImagePart(labelled, Rectangle(-2, 0, 4, 2), Point(3, 1), false, 255);
    graphics.drawImagePart(labelled, Rectangle(2, 0, 5, 1), Point(0, 0), false, 255);
    graphics.setClip(Rectangle(5, 0, 3, 4), true);
    graphics.drawImage(labelled, Point(4, 3), false, 0);
    graphics.setClip(everywhere, false);
    scene.expect({{3, 1, label(0, 0)}, {4, 2, label(1, 1)}, {5, 1, opaqueBlack}, {2, 1, opaqueBlack}});
    EXPECT_EQ(labels(scene, 0, 0, 3), (Labels{2, 3, -1}));
    EXPECT_EQ(labels(scene, 3, 3, 5), (Labels{-1, -1, 1, 2, 3}));

    // Opacity 99 (k = 100) over (200, 100, 50, 255): the source scales to 15, 31, 46, 62, and
    // 256 - 62 = 194 keeps 200 * 194 >> 8 = 151, 75, 37, 193. Opacity 500 counts as 255:
    // 256 - 160 = 96 keeps 75, 37, 18, 95. Without blend a copy. Equal sizes go through
    // drawImagePart with the opacity; a real scale blends at full opacity.
    scene.moveTo(12, 2);
    Colour patch(50, 100, 200, 255);
    graphics.fillRect(Rectangle(0, 0, 6, 6), patch, false);
    const Image sprite = makeCanvas(1, 1, {40, 80, 120, 160});
    graphics.drawImage(sprite, Point(0, 0), true, 99);
    graphics.drawImage(sprite, Point(1, 0), false, 99);
    graphics.drawImage(sprite, Point(2, 0), true, 500);
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(3, 0, 1, 1), true, 99, Alignment::Centre);
    graphics.drawImageScaled(sprite, Rectangle(0, 0, 1, 1), Rectangle(0, 2, 2, 2), true, 99, Alignment::Centre);
    const PixelValue atOpacity{151 + 15, 75 + 31, 37 + 46, 193 + 62}, full{75 + 40, 37 + 80, 18 + 120, 95 + 160};
    scene.expect({{0, 0, atOpacity}, {1, 0, {40, 80, 120, 160}}, {2, 0, full}, {3, 0, atOpacity}, {0, 2, full},
                  {1, 2, full}, {0, 3, full}, {1, 3, full}, {2, 2, {200, 100, 50, 255}}});

    // Nearest neighbour in 16.16: 3 columns onto 7, step (3 << 16) / 7 = 28086, give columns 0, 0,
    // 0, 1, 1, 2, 2; 2 columns from column 1 onto 4 start at u = 1 << 16 and step 32768; 3 rows
    // onto 5, step 39321, give rows 0, 0, 1, 1, 2. A clip starting inside picks the same columns.
    scene.moveTo(20, 2);
    const Image grid = makeLabelled(4, 3);
    graphics.drawImageScaled(grid, Rectangle(0, 0, 3, 1), Rectangle(0, 0, 7, 1), false, 255, Alignment::TopLeft);
    graphics.drawImageScaled(grid, Rectangle(1, 0, 2, 1), Rectangle(0, 1, 4, 1), false, 255, Alignment::TopLeft);
    graphics.drawImageScaled(grid, Rectangle(3, 0, 1, 3), Rectangle(9, 2, 1, 5), false, 255, Alignment::Stretch);
    graphics.setClip(Rectangle(3, 3, 7, 1), true);
    graphics.drawImageScaled(grid, Rectangle(0, 0, 3, 1), Rectangle(0, 3, 7, 1), false, 255, Alignment::TopLeft);
    graphics.setClip(everywhere, false);
    EXPECT_EQ(labels(scene, 0, 0, 8), (Labels{0, 0, 0, 1, 1, 2, 2, -1}));
    EXPECT_EQ(labels(scene, 0, 1, 5), (Labels{1, 1, 2, 2, -1}));
    EXPECT_EQ(labels(scene, 9, 2, 6, true), (Labels{0, 0, 1, 1, 2, -1}));
    EXPECT_EQ(labels(scene, 0, 3, 8), (Labels{-1, -1, -1, 1, 1, 2, 2, -1}));

    // Aligned: the same size is drawn unscaled at its place, twice the size is scaled.
    scene.moveTo(32, 2);
    const Image small = makeLabelled(2, 2);
    graphics.drawImageAligned(small, Rectangle(3, 3, 2, 2), false, 255, Alignment::BottomRight);
    graphics.drawImageAligned(small, Rectangle(0, 4, 4, 4), false, 255, Alignment::TopLeft);
    scene.expect({{3, 3, label(0, 0)}});
    EXPECT_EQ(labels(scene, 0, 7, 5), (Labels{0, 0, 1, 1, -1}));
    EXPECT_EQ(labels(scene, 0, 3, 5, true), (Labels{-1, 0, 0, 1, 1}));

    // Tiles of a 10-wide source over 25 columns: three, the last one cut; the clip comes back. A
    // destination outside the clip, or a source outside the image, leaves the clip as it was.
    scene.moveTo(42, 2);
    graphics.setClip(Rectangle(0, 0, 28, 2), true);
    const Image strip = makeLabelled(10, 1);
    graphics.tileImage(strip, Rectangle(0, 0, 10, 1), Rectangle(0, 0, 25, 2), false);
    graphics.tileImage(strip, Rectangle(0, 0, 10, 1), Rectangle(40, 0, 5, 1), false);
    graphics.tileImage(strip, Rectangle(12, 0, 3, 1), Rectangle(0, 0, 5, 1), false);
    EXPECT_EQ(graphics.getClip(true), Rectangle(0, 0, 28, 2));
    graphics.setClip(everywhere, false);
    const Labels tiles{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 1, 2, 3, 4, -1};
    EXPECT_EQ(labels(scene, 0, 0, 26), tiles);
    EXPECT_EQ(labels(scene, 0, 1, 26), tiles);

    // Thirds of 9 columns: caps 0..2 and 6..8, the middle 3..5 tiled over 8 columns, as tall as
    // the image (2 rows). Of 10 columns, thirds of 3 (column 6 is never read); narrower than two
    // caps, the caps overlap, the right one on top, with no middle.
    scene.moveTo(42, 6);
    graphics.drawThreePartHorizontal(makeLabelled(9, 2), Rectangle(0, 0, 14, 5), false);
    graphics.drawThreePartHorizontal(makeLabelled(10, 1), Rectangle(16, 0, 4, 1), false);
    EXPECT_EQ(labels(scene, 0, 0, 15), (Labels{0, 1, 2, 3, 4, 5, 3, 4, 5, 3, 4, 6, 7, 8, -1}));
    EXPECT_EQ(labels(scene, 0, 1, 2, true), (Labels{1, -1}));
    EXPECT_EQ(labels(scene, 16, 0, 5), (Labels{0, 7, 8, 9, -1}));

    // Thirds of 9 rows as a column of the image's own 2 pixels, at (6 - 2) / 2 = 2; a column wider
    // than its destination overhangs both sides: 4 + (2 - 6) / 2 = 2.
    scene.moveTo(64, 6);
    graphics.drawThreePartVertical(makeLabelled(2, 9), Rectangle(0, 0, 6, 12), false);
    EXPECT_EQ(labels(scene, 2, 0, 13, true), (Labels{0, 1, 2, 3, 4, 5, 3, 4, 5, 6, 7, 8, -1}));
    scene.expect({{3, 0, label(1, 0)}, {1, 0, opaqueBlack}, {4, 0, opaqueBlack}});
    scene.moveTo(72, 6);
    graphics.drawThreePartVertical(makeLabelled(6, 3), Rectangle(4, 0, 2, 3), false);
    EXPECT_EQ(labels(scene, 0, 0, 10), (Labels{-1, -1, 0, 1, 2, 3, 4, 5, -1, -1}));

    // Nine parts of 6 by 6 over (1, 1, 10, 8): corners 0, 1 and 4, 5 stay, the middles 2, 3 tile.
    scene.moveTo(84, 6);
    graphics.drawNinePart(makeLabelled(6, 6), Rectangle(1, 1, 10, 8), false);
    for (int row : {1, 5, 8})
        EXPECT_EQ(labels(scene, 0, row, 12), (Labels{-1, 0, 1, 2, 3, 2, 3, 2, 3, 4, 5, -1})) << row;
    for (int column : {1, 6})
        EXPECT_EQ(labels(scene, column, 0, 10, true), (Labels{-1, 0, 1, 2, 3, 2, 3, 4, 5, -1})) << column;
    scene.expect({{10, 8, label(5, 5)}});
    EXPECT_TRUE(marginIsClear(scene.image));

    // The panel, over a blue ground: a soft disc drawn by the renderer on a transparent image, at
    // falling opacities and scaled up and down, and a translucent frame tiled, in three and in nine parts.
    Image disc(20, 20, true), frame(12, 12, true);
    SoftwareGraphics(disc).fillCircle(Colour(255, 180, 60, 255), 9.5f, 9.5f, 9.5f);
    SoftwareGraphics(disc).fillCircle(Colour(255, 255, 255, 200), 7.0f, 7.0f, 3.0f);
    SoftwareGraphics(frame).fillRoundedRect(Rectangle(0, 0, 12, 12), 4, Colour(80, 160, 255, 220));
    SoftwareGraphics(frame).drawRect(Rectangle(1, 1, 10, 10), Colour(255, 255, 255, 255));
    scene.moveTo(0, 22);
    graphics.fillRect(Rectangle(0, 0, 160, 102), patch, false);
    for (int i = 0; i < 5; ++i)
        graphics.drawImage(disc, Point(4 + 22 * i, 2), true, 255 - 50 * i);
    graphics.tileImage(frame, frame.getBounds(), Rectangle(4, 26, 70, 26), true);
    graphics.drawThreePartHorizontal(frame, Rectangle(80, 26, 76, 12), true);
    graphics.drawThreePartVertical(frame, Rectangle(80, 40, 20, 60), true);
    graphics.drawNinePart(frame, Rectangle(104, 40, 52, 40), true);
    graphics.drawImageScaled(disc, disc.getBounds(), Rectangle(4, 54, 44, 44), true, 255, Alignment::Stretch);
    graphics.drawImageScaled(disc, disc.getBounds(), Rectangle(52, 54, 11, 11), true, 255, Alignment::Stretch);
    EXPECT_TRUE(GoldenImage::matchesGolden(scene.image, "images"));
}
