#include "media/image/Image.h"

#include "media/image/ImageDelta.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <vector>

using q1framework::Image;
using q1framework::ImageDelta;
using q1framework::Point;
using q1framework::Rectangle;

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

// Whether every byte of the block outside the picture is zero.
bool marginIsClear(const Image& image)
{
    const int margin = image.getMargin();
    const int stride = image.getStride();
    const uint8_t* block = image.getData();
    for (int line = 0; line < image.getHeight() + 2 * margin; ++line)
        for (int byte = 0; byte < stride; ++byte)
        {
            const int x = byte / 4 - margin;
            const int y = line - margin;
            const bool inPicture = x >= 0 && x < image.getWidth() && y >= 0 && y < image.getHeight();
            if (!inPicture && block[line * stride + byte] != 0)
                return false;
        }
    return true;
}
}

TEST(Image, ConstructionSizesStridesAndBlocks)
{
    const Image none(0, 0, true, 16);
    EXPECT_TRUE(none.isNull());
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(none.getStride(), 0);
    EXPECT_EQ(none.getData(), nullptr);

    // A zero width without margin is a live object with no memory at all.
    const Image noBytes(0, 5, true, 0);
    EXPECT_FALSE(noBytes.isNull());
    EXPECT_TRUE(noBytes.isEmpty());
    EXPECT_EQ(noBytes.getData(), nullptr);

    // The same with a margin: 32 pixels a line, 37 lines, 4736 bytes.
    const Image marginOnly(0, 5, true, 16);
    EXPECT_FALSE(marginOnly.isNull());
    EXPECT_TRUE(marginOnly.isEmpty());
    EXPECT_EQ(marginOnly.getStride(), 128);
    EXPECT_NE(marginOnly.getData(), nullptr);
    EXPECT_EQ(marginOnly.getStride() * (marginOnly.getHeight() + 2 * marginOnly.getMargin()), 4736);

    const Image picture(10, 10, false, 16);
    EXPECT_EQ(picture.getStride(), 168);
    EXPECT_EQ(picture.getStride() * (10 + 32), 7056);
    EXPECT_EQ(picture.getSize(), Point(10, 10));
    EXPECT_EQ(picture.getBytesPerPixel(), 4);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(picture.getData()) % 16, 0u);
    EXPECT_EQ(picture.getPixelPointer(0, 0), picture.getData() + 16 * 168 + 16 * 4);
    EXPECT_EQ(picture.getLine(3), picture.getPixelPointer(0, 3));
    EXPECT_EQ(pixelAt(picture, -1, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_TRUE(marginIsClear(picture));
    EXPECT_EQ(Image(Point(7, 3), true, 2).getStride(), 44);
}

TEST(Image, AddressesWithoutPixelsAreOffsetsFromZero)
{
    // Nothing to read, but asking is harmless: the null handle has no pixels and a stride of 0.
    const Image none;
    EXPECT_EQ(none.getLine(5), nullptr);
    EXPECT_EQ(none.getPixelPointer(3, 7), reinterpret_cast<uint8_t*>(12));
    EXPECT_EQ(none.getPixelPointer(Point(0, 9)), nullptr);

    // A live image without a block keeps its stride: 5 pixels without margin, 20 bytes a line.
    const Image noLines(5, 0, true, 0);
    ASSERT_FALSE(noLines.isNull());
    ASSERT_EQ(noLines.getData(), nullptr);
    EXPECT_EQ(noLines.getLine(2), reinterpret_cast<uint8_t*>(40));
    EXPECT_EQ(noLines.getPixelPointer(1, 1), reinterpret_cast<uint8_t*>(24));
}

TEST(Image, MarginsAreZeroAroundAnUnclearedPicture)
{
    // Fill a block with garbage first so that a recycled allocation cannot hide a missed band.
    for (int round = 0; round < 3; ++round)
    {
        {
            Image dirty(33, 17, false, 5);
            std::memset(dirty.getData(), 0xAB, static_cast<size_t>(dirty.getStride()) * (17 + 10));
        }
        Image image(33, 17, false, 5);
        EXPECT_TRUE(marginIsClear(image));
        image.fill(1, 2, 3, 4);
        EXPECT_TRUE(marginIsClear(image));
    }
    const Image cleared(4, 4, true, 3);
    EXPECT_EQ(pixelAt(cleared, 3, 3), (Pixel{0, 0, 0, 0}));
}

TEST(Image, HandlesShareAndCompareByObject)
{
    Image first(4, 4, true);
    Image second = first;
    EXPECT_EQ(first, second);
    setPixel(second, 1, 1, Pixel{9, 8, 7, 6});
    EXPECT_EQ(pixelAt(first, 1, 1), (Pixel{9, 8, 7, 6}));
    EXPECT_NE(first, Image(4, 4, true));
    second = second;
    EXPECT_EQ(first, second);

    Image copy = first.duplicate();
    EXPECT_NE(copy, first);
    EXPECT_EQ(copy.getMargin(), first.getMargin());
    setPixel(copy, 1, 1, Pixel{1, 1, 1, 1});
    EXPECT_EQ(pixelAt(first, 1, 1), (Pixel{9, 8, 7, 6}));
    EXPECT_EQ(std::memcmp(first.getData(), first.duplicate().getData(), static_cast<size_t>(first.getStride()) * 36), 0);
}

TEST(Image, WrappingAndCopyingForeignPixels)
{
    // Three lines of 2 pixels, 12 bytes apart (4 bytes of padding each).
    std::vector<uint8_t> memory(36);
    for (size_t index = 0; index < memory.size(); ++index)
        memory[index] = static_cast<uint8_t>(index);

    Image wrapped(memory.data(), 2, 3, 12, Image::wrapPixels);
    EXPECT_EQ(wrapped.getMargin(), 0);
    EXPECT_EQ(wrapped.getStride(), 12);
    EXPECT_EQ(wrapped.getData(), memory.data());
    EXPECT_EQ(pixelAt(wrapped, 1, 2), (Pixel{28, 29, 30, 31}));

    Image copied(memory.data(), 2, 3, 12, 0);
    EXPECT_EQ(copied.getMargin(), 16);
    EXPECT_EQ(copied.getStride(), (2 + 32) * 4);
    EXPECT_EQ(pixelAt(copied, 0, 1), (Pixel{12, 13, 14, 15}));
    EXPECT_EQ(pixelAt(copied, 1, 2), (Pixel{28, 29, 30, 31}));
    EXPECT_TRUE(marginIsClear(copied));

    // A duplicate of the wrapper is packed with a margin of 0 and the same pixels.
    const Image packed = wrapped.duplicate();
    EXPECT_EQ(packed.getStride(), 8);
    EXPECT_EQ(pixelAt(packed, 1, 2), (Pixel{28, 29, 30, 31}));
}

TEST(Image, SetMarginKeepsThePictureForThisHandleOnly)
{
    Image image = numberedImage(5, 4, 2);
    const Image other = image;
    image.setMargin(7);
    EXPECT_EQ(image.getMargin(), 7);
    EXPECT_EQ(other.getMargin(), 2);
    EXPECT_NE(image, other);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(pixelAt(image, x, y), pixelAt(other, x, y));
    EXPECT_TRUE(marginIsClear(image));
}

TEST(Image, FillTakesTwoPathsToTheSameBytes)
{
    Image same(3, 2, false);
    same.fill(7, 7, 7, 7);
    Image mixed(3, 2, false);
    mixed.fill(7, 7, 7, 8);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
        {
            EXPECT_EQ(pixelAt(same, x, y), (Pixel{7, 7, 7, 7}));
            EXPECT_EQ(pixelAt(mixed, x, y), (Pixel{7, 7, 7, 8}));
        }
    mixed.fill(10, 20, 30, 40);
    EXPECT_EQ(pixelAt(mixed, 2, 1), (Pixel{30, 20, 10, 40}));
    EXPECT_TRUE(marginIsClear(mixed));
}

TEST(Image, ChannelOperations)
{
    Image image(2, 1, true);
    setPixel(image, 0, 0, Pixel{10, 200, 200, 128});
    setPixel(image, 1, 0, Pixel{255, 255, 255, 255});
    image.premultiply();
    // (200 * 128) >> 8 = 100; (255 * 255) >> 8 = 254: a shift, not a division by 255.
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{5, 100, 100, 128}));
    EXPECT_EQ(pixelAt(image, 1, 0), (Pixel{254, 254, 254, 255}));

    setPixel(image, 0, 0, Pixel{1, 2, 3, 4});
    image.permuteChannels(2, 0, 3, 1);
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{3, 1, 4, 2}));
    setPixel(image, 0, 0, Pixel{1, 2, 3, 4});
    image.reverseChannels();
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{4, 3, 2, 1}));
    setPixel(image, 0, 0, Pixel{1, 2, 3, 4});
    image.rotateChannels();
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{4, 1, 2, 3}));

    setPixel(image, 0, 0, Pixel{1, 2, 3, 0x0F});
    image.orAlpha(0xF0);
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{1, 2, 3, 0xFF}));
    EXPECT_TRUE(marginIsClear(image));
}

TEST(Image, FlipClearAndMove)
{
    Image image = numberedImage(4, 5);
    image.flipVertical();
    for (int y = 0; y < 5; ++y)
        EXPECT_EQ(pixelAt(image, 3, y), (Pixel{3, uint8_t(4 - y), uint8_t(3 + 4 - y), 255}));
    EXPECT_TRUE(marginIsClear(image));

    image = numberedImage(4, 5);
    image.clearRect(Rectangle(2, 3, 10, 10));
    EXPECT_EQ(pixelAt(image, 2, 3), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(image, 3, 4), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(image, 1, 3), (Pixel{1, 3, 4, 255}));
    EXPECT_EQ(pixelAt(image, 2, 2), (Pixel{2, 2, 4, 255}));
    EXPECT_TRUE(marginIsClear(image));

    // Overlapping moves in both vertical directions: down by one, then up by two.
    image = numberedImage(6, 6);
    image.moveRect(Rectangle(1, 1, 3, 3), Point(2, 2));
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(pixelAt(image, 2 + x, 2 + y), (Pixel{uint8_t(1 + x), uint8_t(1 + y), uint8_t(2 + x + y), 255}));
    image = numberedImage(6, 6);
    image.moveRect(Rectangle(0, 2, 6, 4), Point(0, 0));
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(pixelAt(image, 5, y), (Pixel{5, uint8_t(y + 2), uint8_t(y + 7), 255}));
    // A target partly outside moves only what lands inside.
    image = numberedImage(6, 6);
    image.moveRect(Rectangle(0, 0, 3, 3), Point(4, -1));
    EXPECT_EQ(pixelAt(image, 4, 0), (Pixel{0, 1, 1, 255}));
    EXPECT_EQ(pixelAt(image, 5, 1), (Pixel{1, 2, 3, 255}));
    EXPECT_TRUE(marginIsClear(image));
}

TEST(Image, DifferencesAndDelta)
{
    const Image original = numberedImage(5, 3);
    Image changed = original.duplicate();
    setPixel(changed, 4, 0, Pixel{4, 0, 6, 255});  // red off by 2
    setPixel(changed, 1, 2, Pixel{1, 2, 3, 200});  // alpha off by 55
    EXPECT_TRUE(original.differsAt(changed, Point(4, 0), 1));
    EXPECT_FALSE(original.differsAt(changed, Point(4, 0), 2));
    EXPECT_FALSE(original.differsAt(changed, Point(0, 0), 0));

    std::unique_ptr<ImageDelta> delta(original.computeDelta(changed, 1));
    ASSERT_NE(delta, nullptr);
    ASSERT_EQ(delta->entries.getCount(), 2);
    EXPECT_EQ(delta->entries[0].position, 4u);
    EXPECT_EQ(delta->entries[1].position, (2u << 16) | 1u);
    EXPECT_EQ(delta->entries[1].getX(), 1);
    EXPECT_EQ(delta->entries[1].getY(), 2);
    EXPECT_EQ(delta->entries[1].pixel, 0xC8030201u);
    std::unique_ptr<ImageDelta> lenient(original.computeDelta(changed, 60));
    EXPECT_EQ(lenient->entries.getCount(), 0);

    EXPECT_EQ(original.computeDelta(numberedImage(5, 4), 0), nullptr);
    EXPECT_EQ(Image().computeDelta(Image(), 0), nullptr);
    EXPECT_EQ(Image().getPixelAt(Point(3, 3))[3], 0);
}
