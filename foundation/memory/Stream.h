#pragma once

#include <cstdint>

namespace q1framework
{

class String;

// The framework's sequential byte stream, with typed helpers for its wire forms. Every multi-byte
// value is little-endian on the wire except writeInt32BigEndian.
//
// Wire forms: byte and bool 1 byte (a bool reads true when the byte, taken as signed, is above 0);
// int16 2, int32 4, int64 8 bytes; float and double as their IEEE 754 bits in 4 and 8 bytes;
// a string as a 32-bit length (its byte count plus 1), then its UTF-8 bytes and a NUL, so that the
// empty string is 01 00 00 00 00.
//
// Every read helper clears its result first: a short read gives zero (an empty string).
//
// Thread contract: one thread at a time.
class Stream
{
public:
    virtual ~Stream() = default;
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    // Bytes actually written or read; 0 on refusal.
    virtual int64_t write(const void* data, int64_t count) = 0;
    virtual int64_t read(void* data, int64_t count) = 0;
    virtual int64_t getPosition() = 0;
    virtual int64_t getSize() = 0;
    virtual void setPosition(int64_t position) = 0;
    // Moves by delta bytes from the current position.
    void skip(int64_t delta);

    bool isWritable() const { return writable; }
    bool isEndOfStream();

    void writeByte(int value);
    void writeBool(bool value);
    void writeInt16(int16_t value);
    void writeInt32(int32_t value);
    void writeInt32BigEndian(int32_t value);
    void writeInt64(int64_t value);
    void writeFloat(float value);
    void writeDouble(double value);
    void writeString(const String& text);

    uint8_t readByte();
    bool readBool();
    int16_t readInt16();
    int32_t readInt32();
    int64_t readInt64();
    float readFloat();
    double readDouble();
    // A string in the wire form. A length of 0 gives the empty string; so does a length that asks
    // for more bytes than the stream has left, which is then not read. The text ends at its first
    // NUL or at the length, whichever comes first.
    String readString();

    // Bytes between the position and the end, never negative.
    int64_t getRemainingBytes();

protected:
    Stream() = default;

    bool writable = false;
};

}  // namespace q1framework
