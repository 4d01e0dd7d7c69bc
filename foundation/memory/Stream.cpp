#include "foundation/memory/Stream.h"

#include "foundation/memory/ByteOrder.h"
#include "foundation/string/String.h"

#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
template <typename Integer>
void writeLittleEndian(Stream& stream, Integer value)
{
    ByteOrder::toLittleEndian(value);
    stream.write(&value, sizeof value);
}

// Bytes the stream does not deliver stay zero.
template <typename Integer>
Integer readLittleEndian(Stream& stream)
{
    Integer value = 0;
    stream.read(&value, sizeof value);
    ByteOrder::fromLittleEndian(value);
    return value;
}

// The same bits in another type of the same width, for floating-point values on the wire.
template <typename To, typename From>
To sameBits(From value)
{
    static_assert(sizeof(To) == sizeof(From), "same width");
    To result;
    std::memcpy(&result, &value, sizeof result);
    return result;
}
}

void Stream::skip(int64_t delta)
{
    setPosition(delta + getPosition());
}

bool Stream::isEndOfStream()
{
    return getPosition() >= getSize();
}

int64_t Stream::getRemainingBytes()
{
    const int64_t remaining = getSize() - getPosition();
    return remaining > 0 ? remaining : 0;
}

void Stream::writeByte(int value)
{
    const auto byte = static_cast<uint8_t>(value);
    write(&byte, 1);
}

void Stream::writeBool(bool value)
{
    writeByte(value ? 1 : 0);
}

void Stream::writeInt16(int16_t value)
{
    writeLittleEndian(*this, value);
}

void Stream::writeInt32(int32_t value)
{
    writeLittleEndian(*this, value);
}

void Stream::writeInt32BigEndian(int32_t value)
{
    ByteOrder::toBigEndian(value);
    write(&value, sizeof value);
}

void Stream::writeInt64(int64_t value)
{
    writeLittleEndian(*this, value);
}

void Stream::writeFloat(float value)
{
    writeLittleEndian(*this, sameBits<uint32_t>(value));
}

void Stream::writeDouble(double value)
{
    writeLittleEndian(*this, sameBits<uint64_t>(value));
}

void Stream::writeString(const String& text)
{
    const auto size = static_cast<int64_t>(text.getBytesCount()) + 1;
    writeInt32(static_cast<int32_t>(size));
    write(text.getCString(), size);
}

uint8_t Stream::readByte()
{
    uint8_t byte = 0;
    read(&byte, 1);
    return byte;
}

bool Stream::readBool()
{
    return static_cast<int8_t>(readByte()) > 0;
}

int16_t Stream::readInt16()
{
    return readLittleEndian<int16_t>(*this);
}

int32_t Stream::readInt32()
{
    return readLittleEndian<int32_t>(*this);
}

int64_t Stream::readInt64()
{
    return readLittleEndian<int64_t>(*this);
}

float Stream::readFloat()
{
    return sameBits<float>(readLittleEndian<uint32_t>(*this));
}

double Stream::readDouble()
{
    return sameBits<double>(readLittleEndian<uint64_t>(*this));
}

String Stream::readString()
{
    const auto length = static_cast<uint32_t>(readInt32());
    // A length beyond what is left cannot be honest; it is refused before anything is allocated.
    if (length == 0 || length > getRemainingBytes())
        return String();
    char* bytes = static_cast<char*>(std::malloc(length));
    if (bytes == nullptr)
        return String();
    const int64_t bytesRead = read(bytes, length);
    String text(bytes, 0, static_cast<unsigned>(bytesRead > 0 ? bytesRead : 0));
    std::free(bytes);
    return text;
}

}  // namespace q1framework
