#include "foundation/string/String.h"

#include "StringChecks.h"

#include <gtest/gtest.h>

using q1framework::String;

TEST(StringSearch, FindCharacterFallsBackToTheLastMatch)
{
    const String text("aXa");
    const char* start = text.getCString();
    EXPECT_EQ(text.findCharacter('a', 0, true), start);
    EXPECT_EQ(text.findCharacter('a', 1, true), start + 2);
    EXPECT_EQ(text.findCharacter('a', 5, true), start + 2);
    EXPECT_EQ(text.findCharacter('a', 0, false), start + 1);
    EXPECT_EQ(text.findCharacter('b', 0, true), nullptr);
    EXPECT_EQ(text.findCharacter(0, 0, true), nullptr);
    EXPECT_EQ(String().findCharacter('a', 0, true), nullptr);

    const String accented("x\xC3\xA9y");
    EXPECT_EQ(accented.findCharacter(0xE9, 0, true), accented.getCString() + 1);
    EXPECT_EQ(accented.findCharacter(0xE9, 0, false), accented.getCString() + 3);
}

TEST(StringSearch, CharacterQueriesDecodeAndAnswerInBytes)
{
    const String text("a\xC3\xA9"
                      "ba\xC3\xA9");
    EXPECT_TRUE(text.containsCharacter(0xE9));
    EXPECT_FALSE(text.containsCharacter(0xC3)) << "a lead byte is not a character";
    EXPECT_FALSE(text.containsCharacter(0));
    EXPECT_EQ(text.countCharacter('a'), 2);
    EXPECT_EQ(text.countCharacter(0xE9), 2);
    EXPECT_EQ(text.countCharacter('z'), 0);
    EXPECT_EQ(text.indexOf(uint32_t('b')), 3);
    EXPECT_EQ(text.indexOf(uint32_t(0xE9)), 1);
    EXPECT_EQ(text.indexOf(uint32_t(0)), -1);
    EXPECT_EQ(text.indexOf(uint32_t('z')), -1);
}

TEST(StringSearch, IndexOfTextSearchesBytesFromAStartOffset)
{
    const String text("abcabc");
    EXPECT_EQ(text.indexOf(0, String("bc")), 1);
    EXPECT_EQ(text.indexOf(2, String("bc")), 4);
    EXPECT_EQ(text.indexOf(5, String("bc")), -1);
    EXPECT_EQ(text.indexOf(-3, String("bc")), 1);
    EXPECT_EQ(text.indexOf(100, String("a")), -1);
    EXPECT_EQ(text.indexOf(0, String("abcabcd")), -1);
    EXPECT_EQ(String().indexOf(0, String("a")), -1);
    // An empty needle matches at the first position tried.
    EXPECT_EQ(text.indexOf(4, String()), 4);
    EXPECT_EQ(text.indexOf(6, String()), -1);
    // Byte offsets may fall inside a character.
    EXPECT_EQ(String("\xC3\xA9\xC3\xA9").indexOf(1, String("\xA9")), 1);
}

TEST(StringSearch, StartsEndsAndContains)
{
    const String text("prefix-body.txt");
    EXPECT_TRUE(text.startsWith(String("prefix")));
    EXPECT_FALSE(text.startsWith(String("body")));
    EXPECT_TRUE(text.endsWith(String(".txt")));
    EXPECT_FALSE(text.endsWith(String("prefix")));
    EXPECT_FALSE(text.endsWith(String("x-prefix-body.txt")));
    EXPECT_TRUE(text.contains(String("-body")));
    EXPECT_FALSE(text.contains(String("bodies")));

    // Empty needles: endsWith is always true, startsWith and contains need some text.
    EXPECT_TRUE(text.endsWith(String()));
    EXPECT_TRUE(String().endsWith(String()));
    EXPECT_TRUE(text.startsWith(String()));
    EXPECT_FALSE(String().startsWith(String()));
    EXPECT_FALSE(String().contains(String()));
}

TEST(StringSearch, UpToAndFromCharacter)
{
    const String path("a/b/c");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 0, false)), "a");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 0, true)), "a/");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 1, false)), "a/b");
    EXPECT_EQ(bytesOf(path.upToCharacter('/', 7, false)), "a/b") << "too few matches: the last one counts";
    EXPECT_EQ(bytesOf(path.fromCharacter('/', 0, false)), "b/c");
    EXPECT_EQ(bytesOf(path.fromCharacter('/', 0, true)), "/b/c");
    EXPECT_EQ(bytesOf(path.fromCharacter('/', 1, false)), "c");
    EXPECT_TRUE(isNullHandle(String("/x").upToCharacter('/', 0, false)));
    EXPECT_TRUE(isNullHandle(String("x/").fromCharacter('/', 0, false)));

    // No match gives the text itself, shared.
    EXPECT_EQ(path.upToCharacter(':', 0, false).getCString(), path.getCString());
    EXPECT_EQ(path.fromCharacter(':', 0, false).getCString(), path.getCString());
}

TEST(StringSearch, UpToAnyOfStopsAtTheFirstCharacterInTheSet)
{
    const String text("key=value;x");
    EXPECT_EQ(bytesOf(text.upToAnyOf(String(";="), false)), "key");
    EXPECT_EQ(bytesOf(text.upToAnyOf(String(";="), true)), "key=");
    EXPECT_EQ(bytesOf(String("ab\xC3\xA9"
                             "cd")
                          .upToAnyOf(String("\xC3\xA9"), true)),
              "ab\xC3\xA9");
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
    EXPECT_TRUE(isNullHandle(text.fromFirstOccurrenceOf(String("three"), false)));
}

TEST(StringSearch, SplitEmptiesBothSidesWithoutASeparator)
{
    String left("stale");
    String right("stale");
    String("key:value:more").split(':', left, right);
    EXPECT_EQ(bytesOf(left), "key");
    EXPECT_EQ(bytesOf(right), "value:more");

    String(":v").split(':', left, right);
    EXPECT_TRUE(isNullHandle(left));
    EXPECT_EQ(bytesOf(right), "v");

    left = String("stale");
    right = String("stale");
    String("xy").split(':', left, right);
    EXPECT_TRUE(isNullHandle(left));
    EXPECT_TRUE(isNullHandle(right));

    String("a\xC3\xA9" "b").split(0xE9, left, right);
    EXPECT_EQ(bytesOf(left), "a");
    EXPECT_EQ(bytesOf(right), "b");

    // The source may be one of the outputs.
    String text("name=value");
    String value;
    text.split('=', text, value);
    EXPECT_EQ(bytesOf(text), "name");
    EXPECT_EQ(bytesOf(value), "value");
}
