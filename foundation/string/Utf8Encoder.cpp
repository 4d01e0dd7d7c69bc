#include "foundation/string/Utf8Encoder.h"

namespace q1framework
{

namespace
{
constexpr uint32_t highSurrogateFirst = 0xD800;
constexpr uint32_t highSurrogateLast = 0xDBFF;
constexpr uint32_t lowSurrogateFirst = 0xDC00;
constexpr uint32_t lowSurrogateLast = 0xDFFF;
constexpr uint32_t firstBeyondUnicode = 0x110000;
}

int Utf8Encoder::getEncodedLength(uint32_t value)
{
    if (value < 0x80)
        return 1;
    if (value < 0x800)
        return 2;
    if (value < 0x10000)
        return 3;
    if (value < firstBeyondUnicode)
        return 4;
    return 3;
}

char* Utf8Encoder::encodeCodePoint(uint32_t value, char* target)
{
    if (value >= firstBeyondUnicode)
        value = replacementCharacter;

    const int length = getEncodedLength(value);
    // Lead-byte markers for sequences of 1, 2, 3 and 4 bytes.
    static constexpr uint8_t leadMarkers[5] = {0x00, 0x00, 0xC0, 0xE0, 0xF0};
    for (int i = length - 1; i > 0; --i)
    {
        target[i] = static_cast<char>(0x80 | (value & 0x3F));
        value >>= 6;
    }
    target[0] = static_cast<char>(leadMarkers[length] | value);
    return target + length;
}

Utf8Encoder::Result Utf8Encoder::fromUtf16(const uint16_t*& source, const uint16_t* sourceEnd, char*& target,
                                           char* targetEnd)
{
    while (source < sourceEnd)
    {
        const uint16_t* start = source;
        uint32_t value = *source++;
        if (value >= highSurrogateFirst && value <= highSurrogateLast)
        {
            if (source == sourceEnd)
            {
                source = start;
                return Result::sourceExhausted;
            }
            const uint32_t low = *source;
            if (low >= lowSurrogateFirst && low <= lowSurrogateLast)
            {
                value = ((value - highSurrogateFirst) << 10) + (low - lowSurrogateFirst) + 0x10000;
                ++source;
            }
            // Otherwise the high surrogate stands alone and is written as it is.
        }
        if (targetEnd - target < getEncodedLength(value))
        {
            source = start;
            return Result::targetExhausted;
        }
        target = encodeCodePoint(value, target);
    }
    return Result::ok;
}

Utf8Encoder::Result Utf8Encoder::fromUtf32(const uint32_t*& source, const uint32_t* sourceEnd, char*& target,
                                           char* targetEnd)
{
    while (source < sourceEnd)
    {
        const uint32_t value = *source;
        if (targetEnd - target < getEncodedLength(value))
            return Result::targetExhausted;
        target = encodeCodePoint(value, target);
        ++source;
    }
    return Result::ok;
}

}  // namespace q1framework
