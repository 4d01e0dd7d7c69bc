// Builds String from arbitrary bytes in every way that takes bytes (UTF-8, a byte range, UTF-16
// and UTF-32 units) and drives each result through the character-wise operations, checking the
// invariants that hold for any text.
//
// Input: eight parameter bytes (indexes, counts, flags), then the text bytes.
#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "foundation/string/Utf8Cursor.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using q1framework::MemoryBlock;
using q1framework::skipCharacters;
using q1framework::String;
using q1framework::Utf8Cursor;

namespace
{
void check(bool condition)
{
    if (!condition)
        std::abort();
}

struct Parameters
{
    unsigned first;       // a character index
    unsigned second;      // a second index or a count
    unsigned occurrence;
    bool flagA;
    bool flagB;
    bool flagC;
    int spacing;
    int decimals;
    unsigned needleLength;
    unsigned otherIndex;
};

Parameters parametersFrom(const uint8_t* bytes)
{
    Parameters parameters;
    parameters.first = bytes[0];
    parameters.second = bytes[1];
    parameters.occurrence = bytes[2] % 8;
    parameters.flagA = (bytes[3] & 1) != 0;
    parameters.flagB = (bytes[3] & 2) != 0;
    parameters.flagC = (bytes[3] & 4) != 0;
    parameters.spacing = bytes[4] % 4;
    parameters.decimals = static_cast<int8_t>(bytes[5]);
    parameters.needleLength = 1 + bytes[6] % 4;
    parameters.otherIndex = bytes[7];
    return parameters;
}

// The text lies within its own buffer and agrees with itself about its size.
void checkShape(const String& text)
{
    const char* bytes = text.getCString();
    check(bytes != nullptr);
    check(text.getBytesCount() == std::strlen(bytes));
    check(text.isEmpty() == (text.getBytesCount() == 0));
    check(text.getCharactersCount() <= text.getBytesCount());
}

bool liesWithin(const String& text, const char* pointer)
{
    return pointer >= text.getCString() && pointer <= text.getCString() + text.getBytesCount();
}

void exerciseAccess(const String& text)
{
    checkShape(text);
    const unsigned characters = text.getCharactersCount();

    const uint32_t* utf32 = text.toUTF32();
    std::vector<uint32_t> codePoints;
    for (unsigned i = 0; utf32 != nullptr && utf32[i] != 0; ++i)
        codePoints.push_back(utf32[i]);
    check(codePoints.size() == characters);
    // Rebuilding from code points keeps the number of characters (four-byte values become
    // U+FFFD, one character each).
    codePoints.push_back(0);
    check(String(codePoints.data()).getCharactersCount() == characters);

    // UTF-16 units are truncated code points, so a unit of 0 may come before the terminator.
    check(text.toUTF16()[characters] == 0);

    check(liesWithin(text, text.getPointerAt(characters)));
    check(text.getPointerAt(characters) == skipCharacters(text.getCString(), characters + 5));
    std::vector<char> copy(text.getBytesCount() + 1);
    text.copyTo(copy.data());
    check(std::memcmp(copy.data(), text.getCString(), copy.size()) == 0);
}

void exerciseEditing(const String& text, const String& other, const Parameters& parameters)
{
    const unsigned characters = text.getCharactersCount();
    const unsigned start = characters > 0 ? parameters.first % (characters + 2) : parameters.first % 2;

    const String erased = text.erase(start, static_cast<int>(parameters.second) - 8);
    checkShape(erased);
    check(erased.getBytesCount() <= text.getBytesCount());
    checkShape(text.withoutLastCharacter());

    String inserted(text);
    inserted.insert(start, other);
    checkShape(inserted);
    check(inserted.getBytesCount() == text.getBytesCount() + other.getBytesCount());

    const String part = text.substring(start, start + parameters.second % 16);
    checkShape(part);
    check(part.getCharactersCount() <= parameters.second % 16);
    check(text.contains(part) || part.isEmpty());

    const uint32_t character = text.getCharactersCount() > 0 ? text.toUTF32()[start % characters] : 'a';
    const String without = text.withoutCharacter(character);
    checkShape(without);
    // Rebuilding turns four-byte characters into U+FFFD, which may then be present anew.
    check(!without.containsCharacter(character) || character == 0xFFFD);
    checkShape(text.withoutCharacters(other));
    checkShape(text.replaceCharacter(character, parameters.flagA ? 0 : parameters.otherIndex));

    const String needle = text.substring(start, start + parameters.needleLength);
    const String replaced = text.replace(needle, other, parameters.flagB);
    checkShape(replaced);
    if (needle.isEmpty())
        check(replaced.getCString() == text.getCString());

    const String lower = text.toLowerCase(parameters.first % 8, parameters.second);
    const String upper = text.toUpperCase();
    check(lower.getCharactersCount() == characters);
    check(upper.getCharactersCount() == characters);
    checkShape(text.toLowerCase());

    String sum = text + other.getCString();
    sum += text;
    check(sum.getBytesCount() == 2 * text.getBytesCount() + other.getBytesCount());
    String privateCopy;
    privateCopy.copyFrom(text);
    check(privateCopy == text);
}

void exerciseSearching(const String& text, const String& other, const Parameters& parameters)
{
    const unsigned characters = text.getCharactersCount();
    const uint32_t character = characters > 0 ? text.toUTF32()[parameters.first % characters] : 'x';

    const char* found = text.findCharacter(character, parameters.occurrence, parameters.flagA);
    check(found == nullptr || liesWithin(text, found));
    check((found != nullptr) == text.containsCharacter(character));
    check(text.countCharacter(character) >= (found != nullptr ? 1 : 0));
    const int index = text.indexOf(character);
    check(index >= -1 && index < static_cast<int>(text.getBytesCount()) + 1);

    const String needle = text.substring(parameters.first % (characters + 1), parameters.first % (characters + 1) + parameters.needleLength);
    const int offset = text.indexOf(static_cast<int>(parameters.second) - 4, needle);
    if (offset >= 0)
        check(std::strncmp(text.getCString() + offset, needle.getCString(), needle.getBytesCount()) == 0);
    check(text.contains(needle) || needle.isEmpty() || text.isEmpty());
    check(!text.startsWith(other) || text.contains(other));
    check(text.endsWith(String()));
    text.endsWith(other);

    const String before = text.upToCharacter(character, parameters.occurrence, parameters.flagB);
    const String behind = text.fromCharacter(character, parameters.occurrence, parameters.flagB);
    check(before.getBytesCount() <= text.getBytesCount() && behind.getBytesCount() <= text.getBytesCount());
    checkShape(text.upToAnyOf(other, parameters.flagC));
    const String upTo = text.upToFirstOccurrenceOf(other, parameters.flagC);
    const String from = text.fromFirstOccurrenceOf(other, parameters.flagC);
    check(upTo.getBytesCount() <= text.getBytesCount() && from.getBytesCount() <= text.getBytesCount());

    String left("left");
    String right("right");
    text.split(character, left, right);
    if (text.containsCharacter(character))
        check(std::strncmp(left.getCString(), text.getCString(), left.getBytesCount()) == 0);
    else
        check(left.isEmpty() && right.isEmpty());
}

void exerciseConversions(const String& text, const uint8_t* bytes, size_t size, const Parameters& parameters)
{
    text.toInt();
    text.toFloat();
    text.toDouble();
    text.parseHex();
    const MemoryBlock block = text.parseHexBlock();
    check(block.getSize() <= static_cast<int64_t>(text.getCharactersCount() / 2));
    const String hex = block.toHexString(parameters.spacing);
    const int64_t blockSize = block.getSize();
    const int64_t spacing = parameters.spacing;
    check(static_cast<int64_t>(hex.getBytesCount()) == (blockSize > 0 ? (spacing + 2) * blockSize - spacing : 0));

    const unsigned count = static_cast<unsigned>(size < 64 ? size : 64);
    const String bytesAsHex = String::toHexString(bytes, count, parameters.spacing);
    check(bytesAsHex.parseHexBlock().getSize() == count);

    double number = 0;
    if (size >= sizeof number)
        std::memcpy(&number, bytes, sizeof number);
    checkShape(String(number, parameters.decimals));
    checkShape(String(static_cast<float>(number), parameters.decimals));
    int32_t seconds = 0;
    if (size >= sizeof seconds)
        std::memcpy(&seconds, bytes, sizeof seconds);
    checkShape(String::fromSeconds(seconds));
    checkShape(String(seconds));
}

void exercise(const String& text, const String& other, const uint8_t* bytes, size_t size, const Parameters& parameters)
{
    exerciseAccess(text);
    exerciseEditing(text, other, parameters);
    exerciseSearching(text, other, parameters);
    exerciseConversions(text, bytes, size, parameters);
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    uint8_t parameterBytes[8] = {};
    const size_t parameterCount = size < 8 ? size : 8;
    std::memcpy(parameterBytes, data, parameterCount);
    const Parameters parameters = parametersFrom(parameterBytes);
    const uint8_t* bytes = data + parameterCount;
    size -= parameterCount;

    std::vector<char> utf8(bytes, bytes + size);
    utf8.push_back(0);
    std::vector<uint16_t> utf16(size / 2 + 1, 0);
    std::memcpy(utf16.data(), bytes, size / 2 * 2);
    std::vector<uint32_t> utf32(size / 4 + 1, 0);
    std::memcpy(utf32.data(), bytes, size / 4 * 4);

    const unsigned offset = static_cast<unsigned>(parameters.otherIndex % (size + 1));
    const String texts[] = {
        String(utf8.data()),
        String(utf8.data(), static_cast<int>(offset), parameters.second),
        String(utf16.data()),
        String(utf32.data()),
    };
    for (const String& text : texts)
        exercise(text, texts[(parameters.first + 1) % 4], bytes, size, parameters);

    // The empty text handle, which only erase makes, goes through the same operations.
    const String emptyText = String("x").erase(0, 1);
    exercise(emptyText, texts[0], bytes, size, parameters);
    exercise(texts[0], emptyText, bytes, size, parameters);
    return 0;
}
