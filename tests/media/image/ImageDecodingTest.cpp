#include "media/image/Image.h"

#include "image/TestPictures.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

using namespace q1framework;
using TestPictures::PngPicture;

namespace
{
using Pixel = std::array<int, 4>;  // blue, green, red, alpha as they lie in memory

Pixel pixelAt(const Image& image, int x, int y)
{
    const uint8_t* bytes = image.getPixelPointer(x, y);
    return Pixel{bytes[0], bytes[1], bytes[2], bytes[3]};
}

// A straight colour premultiplied by alpha with rounding to nearest.
Pixel premultiplied(int red, int green, int blue, int alpha)
{
    const auto scale = [alpha](int channel) { return static_cast<int>(std::lround(channel * alpha / 255.0)); };
    return Pixel{scale(blue), scale(green), scale(red), alpha};
}

Pixel opaqueGrey(int level)
{
    return Pixel{level, level, level, 255};
}

// The nearest 8-bit level of a 16-bit sample.
int eightBit(int sample)
{
    return static_cast<int>(std::lround(sample / 257.0));
}

Image decode(const std::string& bytes)
{
    return Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
}
}

TEST(ImageDecoding, PngsOfEveryColourTypeArePremultipliedInMemoryOrder)
{
    struct Case
    {
        const char* name;
        // width, height, colour type, bit depth, interlaced, lines, palette, transparency
        PngPicture picture;
        std::vector<Pixel> pixels;  // line by line
    };
    const Case cases[] = {
        {"rgba", {3, 2, PNG_COLOR_TYPE_RGB_ALPHA, 8, false, {{200, 100, 50, 255, 200, 100, 50, 128, 255, 255, 255, 0}, {10, 20, 30, 1, 250, 3, 77, 200, 0, 0, 0, 255}}},
         {{50, 100, 200, 255}, premultiplied(200, 100, 50, 128), {0, 0, 0, 0}, premultiplied(10, 20, 30, 1), premultiplied(250, 3, 77, 200), {0, 0, 0, 255}}},
        // Indices 0..3 at 2 bits; the fourth entry has no alpha and is opaque.
        {"palette", {4, 1, PNG_COLOR_TYPE_PALETTE, 2, false, {{0b00011011}}, {255, 0, 0, 0, 255, 0, 0, 0, 255, 90, 180, 240}, {255, 128, 0}},
         {{0, 0, 255, 255}, premultiplied(0, 255, 0, 128), {0, 0, 0, 0}, {240, 180, 90, 255}}},
        {"grey", {2, 2, PNG_COLOR_TYPE_GRAY, 8, false, {{0, 77}, {200, 255}}}, {opaqueGrey(0), opaqueGrey(77), opaqueGrey(200), opaqueGrey(255)}},
        // The grey level 77 is the transparent key.
        {"keyed grey", {2, 2, PNG_COLOR_TYPE_GRAY, 8, false, {{0, 77}, {200, 255}}, {}, {0, 77}}, {opaqueGrey(0), {0, 0, 0, 0}, opaqueGrey(200), opaqueGrey(255)}},
        {"grey with alpha", {2, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, false, {{255, 51, 100, 204}}}, {premultiplied(255, 255, 255, 51), premultiplied(100, 100, 100, 204)}},
        // Adam7 places these pixels in passes 1, 4, 6 and 7.
        {"interlaced", {3, 2, PNG_COLOR_TYPE_RGB, 8, true, {{1, 2, 3, 4, 5, 6, 7, 8, 9}, {10, 11, 12, 13, 14, 15, 16, 17, 18}}},
         {{3, 2, 1, 255}, {6, 5, 4, 255}, {9, 8, 7, 255}, {12, 11, 10, 255}, {15, 14, 13, 255}, {18, 17, 16, 255}}},
        {"one-bit grey", {3, 1, PNG_COLOR_TYPE_GRAY, 1, false, {{0b10100000}}}, {opaqueGrey(255), opaqueGrey(0), opaqueGrey(255)}},
        // 16-bit samples, big-endian: 0x1234 0xABCD 0x0101 0xFFFF, 0x8000 0x0080 0x7F7F 0xC000.
        {"16-bit", {2, 1, PNG_COLOR_TYPE_RGB_ALPHA, 16, false, {{0x12, 0x34, 0xAB, 0xCD, 0x01, 0x01, 0xFF, 0xFF, 0x80, 0x00, 0x00, 0x80, 0x7F, 0x7F, 0xC0, 0x00}}},
         {premultiplied(eightBit(0x1234), eightBit(0xABCD), eightBit(0x0101), 255),
          premultiplied(eightBit(0x8000), eightBit(0x0080), eightBit(0x7F7F), eightBit(0xC000))}},
    };
    for (const Case& test : cases)
    {
        SCOPED_TRACE(test.name);
        const Image image = decode(TestPictures::encodePng(test.picture));
        ASSERT_EQ(image.getSize(), Point(test.picture.width, test.picture.height));
        EXPECT_EQ(image.getMargin(), 16);
        EXPECT_EQ(pixelAt(image, -1, 0), (Pixel{0, 0, 0, 0}));
        for (size_t index = 0; index < test.pixels.size(); ++index)
            EXPECT_EQ(pixelAt(image, static_cast<int>(index) % image.getWidth(), static_cast<int>(index) / image.getWidth()), test.pixels[index]) << index;
    }
}

TEST(ImageDecoding, JpegColourAndGreyAreOpaqueAndClose)
{
    // 16 x 16 in four flat 8 x 8 blocks, one per JPEG block, which quality 100 keeps nearly exact.
    const int colours[4][3] = {{200, 30, 40}, {20, 180, 60}, {10, 20, 220}, {128, 128, 128}};
    std::vector<uint8_t> rgb, grey;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
        {
            const int* colour = colours[(y / 8) * 2 + x / 8];
            rgb.insert(rgb.end(), {uint8_t(colour[0]), uint8_t(colour[1]), uint8_t(colour[2])});
            grey.push_back(static_cast<uint8_t>(colour[1]));
        }
    const Image colourImage = decode(TestPictures::encodeJpeg(16, 16, 3, rgb));
    const Image greyImage = decode(TestPictures::encodeJpeg(16, 16, 1, grey));
    ASSERT_EQ(colourImage.getSize(), Point(16, 16));
    ASSERT_EQ(greyImage.getSize(), Point(16, 16));
    for (int block = 0; block < 4; ++block)
    {
        const int x = (block % 2) * 8 + 3, y = (block / 2) * 8 + 4;
        const Pixel pixel = pixelAt(colourImage, x, y), greyPixel = pixelAt(greyImage, x, y);
        for (int channel = 0; channel < 3; ++channel)
        {
            EXPECT_NEAR(pixel[channel], colours[block][2 - channel], 3) << block;
            EXPECT_NEAR(greyPixel[channel], colours[block][1], 2) << block;
        }
        EXPECT_EQ(pixel[3], 255);
        EXPECT_EQ(greyPixel[3], 255);
        EXPECT_TRUE(greyPixel[0] == greyPixel[1] && greyPixel[1] == greyPixel[2]);
    }
}

TEST(ImageDecoding, UndecodableOrOversizedDataGivesTheNullHandle)
{
    PngPicture picture{4, 4, PNG_COLOR_TYPE_GRAY};
    picture.lines.assign(4, std::vector<uint8_t>(4, 9));
    const std::string png = TestPictures::encodePng(picture);
    ASSERT_FALSE(decode(png).isNull());
    // Ten bytes are refused even with the right signature; so is anything without a known one.
    EXPECT_TRUE(decode(png.substr(0, 10)).isNull());
    EXPECT_TRUE(decode(std::string(100, 'x')).isNull());
    EXPECT_TRUE(Image::decode(nullptr, 100).isNull());
    // A PNG cut inside its picture data, one with a damaged header checksum, and JPEG's marker
    // followed by nonsense.
    EXPECT_TRUE(decode(png.substr(0, png.size() - 20)).isNull());
    std::string damaged = png;
    damaged[29] ^= 0x40;
    EXPECT_TRUE(decode(damaged).isNull());
    EXPECT_TRUE(decode(std::string("\xFF\xD8\xFF\xE0") + std::string(40, '\x11')).isNull());

    // A one-bit grey PNG of 30000 x 3 patched to 30000 x 30000 (900 megapixels) whose data stays
    // one small compressed stream: the header alone must decide, before any allocation.
    PngPicture wide{30000, 3, PNG_COLOR_TYPE_GRAY, 1};
    wide.lines.assign(3, std::vector<uint8_t>(3750, 0));
    std::string huge = TestPictures::encodePng(wide);
    ASSERT_FALSE(decode(huge).isNull());
    huge.replace(20, 4, std::string("\x00\x00\x75\x30", 4));  // the height, then the header's checksum
    const uint32_t crc = static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(huge.data() + 12), 17));
    for (int byte = 0; byte < 4; ++byte)
        huge[29 + byte] = static_cast<char>(crc >> (24 - 8 * byte));
    EXPECT_TRUE(decode(huge).isNull());
}
