// String: operations that build a changed copy of the text.
#include "foundation/string/String.h"

#include "foundation/string/Utf8Cursor.h"
#include "foundation/string/Utf8Encoder.h"
#include "foundation/var/Array.h"

#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
// Text made of characters taken from a source: code points to be encoded again, or byte runs
// copied as they are.
class TextBuilder
{
public:
    explicit TextBuilder(size_t expectedBytes) { bytes.ensureCapacity(static_cast<int32_t>(expectedBytes) + 1); }

    void appendCodePoint(uint32_t character)
    {
        char encoded[4];
        appendBytes(encoded, Utf8Encoder::encodeCodePoint(character, encoded));
    }

    void appendBytes(const char* begin, const char* end)
    {
        for (const char* byte = begin; byte < end; ++byte)
            bytes.add(*byte);
    }

    // The text built so far; the null handle when it is empty.
    String toString()
    {
        bytes.add(0);
        return String(bytes.begin());
    }

private:
    Array<char> bytes;
};
}

String String::erase(unsigned index, int count) const
{
    if (internal == nullptr)
        return String();
    const char* text = getCString();
    const char* start = skipCharacters(text, index);
    const char* end = skipCharacters(start, count > 0 ? static_cast<unsigned>(count) : 0);
    const size_t headSize = static_cast<size_t>(start - text);
    const size_t tailSize = std::strlen(end);
    char* result = static_cast<char*>(std::malloc(headSize + tailSize + 1));
    if (result == nullptr)
        return String();
    std::memcpy(result, text, headSize);
    std::memcpy(result + headSize, end, tailSize + 1);
    // Even when nothing is left the result is a live handle onto "".
    return adoptText(result);
}

String String::withoutLastCharacter() const
{
    return erase(getCharactersCount() - 1, 1);
}

String String::withoutCharacter(uint32_t character) const
{
    TextBuilder result(getBytesCount());
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
        if (current != character)
            result.appendCodePoint(current);
    return result.toString();
}

String String::withoutCharacters(const String& set) const
{
    TextBuilder result(getBytesCount());
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
        if (!set.containsCharacter(current))
            result.appendBytes(cursor.getCurrent(), cursor.getNext());
    return result.toString();
}

String String::replaceCharacter(uint32_t from, uint32_t to) const
{
    TextBuilder result(getBytesCount());
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
    {
        if (current != from)
            result.appendCodePoint(current);
        else if (to != 0)
            result.appendCodePoint(to);
        else
            break;
    }
    return result.toString();
}

String String::replace(const String& what, const String& with, bool firstOnly) const
{
    if (what.isEmpty())
        return *this;
    const size_t whatSize = what.getBytesCount();
    const char* withText = with.getCString();
    TextBuilder result(getBytesCount());
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
    {
        // A match is tested at the start of every decodable character, byte for byte.
        if (std::strncmp(cursor.getCurrent(), what.getCString(), whatSize) != 0)
        {
            result.appendCodePoint(current);
            continue;
        }
        result.appendBytes(withText, withText + with.getBytesCount());
        cursor.moveTo(cursor.getCurrent() + whatSize);
        if (firstOnly)
        {
            const char* rest = cursor.getNext();
            result.appendBytes(rest, rest + std::strlen(rest));
            break;
        }
    }
    return result.toString();
}

String String::substring(unsigned start, unsigned end) const
{
    if (end <= start)
        return String();
    const char* begin = getPointerAt(start);
    const char* finish = skipCharacters(begin, end - start);
    return String(begin, 0, static_cast<unsigned>(finish - begin));
}

}  // namespace q1framework
