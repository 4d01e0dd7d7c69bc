// String: numbers, hexadecimal text and whole-file text.
#include "foundation/string/String.h"

#include "foundation/memory/FileStream.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/Utf8Cursor.h"

#include <cstdio>
#include <cstdlib>

namespace q1framework
{

namespace
{
const char upperDigits[] = "0123456789ABCDEF";
const char lowerDigits[] = "0123456789abcdef";

// The digit of a character's low eight bits, looked up among the lower-case and then the
// upper-case digits; anything else counts as 0.
uint32_t hexDigitOf(uint32_t character)
{
    const char lowByte = static_cast<char>(character & 0xFF);
    for (uint32_t digit = 0; digit < 16; ++digit)
        if (lowerDigits[digit] == lowByte)
            return digit;
    for (uint32_t digit = 0; digit < 16; ++digit)
        if (upperDigits[digit] == lowByte)
            return digit;
    return 0;
}

// The text that the hex parsers read: a private copy, lower-cased, without blanks.
String hexDigitsOf(const String& text)
{
    String copy;
    copy.copyFrom(text);
    return copy.toLowerCase().withoutCharacter(' ');
}

String bytesToHex(uint64_t value, unsigned byteCount)
{
    uint8_t bytes[8];
    for (unsigned i = 0; i < byteCount; ++i)
        bytes[i] = static_cast<uint8_t>(value >> (8 * (byteCount - 1 - i)));
    return String::toHexString(bytes, byteCount, 0);
}
}

int String::toInt() const
{
    return std::atoi(getCString());
}

float String::toFloat() const
{
    return static_cast<float>(std::atof(getCString()));
}

double String::toDouble() const
{
    return std::atof(getCString());
}

String String::toHexString(const uint8_t* data, unsigned count, int spacing)
{
    if (data == nullptr || count == 0)
        return String();
    spacing = spacing < 0 ? 0 : (spacing > 255 ? 255 : spacing);
    const size_t stride = static_cast<size_t>(spacing) + 2;
    char* text = static_cast<char*>(std::malloc(stride * count + 1));
    if (text == nullptr)
        return String();
    for (size_t i = 0; i < count; ++i)
    {
        char* digits = text + i * stride;
        digits[0] = upperDigits[data[i] >> 4];
        digits[1] = upperDigits[data[i] & 0x0F];
        for (int blank = 0; blank < spacing; ++blank)
            digits[2 + blank] = ' ';
    }
    // Cuts off the separator behind the last byte.
    text[stride * count - static_cast<size_t>(spacing)] = 0;
    return adoptText(text);
}

String String::toHexString(int value)
{
    return bytesToHex(static_cast<uint32_t>(value), 4);
}

String String::toHexString(uint64_t value)
{
    return bytesToHex(value, 8);
}

uint64_t String::parseHex() const
{
    const String digits = hexDigitsOf(*this);
    if (digits.getCharactersCount() % 2 != 0)
        return 0;
    uint64_t value = 0;
    Utf8Cursor cursor(digits.getCString());
    while (const uint32_t character = cursor.next())
        value = (value << 4) | hexDigitOf(character);
    return value;
}

MemoryBlock String::parseHexBlock() const
{
    MemoryBlock block(0);
    const String digits = hexDigitsOf(*this);
    const unsigned count = digits.getCharactersCount();
    if (count % 2 != 0 || !block.setSize(count / 2))
        return block;
    auto* bytes = static_cast<uint8_t*>(block.getData());
    Utf8Cursor cursor(digits.getCString());
    for (unsigned i = 0; i < count / 2; ++i)
    {
        const uint32_t high = hexDigitOf(cursor.next());
        bytes[i] = static_cast<uint8_t>((high << 4) | hexDigitOf(cursor.next()));
    }
    return block;
}

String String::fromSeconds(int seconds)
{
    // A strict base-60 ladder: the field above hours counts units of 60 hours.
    const int secondsField = seconds % 60;
    const int minutes = (seconds / 60) % 60;
    const int hours = (seconds / 3600) % 60;
    const int days = (seconds / 216000) % 60;
    char buffer[64];
    if (days >= 1)
        std::snprintf(buffer, sizeof buffer, "%i:%02i:%02i:%02i", days, hours, minutes, secondsField);
    else if (hours >= 1)
        std::snprintf(buffer, sizeof buffer, "%i:%02i:%02i", hours, minutes, secondsField);
    else if (minutes >= 1)
        std::snprintf(buffer, sizeof buffer, "%i:%02i", minutes, secondsField);
    else if (secondsField > 0)
        std::snprintf(buffer, sizeof buffer, "%i", secondsField);
    else
        return String();
    return String(buffer);
}

String String::loadFromFile(const String& path)
{
    FileStream file(path, FileStream::forReading);
    const int64_t size = file.getSize();
    if (size <= 0)
        return String();
    char* text = static_cast<char*>(std::malloc(static_cast<size_t>(size) + 1));
    if (text == nullptr)
        return String();
    const int64_t bytesRead = file.read(text, size);
    text[bytesRead > 0 ? bytesRead : 0] = 0;
    if (text[0] == 0)
    {
        std::free(text);
        return String();
    }
    return adoptText(text);
}

bool String::saveToFile(const String& path) const
{
    FileStream file(path, FileStream::forWriting);
    if (!file.isOpen())
        return false;
    file.write(getCString(), static_cast<int64_t>(getBytesCount()));
    return true;
}

}  // namespace q1framework
