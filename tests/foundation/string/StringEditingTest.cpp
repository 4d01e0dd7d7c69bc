#include "foundation/string/String.h"

#include "StringChecks.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::String;

namespace
{
const char* const smiley = "\xF0\x9F\x98\x80";           // U+1F600, decodes as 0x41F600
const char* const replacement = "\xEF\xBF\xBD";          // U+FFFD
}

TEST(StringEditing, EraseCountsCharactersAndKeepsAnEmptyResultAlive)
{
    const String text("h\xC3\xA9llo");
    EXPECT_EQ(bytesOf(text.erase(1, 3)), "ho");
    EXPECT_EQ(bytesOf(text.erase(3, 100)), "h\xC3\xA9l");
    EXPECT_EQ(bytesOf(text.erase(10, 1)), "h\xC3\xA9llo");
    EXPECT_EQ(bytesOf(text.erase(1, -4)), "h\xC3\xA9llo");
    EXPECT_TRUE(isEmptyTextHandle(text.erase(0, 5)));
    EXPECT_TRUE(isNullHandle(String().erase(0, 1)));
    EXPECT_EQ(bytesOf(String(smiley).erase(1, 1)), smiley) << "erase copies bytes, it does not rebuild";
}

TEST(StringEditing, WithoutLastCharacterReachesTheEmptyTextHandle)
{
    EXPECT_EQ(bytesOf(String("a\xC3\xA9").withoutLastCharacter()), "a");
    EXPECT_TRUE(isEmptyTextHandle(String("x").withoutLastCharacter()));
    EXPECT_TRUE(isEmptyTextHandle(String("x").erase(0, 1).withoutLastCharacter()));
    EXPECT_TRUE(isNullHandle(String().withoutLastCharacter()));
}

TEST(StringEditing, WithoutCharacterRebuildsFromCodePoints)
{
    EXPECT_EQ(bytesOf(String("banana").withoutCharacter('a')), "bnn");
    EXPECT_TRUE(isNullHandle(String("aaa").withoutCharacter('a')));
    EXPECT_EQ(bytesOf(String("x\xC3\xA9y").withoutCharacter(0xE9)), "xy");
    // Rebuilding turns the four-byte value into U+FFFD and a stray byte into its own code point.
    EXPECT_EQ(bytesOf(String((std::string("x") + smiley + "y").c_str()).withoutCharacter('x')), std::string(replacement) + "y");
    EXPECT_EQ(bytesOf(String("a\x80").withoutCharacter('a')), "\xC2\x80");
    EXPECT_EQ(bytesOf(String("ab\xC3(cd").withoutCharacter('a')), "b") << "cut at the malformed sequence";
}

TEST(StringEditing, WithoutCharactersCopiesTheKeptBytes)
{
    EXPECT_EQ(bytesOf(String("hello world").withoutCharacters(String("lo"))), "he wrd");
    EXPECT_EQ(bytesOf(String((std::string(smiley) + "ab").c_str()).withoutCharacters(String("a"))), std::string(smiley) + "b");
    EXPECT_EQ(bytesOf(String("x\xC3\xA9y").withoutCharacters(String("\xC3\xA9"))), "xy");
    EXPECT_TRUE(isNullHandle(String("aa").withoutCharacters(String("a"))));
    EXPECT_TRUE(isNullHandle(String().withoutCharacters(String("a"))));
    EXPECT_EQ(bytesOf(String("abc").withoutCharacters(String())), "abc");
}

TEST(StringEditing, ReplaceCharacterEndsTheTextWhenTheReplacementIsZero)
{
    EXPECT_EQ(bytesOf(String("a.b.c").replaceCharacter('.', '/')), "a/b/c");
    EXPECT_EQ(bytesOf(String("caf\xC3\xA9").replaceCharacter(0xE9, 'e')), "cafe");
    EXPECT_EQ(bytesOf(String("ab").replaceCharacter('b', 0x20AC)), "a\xE2\x82\xAC");
    EXPECT_EQ(bytesOf(String("ab:cd:ef").replaceCharacter(':', 0)), "ab");
    EXPECT_TRUE(isNullHandle(String(":x").replaceCharacter(':', 0)));
    EXPECT_EQ(bytesOf(String(smiley).replaceCharacter('q', 'r')), replacement);
}

TEST(StringEditing, ReplaceSwapsByteMatchesAndRebuildsTheRest)
{
    const String text("a-b-c");
    EXPECT_EQ(bytesOf(text.replace(String("-"), String("+"), false)), "a+b+c");
    EXPECT_EQ(bytesOf(text.replace(String("-"), String("+"), true)), "a+b-c");
    EXPECT_EQ(bytesOf(text.replace(String("-"), String(), false)), "abc");
    EXPECT_EQ(bytesOf(String("abcabc").replace(String("bc"), String("XYZ"), false)), "aXYZaXYZ");
    EXPECT_EQ(bytesOf(String("aaa").replace(String("aa"), String("b"), false)), "ba") << "matches do not overlap";
    EXPECT_EQ(bytesOf(String("caf\xC3\xA9!").replace(String("\xC3\xA9"), String("e"), false)), "cafe!");
    EXPECT_EQ(bytesOf(text.replace(String("zz"), String("y"), false)), "a-b-c");
    EXPECT_TRUE(isNullHandle(String("xx").replace(String("x"), String(), false)));
    EXPECT_TRUE(isNullHandle(String().replace(String("x"), String("y"), false)));

    // An empty what gives the same text, shared.
    EXPECT_EQ(text.replace(String(), String("+"), false).getCString(), text.getCString());
}

TEST(StringEditing, ReplaceFirstOnlyAppendsTheRestUntouched)
{
    // Before the match characters are rebuilt (U+1F600 becomes U+FFFD); behind it bytes are copied.
    const String text((std::string("x") + smiley + "-" + smiley + "-").c_str());
    EXPECT_EQ(bytesOf(text.replace(String("-"), String("+"), true)),
              std::string("x") + replacement + "+" + smiley + "-");
    EXPECT_EQ(bytesOf(text.replace(String("-"), String("+"), false)),
              std::string("x") + replacement + "+" + replacement + "+");
}

TEST(StringEditing, SubstringTakesACharacterRange)
{
    const String text("a\xC3\xA9"
                      "b\xE2\x82\xAC");  // a é b €
    EXPECT_EQ(bytesOf(text.substring(1, 3)), "\xC3\xA9"
                                             "b");
    EXPECT_EQ(bytesOf(text.substring(2, 100)), "b\xE2\x82\xAC");
    EXPECT_EQ(bytesOf(text.substring(0, 1)), "a");
    EXPECT_TRUE(isNullHandle(text.substring(3, 3)));
    EXPECT_TRUE(isNullHandle(text.substring(3, 1)));
    EXPECT_TRUE(isNullHandle(text.substring(4, 6)));
    EXPECT_TRUE(isNullHandle(String().substring(0, 2)));
}
