#include "foundation/string/Utf8Encoder.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::Utf8Encoder;

TEST(Utf8Encoder, ReportsAFullTargetAndLeavesTheSourceAtTheCharacterThatDidNotFit)
{
    const uint32_t source[] = {'a', 0x20AC};
    const uint32_t* position = source;
    char target[3];
    char* written = target;
    EXPECT_EQ(Utf8Encoder::fromUtf32(position, source + 2, written, target + 3), Utf8Encoder::Result::targetExhausted);
    EXPECT_EQ(position, source + 1);
    EXPECT_EQ(written, target + 1);

    const uint16_t pair[] = {'b', 0xD83D, 0xDE00};
    const uint16_t* position16 = pair;
    written = target;
    EXPECT_EQ(Utf8Encoder::fromUtf16(position16, pair + 3, written, target + 3), Utf8Encoder::Result::targetExhausted);
    EXPECT_EQ(position16, pair + 1) << "the pair is neither split nor half consumed";
}

TEST(Utf8Encoder, ReportsASourceThatEndsInsideAPair)
{
    const uint16_t source[] = {'c', 0xD83D};
    const uint16_t* position = source;
    char target[16];
    char* written = target;
    EXPECT_EQ(Utf8Encoder::fromUtf16(position, source + 2, written, target + 16), Utf8Encoder::Result::sourceExhausted);
    EXPECT_EQ(position, source + 1);
    EXPECT_EQ(std::string(target, written), "c");
}

TEST(Utf8Encoder, ConvertsAWholeRangeIncludingZeroUnits)
{
    const uint16_t source[] = {0xD83D, 0xDE00, 0, 0xDC00};
    const uint16_t* position = source;
    char target[16];
    char* written = target;
    EXPECT_EQ(Utf8Encoder::fromUtf16(position, source + 4, written, target + 16), Utf8Encoder::Result::ok);
    EXPECT_EQ(std::string(target, written), std::string("\xF0\x9F\x98\x80\0\xED\xB0\x80", 8));
}
