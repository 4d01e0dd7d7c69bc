#pragma once

#include <cstddef>
#include <cstdint>

namespace q1framework
{

class MemoryBlock;

// The framework's text: a handle of one pointer onto a shared, reference-counted, NUL-terminated
// UTF-8 buffer.
//
// Empty text has two forms, and every operation accepts both: the null handle (what String()
// holds and what nearly every operation returns for an empty result) and a handle onto "" (only
// erase and withoutLastCharacter make that one). isEmpty is true and getCString is "" for both.
//
// Copies share the buffer; nothing ever changes a buffer in place apart from the UTF-16/UTF-32
// scratch areas (see toUTF16, toUTF32, toLowerCase), so text seen through one handle never changes
// through another. Every operation that builds text allocates a fresh buffer.
//
// Positions come in two units: character indexes (decoded code points) for insert, erase,
// substring, getPointerAt and the case-mapping range; byte offsets into the UTF-8 text for both
// indexOf forms and for the substring constructor. Character-wise operations see the text as
// ending at its first malformed sequence (see Utf8Cursor); byte-wise ones see the whole buffer.
//
// Thread contract: the reference count is not atomic and toUTF16/toUTF32 write into the shared
// buffer, so a String and all its copies belong to one thread at a time. Text that crosses threads
// is copied with copyFrom on the sending side.
class String
{
public:
    class InternalString;

    // Lifetime and construction.
    String() = default;
    String(std::nullptr_t) {}
    String(const String& other);
    String(String&& other) noexcept : internal(other.internal) { other.internal = nullptr; }
    // Copies NUL-terminated UTF-8; a null pointer or "" gives the null handle.
    String(const char* utf8);
    // Converts NUL-terminated UTF-16 (surrogate pairs combined, lone surrogates kept); a null
    // pointer or a first unit of 0 gives the null handle.
    String(const uint16_t* utf16);
    // Converts NUL-terminated UTF-32 (values of 0x110000 and above become U+FFFD); a null pointer
    // or a first unit of 0 gives the null handle.
    String(const uint32_t* utf32);
    // Copies at most count bytes from bytes + offset, stopping at a NUL; the source need not be
    // terminated within count bytes. A count of 0, a null pointer or a NUL at bytes[offset] gives
    // the null handle.
    String(const char* bytes, int offset, unsigned count);
    // Decimal text of value ("%i").
    explicit String(int value);
    // Fixed-point text of value with decimals digits behind the point (clipped to 99); a negative
    // decimals gives the six digits of "%f". The float form widens to double first.
    String(float value, int decimals);
    String(double value, int decimals);
    ~String();

    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;
    // Makes this a private copy of other's text that shares no buffer with it.
    void copyFrom(const String& other);
    void swap(String& other) noexcept;

    // Size and access.
    size_t getBytesCount() const;        // strlen of the text; 0 for the null handle
    unsigned getCharactersCount() const; // code points up to the end of the decodable text
    bool isEmpty() const;
    const char* getCString() const;      // never null; "" for both empty forms
    // The characters as 16-bit units (each code point truncated to 16 bits, no surrogate pairs),
    // zero-terminated; a zero unit for the null handle. The buffer is rewritten by the next call
    // through any handle that shares this text.
    const uint16_t* toUTF16() const;
    // The characters as code points, zero-terminated; null for the null handle. Rewritten by the
    // next toUTF32, toLowerCase or toUpperCase through any handle that shares this text.
    const uint32_t* toUTF32() const;
    // The character at index, or the end of the decodable text when index is past it; a pointer
    // to "" for empty text.
    const char* getPointerAt(unsigned index) const;
    // strcpy of the text into destination, which must hold getBytesCount() + 1 bytes.
    void copyTo(char* destination) const;

    // Byte-wise, case-sensitive comparison (strcmp); right must not be null. A null handle
    // compares as "".
    bool operator<(const char* right) const;
    bool operator>(const char* right) const;
    bool operator==(const char* right) const;
    bool operator!=(const char* right) const;
    bool operator<(const String& right) const { return *this < right.getCString(); }
    bool operator>(const String& right) const { return *this > right.getCString(); }
    bool operator==(const String& right) const { return *this == right.getCString(); }
    bool operator!=(const String& right) const { return *this != right.getCString(); }

    // Concatenation; both parts empty gives the null handle. A null right side counts as "".
    String operator+(const char* right) const;
    String operator+(const String& right) const { return *this + right.getCString(); }
    String& operator+=(const char* right);
    String& operator+=(const String& right) { return *this += right.getCString(); }

    // Inserts text before the character at index; an index past the end appends. Always builds a
    // new buffer unless both are empty.
    void insert(unsigned index, const String& text);
    // A copy without count characters from index. Removing every character gives a handle onto
    // "", not the null handle. A null handle gives the null handle.
    String erase(unsigned index, int count) const;
    String withoutLastCharacter() const;
    // Every occurrence of code point character removed; the text is rebuilt from code points.
    String withoutCharacter(uint32_t character) const;
    // Every character that occurs in set removed, the others copied byte for byte.
    String withoutCharacters(const String& set) const;
    // Every from becomes to, rebuilt from code points; a to of 0 ends the text at the first
    // replaced place.
    String replaceCharacter(uint32_t from, uint32_t to) const;
    // Every (or only the first) byte-wise occurrence of what becomes with. Characters outside the
    // matches are rebuilt from their code points. An empty what gives this text, shared.
    String replace(const String& what, const String& with, bool firstOnly) const;
    // Case mapping of the characters whose index is in [start, end): ASCII and a fixed set of
    // code-page 437 pairs, compared by code point value (see StringCaseMapping.cpp). The text is
    // rebuilt from code points.
    String toLowerCase(unsigned start = 0, unsigned end = 0xFFFFFFFF) const;
    String toUpperCase(unsigned start = 0, unsigned end = 0xFFFFFFFF) const;
    // Characters [start, end); end not above start, or start at or past the end, gives the null
    // handle; an end past the text is clipped.
    String substring(unsigned start, unsigned end) const;

    // Searching. occurrence counts from 0; when there are fewer matches than occurrence + 1, the
    // last match counts. A character of 0 never matches.
    //
    // The matched character's start (atStart) or the byte behind it; null without a match.
    const char* findCharacter(uint32_t character, unsigned occurrence, bool atStart) const;
    bool containsCharacter(uint32_t character) const;
    int countCharacter(uint32_t character) const;
    // Byte offset of the first character, -1 if none.
    int indexOf(uint32_t character) const;
    // Byte offset of the first match at or behind startByte (negative counts as 0), trying every
    // byte position below the text's length; -1 if none or if this is empty. An empty what
    // matches at the first position tried.
    int indexOf(int startByte, const String& what) const;
    bool startsWith(const String& what) const;
    // An empty what gives true; a what longer than this gives false.
    bool endsWith(const String& what) const;
    bool contains(const String& what) const;
    // Text before the match (with the matched character if includeCharacter); no match gives
    // this text, shared.
    String upToCharacter(uint32_t character, unsigned occurrence, bool includeCharacter) const;
    // Text behind the match (from the matched character on if includeCharacter); no match gives
    // this text, shared.
    String fromCharacter(uint32_t character, unsigned occurrence, bool includeCharacter) const;
    // Text before the first character that occurs in set; no match gives this text, shared.
    String upToAnyOf(const String& set, bool includeCharacter) const;
    // Text before the first what; no match gives this text, shared.
    String upToFirstOccurrenceOf(const String& what, bool includeWhat) const;
    // Text behind the first what (from what on if includeWhat); no match gives the null handle,
    // unlike upToFirstOccurrenceOf.
    String fromFirstOccurrenceOf(const String& what, bool includeWhat) const;
    // At the first character: left gets the text before it, right the text behind it. Without a
    // match both become the null handle. left and right may be this string.
    void split(uint32_t character, String& left, String& right) const;

    // Numbers and bytes. The text conversions read as atoi/atof do; 0 for empty text.
    int toInt() const;
    float toFloat() const;
    double toDouble() const;
    // Two upper-case digits a byte; spacing blanks (0 to 255) between bytes. Null handle for
    // count 0 or a failed allocation.
    static String toHexString(const uint8_t* data, unsigned count, int spacing);
    // The value's bytes, most significant first, without spacing: 8 and 16 digits.
    static String toHexString(int value);
    static String toHexString(uint64_t value);
    // Hex digits read after lower-casing and removing blanks; an odd digit count gives 0, a
    // character that is no digit counts as 0, and only the last sixteen digits survive.
    uint64_t parseHex() const;
    // The same digits as bytes, high digit first; an odd count gives an empty block.
    MemoryBlock parseHexBlock() const;
    // Elapsed time in a base-60 ladder: "s", "m:ss", "h:mm:ss", "d:hh:mm:ss", where a "day"
    // is 60 hours. 0 or negative seconds give the null handle.
    static String fromSeconds(int seconds);
    // The whole file as text (up to its first NUL byte); null handle for an empty or unreadable
    // file.
    static String loadFromFile(const String& path);
    // Writes the text's bytes, without a terminator, replacing the file. True when the file
    // opened, false otherwise.
    bool saveToFile(const String& path) const;

private:
    explicit String(InternalString* adopted) : internal(adopted) {}
    // Wraps text, a NUL-terminated buffer from malloc, without copying; takes ownership.
    static String adoptText(char* text);

    InternalString* internal = nullptr;
};

}  // namespace q1framework
