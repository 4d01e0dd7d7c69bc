#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

using namespace q1framework;

namespace
{
// The half-band filter written out as its definition: each tap is floor(value * 16 * weight /
// 65536), the sum of the five taps is divided by 8 rounding down and limited to 0..255. Pixels
// outside the picture count as 0.
int filter(const std::vector<int>& values, int centre)
{
    const int offsets[5] = {-3, -1, 0, 1, 3};
    const double weights[5] = {-910, 9648, 17164, 9648, -910};
    int sum = 0;
    for (int tap = 0; tap < 5; ++tap)
    {
        const int index = centre + offsets[tap];
        const int value = index >= 0 && index < static_cast<int>(values.size()) ? values[index] : 0;
        sum += static_cast<int>(std::floor(value * 16.0 * weights[tap] / 65536.0));
    }
    return std::clamp(static_cast<int>(std::floor(sum / 8.0)), 0, 255);
}

// getHalfSize by its definition, channel by channel: rows first, then columns.
std::vector<uint8_t> halfSizeByDefinition(const Image& image)
{
    const int width = image.getWidth(), height = image.getHeight();
    const int halfWidth = width / 2, halfHeight = height / 2;
    std::vector<uint8_t> result(static_cast<size_t>(halfWidth * halfHeight * 4));
    for (int channel = 0; channel < 4; ++channel)
    {
        std::vector<std::vector<int>> columns(halfWidth, std::vector<int>(height));
        for (int y = 0; y < height; ++y)
        {
            std::vector<int> row(width);
            for (int x = 0; x < width; ++x)
                row[x] = image.getPixelPointer(x, y)[channel];
            for (int x = 0; x < halfWidth; ++x)
                columns[x][y] = filter(row, 2 * x);
        }
        for (int x = 0; x < halfWidth; ++x)
            for (int y = 0; y < halfHeight; ++y)
                result[(y * halfWidth + x) * 4 + channel] = static_cast<uint8_t>(filter(columns[x], 2 * y));
    }
    return result;
}

std::vector<uint8_t> pictureBytes(const Image& image)
{
    std::vector<uint8_t> bytes;
    for (int y = 0; y < image.getHeight(); ++y)
        bytes.insert(bytes.end(), image.getLine(y), image.getLine(y) + image.getWidth() * 4);
    return bytes;
}

Image randomImage(int width, int height, int margin, unsigned seed)
{
    std::mt19937 random(seed);
    Image image(width, height, false, margin);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width * 4; ++x)
            image.getLine(y)[x] = static_cast<uint8_t>(random());
    return image;
}
}

TEST(ImageFilters, HalfSizeMatchesTheTapsComputedDirectly)
{
    for (const auto& [width, height] : {std::pair{2, 2}, std::pair{9, 7}, std::pair{64, 33}, std::pair{101, 80}})
    {
        const Image source = randomImage(width, height, 16, 7u + width);
        const Image half = source.getHalfSize();
        ASSERT_EQ(half.getSize(), Point(width / 2, height / 2));
        EXPECT_EQ(half.getMargin(), 16);
        EXPECT_EQ(pictureBytes(half), halfSizeByDefinition(source)) << width << " x " << height;
    }
    // A source without margin gives what the same pixels with one give.
    const Image source = randomImage(12, 10, 16, 3);
    Image packed(12, 10, false, 0);
    for (int y = 0; y < 10; ++y)
        std::memcpy(packed.getLine(y), source.getLine(y), 48);
    EXPECT_EQ(pictureBytes(packed.getHalfSize()), pictureBytes(source.getHalfSize()));
    EXPECT_TRUE(Image(1, 8, true).getHalfSize().isNull());

    // By hand on flat 100: per tap floor(1600 * w / 65536) gives 419, 235, 235, -23, -23; 843 >> 3
    // = 105, and on 105 the vertical pass gives 110. Column 0 misses the taps at -3 and -1:
    // 419 + 235 - 23 = 631 >> 3 = 78 across, then 326 + 183 + 183 - 18 - 18 = 656 >> 3 = 82.
    Image flat(20, 20, false);
    flat.fill(100, 100, 100, 255);
    const Image half = flat.getHalfSize();
    EXPECT_EQ(half.getPixelPointer(5, 5)[2], 110);
    EXPECT_EQ(half.getPixelPointer(5, 5)[3], 255);  // clamped
    EXPECT_EQ(half.getPixelPointer(0, 5)[0], 82);
}

TEST(ImageFilters, BoxHalvingAndNearestNeighbourSteps)
{
    // 4 x 2 pixels, lines 24 bytes apart: (10 + 11 + 12 + 13) >> 2 = 11, ..., alpha 255.
    std::vector<uint8_t> buffer(48, 0);
    std::memcpy(buffer.data(), "\x0A\x14\x1E\x00\x0B\x15\x1F\x00\xC8\x64\x00\x00\xFF\xFF\xFF\x00", 16);
    std::memcpy(buffer.data() + 24, "\x0C\x16\x20\x00\x0D\x17\x21\x00\xC9\x65\x01\x00\xFF\xFF\xFF\x00", 16);
    Image::boxHalve(buffer.data(), 4, 2, 24);
    EXPECT_EQ(std::vector<uint8_t>(buffer.begin(), buffer.begin() + 8), (std::vector<uint8_t>{11, 21, 31, 255, 227, 177, 127, 255}));

    // 5 pixels numbered 0..4 to 3: step trunc(5 / 3 * 65536) = 109226 reads columns 0, 1 and 3.
    // The ratio of heights 2 / 4 reads source lines 0, 0, 1, 1.
    uint8_t source[2 * 5 * 4], target[4 * 3 * 4];
    for (int pixel = 0; pixel < 10; ++pixel)
        std::memset(source + pixel * 4, pixel, 4);
    Image::resampleNearest(source, 5, 2, 20, target, 3, 4, 12);
    const int expected[4][3] = {{0, 1, 3}, {0, 1, 3}, {5, 6, 8}, {5, 6, 8}};
    for (int line = 0; line < 4; ++line)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(target[line * 12 + column * 4], expected[line][column]) << line << ", " << column;
    // A step of 2^31 and more: 70000 pixels to 2 reads columns 0 and 35000.
    std::vector<uint8_t> wide(70000 * 4);
    for (size_t pixel = 0; pixel < 70000; ++pixel)
        std::memset(wide.data() + pixel * 4, static_cast<int>(pixel % 251), 4);
    uint8_t pair[2 * 4] = {};
    Image::resampleNearest(wide.data(), 70000, 1, 70000 * 4, pair, 2, 1, 8);
    EXPECT_EQ(pair[4], 35000 % 251);
}
