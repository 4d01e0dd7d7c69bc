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

TEST(Utf8Cursor, DecodesByTheLeadByteAndEndsAtABadContinuation)
{
    const struct
    {
        const char* text;
        std::vector<uint32_t> values;
    } cases[] = {
        {"A\xC3\xA9\xDF\xBF\xE2\x82\xAC\xEF\xBF\xBF", {0x41, 0xE9, 0x7FF, 0x20AC, 0xFFFF}},
        // Four-byte forms keep bit 4 of the lead: U+1F600, U+10000 and U+10FFFF plus 0x400000.
        {"\xF0\x9F\x98\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", {0x41F600, 0x410000, 0x50FFFF}},
        // Stray continuation bytes and bytes from 0xF8 on are their own value.
        {"\x80\xBF\xF8\xFE\xFF", {0x80, 0xBF, 0xF8, 0xFE, 0xFF}},
        // A continuation byte that is not 10xxxxxx ends the text, and so does the terminator.
        {"ab\xE2\x82(cd", {'a', 'b'}},
        {"x\xF0\x9F", {'x'}},
        // No overlong check: C1 81 is 'A', and C0 80 is a zero, which ends the text.
        {"\xC1\x81\xC0\x80z", {'A'}},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(decodeAll(testCase.text), testCase.values) << testCase.text;
}

TEST(Utf8Cursor, ReportsWhereCharactersStartAndWhereTheTextEnds)
{
    const char text[] = "a\xE2\x82\xAC\xC3(";
    Utf8Cursor cursor(text);
    cursor.next();
    EXPECT_EQ(cursor.next(), 0x20ACu);
    EXPECT_EQ(cursor.getCurrent(), text + 1);
    EXPECT_EQ(cursor.getNext(), text + 4);
    EXPECT_EQ(cursor.next(), 0u);
    EXPECT_EQ(cursor.getCurrent(), text + 4) << "the lead byte of the malformed sequence";

    EXPECT_EQ(skipCharacters(text, 1), text + 1);
    EXPECT_EQ(skipCharacters(text, 50), text + 4);
    const char plain[] = "a\xC3\xA9z";
    EXPECT_EQ(skipCharacters(plain, 50), plain + 4) << "the terminator";
}
