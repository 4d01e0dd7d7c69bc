#include "foundation/string/String.h"

#include "StringChecks.h"

#include <gtest/gtest.h>

using q1framework::String;

namespace
{
uint32_t mapOne(uint32_t character, bool toLower)
{
    const uint32_t units[] = {character, 0};
    const String text(units);
    const String mapped = toLower ? text.toLowerCase() : text.toUpperCase();
    return mapped.toUTF32()[0];
}
}

TEST(StringCaseMapping, MapsAsciiLettersOnly)
{
    EXPECT_EQ(bytesOf(String("Hello, World 42!").toLowerCase()), "hello, world 42!");
    EXPECT_EQ(bytesOf(String("Hello, World 42!").toUpperCase()), "HELLO, WORLD 42!");
    EXPECT_EQ(bytesOf(String("@[`{").toLowerCase()), "@[`{");
    EXPECT_EQ(bytesOf(String("@[`{").toUpperCase()), "@[`{");
}

TEST(StringCaseMapping, MapsTheCodePagePairsByValueAndLeavesLatinOneAlone)
{
    const uint32_t pairs[][2] = {{128, 135}, {142, 132}, {143, 134}, {144, 130},
                                 {146, 145}, {153, 148}, {154, 129}, {165, 164}};
    for (const auto& pair : pairs)
    {
        EXPECT_EQ(mapOne(pair[0], true), pair[1]) << pair[0];
        EXPECT_EQ(mapOne(pair[1], false), pair[0]) << pair[1];
        EXPECT_EQ(mapOne(pair[0], false), pair[0]);
        EXPECT_EQ(mapOne(pair[1], true), pair[1]);
    }
    EXPECT_EQ(mapOne(0xC4, true), 0xC4u);
    EXPECT_EQ(mapOne(0xE4, false), 0xE4u);
    EXPECT_EQ(mapOne(0x100 + 'A', true), 0x100u + 'A') << "only the value itself counts";
}

TEST(StringCaseMapping, MapsOnlyTheGivenCharacterRange)
{
    EXPECT_EQ(bytesOf(String("abcdef").toUpperCase(1, 3)), "aBCdef");
    EXPECT_EQ(bytesOf(String("\xC3\xA9zz").toUpperCase(1, 2)), "\xC3\xA9Zz");
    EXPECT_EQ(bytesOf(String("abc").toUpperCase(2, 99)), "abC");
    EXPECT_EQ(bytesOf(String("abc").toUpperCase(5, 9)), "abc");
    EXPECT_EQ(bytesOf(String("abc").toUpperCase(2, 1)), "abc");
}

TEST(StringCaseMapping, RebuildsTheTextFromCodePoints)
{
    EXPECT_EQ(bytesOf(String("A\xF0\x9F\x98\x80").toLowerCase()), "a\xEF\xBF\xBD");
    EXPECT_EQ(bytesOf(String("Ab\xC3(CD").toLowerCase()), "ab") << "cut at the malformed sequence";
    EXPECT_TRUE(isNullHandle(String().toLowerCase()));
    EXPECT_TRUE(isNullHandle(String("x").erase(0, 1).toUpperCase()));
}

TEST(StringCaseMapping, LeavesTheTextOfSharingHandlesUnchanged)
{
    const String original("MiXeD");
    const String copy(original);
    const String lower = copy.toLowerCase();
    EXPECT_EQ(bytesOf(lower), "mixed");
    EXPECT_EQ(bytesOf(original), "MiXeD");
    EXPECT_EQ(bytesOf(original.toUpperCase()), "MIXED");
    EXPECT_EQ(bytesOf(copy), "MiXeD");
}
