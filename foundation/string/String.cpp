// String: lifetime, construction from text and numbers, access, comparison and concatenation.
#include "foundation/string/String.h"

#include "foundation/runtime/ReferenceCountedObject.h"
#include "foundation/string/Utf8Cursor.h"
#include "foundation/string/Utf8Encoder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace q1framework
{

// The shared buffer behind String handles, counted without atomics (one thread at a time). It owns
// three blocks from the C allocator: the text (never null), and the UTF-32 and UTF-16 scratch
// areas that toUTF32 and toUTF16 refill on demand. Only the scratch areas change after
// construction.
class String::InternalString : public ReferenceCountedObject
{
public:
    explicit InternalString(char* ownedText) : ReferenceCountedObject(false), text(ownedText) {}
    ~InternalString() override;

    char* text;
    uint32_t* utf32 = nullptr;
    uint16_t* utf16 = nullptr;
};

namespace
{
// The one static area that stands for empty text: "" as bytes and a zero UTF-16 unit.
const uint16_t emptyArea[2] = {};

const char* emptyText() { return reinterpret_cast<const char*>(emptyArea); }

template <typename Unit>
size_t measureUnits(const Unit* units)
{
    size_t count = 0;
    while (units[count] != 0)
        ++count;
    return count;
}

// Refills a scratch area with the decoded characters of text, each truncated to the unit, and a
// zero unit. Null when the area cannot grow; it is then left as it was.
template <typename Unit>
const Unit* decodeInto(Unit*& scratch, const char* text, unsigned characters)
{
    const unsigned units = characters + 1;
    auto* buffer = static_cast<Unit*>(std::realloc(scratch, sizeof(Unit) * units));
    if (buffer == nullptr)
        return nullptr;
    scratch = buffer;
    Utf8Cursor cursor(text);
    for (unsigned i = 0; i < units; ++i)
        buffer[i] = static_cast<Unit>(cursor.next());
    return buffer;
}

// Runs an encoder over a zero-terminated source, terminator included, into a buffer of
// bytesPerUnit bytes per unit, then shrinks the buffer to the text. Null for empty source.
template <typename Unit, typename Encoder>
char* encodeTerminated(const Unit* source, size_t bytesPerUnit, Encoder encoder)
{
    if (source == nullptr || source[0] == 0)
        return nullptr;
    const size_t units = measureUnits(source) + 1;
    char* buffer = static_cast<char*>(std::malloc(units * bytesPerUnit));
    if (buffer == nullptr)
        return nullptr;
    const Unit* sourcePosition = source;
    char* target = buffer;
    encoder(sourcePosition, source + units, target, buffer + units * bytesPerUnit);
    char* shrunk = static_cast<char*>(std::realloc(buffer, std::strlen(buffer) + 1));
    return shrunk != nullptr ? shrunk : buffer;
}
}

String::InternalString::~InternalString()
{
    std::free(text);
    std::free(utf16);
    std::free(utf32);
}

String String::adoptText(char* text)
{
    return text != nullptr ? String(new InternalString(text)) : String();
}

String::String(const String& other) : internal(other.internal)
{
    if (internal != nullptr)
        internal->incReferenceCount();
}

String::String(const char* utf8)
{
    if (utf8 == nullptr || utf8[0] == 0)
        return;
    const size_t size = std::strlen(utf8) + 1;
    char* text = static_cast<char*>(std::malloc(size));
    std::memcpy(text, utf8, size);
    internal = new InternalString(text);
}

String::String(const uint16_t* utf16)
    : String(adoptText(encodeTerminated(utf16, 8, Utf8Encoder::fromUtf16)))
{
}

String::String(const uint32_t* utf32)
    : String(adoptText(encodeTerminated(utf32, 10, Utf8Encoder::fromUtf32)))
{
}

String::String(const char* bytes, int offset, unsigned count)
{
    if (count == 0 || bytes == nullptr || bytes[offset] == 0)
        return;
    // Only the bytes up to a NUL are kept, so only they need room: a generous count costs nothing.
    const char* source = bytes + offset;
    const size_t length = strnlen(source, count);
    char* text = static_cast<char*>(std::malloc(length + 1));
    std::memcpy(text, source, length);
    text[length] = 0;
    internal = new InternalString(text);
}

String::String(int value)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%i", value);
    *this = String(buffer);
}

String::String(float value, int decimals) : String(static_cast<double>(value), decimals) {}

String::String(double value, int decimals)
{
    char format[8] = "%f";
    if (decimals >= 0)
        std::snprintf(format, sizeof format, "%%.%if", decimals < 99 ? decimals : 99);
    // Room for the widest "%f" of a double: 309 integer digits, sign, point and 99 decimals.
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, format, value);
    *this = String(buffer);
}

String::~String()
{
    if (internal != nullptr)
        internal->decReferenceCount();
}

String& String::operator=(const String& other)
{
    if (this == &other)
        return *this;
    if (other.internal != nullptr)
        other.internal->incReferenceCount();
    InternalString* old = internal;
    internal = other.internal;
    if (old != nullptr)
        old->decReferenceCount();
    return *this;
}

String& String::operator=(String&& other) noexcept
{
    if (this != &other)
    {
        InternalString* old = internal;
        internal = other.internal;
        other.internal = nullptr;
        if (old != nullptr)
            old->decReferenceCount();
    }
    return *this;
}

void String::copyFrom(const String& other)
{
    *this = String(other.getCString());
}

void String::swap(String& other) noexcept
{
    InternalString* mine = internal;
    internal = other.internal;
    other.internal = mine;
}

size_t String::getBytesCount() const
{
    return internal != nullptr ? std::strlen(internal->text) : 0;
}

unsigned String::getCharactersCount() const
{
    Utf8Cursor cursor(getCString());
    unsigned count = 0;
    while (cursor.next() != 0)
        ++count;
    return count;
}

bool String::isEmpty() const
{
    return internal == nullptr || internal->text[0] == 0;
}

const char* String::getCString() const
{
    return internal != nullptr ? internal->text : emptyText();
}

const uint16_t* String::toUTF16() const
{
    if (internal == nullptr)
        return emptyArea;
    const uint16_t* units = decodeInto(internal->utf16, internal->text, getCharactersCount());
    return units != nullptr ? units : emptyArea;
}

const uint32_t* String::toUTF32() const
{
    if (internal == nullptr)
        return nullptr;
    return decodeInto(internal->utf32, internal->text, getCharactersCount());
}

const char* String::getPointerAt(unsigned index) const
{
    // Always a position in getCString()'s buffer, so that callers may subtract the two.
    return skipCharacters(getCString(), index);
}

void String::copyTo(char* destination) const
{
    std::strcpy(destination, getCString());
}

bool String::operator<(const char* right) const
{
    return std::strcmp(getCString(), right != nullptr ? right : "") < 0;
}

bool String::operator>(const char* right) const
{
    return std::strcmp(getCString(), right != nullptr ? right : "") > 0;
}

bool String::operator==(const char* right) const
{
    return std::strcmp(getCString(), right != nullptr ? right : "") == 0;
}

bool String::operator!=(const char* right) const
{
    return !(*this == right);
}

String String::operator+(const char* right) const
{
    if (right == nullptr)
        right = "";
    const size_t leftSize = getBytesCount();
    const size_t rightSize = std::strlen(right);
    if (leftSize + rightSize == 0)
        return String();
    char* text = static_cast<char*>(std::malloc(leftSize + rightSize + 1));
    std::memcpy(text, getCString(), leftSize);
    std::memcpy(text + leftSize, right, rightSize + 1);
    return adoptText(text);
}

String& String::operator+=(const char* right)
{
    return *this = *this + right;
}

void String::insert(unsigned index, const String& text)
{
    if (isEmpty() && text.isEmpty())
        return;
    const char* whole = getCString();
    const size_t headSize = static_cast<size_t>(getPointerAt(index) - whole);
    const size_t wholeSize = getBytesCount();
    const size_t insertedSize = text.getBytesCount();
    char* result = static_cast<char*>(std::malloc(wholeSize + insertedSize + 1));
    std::memcpy(result, whole, headSize);
    std::memcpy(result + headSize, text.getCString(), insertedSize);
    std::memcpy(result + headSize + insertedSize, whole + headSize, wholeSize - headSize + 1);
    *this = adoptText(result);
}

}  // namespace q1framework
