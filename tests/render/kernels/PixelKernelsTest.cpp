#include "render/kernels/PixelKernels.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using q1framework::PixelKernels;

namespace
{
using Bytes = std::vector<uint8_t>;

const PixelKernels& scalar = PixelKernels::getScalar();

// The vector tables this machine runs; each must match the scalar one byte for byte.
std::vector<const PixelKernels*> vectorTables()
{
    std::vector<const PixelKernels*> tables;
    for (auto set : {PixelKernels::InstructionSet::sse2, PixelKernels::InstructionSet::avx2})
        if (const PixelKernels* table = PixelKernels::find(set))
            tables.push_back(table);
    return tables;
}

Bytes pixel(int blue, int green, int red, int alpha)
{
    return {uint8_t(blue), uint8_t(green), uint8_t(red), uint8_t(alpha)};
}

// Pixels of every kind the blends meet: random bytes, opaque, transparent zero, premultiplied
// colour, in runs so that whole vector groups of one kind occur.
Bytes randomPixels(std::mt19937& random, int count)
{
    Bytes bytes(static_cast<size_t>(count) * 4);
    std::uniform_int_distribution<int> byte(0, 255), kind(0, 3), run(1, 12);
    for (int index = 0; index < count;)
    {
        const int type = kind(random);
        for (int end = std::min(count, index + run(random)); index < end; ++index)
        {
            uint8_t* p = &bytes[static_cast<size_t>(index) * 4];
            const int alpha = type == 1 ? 255 : type == 2 ? 0 : byte(random);
            for (int channel = 0; channel < 3; ++channel)
                p[channel] = type == 0 ? uint8_t(byte(random)) : uint8_t(byte(random) * alpha / 255);
            p[3] = uint8_t(alpha);
        }
    }
    return bytes;
}

std::vector<int16_t> randomCoefficients(std::mt19937& random, size_t count)
{
    std::uniform_int_distribution<int> value(-32768, 32767);
    std::vector<int16_t> values(count);
    for (auto& v : values)
        v = int16_t(value(random));
    return values;
}
}

TEST(PixelKernelsTest, ScalarBlendsFollowTheirFormulas)
{
    // Word 0x80402010 (alpha 128, red 64, green 32, blue 16) over (b 10, g 100, r 200, a 255):
    // byte = (d * 128 >> 8) + word byte: 5 + 16, 50 + 32, 100 + 64, 127 + 128.
    Bytes target = pixel(10, 100, 200, 255);
    scalar.blendWord(target.data(), 1, 0x80402010u);
    EXPECT_EQ(target, pixel(21, 82, 164, 255));

    // Alpha 0 keeps d (d * 256 >> 8) and adds the byte, wrapping: 255 + 10 = 265 -> 9.
    target = pixel(255, 0, 7, 1);
    scalar.blendWord(target.data(), 1, 0x0000000Au);
    EXPECT_EQ(target, pixel(9, 0, 7, 1));

    // Opacity 99, so k = 100: source (40, 80, 120, 160) scales to 4000 >> 8 = 15, 8000 >> 8 = 31,
    // 12000 >> 8 = 46, 16000 >> 8 = 62; inverse 256 - 62 = 194 over (200, 100, 50, 255):
    // 38800 >> 8 = 151, 19400 >> 8 = 75, 9700 >> 8 = 37, 49470 >> 8 = 193.
    target = pixel(200, 100, 50, 255);
    Bytes source = pixel(40, 80, 120, 160);
    scalar.blendPixels(target.data(), source.data(), 1, 99);
    EXPECT_EQ(target, pixel(151 + 15, 75 + 31, 37 + 46, 193 + 62));

    // Opacity 255 is the premultiplied form: (100 * 128 >> 8) + s.
    target = pixel(100, 100, 100, 100);
    source = pixel(10, 20, 30, 128);
    scalar.blendPixels(target.data(), source.data(), 1, 255);
    EXPECT_EQ(target, pixel(60, 70, 80, 178));

    // Opacity 0 leaves the pixel (k = 1: everything shifts to 0).
    target = pixel(1, 2, 3, 4);
    source = pixel(255, 255, 255, 255);
    scalar.blendPixels(target.data(), source.data(), 1, 0);
    EXPECT_EQ(target, pixel(1, 2, 3, 4));
}

TEST(PixelKernelsTest, ScalarFiltersTruncateInSixteenBitsAndClampToAlpha)
{
    // One line of two taps, read straight down: tap 0 at (255, 200, 0, 255), tap 1 zero.
    // (255 << 4) * 32385 = 132130800 >> 16 = 2016, >> 3 = 252;
    // (200 << 4) * 32385 = 103632000 >> 16 = 1581, >> 3 = 197.
    Bytes lines = pixel(255, 200, 0, 255);
    lines.resize(8, 0);
    const int16_t single[2] = {32385, 0};
    Bytes out(4);
    scalar.filterColumns(lines.data(), 4, out.data(), 1, single, 2);
    EXPECT_EQ(out, pixel(252, 197, 0, 252));

    // A negative tap rounds down: (255 << 4) * -1000 = -4080000 >> 16 = -63; 2016 - 63 = 1953,
    // >> 3 = 244. A sum below 0 gives 0: (255 << 4) * -20000 >> 16 = -1246, >> 3 = -156.
    lines = pixel(255, 255, 255, 255);
    Bytes second = pixel(255, 0, 0, 255);
    lines.insert(lines.end(), second.begin(), second.end());
    const int16_t pair[2] = {-1000, 32385};
    scalar.filterColumns(lines.data(), 4, out.data(), 1, pair, 2);
    EXPECT_EQ(out, pixel(244, 0, 0, 244));  // green and red: -63 >> 3 = -8, clamped to 0
    const int16_t negative[1] = {-20000};
    scalar.filterColumns(lines.data(), 4, out.data(), 1, negative, 1);
    EXPECT_EQ(out, pixel(0, 0, 0, 0));

    // Colour is limited to alpha: blue 255 gives 252, alpha 100 gives 1600 * 32385 >> 16 = 790,
    // >> 3 = 98, and blue follows it down.
    lines = pixel(255, 0, 0, 100);
    scalar.filterColumns(lines.data(), 4, out.data(), 1, single, 1);
    EXPECT_EQ(out, pixel(98, 0, 0, 98));

    // Across: taps 4 from column 1 of a line; coefficients per tap repeated for the channels.
    Bytes line;
    for (int column = 0; column < 6; ++column)
    {
        Bytes p = column == 2 ? pixel(255, 200, 0, 255) : pixel(0, 0, 0, 0);
        line.insert(line.end(), p.begin(), p.end());
    }
    std::vector<int16_t> weights(16, 0);
    for (int channel = 0; channel < 4; ++channel)
        weights[4 + channel] = 32385;  // tap 1 reads column 2
    const int32_t starts[1] = {1};
    scalar.filterLine(line.data(), out.data(), 1, starts, weights.data(), 4);
    EXPECT_EQ(out, pixel(252, 197, 0, 252));
}

TEST(PixelKernelsTest, TheBestTableIsOneTheMachineRuns)
{
    const PixelKernels& best = PixelKernels::getBest();
    EXPECT_EQ(PixelKernels::find(best.instructionSet), &best);
    EXPECT_EQ(PixelKernels::find(PixelKernels::InstructionSet::scalar), &scalar);
    for (const PixelKernels* table : vectorTables())
        EXPECT_GE(static_cast<int>(best.instructionSet), static_cast<int>(table->instructionSet)) << table->name;
}

TEST(PixelKernelsTest, VectorBlendsMatchTheScalarOnRandomPixels)
{
    for (const PixelKernels* table : vectorTables())
    {
        std::mt19937 random(1234);
        std::uniform_int_distribution<int> length(0, 70), offset(0, 7), opacity(0, 255), any(0, 3);
        for (int trial = 0; trial < 600; ++trial)
        {
            const int count = length(random);
            const int skip = offset(random);  // unaligned starts
            const Bytes target = randomPixels(random, count + skip);
            const Bytes source = randomPixels(random, count + skip);
            const int chosenOpacity = any(random) == 0 ? 255 : any(random) == 0 ? 0 : opacity(random);
            const uint32_t word = uint32_t(random());

            Bytes expected = target, actual = target;
            scalar.blendWord(expected.data() + skip * 4, count, word);
            table->blendWord(actual.data() + skip * 4, count, word);
            ASSERT_EQ(actual, expected) << table->name << " blendWord, trial " << trial;

            expected = actual = target;
            scalar.blendPixels(expected.data() + skip * 4, source.data() + skip * 4, count, chosenOpacity);
            table->blendPixels(actual.data() + skip * 4, source.data() + skip * 4, count, chosenOpacity);
            ASSERT_EQ(actual, expected) << table->name << " blendPixels at opacity " << chosenOpacity << ", trial "
                                        << trial;
        }
    }
}

TEST(PixelKernelsTest, VectorFiltersMatchTheScalarOnRandomPixelsAndCoefficients)
{
    constexpr int margin = 40;  // pixels each side of a line, read by starts near the ends
    for (const PixelKernels* table : vectorTables())
    {
        std::mt19937 random(99);
        std::uniform_int_distribution<int> length(1, 40), taps(1, 8), start(-margin, 0);
        for (int trial = 0; trial < 300; ++trial)
        {
            const int count = length(random);
            const int lineTaps = taps(random) * 4;
            const Bytes source = randomPixels(random, count + lineTaps + 2 * margin);
            const uint8_t* line = source.data() + margin * 4;
            std::vector<int32_t> starts(static_cast<size_t>(count));
            for (int index = 0; index < count; ++index)
                starts[static_cast<size_t>(index)] = index + start(random) / 2;
            // The same coefficient for the four channels of a tap, as the resampler lays them out.
            std::vector<int16_t> weights = randomCoefficients(random, static_cast<size_t>(count * lineTaps));
            std::vector<int16_t> repeated;
            for (int16_t weight : weights)
                repeated.insert(repeated.end(), 4, weight);
            Bytes expected(static_cast<size_t>(count) * 4), actual(expected.size());
            scalar.filterLine(line, expected.data(), count, starts.data(), repeated.data(), lineTaps);
            table->filterLine(line, actual.data(), count, starts.data(), repeated.data(), lineTaps);
            ASSERT_EQ(actual, expected) << table->name << " filterLine, trial " << trial;

            // Down: taps lines of the same random picture, any tap count.
            const int columnTaps = 1 + int(random() % 32);
            const int width = count + 3;
            const Bytes picture = randomPixels(random, width * columnTaps);
            const std::vector<int16_t> columnWeights = randomCoefficients(random, static_cast<size_t>(columnTaps));
            expected.assign(static_cast<size_t>(count) * 4, 0);
            actual = expected;
            scalar.filterColumns(picture.data(), width * 4, expected.data(), count, columnWeights.data(), columnTaps);
            table->filterColumns(picture.data(), width * 4, actual.data(), count, columnWeights.data(), columnTaps);
            ASSERT_EQ(actual, expected) << table->name << " filterColumns, trial " << trial;
        }
    }
}
