#include "media/image/Image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <tuple>
#include <vector>

using namespace q1framework;

namespace
{
// The half-band filter by its definition, over value(index) around centre: each tap is
// floor(value * 16 * weight / 65536), the sum of the five is divided by 8 rounding down and
// limited to 0..255.
template <typename Value>
int filter(const Value& value, int centre)
{
    const int offsets[5] = {-3, -1, 0, 1, 3};
    const double weights[5] = {-910, 9648, 17164, 9648, -910};
    int sum = 0;
    for (int tap = 0; tap < 5; ++tap)
        sum += static_cast<int>(std::floor(value(centre + offsets[tap]) * 16.0 * weights[tap] / 65536.0));
    return std::clamp(static_cast<int>(std::floor(sum / 8.0)), 0, 255);
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
    // Margins below the filter's reach of 3 are read from a copy with a full margin.
    for (const auto& [width, height, margin] : {std::tuple{2, 2, 16}, std::tuple{9, 7, 0}, std::tuple{64, 33, 16}, std::tuple{101, 80, 1}})
    {
        const Image source = randomImage(width, height, margin, 7u + width);
        const Image half = source.getHalfSize();
        ASSERT_EQ(half.getSize(), Point(width / 2, height / 2));
        EXPECT_EQ(half.getMargin(), 16);
        // Rows first, then columns; pixels outside the picture count as 0.
        for (int y = 0; y < height / 2; ++y)
            for (int x = 0; x < width / 2; ++x)
                for (int channel = 0; channel < 4; ++channel)
                {
                    const auto sourceAt = [&](int column, int line) {
                        return column >= 0 && column < width && line >= 0 && line < height ? source.getPixelPointer(column, line)[channel] : 0;
                    };
                    const auto across = [&](int line) { return filter([&](int column) { return sourceAt(column, line); }, 2 * x); };
                    ASSERT_EQ(half.getPixelPointer(x, y)[channel], filter(across, 2 * y)) << width << " x " << height << " at " << x << ", " << y;
                }
    }
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
