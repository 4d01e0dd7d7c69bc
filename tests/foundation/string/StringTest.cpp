#include "foundation/string/String.h"

#include "StringChecks.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <utility>

using q1framework::String;

TEST(String, EveryWayToSayNothingGivesTheNullHandle)
{
    const char* nothing = nullptr;
    const uint16_t noUnits16[] = {0, 'x'};
    const uint32_t noUnits32[] = {0, 'x'};
    const char bytes[] = "\0abc";
    const String forms[] = {String(), String(nullptr), String(nothing), String(""),
                            String(noUnits16), String(noUnits32), String(bytes, 0, 4), String("abc", 1, 0)};
    for (const String& text : forms)
    {
        EXPECT_TRUE(isNullHandle(text));
        EXPECT_TRUE(text.isEmpty());
        EXPECT_EQ(text.getBytesCount(), 0u);
        EXPECT_EQ(text.getCharactersCount(), 0u);
        ASSERT_NE(text.getCString(), nullptr);
        EXPECT_STREQ(text.getCString(), "");
        ASSERT_NE(text.toUTF16(), nullptr);
        EXPECT_EQ(text.toUTF16()[0], 0);
        EXPECT_STREQ(text.getPointerAt(3), "");
    }
}

TEST(String, ErasingEverythingLeavesALiveHandleOntoEmptyText)
{
    const String empty = String("a").erase(0, 1);
    EXPECT_TRUE(isEmptyTextHandle(empty));
    EXPECT_EQ(empty.getBytesCount(), 0u);
    EXPECT_EQ(empty.getCharactersCount(), 0u);
    EXPECT_STREQ(empty.getCString(), "");
    EXPECT_EQ(empty.toUTF32()[0], 0u);
    EXPECT_EQ(empty.toUTF16()[0], 0);
    EXPECT_TRUE(empty == "");
    EXPECT_TRUE(empty == String());

    // Readers treat both forms alike, and building on them gives ordinary results.
    EXPECT_STREQ((empty + "x").getCString(), "x");
    EXPECT_TRUE(isNullHandle(empty + ""));
    EXPECT_TRUE(isNullHandle(empty.substring(0, 1)));
    EXPECT_EQ(empty.indexOf(0, String("a")), -1);
    EXPECT_TRUE(isEmptyTextHandle(empty.withoutLastCharacter()));
    EXPECT_EQ(empty.getPointerAt(2), empty.getCString());

    String grown(empty);
    grown.insert(0, String("xy"));
    EXPECT_EQ(bytesOf(grown), "xy");
}

TEST(String, CopiesShareTheBufferAndChangesMakeNewOnes)
{
    String original("shared");
    String copy(original);
    String assigned;
    assigned = original;
    EXPECT_EQ(copy.getCString(), original.getCString());
    EXPECT_EQ(assigned.getCString(), original.getCString());

    const char* sharedText = original.getCString();
    original += " text";
    EXPECT_NE(original.getCString(), sharedText);
    EXPECT_EQ(copy.getCString(), sharedText);
    EXPECT_STREQ(copy.getCString(), "shared");

    // Even the only owner gets a fresh buffer.
    String only("abc");
    const char* before = only.getCString();
    only.insert(1, String("X"));
    EXPECT_NE(only.getCString(), before);
    EXPECT_STREQ(only.getCString(), "aXbc");

    String privateCopy;
    privateCopy.copyFrom(copy);
    EXPECT_NE(privateCopy.getCString(), copy.getCString());
    EXPECT_STREQ(privateCopy.getCString(), "shared");
}

TEST(String, AssignmentToItselfAndMovesKeepTheText)
{
    String text("kept");
    String& alias = text;
    text = alias;
    EXPECT_STREQ(text.getCString(), "kept");

    String other(text);
    text = other;  // same buffer through two handles
    EXPECT_STREQ(text.getCString(), "kept");

    String moved(std::move(other));
    EXPECT_TRUE(isNullHandle(other));
    EXPECT_STREQ(moved.getCString(), "kept");
    String target("old");
    target = std::move(moved);
    EXPECT_STREQ(target.getCString(), "kept");

    String left("left");
    String right("right");
    left.swap(right);
    EXPECT_STREQ(left.getCString(), "right");
    EXPECT_STREQ(right.getCString(), "left");
}

TEST(String, ConstructsFromUtf16WithPairsCombinedAndLoneSurrogatesKept)
{
    const uint16_t eAcute[] = {0x00E9, 0};
    const String accented(eAcute);
    EXPECT_EQ(accented.getBytesCount(), 2u);
    EXPECT_EQ(accented.getCharactersCount(), 1u);
    EXPECT_EQ(bytesOf(accented), "\xC3\xA9");

    const uint16_t mixed[] = {'a', 0x20AC, 0xD83D, 0xDE00, 'z', 0};
    EXPECT_EQ(bytesOf(String(mixed)), "a\xE2\x82\xAC\xF0\x9F\x98\x80z");

    const uint16_t loneHigh[] = {0xD800, 'a', 0};
    EXPECT_EQ(bytesOf(String(loneHigh)), "\xED\xA0\x80"
                                         "a");
    const uint16_t loneLow[] = {0xDC00, 0};
    EXPECT_EQ(bytesOf(String(loneLow)), "\xED\xB0\x80");
    const uint16_t highAtEnd[] = {'b', 0xDBFF, 0};
    EXPECT_EQ(bytesOf(String(highAtEnd)), "b\xED\xAF\xBF");
}

TEST(String, ConstructsFromUtf32WithOutOfRangeValuesReplaced)
{
    const uint32_t units[] = {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF, 0};
    EXPECT_EQ(bytesOf(String(units)), "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");

    const uint32_t outOfRange[] = {0x110000, 0xFFFFFFFF, 0xD800, 0};
    EXPECT_EQ(bytesOf(String(outOfRange)), "\xEF\xBF\xBD\xEF\xBF\xBD\xED\xA0\x80");
}

TEST(String, ByteRangeConstructorStopsAtCountOrAfterANul)
{
    EXPECT_EQ(bytesOf(String("hello", 1, 3)), "ell");
    EXPECT_EQ(bytesOf(String("ab\0cd", 0, 5)), "ab");
    // No terminator within reach: exactly count bytes are read.
    const char unterminated[3] = {'x', 'y', 'z'};
    EXPECT_EQ(bytesOf(String(unterminated, 0, 3)), "xyz");
    EXPECT_EQ(bytesOf(String(unterminated, 1, 2)), "yz");
}

TEST(String, PrintsIntegersAndFixedPointNumbers)
{
    EXPECT_EQ(bytesOf(String(-42)), "-42");
    EXPECT_EQ(bytesOf(String(INT_MIN)), "-2147483648");
    EXPECT_EQ(bytesOf(String(1.5, 2)), "1.50");
    EXPECT_EQ(bytesOf(String(1.5, -1)), "1.500000");
    EXPECT_EQ(bytesOf(String(-0.125, 0)), "-0");
    EXPECT_EQ(bytesOf(String(2.5f, 1)), "2.5");
    EXPECT_EQ(bytesOf(String(0.1f, 9)), "0.100000001") << "the float widens to double before printing";

    // Decimals are clipped to 99.
    const String manyDecimals(1.5, 500);
    EXPECT_EQ(manyDecimals.getBytesCount(), 101u);
    EXPECT_EQ(bytesOf(manyDecimals), "1.5" + std::string(98, '0'));

    // The widest fixed-point texts of a double fit.
    EXPECT_EQ(String(1e308, 99).getBytesCount(), 409u);
    EXPECT_EQ(String(-1.7976931348623157e308, 99).getBytesCount(), 410u);
}

TEST(String, CountsAndIndexesCharactersNotBytes)
{
    const String text("a\xC3\xA9"
                      "b\xE2\x82\xAC");  // a é b €
    EXPECT_EQ(text.getBytesCount(), 7u);
    EXPECT_EQ(text.getCharactersCount(), 4u);
    EXPECT_EQ(text.getPointerAt(0), text.getCString());
    EXPECT_EQ(text.getPointerAt(2), text.getCString() + 3);
    EXPECT_EQ(text.getPointerAt(4), text.getCString() + 7);
    EXPECT_EQ(text.getPointerAt(100), text.getCString() + 7);

    char copy[8];
    text.copyTo(copy);
    EXPECT_EQ(std::memcmp(copy, text.getCString(), 8), 0);
    char emptyCopy[1] = {'x'};
    String().copyTo(emptyCopy);
    EXPECT_EQ(emptyCopy[0], 0);
}

TEST(String, ConvertsToUtf16AndUtf32WithTheFourByteOffset)
{
    // U+1F600 decodes as 0x41F600; UTF-16 keeps its low 16 bits and no surrogate pair.
    const String text("a\xC3\xA9\xF0\x9F\x98\x80");
    const uint32_t* utf32 = text.toUTF32();
    ASSERT_NE(utf32, nullptr);
    EXPECT_EQ(utf32[0], 0x61u);
    EXPECT_EQ(utf32[1], 0xE9u);
    EXPECT_EQ(utf32[2], 0x41F600u);
    EXPECT_EQ(utf32[3], 0u);

    const uint16_t* utf16 = text.toUTF16();
    EXPECT_EQ(utf16[0], 0x61);
    EXPECT_EQ(utf16[1], 0xE9);
    EXPECT_EQ(utf16[2], 0xF600);
    EXPECT_EQ(utf16[3], 0);
}

TEST(String, MalformedTextEndsForCharactersButNotForBytes)
{
    const String text("ab\xC3(cd");
    EXPECT_EQ(text.getBytesCount(), 6u);
    EXPECT_EQ(text.getCharactersCount(), 2u);
    EXPECT_EQ(text.toUTF32()[2], 0u);
    EXPECT_EQ(text.indexOf(0, String("cd")), 4) << "byte-wise searches see the whole buffer";
    EXPECT_EQ(text.getPointerAt(5), text.getCString() + 2);
}

TEST(String, ComparesBytesUnsignedAndCaseSensitive)
{
    const String text("abc");
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE(text != "abC");
    EXPECT_TRUE(text < "abd");
    EXPECT_TRUE(text > "ab");
    EXPECT_TRUE(String("B") < "a");
    EXPECT_TRUE(String("\xC3\xA9") > "z") << "bytes compare as unsigned";
    EXPECT_TRUE(String() == "");
    EXPECT_TRUE(String() < "a");
    EXPECT_FALSE(String() < "");
    EXPECT_TRUE(String("x") == String("x"));
}

TEST(String, ConcatenatesIntoTheNullHandleOnlyWhenBothAreEmpty)
{
    EXPECT_EQ(bytesOf(String("ab") + "cd"), "abcd");
    EXPECT_EQ(bytesOf(String() + "cd"), "cd");
    EXPECT_EQ(bytesOf(String("ab") + ""), "ab");
    EXPECT_TRUE(isNullHandle(String() + ""));
    EXPECT_EQ(bytesOf(String("ab") + String("\xC3\xA9")), "ab\xC3\xA9");

    String grown = String("a").erase(0, 1);
    grown += "";
    EXPECT_TRUE(isNullHandle(grown)) << "both empty drops the old reference";
    grown += "x";
    grown += String("y");
    EXPECT_EQ(bytesOf(grown), "xy");
}

TEST(String, InsertsAtCharacterIndexes)
{
    String text("h\xC3\xA9llo");
    text.insert(2, String("-"));
    EXPECT_EQ(bytesOf(text), "h\xC3\xA9-llo");
    text.insert(99, String("!"));
    EXPECT_EQ(bytesOf(text), "h\xC3\xA9-llo!");
    text.insert(0, String(">"));
    EXPECT_EQ(bytesOf(text), ">h\xC3\xA9-llo!");

    String empty;
    empty.insert(3, String("x"));
    EXPECT_EQ(bytesOf(empty), "x");
    String stillEmpty;
    stillEmpty.insert(0, String());
    EXPECT_TRUE(isNullHandle(stillEmpty));

    String self("ab");
    self.insert(1, self);
    EXPECT_EQ(bytesOf(self), "aabb");
}
