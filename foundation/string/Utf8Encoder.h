#pragma once

#include <cstdint>

namespace q1framework
{

// Converts UTF-16 and UTF-32 to UTF-8, always leniently: nothing in the source is rejected.
//
// - UTF-16: a high surrogate followed by a low one is combined into one code point; any other
//   surrogate is written as its own three-byte form.
// - UTF-32: surrogate values are written as their own three-byte form; values of 0x110000 and
//   above become U+FFFD.
//
// Both take the source range [source, sourceEnd) and the target range [target, targetEnd), advance
// source and target past what they converted, and stop when the source is used up or the next
// character does not fit. A zero unit is converted like any other, to a zero byte.
//
// Thread contract: none; pure functions of their arguments.
class Utf8Encoder
{
public:
    enum class Result
    {
        ok,               // the whole source was converted
        sourceExhausted,  // the source ended inside a surrogate pair
        targetExhausted,  // the next character did not fit; source points at it
        illegal           // never reported in lenient mode; kept for callers that switch on it
    };

    static Result fromUtf16(const uint16_t*& source, const uint16_t* sourceEnd, char*& target, char* targetEnd);
    static Result fromUtf32(const uint32_t*& source, const uint32_t* sourceEnd, char*& target, char* targetEnd);

    // Bytes that encodeCodePoint writes for value: 1 to 4 (3 for the replacement character).
    static int getEncodedLength(uint32_t value);

    // Writes value as UTF-8 at target, which must hold getEncodedLength(value) bytes; values of
    // 0x110000 and above are written as U+FFFD. Returns the position behind the written bytes.
    static char* encodeCodePoint(uint32_t value, char* target);

    // The code point that stands for anything that cannot be encoded.
    static constexpr uint32_t replacementCharacter = 0xFFFD;
};

}  // namespace q1framework
