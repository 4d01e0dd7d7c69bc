#include "foundation/string/String.h"

#include "../memory/TemporaryFile.h"
#include "StringChecks.h"

#include "foundation/memory/MemoryBlock.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

using q1framework::MemoryBlock;
using q1framework::String;

TEST(StringConversions, ReadsNumbersAsTheCLibraryDoes)
{
    EXPECT_EQ(String("42abc").toInt(), 42);
    EXPECT_EQ(String("  -7").toInt(), -7);
    EXPECT_EQ(String("x1").toInt(), 0);
    EXPECT_EQ(String().toInt(), 0);
    EXPECT_EQ(String("2.5").toFloat(), 2.5f);
    EXPECT_EQ(String("0.1").toFloat(), 0.1f);
    EXPECT_EQ(String("1e3").toDouble(), 1000.0);
    EXPECT_EQ(String("-0.125xyz").toDouble(), -0.125);
    EXPECT_EQ(String().toDouble(), 0.0);
}

TEST(StringConversions, HexTextOfBytesWithSpacing)
{
    const uint8_t bytes[] = {0xAB, 0x01, 0xF0};
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 2, 0)), "AB01");
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 3, 1)), "AB 01 F0");
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 3, 2)), "AB  01  F0");
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 1, 1)), "AB");
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 2, -3)), "AB01");
    EXPECT_TRUE(isNullHandle(String::toHexString(bytes, 0, 1)));
    EXPECT_TRUE(isNullHandle(String::toHexString(nullptr, 4, 0)));
}

TEST(StringConversions, HexTextOfIntegersHasFixedWidth)
{
    EXPECT_EQ(bytesOf(String::toHexString(0x12AB)), "000012AB");
    EXPECT_EQ(bytesOf(String::toHexString(-1)), "FFFFFFFF");
    EXPECT_EQ(bytesOf(String::toHexString(INT_MIN)), "80000000");
    EXPECT_EQ(bytesOf(String::toHexString(uint64_t(0x0123456789ABCDEF))), "0123456789ABCDEF");
    EXPECT_EQ(bytesOf(String::toHexString(uint64_t(0x1F))), "000000000000001F");
}

TEST(StringConversions, ParseHexNeedsAnEvenDigitCountAfterBlanksGo)
{
    EXPECT_EQ(String("ab c").parseHex(), 0u);
    EXPECT_EQ(String("ab cd").parseHex(), 0xABCDu);
    EXPECT_EQ(String("AB Cd").parseHex(), 0xABCDu);
    EXPECT_EQ(String("1g").parseHex(), 0x10u) << "a character that is no digit counts as 0";
    EXPECT_EQ(String("ffff0123456789abcdef").parseHex(), 0x0123456789ABCDEFu) << "the last sixteen digits";
    EXPECT_EQ(String().parseHex(), 0u);
    // Only a character's low eight bits are looked at: U+0141 reads as 'A'.
    EXPECT_EQ(String("\xC5\x81"
                     "0")
                  .parseHex(),
              0xA0u);

    const String shared("AB CD");
    shared.parseHex();
    EXPECT_EQ(bytesOf(shared), "AB CD");
}

TEST(StringConversions, ParseHexBlockIsTheInverseOfTheBlockHexText)
{
    const MemoryBlock block = String("de ad BE EF 00").parseHexBlock();
    ASSERT_EQ(block.getSize(), 5);
    EXPECT_EQ(std::memcmp(block.getData(), "\xDE\xAD\xBE\xEF\x00", 5), 0);
    EXPECT_EQ(bytesOf(block.toHexString(1)), "DE AD BE EF 00");
    EXPECT_EQ(bytesOf(block.toHexString(0).parseHexBlock().toHexString(0)), "DEADBEEF00");

    const MemoryBlock odd = String("abc").parseHexBlock();
    EXPECT_EQ(odd.getSize(), 0);
    EXPECT_EQ(odd.getData(), nullptr);
    EXPECT_TRUE(odd.isOwned());
    EXPECT_EQ(String().parseHexBlock().getSize(), 0);
}

TEST(StringConversions, FromSecondsCountsInBaseSixtyThroughout)
{
    const struct
    {
        int seconds;
        const char* text;
    } cases[] = {
        {1, "1"},           {59, "59"},          {60, "1:00"},           {3599, "59:59"},
        {3600, "1:00:00"},  {3661, "1:01:01"},   {86400, "24:00:00"},    {215999, "59:59:59"},
        {216000, "1:00:00:00"}, {2147483647, "42:03:14:07"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(bytesOf(String::fromSeconds(testCase.seconds)), testCase.text) << testCase.seconds;

    EXPECT_TRUE(isNullHandle(String::fromSeconds(0)));
    EXPECT_TRUE(isNullHandle(String::fromSeconds(-61)));
    EXPECT_TRUE(isNullHandle(String::fromSeconds(INT_MIN)));
    // The top field wraps at 60 as well: 60 units of 216000 seconds give nothing to show.
    EXPECT_TRUE(isNullHandle(String::fromSeconds(60 * 216000)));
}

TEST(StringConversions, SavesAndLoadsWholeFiles)
{
    TemporaryFile file;
    EXPECT_TRUE(String("h\xC3\xA9llo\nworld").saveToFile(String(file.getPath())));
    EXPECT_EQ(file.read(), "h\xC3\xA9llo\nworld") << "no terminator is written";
    EXPECT_EQ(bytesOf(String::loadFromFile(String(file.getPath()))), "h\xC3\xA9llo\nworld");

    file.write(std::string("before\0after", 12));
    EXPECT_EQ(bytesOf(String::loadFromFile(String(file.getPath()))), "before");

    EXPECT_TRUE(String().saveToFile(String(file.getPath())));
    EXPECT_EQ(file.read(), "");
    EXPECT_TRUE(isNullHandle(String::loadFromFile(String(file.getPath()))));

    file.write(std::string("\0tail", 5));
    EXPECT_TRUE(isNullHandle(String::loadFromFile(String(file.getPath()))));
}

TEST(StringConversions, FileFailuresAreQuiet)
{
    TemporaryFile file;
    EXPECT_TRUE(isNullHandle(String::loadFromFile(String(file.getPath()))));
    EXPECT_TRUE(isNullHandle(String::loadFromFile(String())));
    const String unreachable = String(file.getPath()) + "/inside/a/file";
    EXPECT_FALSE(String("text").saveToFile(unreachable));
    EXPECT_FALSE(file.exists());
}
