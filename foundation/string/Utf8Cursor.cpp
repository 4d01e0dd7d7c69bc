#include "foundation/string/Utf8Cursor.h"

namespace q1framework
{

uint32_t Utf8Cursor::next()
{
    currentStart = nextStart;
    const uint32_t lead = static_cast<uint8_t>(*nextStart++);
    if (lead == 0)
        return 0;

    int continuationCount;
    if ((lead & 0xE0) == 0xC0)
        continuationCount = 1;
    else if ((lead & 0xF0) == 0xE0)
        continuationCount = 2;
    else if ((lead & 0xF8) == 0xF0)
        continuationCount = 3;
    else
        return lead;

    // The lead keeps five bits in every form; for four-byte leads that leaves bit 4 in the value.
    uint32_t value = lead & 0x1F;
    for (int i = 0; i < continuationCount; ++i)
    {
        // The byte is consumed before it is tested. A NUL fails the test, so nothing beyond the
        // terminator is ever read.
        const uint32_t continuation = static_cast<uint8_t>(*nextStart++);
        if ((continuation & 0xC0) != 0x80)
            return 0;
        value = (value << 6) | (continuation & 0x3F);
    }
    return value;
}

const char* skipCharacters(const char* text, unsigned count)
{
    Utf8Cursor cursor(text);
    for (unsigned i = 0; i < count; ++i)
        if (cursor.next() == 0)
            return cursor.getCurrent();
    return cursor.getNext();
}

}  // namespace q1framework
