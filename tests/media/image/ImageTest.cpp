#include "media/image/Image.h"

#include "media/image/ImageDelta.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <vector>

using namespace q1framework;

namespace
{
using Pixel = std::array<uint8_t, 4>;  // blue, green, red, alpha

Pixel pixelAt(const Image& image, int x, int y)
{
    Pixel pixel;
    std::memcpy(pixel.data(), image.getPixelPointer(x, y), 4);
    return pixel;
}

void setPixel(Image& image, int x, int y, const Pixel& pixel)
{
    std::memcpy(image.getPixelPointer(x, y), pixel.data(), 4);
}

// Each pixel tells its own position: (x, y, x + y, 255).
Image numberedImage(int width, int height, int margin = 16)
{
    Image image(width, height, false, margin);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            setPixel(image, x, y, Pixel{uint8_t(x), uint8_t(y), uint8_t(x + y), 255});
    return image;
}

// Whether every byte of the block outside the picture is zero. Reads the whole block, so a block
// allocated too short shows under the address sanitizer.
bool marginIsClear(const Image& image)
{
    const int margin = image.getMargin(), stride = image.getStride();
    for (int line = 0; line < image.getHeight() + 2 * margin; ++line)
        for (int byte = 0; byte < stride; ++byte)
        {
            const int x = byte / 4 - margin, y = line - margin;
            const bool inPicture = x >= 0 && x < image.getWidth() && y >= 0 && y < image.getHeight();
            if (!inPicture && image.getData()[line * stride + byte] != 0)
                return false;
        }
    return true;
}
}

TEST(Image, ConstructionSizesStridesAndMargins)
{
    const Image none(0, 0, true, 16);
    EXPECT_TRUE(none.isNull() && none.isEmpty());
    EXPECT_EQ(none.getPixelPointer(3, 7), reinterpret_cast<uint8_t*>(12));  // an offset, not a crash
    EXPECT_EQ(none.getPixelAt(Point(3, 3))[3], 0);
    // A zero width without margin is a live object with no memory at all.
    const Image noBytes(0, 5, true, 0);
    EXPECT_TRUE(!noBytes.isNull() && noBytes.isEmpty() && noBytes.getData() == nullptr);
    // With a margin of 16: 32 pixels a line, 37 lines, 4736 bytes.
    const Image marginOnly(0, 5, true, 16);
    EXPECT_TRUE(!marginOnly.isNull() && marginOnly.isEmpty());
    EXPECT_EQ(marginOnly.getStride(), 128);
    EXPECT_TRUE(marginIsClear(marginOnly));

    // (10 + 32) * 4 = 168 bytes a line, 42 lines.
    const Image picture(10, 10, false, 16);
    EXPECT_EQ(picture.getStride(), 168);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(picture.getData()) % 16, 0u);
    EXPECT_EQ(picture.getPixelPointer(0, 0), picture.getData() + 16 * 168 + 16 * 4);
    EXPECT_EQ(pixelAt(picture, -1, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(Image(Point(7, 3), true, 2).getStride(), 44);

    // Dirty a block first so that a recycled allocation cannot hide a missed band.
    {
        Image dirty(33, 17, false, 5);
        std::memset(dirty.getData(), 0xAB, static_cast<size_t>(dirty.getStride()) * (17 + 10));
    }
    Image image(33, 17, false, 5);
    EXPECT_TRUE(marginIsClear(image));
    image.fill(1, 2, 3, 4);
    EXPECT_TRUE(marginIsClear(image));
}

TEST(Image, AWrapperOfMemoryWithAMarginReportsIt)
{
    // A picture of 2 by 3 inside a block with 1 pixel of margin: lines of 4 pixels, 5 lines.
    std::vector<uint8_t> block(5 * 16);
    for (size_t index = 0; index < block.size(); ++index)
        block[index] = static_cast<uint8_t>(index);
    uint8_t* picture = block.data() + 16 + 4;
    const Image wrapped(picture, 2, 3, 16, Image::wrapPixels, 1);
    EXPECT_EQ(wrapped.getMargin(), 1);
    EXPECT_EQ(wrapped.getData(), block.data());
    EXPECT_EQ(wrapped.getPixelPointer(0, 0), picture);
    const Image copy = wrapped.duplicate();
    EXPECT_EQ(copy.getMargin(), 1);
    EXPECT_EQ(pixelAt(copy, 1, 2), pixelAt(wrapped, 1, 2));
}

TEST(Image, ForeignPixelsSharingAndNewMargins)
{
    // Three lines of 2 pixels, 12 bytes apart: a wrapper uses them, a copy gets margin 16.
    std::vector<uint8_t> memory(36);
    for (size_t index = 0; index < memory.size(); ++index)
        memory[index] = static_cast<uint8_t>(index);
    const Image wrapped(memory.data(), 2, 3, 12, Image::wrapPixels), copied(memory.data(), 2, 3, 12, 0);
    EXPECT_EQ(wrapped.getData(), memory.data());
    EXPECT_EQ(copied.getStride(), (2 + 32) * 4);
    EXPECT_EQ(pixelAt(wrapped, 1, 2), (Pixel{28, 29, 30, 31}));
    EXPECT_EQ(pixelAt(copied, 1, 2), (Pixel{28, 29, 30, 31}));
    EXPECT_TRUE(marginIsClear(copied));

    // Handles share pixels and compare by object; a duplicate is another object.
    Image first = numberedImage(5, 4, 2);
    const Image second = first, copy = first.duplicate();
    setPixel(first, 1, 1, Pixel{9, 8, 7, 6});
    EXPECT_EQ(second, first);
    EXPECT_EQ(pixelAt(second, 1, 1), (Pixel{9, 8, 7, 6}));
    EXPECT_NE(copy, first);
    EXPECT_EQ(pixelAt(copy, 1, 1), (Pixel{1, 1, 2, 255}));
    // A new margin is a new object for this handle only (its pixels are checked by getHalfSize,
    // which widens narrow margins).
    first.setMargin(7);
    EXPECT_TRUE(first != second && first.getMargin() == 7 && second.getMargin() == 2);
    EXPECT_TRUE(marginIsClear(first));
}

TEST(Image, PixelOperations)
{
    // fill: one memset a line when all four values agree, a stored word otherwise.
    Image same(3, 2, false), image(3, 2, false);
    same.fill(7, 7, 7, 7);
    image.fill(10, 20, 30, 40);
    EXPECT_EQ(pixelAt(same, 2, 1), (Pixel{7, 7, 7, 7}));
    EXPECT_EQ(pixelAt(image, 2, 1), (Pixel{30, 20, 10, 40}));

    // (200 * 128) >> 8 = 100; (255 * 255) >> 8 = 254: a shift, not a division by 255.
    setPixel(image, 0, 0, Pixel{10, 200, 200, 128});
    setPixel(image, 1, 0, Pixel{255, 255, 255, 255});
    image.premultiply();
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{5, 100, 100, 128}));
    EXPECT_EQ(pixelAt(image, 1, 0), (Pixel{254, 254, 254, 255}));
    // 1 2 3 4 -> (2, 0, 3, 1) 3 1 4 2 -> reversed 2 4 1 3 -> rotated (3, 0, 1, 2) 3 2 4 1.
    setPixel(image, 0, 0, Pixel{1, 2, 3, 4});
    image.permuteChannels(2, 0, 3, 1);
    image.reverseChannels();
    image.rotateChannels();
    image.orAlpha(0xF0);
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{3, 2, 4, 0xF1}));
    EXPECT_TRUE(marginIsClear(image));

    image = numberedImage(4, 5);
    image.flipVertical();
    for (int y = 0; y < 5; ++y)
        EXPECT_EQ(pixelAt(image, 3, y), (Pixel{3, uint8_t(4 - y), uint8_t(7 - y), 255}));
    image.clearRect(Rectangle(2, 3, 10, 10));
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(pixelAt(image, x, y)[3] == 0, x >= 2 && y >= 3) << x << ", " << y;
    EXPECT_TRUE(marginIsClear(image));
}

TEST(Image, OverlappingMovesAndDeltas)
{
    // Down by one and up by two, each over itself; then a target partly outside the picture.
    Image image = numberedImage(6, 6);
    image.moveRect(Rectangle(1, 1, 3, 3), Point(2, 2));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(pixelAt(image, 2 + x, 2 + y), (Pixel{uint8_t(1 + x), uint8_t(1 + y), uint8_t(2 + x + y), 255}));
    image = numberedImage(6, 6);
    image.moveRect(Rectangle(0, 2, 6, 4), Point(0, 0));
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(pixelAt(image, 5, y), (Pixel{5, uint8_t(y + 2), uint8_t(y + 7), 255}));
    image = numberedImage(6, 6);
    image.moveRect(Rectangle(0, 0, 3, 3), Point(4, -1));
    EXPECT_EQ(pixelAt(image, 5, 1), (Pixel{1, 2, 3, 255}));
    EXPECT_TRUE(marginIsClear(image));

    // Pixels beyond the tolerance, as y << 16 | x and the other image's pixel, line by line.
    const Image original = numberedImage(5, 3);
    Image changed = original.duplicate();
    setPixel(changed, 4, 0, Pixel{4, 0, 6, 255});  // red off by 2
    setPixel(changed, 1, 2, Pixel{1, 2, 3, 200});  // alpha off by 55
    EXPECT_TRUE(original.differsAt(changed, Point(4, 0), 1));
    std::unique_ptr<ImageDelta> delta(original.computeDelta(changed, 1));
    ASSERT_TRUE(delta != nullptr && delta->entries.getCount() == 2);
    EXPECT_EQ(delta->entries[0].position, 4u);
    EXPECT_EQ(delta->entries[1].position, (2u << 16) | 1u);
    EXPECT_EQ(delta->entries[1].pixel, 0xC8030201u);
    EXPECT_EQ(std::unique_ptr<ImageDelta>(original.computeDelta(changed, 2))->entries.getCount(), 1);
    EXPECT_EQ(original.computeDelta(numberedImage(5, 4), 0), nullptr);
}
