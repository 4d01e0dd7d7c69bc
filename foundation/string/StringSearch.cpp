// String: searching, and the copies cut at what a search found.
#include "foundation/string/String.h"

#include "foundation/string/Utf8Cursor.h"

#include <cstring>
#include <utility>

namespace q1framework
{

namespace
{
// The text from its start up to (not including) end, which points into it.
String head(const char* text, const char* end)
{
    return String(text, 0, static_cast<unsigned>(end - text));
}
}

const char* String::findCharacter(uint32_t character, unsigned occurrence, bool atStart) const
{
    const char* found = nullptr;
    unsigned matches = 0;
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
    {
        if (current != character)
            continue;
        found = atStart ? cursor.getCurrent() : cursor.getNext();
        if (matches++ == occurrence)
            break;
    }
    return found;
}

bool String::containsCharacter(uint32_t character) const
{
    return findCharacter(character, 0, true) != nullptr;
}

int String::countCharacter(uint32_t character) const
{
    int count = 0;
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
        if (current == character)
            ++count;
    return count;
}

int String::indexOf(uint32_t character) const
{
    const char* found = findCharacter(character, 0, true);
    return found != nullptr ? static_cast<int>(found - getCString()) : -1;
}

int String::indexOf(int startByte, const String& what) const
{
    const size_t start = startByte > 0 ? static_cast<size_t>(startByte) : 0;
    if (start >= getBytesCount())
        return -1;
    // The first position at or behind start where the text continues with what's bytes.
    const char* text = getCString();
    const char* found = std::strstr(text + start, what.getCString());
    return found != nullptr ? static_cast<int>(found - text) : -1;
}

bool String::startsWith(const String& what) const
{
    return !isEmpty() && std::strncmp(getCString(), what.getCString(), what.getBytesCount()) == 0;
}

bool String::endsWith(const String& what) const
{
    const size_t size = getBytesCount();
    const size_t whatSize = what.getBytesCount();
    if (whatSize > size)
        return false;
    return std::memcmp(getCString() + size - whatSize, what.getCString(), whatSize) == 0;
}

bool String::contains(const String& what) const
{
    return indexOf(0, what) >= 0;
}

String String::upToCharacter(uint32_t character, unsigned occurrence, bool includeCharacter) const
{
    const char* end = findCharacter(character, occurrence, !includeCharacter);
    return end != nullptr ? head(getCString(), end) : *this;
}

String String::fromCharacter(uint32_t character, unsigned occurrence, bool includeCharacter) const
{
    const char* start = findCharacter(character, occurrence, includeCharacter);
    return start != nullptr ? String(start) : *this;
}

String String::upToAnyOf(const String& set, bool includeCharacter) const
{
    Utf8Cursor cursor(getCString());
    while (const uint32_t current = cursor.next())
        if (set.containsCharacter(current))
            return head(getCString(), includeCharacter ? cursor.getNext() : cursor.getCurrent());
    return *this;
}

String String::upToFirstOccurrenceOf(const String& what, bool includeWhat) const
{
    const int found = indexOf(0, what);
    if (found < 0)
        return *this;
    return head(getCString(), getCString() + found + (includeWhat ? what.getBytesCount() : 0));
}

String String::fromFirstOccurrenceOf(const String& what, bool includeWhat) const
{
    const int found = indexOf(0, what);
    if (found < 0)
        return String();
    return String(getCString() + found + (includeWhat ? 0 : what.getBytesCount()));
}

void String::split(uint32_t character, String& left, String& right) const
{
    const char* found = findCharacter(character, 0, true);
    if (found == nullptr)
    {
        left = String();
        right = String();
        return;
    }
    // Both parts are cut before either output is written: left or right may be this string.
    String before = head(getCString(), found);
    String behind(skipCharacters(found, 1));
    left = std::move(before);
    right = std::move(behind);
}

}  // namespace q1framework
