#include "foundation/memory/Stream.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Stream;
using q1framework::String;

namespace
{
// The bytes that one helper call writes.
std::string wireFormOf(const std::function<void(Stream&)>& writeValue)
{
    MemoryStream stream;
    writeValue(stream);
    return std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
}

// A read-only stream over bytes.
class ByteSource
{
public:
    explicit ByteSource(const std::string& data)
        : block(data.data(), static_cast<int64_t>(data.size()), true), stream(block)
    {
    }
    MemoryBlock block;
    MemoryStream stream;
};
}

TEST(Stream, IntegersAreLittleEndianExceptTheOneBigEndianWrite)
{
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeByte(0x1AB); }), "\xAB");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt16(-2); }), "\xFE\xFF");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt16(0x1234); }), "\x34\x12");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt32(0x01020304); }), "\x04\x03\x02\x01");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt32BigEndian(0x01020304); }), "\x01\x02\x03\x04");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt64(0x0102030405060708); }), "\x08\x07\x06\x05\x04\x03\x02\x01");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeInt64(-1); }), std::string(8, '\xFF'));
}

TEST(Stream, FloatsTravelAsTheirIeeeBits)
{
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeFloat(1.0f); }), std::string("\0\0\x80\x3F", 4));
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeFloat(-0.0f); }), std::string("\0\0\0\x80", 4));
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeDouble(1.0); }), std::string("\0\0\0\0\0\0\xF0\x3F", 8));
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeDouble(-2.5); }), std::string("\0\0\0\0\0\0\x04\xC0", 8));
}

TEST(Stream, BoolsAreOneByteAndReadTrueOnlyForPositiveSignedBytes)
{
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeBool(true); }), "\x01");
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeBool(false); }), std::string(1, '\0'));
    ByteSource source(std::string("\x01\x7F\x80\xFF\0", 5));
    EXPECT_TRUE(source.stream.readBool());
    EXPECT_TRUE(source.stream.readBool());
    EXPECT_FALSE(source.stream.readBool());
    EXPECT_FALSE(source.stream.readBool());
    EXPECT_FALSE(source.stream.readBool());
}

TEST(Stream, StringsCarryTheirLengthPlusOneAndTheirTerminator)
{
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeString(String("h\xC3\xA9")); }),
              std::string("\x04\0\0\0h\xC3\xA9\0", 8));
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeString(String()); }), std::string("\x01\0\0\0\0", 5));
    EXPECT_EQ(wireFormOf([](Stream& s) { s.writeString(String("x").erase(0, 1)); }), std::string("\x01\0\0\0\0", 5));

    ByteSource empty(std::string("\x01\0\0\0\0", 5));
    EXPECT_TRUE(empty.stream.readString().isEmpty());
    EXPECT_TRUE(empty.stream.isEndOfStream());
}

TEST(Stream, ReadStringStopsAtTheLengthOrAtANul)
{
    // No terminator within the length: the text is the length's bytes.
    ByteSource unterminated(std::string("\x03\0\0\0" "abcZ", 8));
    EXPECT_STREQ(unterminated.stream.readString().getCString(), "abc");
    EXPECT_EQ(unterminated.stream.getPosition(), 7);

    // A NUL inside: the text ends there, and the whole length is consumed.
    ByteSource embedded(std::string("\x05\0\0\0" "ab\0cdZ", 10));
    EXPECT_STREQ(embedded.stream.readString().getCString(), "ab");
    EXPECT_EQ(embedded.stream.readByte(), 'Z');

    ByteSource zeroLength(std::string("\0\0\0\0Z", 5));
    EXPECT_TRUE(zeroLength.stream.readString().isEmpty());
    EXPECT_EQ(zeroLength.stream.readByte(), 'Z');
}

TEST(Stream, ReadStringRefusesLengthsBeyondTheRemainingBytes)
{
    // Four gigabytes asked of a ten-byte stream: nothing is allocated, nothing is read.
    ByteSource hostile(std::string("\xF0\xFF\xFF\xFF" "abcdef", 10));
    EXPECT_TRUE(hostile.stream.readString().isEmpty());
    EXPECT_EQ(hostile.stream.getPosition(), 4);

    ByteSource oneShort(std::string("\x04\0\0\0" "abc", 7));
    EXPECT_TRUE(oneShort.stream.readString().isEmpty());

    ByteSource exact(std::string("\x03\0\0\0" "ab\0", 7));
    EXPECT_STREQ(exact.stream.readString().getCString(), "ab");
}

TEST(Stream, ReadsPastTheEndGiveZero)
{
    ByteSource nothing("");
    EXPECT_EQ(nothing.stream.readByte(), 0);
    EXPECT_FALSE(nothing.stream.readBool());
    EXPECT_EQ(nothing.stream.readInt16(), 0);
    EXPECT_EQ(nothing.stream.readInt32(), 0);
    EXPECT_EQ(nothing.stream.readInt64(), 0);
    EXPECT_EQ(nothing.stream.readFloat(), 0.0f);
    EXPECT_EQ(nothing.stream.readDouble(), 0.0);
    EXPECT_TRUE(nothing.stream.readString().isEmpty());

    // A partial value keeps the bytes that were there; the missing ones are zero.
    ByteSource partial("\x01\x02");
    EXPECT_EQ(partial.stream.readInt32(), 0x0201);
}

TEST(Stream, SkipMovesRelativeToThePosition)
{
    ByteSource source("0123456789");
    source.stream.skip(4);
    EXPECT_EQ(source.stream.readByte(), '4');
    source.stream.skip(-3);
    EXPECT_EQ(source.stream.readByte(), '2');
    EXPECT_EQ(source.stream.getRemainingBytes(), 7);
    source.stream.skip(100);
    EXPECT_TRUE(source.stream.isEndOfStream());
    EXPECT_EQ(source.stream.getRemainingBytes(), 0);
}
