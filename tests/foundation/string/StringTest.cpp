#include "foundation/string/String.h"

#include "foundation/memory/MemoryBlock.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

using q1framework::MemoryBlock;
using q1framework::String;

namespace
{
// The two empty forms are told apart by toUTF32, which answers null only for the null handle.
bool isNullHandle(const String& text) { return text.toUTF32() == nullptr; }
bool isEmptyTextHandle(const String& text) { return text.isEmpty() && text.toUTF32() != nullptr; }

// The text's bytes, for exact comparisons that print readably on failure.
std::string bytesOf(const String& text) { return text.getCString(); }

const std::string smiley = "\xF0\x9F\x98\x80";    // U+1F600, decodes as 0x41F600
const std::string replacement = "\xEF\xBF\xBD";   // U+FFFD

// One code point through toLowerCase or toUpperCase.
uint32_t mapOne(uint32_t character, bool toLower)
{
    const uint32_t units[] = {character, 0};
    const String text(units);
    return (toLower ? text.toLowerCase() : text.toUpperCase()).toUTF32()[0];
}
}  // namespace

TEST(String, EveryWayToSayNothingGivesTheNullHandle)
{
    const uint16_t noUnits16[] = {0, 'x'};
    const uint32_t noUnits32[] = {0, 'x'};
    const String forms[] = {String(),          String(static_cast<const char*>(nullptr)), String(""),
                            String(noUnits16), String(noUnits32), String("\0abc", 0, 4), String("abc", 1, 0)};
    for (const String& text : forms)
    {
        EXPECT_TRUE(isNullHandle(text));
        EXPECT_TRUE(text.isEmpty());
        EXPECT_EQ(text.getBytesCount() + text.getCharactersCount(), 0u);
        EXPECT_STREQ(text.getCString(), "");
        EXPECT_EQ(text.toUTF16()[0], 0);
        EXPECT_STREQ(text.getPointerAt(3), "");
    }
}

TEST(String, ErasingEverythingLeavesALiveHandleOntoEmptyText)
{
    const String empty = String("a").erase(0, 1);
    EXPECT_TRUE(isEmptyTextHandle(empty));
    EXPECT_EQ(empty.getBytesCount() + empty.getCharactersCount(), 0u);
    EXPECT_EQ(empty.toUTF16()[0], 0);
    EXPECT_TRUE(empty == String());
    EXPECT_TRUE(isNullHandle(empty + ""));
    EXPECT_TRUE(isEmptyTextHandle(empty.withoutLastCharacter()));

    // Positions stay inside the handle's own buffer, and inserting into it works (found by fuzzing).
    EXPECT_EQ(empty.getPointerAt(2), empty.getCString());
    String grown(empty);
    grown.insert(0, String("xy"));
    EXPECT_EQ(bytesOf(grown), "xy");
}

TEST(String, CopiesShareTheBufferAndChangesMakeNewOnes)
{
    String original("shared");
    const String copy(original);
    String assigned;
    assigned = original;
    EXPECT_EQ(copy.getCString(), original.getCString());
    EXPECT_EQ(assigned.getCString(), original.getCString());

    // Even the only owner gets a fresh buffer, and may be assigned to itself.
    String only("abc");
    const char* before = only.getCString();
    only.insert(1, String("X"));
    EXPECT_NE(only.getCString(), before);
    String& alias = only;
    only = alias;
    EXPECT_EQ(bytesOf(only), "aXbc");

    original += " text";
    EXPECT_EQ(bytesOf(copy), "shared");
    String privateCopy;
    privateCopy.copyFrom(copy);
    EXPECT_NE(privateCopy.getCString(), copy.getCString());
    EXPECT_EQ(bytesOf(privateCopy), "shared");
}

TEST(String, ConstructsFromUtf16AndUtf32Leniently)
{
    const uint16_t eAcute[] = {0x00E9, 0};
    EXPECT_EQ(String(eAcute).getBytesCount(), 2u);
    EXPECT_EQ(String(eAcute).getCharactersCount(), 1u);

    // Pairs combine; lone surrogates, also at the end, are written as their own three bytes.
    const uint16_t utf16[] = {'a', 0x20AC, 0xD83D, 0xDE00, 0xD800, 'z', 0xDC00, 0xDBFF, 0};
    EXPECT_EQ(bytesOf(String(utf16)), "a\xE2\x82\xAC\xF0\x9F\x98\x80\xED\xA0\x80z\xED\xB0\x80\xED\xAF\xBF");

    // The last value of each length; 0x110000 and above become U+FFFD, surrogates stay.
    const uint32_t utf32[] = {0x7F, 0x7FF, 0xFFFF, 0x10FFFF, 0x110000, 0xD800, 0};
    EXPECT_EQ(bytesOf(String(utf32)), "\x7F\xDF\xBF\xEF\xBF\xBF\xF4\x8F\xBF\xBF\xEF\xBF\xBD\xED\xA0\x80");
    const char unterminated[3] = {'x', 'y', 'z'};   // a byte range reads count bytes at most
    EXPECT_EQ(bytesOf(String(unterminated, 1, 2)), "yz");
}

TEST(String, FourByteAndMalformedTextAsCharactersAndAsBytes)
{
    // U+1F600 decodes as 0x41F600; UTF-16 keeps its low 16 bits and makes no surrogate pair.
    const String fourByte(("\xC3\xA9" + smiley).c_str());
    EXPECT_EQ(fourByte.getCharactersCount(), 2u);
    EXPECT_EQ(fourByte.getPointerAt(1), fourByte.getCString() + 2);
    EXPECT_EQ(fourByte.toUTF32()[1], 0x41F600u);
    EXPECT_EQ(fourByte.toUTF32()[2], 0u);
    EXPECT_EQ(fourByte.toUTF16()[1], 0xF600);

    // A bad continuation byte ends the characters; byte-wise readers see the whole buffer.
    const String text("ab\xC3(cd");
    EXPECT_EQ(text.getBytesCount(), 6u);
    EXPECT_EQ(text.getCharactersCount(), 2u);
    EXPECT_EQ(text.getPointerAt(5), text.getCString() + 2);
    EXPECT_EQ(text.indexOf(0, String("cd")), 4);
}

TEST(String, ComparesBytesUnsignedAndCaseSensitive)
{
    const String text("abc");
    EXPECT_TRUE(text == "abc" && text != "abC" && text < "abd" && text > "ab" && String("B") < "a");
    EXPECT_TRUE(String("\xC3\xA9") > "z") << "bytes compare as unsigned";
    EXPECT_TRUE(String() == "" && String() < "a");
}

TEST(String, ConcatenatesAndInsertsIntoFreshBuffers)
{
    EXPECT_TRUE(isNullHandle(String() + ""));
    String grown = String("a").erase(0, 1);
    grown += "";
    EXPECT_TRUE(isNullHandle(grown)) << "both empty drops the old reference";
    grown += "cd";
    EXPECT_EQ(bytesOf(grown), "cd");

    // Insertion counts characters; past the end appends; the text may be inserted into itself.
    String text("h\xC3\xA9llo");
    text.insert(2, String("-"));
    text.insert(99, String("!"));
    EXPECT_EQ(bytesOf(text), "h\xC3\xA9-llo!");
    String self("ab");
    self.insert(1, self);
    EXPECT_EQ(bytesOf(self), "aabb");
}

TEST(StringEditing, EraseAndSubstringCountCharacters)
{
    const String text("h\xC3\xA9llo");
    EXPECT_EQ(bytesOf(text.erase(1, 3)), "ho");
    EXPECT_EQ(bytesOf(text.erase(3, 100)), "h\xC3\xA9l");
    EXPECT_EQ(bytesOf(text.withoutLastCharacter()), "h\xC3\xA9ll");
    EXPECT_EQ(bytesOf(text.substring(1, 3)), "\xC3\xA9l");
    EXPECT_EQ(bytesOf(text.substring(3, 100)), "lo");
    EXPECT_TRUE(isNullHandle(text.substring(3, 3)));
    EXPECT_TRUE(isNullHandle(text.substring(5, 6)));
}

TEST(StringEditing, OperationsThatRebuildFromCodePointsReplaceFourByteCharacters)
{
    // Rebuilding turns 0x41F600 into U+FFFD, a stray byte into its own code point, and stops at a
    // malformed sequence; erase and withoutCharacters copy bytes and keep the character.
    const String text(("x" + smiley + "y\x80").c_str());
    EXPECT_EQ(bytesOf(text.withoutCharacter('x')), replacement + "y\xC2\x80");
    EXPECT_EQ(bytesOf(text.replaceCharacter('x', 'w')), "w" + replacement + "y\xC2\x80");
    EXPECT_EQ(bytesOf(text.replace(String("y"), String("-"), false)), "x" + replacement + "-\xC2\x80");
    EXPECT_EQ(bytesOf(text.toUpperCase()), "X" + replacement + "Y\xC2\x80");
    EXPECT_EQ(bytesOf(text.withoutCharacters(String("x"))), smiley + "y\x80");
    EXPECT_EQ(bytesOf(text.erase(0, 1)), smiley + "y\x80");
    EXPECT_EQ(bytesOf(String("Ab\xC3(cd").toLowerCase()), "ab");
}

TEST(StringEditing, RemovesAndReplacesCharacters)
{
    EXPECT_EQ(bytesOf(String("x\xC3\xA9y").withoutCharacter(0xE9)), "xy");
    EXPECT_EQ(bytesOf(String("h\xC3\xA9llo").withoutCharacters(String("l\xC3\xA9"))), "ho");
    EXPECT_TRUE(isNullHandle(String("aa").withoutCharacters(String("a"))));

    EXPECT_EQ(bytesOf(String("caf\xC3\xA9").replaceCharacter(0xE9, 0x20AC)), "caf\xE2\x82\xAC");
    EXPECT_EQ(bytesOf(String("ab:cd:ef").replaceCharacter(':', 0)), "ab") << "a zero ends the text";
    EXPECT_TRUE(isNullHandle(String(":x").replaceCharacter(':', 0)));
}

TEST(StringEditing, ReplaceSwapsByteMatches)
{
    const String text("a-b-c");
    EXPECT_EQ(bytesOf(text.replace(String("-"), String("+"), false)), "a+b+c");
    EXPECT_EQ(bytesOf(String("aaa").replace(String("aa"), String("bc"), false)), "bca") << "matches do not overlap";
    EXPECT_EQ(bytesOf(String("caf\xC3\xA9!").replace(String("\xC3\xA9"), String(), false)), "caf!");
    EXPECT_TRUE(isNullHandle(String("xx").replace(String("x"), String(), false)));
    EXPECT_EQ(text.replace(String(), String("+"), false).getCString(), text.getCString()) << "empty what: shared";

    // firstOnly: before the match characters are rebuilt, behind it the bytes are copied whole.
    const String twice(("x" + smiley + "-" + smiley + "-").c_str());
    EXPECT_EQ(bytesOf(twice.replace(String("-"), String("+"), true)), "x" + replacement + "+" + smiley + "-");
}

TEST(StringCaseMapping, MapsAsciiAndTheCodePagePairsByValueOnly)
{
    EXPECT_EQ(bytesOf(String("Hello, World 42! @[`{").toLowerCase()), "hello, world 42! @[`{");
    EXPECT_EQ(bytesOf(String("Hello, World 42! @[`{").toUpperCase()), "HELLO, WORLD 42! @[`{");

    const uint32_t pairs[][2] = {{128, 135}, {142, 132}, {143, 134}, {144, 130},
                                 {146, 145}, {153, 148}, {154, 129}, {165, 164}};
    for (const auto& pair : pairs)
    {
        EXPECT_EQ(mapOne(pair[0], true), pair[1]) << pair[0];
        EXPECT_EQ(mapOne(pair[1], false), pair[0]) << pair[1];
        EXPECT_EQ(mapOne(pair[0], false), pair[0]);
        EXPECT_EQ(mapOne(pair[1], true), pair[1]);
    }
    // The real Latin-1 letters are not mapped, and only the value itself counts.
    EXPECT_EQ(mapOne(0xC4, true), 0xC4u);
    EXPECT_EQ(mapOne(0x100 + 'A', true), 0x100u + 'A');
}

TEST(StringCaseMapping, MapsOnlyTheGivenCharacterRangeAndLeavesSharersAlone)
{
    EXPECT_EQ(bytesOf(String("\xC3\xA9zzz").toUpperCase(1, 3)), "\xC3\xA9ZZz");
    EXPECT_EQ(bytesOf(String("abc").toUpperCase(2, 1)), "abc");
    EXPECT_TRUE(isNullHandle(String().toLowerCase()));

    // The mapping works in the shared scratch buffer; the text of every handle stays.
    const String original("MiXeD");
    const String copy(original);
    EXPECT_EQ(bytesOf(copy.toLowerCase()), "mixed");
    EXPECT_EQ(bytesOf(original.toUpperCase()), "MIXED");
    EXPECT_EQ(bytesOf(copy), "MiXeD");
}

TEST(StringSearch, CharacterQueriesDecodeAndAnswerInBytes)
{
    const String text("a\xC3\xA9"
                      "ba\xC3\xA9");
    const char* start = text.getCString();
    EXPECT_EQ(text.findCharacter('a', 1, true), start + 4);
    EXPECT_EQ(text.findCharacter('a', 5, true), start + 4) << "too few matches: the last one";
    EXPECT_EQ(text.findCharacter(0xE9, 0, false), start + 3) << "the byte behind the character";
    EXPECT_EQ(text.findCharacter('z', 0, true), nullptr);
    EXPECT_FALSE(text.containsCharacter(0xC3)) << "a lead byte is not a character";
    EXPECT_FALSE(text.containsCharacter(0));
    EXPECT_EQ(text.countCharacter(0xE9), 2);
    EXPECT_EQ(text.indexOf(uint32_t('b')), 3);
    EXPECT_EQ(text.indexOf(uint32_t(0)), -1);
}

TEST(StringSearch, TextSearchesCompareBytes)
{
    const String text("abcabc");
    EXPECT_EQ(text.indexOf(2, String("bc")), 4);
    EXPECT_EQ(text.indexOf(5, String("bc")), -1);
    EXPECT_EQ(text.indexOf(-3, String("bc")), 1);
    EXPECT_EQ(String().indexOf(0, String("a")), -1);
    EXPECT_EQ(String("\xC3\xA9\xC3\xA9").indexOf(1, String("\xA9")), 1) << "offsets may fall inside a character";

    EXPECT_TRUE(text.startsWith(String("abca")));
    EXPECT_FALSE(text.startsWith(String("bc")));
    EXPECT_TRUE(text.endsWith(String("cabc")));
    EXPECT_FALSE(text.endsWith(String("xabcabc")));
    EXPECT_TRUE(text.contains(String("ca")));
    // An empty needle: endsWith is always true, startsWith and contains need some text.
    EXPECT_TRUE(String().endsWith(String()));
    EXPECT_FALSE(String().startsWith(String()));
    EXPECT_FALSE(String().contains(String()));
}

TEST(StringSearch, CutsAtACharacterOrASetGiveTheTextItselfWithoutAMatch)
{
    const String path("a/b/c");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 0, true)), "a/");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 7, false)), "a/b") << "too few matches: the last one";
    EXPECT_EQ(bytesOf(path.fromCharacter('/', 0, true)), "/b/c");
    EXPECT_EQ(bytesOf(path.fromCharacter('/', 1, false)), "c");
    EXPECT_EQ(path.upToCharacter(':', 0, false).getCString(), path.getCString());
    EXPECT_EQ(path.fromCharacter(':', 0, false).getCString(), path.getCString());

    const String text("key=v\xC3\xA9;x");
    EXPECT_EQ(bytesOf(text.upToAnyOf(String(";="), false)), "key");
    EXPECT_EQ(bytesOf(text.upToAnyOf(String(";\xC3\xA9"), true)), "key=v\xC3\xA9");
    EXPECT_EQ(text.upToAnyOf(String("#"), false).getCString(), text.getCString());
}

TEST(StringSearch, FirstOccurrenceCutsDifferWhenNothingMatches)
{
    const String text("one::two::three");
    EXPECT_EQ(bytesOf(text.upToFirstOccurrenceOf(String("::"), false)), "one");
    EXPECT_EQ(bytesOf(text.upToFirstOccurrenceOf(String("::"), true)), "one::");
    EXPECT_EQ(bytesOf(text.fromFirstOccurrenceOf(String("::"), false)), "two::three");
    EXPECT_EQ(bytesOf(text.fromFirstOccurrenceOf(String("::"), true)), "::two::three");

    // Without a match the text before it is all of it, shared, but the text behind it is nothing.
    EXPECT_EQ(text.upToFirstOccurrenceOf(String("##"), false).getCString(), text.getCString());
    EXPECT_TRUE(isNullHandle(text.fromFirstOccurrenceOf(String("##"), false)));
}

TEST(StringSearch, SplitEmptiesBothSidesWithoutASeparator)
{
    String left("stale");
    String right("stale");
    String("k\xC3\xA9y:value:more").split(':', left, right);
    EXPECT_EQ(bytesOf(left), "k\xC3\xA9y");
    EXPECT_EQ(bytesOf(right), "value:more");
    String("xy").split(':', left, right);
    EXPECT_TRUE(isNullHandle(left));
    EXPECT_TRUE(isNullHandle(right));

    String text("name=value");   // the source may be one of the outputs
    text.split('=', text, right);
    EXPECT_EQ(bytesOf(text) + "|" + bytesOf(right), "name|value");
}

TEST(StringConversions, PrintsAndReadsNumbers)
{
    EXPECT_EQ(bytesOf(String(INT_MIN)), "-2147483648");
    EXPECT_EQ(bytesOf(String(1.5, 2)), "1.50");
    EXPECT_EQ(bytesOf(String(1.5, -1)), "1.500000");
    EXPECT_EQ(bytesOf(String(0.1f, 9)), "0.100000001") << "the float widens to double before printing";
    EXPECT_EQ(bytesOf(String(1.5, 500)), "1.5" + std::string(98, '0')) << "decimals are clipped to 99";
    // The widest fixed-point text of a double: 309 digits, a sign, a point and 99 decimals.
    EXPECT_EQ(String(-1.7976931348623157e308, 99).getBytesCount(), 410u);

    EXPECT_EQ(String("  -7x").toInt(), -7);
    EXPECT_EQ(String().toInt(), 0);
    EXPECT_EQ(String("0.1").toFloat(), 0.1f);
    EXPECT_EQ(String("-1e3xyz").toDouble(), -1000.0);
}

TEST(StringConversions, HexTextOfBytesAndOfIntegers)
{
    const uint8_t bytes[] = {0xAB, 0x01, 0xF0};
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 2, 0)), "AB01");
    EXPECT_EQ(bytesOf(String::toHexString(bytes, 3, 1)), "AB 01 F0");
    EXPECT_TRUE(isNullHandle(String::toHexString(bytes, 0, 1)));
    EXPECT_EQ(bytesOf(String::toHexString(0x12AB)), "000012AB");
    EXPECT_EQ(bytesOf(String::toHexString(INT_MIN)), "80000000");
    EXPECT_EQ(bytesOf(String::toHexString(uint64_t(0x0123456789ABCDEF))), "0123456789ABCDEF");
    EXPECT_EQ(bytesOf(String::toHexString(uint64_t(0x1F))), "000000000000001F");
}

TEST(StringConversions, ParseHexNeedsAnEvenDigitCountAfterBlanksGo)
{
    EXPECT_EQ(String("ab c").parseHex(), 0u);
    EXPECT_EQ(String("aB Cd").parseHex(), 0xABCDu);
    EXPECT_EQ(String("1g").parseHex(), 0x10u) << "a character that is no digit counts as 0";
    EXPECT_EQ(String("ffff0123456789abcdef").parseHex(), 0x0123456789ABCDEFu) << "the last sixteen digits";
    EXPECT_EQ(String("\xC5\x81"
                     "0")
                  .parseHex(),
              0xA0u)
        << "only a character's low eight bits count: U+0141 reads as 'A'";
    const String shared("AB CD");
    shared.parseHex();
    EXPECT_EQ(bytesOf(shared), "AB CD") << "the preparation works on a private copy";

    const MemoryBlock block = String("de ad BE EF 00").parseHexBlock();
    ASSERT_EQ(block.getSize(), 5);
    EXPECT_EQ(std::memcmp(block.getData(), "\xDE\xAD\xBE\xEF\x00", 5), 0);
    EXPECT_EQ(bytesOf(block.toHexString(1)), "DE AD BE EF 00");
    EXPECT_EQ(String("abc").parseHexBlock().getSize(), 0);
}

TEST(StringConversions, FromSecondsCountsInBaseSixtyThroughout)
{
    const struct
    {
        int seconds;
        const char* text;
    } cases[] = {
        {59, "59"}, {60, "1:00"}, {3661, "1:01:01"}, {86400, "24:00:00"}, {215999, "59:59:59"},
        // 2^31 - 1 s: 9942 units of 216000 s wrap to 42 in the top field.
        {216000, "1:00:00:00"}, {2147483647, "42:03:14:07"},
        // Nothing to show: zero, negative, and 60 units of 216000 s, since the top field wraps too.
        {0, ""}, {-61, ""}, {60 * 216000, ""},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(bytesOf(String::fromSeconds(testCase.seconds)), testCase.text) << testCase.seconds;
    EXPECT_TRUE(isNullHandle(String::fromSeconds(0)));
}
