#include "foundation/string/Utf8Cursor.h"

#include <gtest/gtest.h>

#include <vector>

using q1framework::skipCharacters;
using q1framework::Utf8Cursor;

namespace
{
std::vector<uint32_t> decodeAll(const char* text)
{
    std::vector<uint32_t> values;
    Utf8Cursor cursor(text);
    while (const uint32_t value = cursor.next())
        values.push_back(value);
    return values;
}
}

TEST(Utf8Cursor, DecodesOneToThreeByteFormsToTheirCodePoints)
{
    EXPECT_EQ(decodeAll("A\xC3\xA9\xDF\xBF\xE2\x82\xAC\xEF\xBF\xBF"),
              (std::vector<uint32_t>{0x41, 0xE9, 0x7FF, 0x20AC, 0xFFFF}));
}

TEST(Utf8Cursor, FourByteFormsKeepBitFourOfTheLead)
{
    // U+1F600 and U+10000 .. U+10FFFF come out 0x400000 above their code point.
    EXPECT_EQ(decodeAll("\xF0\x9F\x98\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"),
              (std::vector<uint32_t>{0x41F600, 0x410000, 0x50FFFF}));
}

TEST(Utf8Cursor, StrayBytesComeBackAsTheirOwnValue)
{
    EXPECT_EQ(decodeAll("\x80\xBF\xF8\xFE\xFF"), (std::vector<uint32_t>{0x80, 0xBF, 0xF8, 0xFE, 0xFF}));
}

TEST(Utf8Cursor, BadContinuationEndsTheTextAtItsLeadByte)
{
    const char text[] = "ab\xE2\x82(cd";
    Utf8Cursor cursor(text);
    EXPECT_EQ(cursor.next(), uint32_t('a'));
    EXPECT_EQ(cursor.next(), uint32_t('b'));
    EXPECT_EQ(cursor.next(), 0u);
    EXPECT_EQ(cursor.getCurrent(), text + 2);

    // A sequence cut by the terminator stops there without reading past it.
    const char truncated[] = {'x', '\xF0', '\x9F', 0};
    EXPECT_EQ(decodeAll(truncated), (std::vector<uint32_t>{'x'}));

    // No overlong check: C0 80 is an encoded zero and so ends the text as well.
    EXPECT_EQ(decodeAll("a\xC0\x80z"), (std::vector<uint32_t>{'a'}));
    // Overlong forms of other values decode to their value.
    EXPECT_EQ(decodeAll("\xC1\x81"), (std::vector<uint32_t>{'A'}));
}

TEST(Utf8Cursor, ReportsWhereEachCharacterStartsAndEnds)
{
    const char text[] = "a\xE2\x82\xAC";
    Utf8Cursor cursor(text);
    cursor.next();
    EXPECT_EQ(cursor.getCurrent(), text);
    EXPECT_EQ(cursor.getNext(), text + 1);
    EXPECT_EQ(cursor.next(), 0x20ACu);
    EXPECT_EQ(cursor.getCurrent(), text + 1);
    EXPECT_EQ(cursor.getNext(), text + 4);
    EXPECT_EQ(cursor.next(), 0u);
    EXPECT_EQ(cursor.getCurrent(), text + 4);

    cursor.moveTo(text + 1);
    EXPECT_EQ(cursor.next(), 0x20ACu);
}

TEST(Utf8Cursor, SkipStopsAtTheEndOfTheDecodableText)
{
    const char text[] = "a\xC3\xA9z";
    EXPECT_EQ(skipCharacters(text, 0), text);
    EXPECT_EQ(skipCharacters(text, 2), text + 3);
    EXPECT_EQ(skipCharacters(text, 3), text + 4);
    EXPECT_EQ(skipCharacters(text, 50), text + 4);

    const char malformed[] = "ab\xC3(";
    EXPECT_EQ(skipCharacters(malformed, 5), malformed + 2);
}
