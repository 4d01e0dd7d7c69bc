// The vector tables against the scalar one, byte for byte. The scalar blends and filters are
// checked against their formulas through the drawing and resampling tests.
#include "render/kernels/PixelKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using q1framework::PixelKernels;

namespace
{
using Bytes = std::vector<uint8_t>;

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
            uint8_t* pixel = &bytes[static_cast<size_t>(index) * 4];
            const int alpha = type == 1 ? 255 : type == 2 ? 0 : byte(random);
            for (int channel = 0; channel < 3; ++channel)
                pixel[channel] = uint8_t(type == 0 ? byte(random) : byte(random) * alpha / 255);
            pixel[3] = uint8_t(alpha);
        }
    }
    return bytes;
}

std::vector<int16_t> randomCoefficients(std::mt19937& random, int count, int copies)
{
    std::vector<int16_t> values;
    for (int index = 0; index < count; ++index)
        values.insert(values.end(), static_cast<size_t>(copies), int16_t(random()));
    return values;
}
}  // namespace

// Each vector table this machine runs against the scalar one; the best table is the widest of them.
TEST(PixelKernelsTest, VectorTablesMatchTheScalarOnRandomPixels)
{
    const PixelKernels& scalar = PixelKernels::getScalar();
    const PixelKernels& best = PixelKernels::getBest();
    EXPECT_EQ(PixelKernels::find(best.instructionSet), &best);
    EXPECT_EQ(PixelKernels::find(PixelKernels::InstructionSet::scalar), &scalar);
    constexpr int margin = 40;  // pixels each side of a line, read by starts near the ends
    for (auto set : {PixelKernels::InstructionSet::sse2, PixelKernels::InstructionSet::avx2})
    {
        const PixelKernels* table = PixelKernels::find(set);
        if (table == nullptr)
            continue;
        EXPECT_GE(static_cast<int>(best.instructionSet), static_cast<int>(set)) << table->name;
        std::mt19937 random(1234);
        std::uniform_int_distribution<int> length(0, 70), offset(0, 7), opacity(0, 255), any(0, 3), taps(1, 8);
        for (int trial = 0; trial < 600; ++trial)
        {
            // Blends over runs of every length from unaligned starts.
            const int count = length(random), skip = offset(random);
            const Bytes target = randomPixels(random, count + skip), source = randomPixels(random, count + skip);
            const int chosenOpacity = any(random) == 0 ? 255 : any(random) == 0 ? 0 : opacity(random);
            const auto word = uint32_t(random());
            Bytes expected = target, actual = target;
            scalar.blendWord(expected.data() + skip * 4, count, word);
            table->blendWord(actual.data() + skip * 4, count, word);
            ASSERT_EQ(actual, expected) << table->name << " blendWord, trial " << trial;
            expected = actual = target;
            scalar.blendPixels(expected.data() + skip * 4, source.data() + skip * 4, count, chosenOpacity);
            table->blendPixels(actual.data() + skip * 4, source.data() + skip * 4, count, chosenOpacity);
            ASSERT_EQ(actual, expected) << table->name << " blendPixels at opacity " << chosenOpacity << ", trial " << trial;

            // Filters across (the same coefficient for the four channels of a tap, as the resampler
            // lays them out, from starts reaching into the line's margins) and down (any tap count).
            const int lineTaps = taps(random) * 4;
            const Bytes line = randomPixels(random, count + lineTaps + 2 * margin);
            std::vector<int32_t> starts;
            for (int index = 0; index < count; ++index)
                starts.push_back(index - offset(random) * 5);
            const std::vector<int16_t> weights = randomCoefficients(random, count * lineTaps, 4);
            expected.assign(static_cast<size_t>(count) * 4, 0);
            actual = expected;
            scalar.filterLine(line.data() + margin * 4, expected.data(), count, starts.data(), weights.data(), lineTaps);
            table->filterLine(line.data() + margin * 4, actual.data(), count, starts.data(), weights.data(), lineTaps);
            ASSERT_EQ(actual, expected) << table->name << " filterLine, trial " << trial;
            const int columnTaps = 1 + int(random() % 32), width = count + 3;
            const Bytes picture = randomPixels(random, width * columnTaps);
            const std::vector<int16_t> columnWeights = randomCoefficients(random, columnTaps, 1);
            scalar.filterColumns(picture.data(), width * 4, expected.data(), count, columnWeights.data(), columnTaps);
            table->filterColumns(picture.data(), width * 4, actual.data(), count, columnWeights.data(), columnTaps);
            ASSERT_EQ(actual, expected) << table->name << " filterColumns, trial " << trial;
        }
    }
}
