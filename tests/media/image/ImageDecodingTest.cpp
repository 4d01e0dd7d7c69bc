#include "media/image/Image.h"

#include "foundation/string/String.h"
#include "image/TestPictures.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

using q1framework::Image;
using q1framework::String;
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

Image decode(const std::string& bytes)
{
    return Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
}
}

TEST(ImageDecoding, RgbaPngIsPremultipliedInMemoryOrder)
{
    PngPicture picture;
    picture.width = 3;
    picture.height = 2;
    picture.colourType = PNG_COLOR_TYPE_RGB_ALPHA;
    picture.lines = {{200, 100, 50, 255, 200, 100, 50, 128, 255, 255, 255, 0},
                     {10, 20, 30, 1, 250, 3, 77, 200, 0, 0, 0, 255}};
    const Image image = decode(TestPictures::encodePng(picture));
    ASSERT_EQ(image.getWidth(), 3);
    ASSERT_EQ(image.getHeight(), 2);
    EXPECT_EQ(image.getMargin(), 16);
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{50, 100, 200, 255}));
    EXPECT_EQ(pixelAt(image, 1, 0), premultiplied(200, 100, 50, 128));
    EXPECT_EQ(pixelAt(image, 2, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(image, 0, 1), premultiplied(10, 20, 30, 1));
    EXPECT_EQ(pixelAt(image, 1, 1), premultiplied(250, 3, 77, 200));
    EXPECT_EQ(pixelAt(image, -1, 0), (Pixel{0, 0, 0, 0}));
}

TEST(ImageDecoding, PalettePngWithTransparency)
{
    PngPicture picture;
    picture.width = 4;
    picture.height = 1;
    picture.colourType = PNG_COLOR_TYPE_PALETTE;
    picture.bitDepth = 2;
    picture.palette = {255, 0, 0, 0, 255, 0, 0, 0, 255, 90, 180, 240};
    picture.transparency = {255, 128, 0};  // the fourth entry has no alpha: opaque
    picture.lines = {{0b00011011}};        // indices 0, 1, 2, 3
    const Image image = decode(TestPictures::encodePng(picture));
    ASSERT_EQ(image.getWidth(), 4);
    EXPECT_EQ(pixelAt(image, 0, 0), (Pixel{0, 0, 255, 255}));
    EXPECT_EQ(pixelAt(image, 1, 0), premultiplied(0, 255, 0, 128));
    EXPECT_EQ(pixelAt(image, 2, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(image, 3, 0), (Pixel{240, 180, 90, 255}));
}

TEST(ImageDecoding, GreyGreyAlphaAndKeyedGreyPngs)
{
    PngPicture grey;
    grey.width = 2;
    grey.height = 2;
    grey.colourType = PNG_COLOR_TYPE_GRAY;
    grey.lines = {{0, 77}, {200, 255}};
    const Image opaque = decode(TestPictures::encodePng(grey));
    ASSERT_EQ(opaque.getWidth(), 2);
    EXPECT_EQ(pixelAt(opaque, 1, 0), (Pixel{77, 77, 77, 255}));
    EXPECT_EQ(pixelAt(opaque, 0, 1), (Pixel{200, 200, 200, 255}));

    grey.transparency = {0, 77};  // the grey level 77 is transparent
    const Image keyed = decode(TestPictures::encodePng(grey));
    EXPECT_EQ(pixelAt(keyed, 1, 0), (Pixel{0, 0, 0, 0}));
    EXPECT_EQ(pixelAt(keyed, 1, 1), (Pixel{255, 255, 255, 255}));

    PngPicture greyAlpha;
    greyAlpha.width = 2;
    greyAlpha.height = 1;
    greyAlpha.colourType = PNG_COLOR_TYPE_GRAY_ALPHA;
    greyAlpha.lines = {{255, 51, 100, 204}};
    const Image translucent = decode(TestPictures::encodePng(greyAlpha));
    EXPECT_EQ(pixelAt(translucent, 0, 0), premultiplied(255, 255, 255, 51));
    EXPECT_EQ(pixelAt(translucent, 1, 0), premultiplied(100, 100, 100, 204));

    PngPicture bits;
    bits.width = 3;
    bits.height = 1;
    bits.colourType = PNG_COLOR_TYPE_GRAY;
    bits.bitDepth = 1;
    bits.lines = {{0b10100000}};
    const Image twoLevels = decode(TestPictures::encodePng(bits));
    EXPECT_EQ(pixelAt(twoLevels, 0, 0), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(pixelAt(twoLevels, 1, 0), (Pixel{0, 0, 0, 255}));
}

TEST(ImageDecoding, SixteenBitPngsAreScaledToEightBitsWithRounding)
{
    // 16-bit samples, stored big-endian; the nearest 8-bit level of each is sample / 257.
    const int samples[8] = {0x1234, 0xABCD, 0x0101, 0xFFFF, 0x8000, 0x0080, 0x7F7F, 0xC000};
    PngPicture picture;
    picture.width = 2;
    picture.height = 1;
    picture.colourType = PNG_COLOR_TYPE_RGB_ALPHA;
    picture.bitDepth = 16;
    std::vector<uint8_t> line;
    for (int sample : samples)
    {
        line.push_back(static_cast<uint8_t>(sample >> 8));
        line.push_back(static_cast<uint8_t>(sample));
    }
    picture.lines = {line};
    const Image image = decode(TestPictures::encodePng(picture));
    ASSERT_EQ(image.getWidth(), 2);
    const auto eightBit = [](int sample) { return static_cast<int>(std::lround(sample / 257.0)); };
    EXPECT_EQ(pixelAt(image, 0, 0), premultiplied(eightBit(0x1234), eightBit(0xABCD), eightBit(0x0101), 255));
    EXPECT_EQ(pixelAt(image, 1, 0),
              premultiplied(eightBit(0x8000), eightBit(0x0080), eightBit(0x7F7F), eightBit(0xC000)));
}

TEST(ImageDecoding, InterlacedPngGivesTheSamePixels)
{
    PngPicture picture;
    picture.width = 11;
    picture.height = 9;
    picture.colourType = PNG_COLOR_TYPE_RGB;
    for (int y = 0; y < 9; ++y)
    {
        std::vector<uint8_t> line;
        for (int x = 0; x < 11; ++x)
            line.insert(line.end(), {uint8_t(x * 20), uint8_t(y * 25), uint8_t(x * y)});
        picture.lines.push_back(line);
    }
    const Image plain = decode(TestPictures::encodePng(picture));
    picture.interlaced = true;
    const Image interlaced = decode(TestPictures::encodePng(picture));
    ASSERT_EQ(interlaced.getSize(), plain.getSize());
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 11; ++x)
        {
            EXPECT_EQ(pixelAt(interlaced, x, y), pixelAt(plain, x, y));
            EXPECT_EQ(pixelAt(plain, x, y), (Pixel{x * y, y * 25, x * 20, 255}));
        }
}

TEST(ImageDecoding, JpegColourAndGreyAreOpaqueAndClose)
{
    // 16 x 16 in four flat 8 x 8 blocks, one per JPEG block, which quality 100 keeps nearly exact.
    const int colours[4][3] = {{200, 30, 40}, {20, 180, 60}, {10, 20, 220}, {128, 128, 128}};
    std::vector<uint8_t> rgb;
    std::vector<uint8_t> grey;
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
        {
            const int* colour = colours[(y / 8) * 2 + x / 8];
            rgb.insert(rgb.end(), {uint8_t(colour[0]), uint8_t(colour[1]), uint8_t(colour[2])});
            grey.push_back(static_cast<uint8_t>(colour[1]));
        }
    const Image colourImage = decode(TestPictures::encodeJpeg(16, 16, 3, rgb));
    ASSERT_EQ(colourImage.getWidth(), 16);
    ASSERT_EQ(colourImage.getHeight(), 16);
    for (int block = 0; block < 4; ++block)
    {
        const Pixel pixel = pixelAt(colourImage, (block % 2) * 8 + 3, (block / 2) * 8 + 4);
        EXPECT_NEAR(pixel[2], colours[block][0], 3);
        EXPECT_NEAR(pixel[1], colours[block][1], 3);
        EXPECT_NEAR(pixel[0], colours[block][2], 3);
        EXPECT_EQ(pixel[3], 255);
    }
    const Image greyImage = decode(TestPictures::encodeJpeg(16, 16, 1, grey));
    ASSERT_EQ(greyImage.getWidth(), 16);
    const Pixel greyPixel = pixelAt(greyImage, 12, 2);
    EXPECT_NEAR(greyPixel[0], 180, 2);
    EXPECT_EQ(greyPixel[0], greyPixel[1]);
    EXPECT_EQ(greyPixel[1], greyPixel[2]);
    EXPECT_EQ(greyPixel[3], 255);
}

TEST(ImageDecoding, UndecodableDataGivesTheNullHandle)
{
    PngPicture picture;
    picture.width = 4;
    picture.height = 4;
    picture.colourType = PNG_COLOR_TYPE_GRAY;
    picture.lines.assign(4, std::vector<uint8_t>(4, 9));
    const std::string png = TestPictures::encodePng(picture);
    ASSERT_FALSE(decode(png).isNull());

    // Ten bytes are refused even with the right signature; so is anything without a known one.
    EXPECT_TRUE(decode(png.substr(0, 10)).isNull());
    EXPECT_TRUE(decode(std::string(100, 'x')).isNull());
    EXPECT_TRUE(Image::decode(nullptr, 100).isNull());
    // A PNG cut inside its picture data, and one with a damaged header checksum.
    EXPECT_TRUE(decode(png.substr(0, png.size() - 20)).isNull());
    std::string damaged = png;
    damaged[29] ^= 0x40;
    EXPECT_TRUE(decode(damaged).isNull());
    // JPEG's marker followed by nonsense.
    EXPECT_TRUE(decode(std::string("\xFF\xD8\xFF\xE0") + std::string(40, '\x11')).isNull());
}

TEST(ImageDecoding, OversizedPicturesAreRefusedBeforeAllocation)
{
    // A grey PNG of 30000 x 30000 (900 megapixels) whose data is one small compressed stream:
    // the header alone decides.
    PngPicture picture;
    picture.width = 30000;
    picture.height = 3;
    picture.colourType = PNG_COLOR_TYPE_GRAY;
    picture.bitDepth = 1;
    picture.lines.assign(3, std::vector<uint8_t>(3750, 0));
    std::string png = TestPictures::encodePng(picture);
    ASSERT_FALSE(decode(png).isNull());
    // Patch the height in the header (bytes 20..23) and its checksum (bytes 29..32).
    png[20] = 0;
    png[21] = 0;
    png[22] = 0x75;
    png[23] = 0x30;
    const uint32_t crc = static_cast<uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(png.data() + 12), 17));
    for (int byte = 0; byte < 4; ++byte)
        png[29 + byte] = static_cast<char>(crc >> (24 - 8 * byte));
    EXPECT_TRUE(decode(png).isNull());
}

TEST(ImageDecoding, LoadFromFileReadsTheWholeFile)
{
    PngPicture picture;
    picture.width = 5;
    picture.height = 3;
    picture.colourType = PNG_COLOR_TYPE_RGB;
    picture.lines.assign(3, std::vector<uint8_t>(15, 60));
    const std::string path = testing::TempDir() + "image-decoding-test.png";
    ASSERT_TRUE(TestPictures::writeFile(path, TestPictures::encodePng(picture)));
    const Image image = Image::loadFromFile(String(path.c_str()));
    EXPECT_EQ(image.getWidth(), 5);
    EXPECT_EQ(pixelAt(image, 4, 2), (Pixel{60, 60, 60, 255}));
    std::remove(path.c_str());
    EXPECT_TRUE(Image::loadFromFile(String(path.c_str())).isNull());
}
