#pragma once

#include <cstdint>

namespace q1framework
{

// Walks UTF-8 text one code point at a time. A by-value decoding state: copying a cursor copies
// its position.
//
// Decoding is deliberately permissive and has one fixed quirk: a four-byte sequence keeps bit 4 of
// its lead byte, so it decodes to its true code point plus 0x400000 (U+1F600 comes out as
// 0x41F600). Every operation of String that counts, indexes or rebuilds text relies on this exact
// behaviour. Overlong forms and surrogates are not checked. A lead byte that is not a two-, three-
// or four-byte lead (ASCII, a stray continuation byte, 0xF8 and above) is returned as its own value.
// A continuation byte that is not of the form 10xxxxxx ends the text: next() returns 0 there, as it
// does at the terminating NUL.
//
// Thread contract: none; a cursor reads text that must not change while it is in use.
class Utf8Cursor
{
public:
    // Starts before the first character of text, which must be NUL-terminated.
    explicit Utf8Cursor(const char* text) : nextStart(text), currentStart(text) {}

    // Decodes the character at the cursor and moves behind it. Returns 0 at the end of the text
    // and at the first malformed sequence; getCurrent() then points at the NUL or at the lead
    // byte of that sequence, which is where the decodable text ends.
    uint32_t next();

    // Start of the character that next() decoded last.
    const char* getCurrent() const { return currentStart; }
    // Where the following character starts.
    const char* getNext() const { return nextStart; }
    // Continues decoding at position, which must lie within the same text.
    void moveTo(const char* position) { nextStart = position; }

private:
    const char* nextStart;
    const char* currentStart;
};

// Advances over count characters from text. When the decodable text ends first (at its NUL or at
// a malformed sequence), returns the position where it ends.
const char* skipCharacters(const char* text, unsigned count);

}  // namespace q1framework
