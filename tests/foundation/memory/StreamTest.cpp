#include "foundation/memory/Stream.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::String;

namespace
{
// A stream over a copy of bytes.
struct ByteSource
{
    explicit ByteSource(const std::string& data)
        : stream(MemoryBlock(data.data(), static_cast<int64_t>(data.size()), true))
    {
    }
    MemoryStream stream;
};
}

TEST(Stream, EveryValueHasItsLittleEndianWireFormAndReadsBack)
{
    MemoryStream stream;
    stream.writeByte(0x1AB);
    stream.writeBool(true);
    stream.writeInt16(-0x1234);
    stream.writeInt32(0x01020304);
    stream.writeInt32BigEndian(0x01020304);
    stream.writeInt64(0x0102030405060708);
    stream.writeFloat(1.0f);
    stream.writeDouble(-2.5);
    stream.writeString(String("h\xC3\xA9"));
    stream.writeString(String("x").erase(0, 1));
    // -0x1234 is 0xEDCC; 1.0f is 0x3F800000; -2.5 is 0xC004000000000000. Strings: length + 1,
    // the bytes, the terminator.
    const std::string wire("\xAB\x01\xCC\xED\x04\x03\x02\x01\x01\x02\x03\x04\x08\x07\x06\x05\x04\x03\x02\x01"
                           "\0\0\x80\x3F\0\0\0\0\0\0\x04\xC0\x04\0\0\0h\xC3\xA9\0\x01\0\0\0\0",
                           45);
    EXPECT_EQ(std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize())), wire);

    stream.setPosition(0);
    EXPECT_EQ(stream.readByte(), 0xAB);
    EXPECT_TRUE(stream.readBool());
    EXPECT_EQ(stream.readInt16(), -0x1234);
    EXPECT_EQ(stream.readInt32(), 0x01020304);
    EXPECT_EQ(stream.readInt32(), 0x04030201) << "the big-endian write has no reading partner";
    EXPECT_EQ(stream.readInt64(), 0x0102030405060708);
    EXPECT_EQ(stream.readFloat(), 1.0f);
    EXPECT_EQ(stream.readDouble(), -2.5);
    EXPECT_STREQ(stream.readString().getCString(), "h\xC3\xA9");
    EXPECT_TRUE(stream.readString().isEmpty());
    EXPECT_TRUE(stream.isEndOfStream());
}

TEST(Stream, BoolsReadTrueOnlyForPositiveSignedBytes)
{
    ByteSource source(std::string("\x01\x7F\x80\xFF\0", 5));
    for (bool expected : {true, true, false, false, false})
        EXPECT_EQ(source.stream.readBool(), expected);
}

TEST(Stream, ReadStringStopsAtTheLengthOrAtANul)
{
    ByteSource source(std::string("\x03\0\0\0abc" "\x05\0\0\0ab\0cd" "\0\0\0\0XYZ", 23));
    EXPECT_STREQ(source.stream.readString().getCString(), "abc") << "no terminator within the length";
    EXPECT_STREQ(source.stream.readString().getCString(), "ab") << "the whole length is consumed";
    EXPECT_TRUE(source.stream.readString().isEmpty());
    source.stream.skip(2);
    source.stream.skip(-1);
    EXPECT_EQ(source.stream.readByte(), 'Y') << "skip moves relative to the position";
    EXPECT_EQ(source.stream.getRemainingBytes(), 1);
}

TEST(Stream, HostileLengthsAndReadsPastTheEndGiveEmptyValues)
{
    // Four gigabytes asked of a ten-byte stream: nothing is allocated, nothing is read.
    ByteSource hostile(std::string("\xF0\xFF\xFF\xFF" "abcdef", 10));
    EXPECT_TRUE(hostile.stream.readString().isEmpty());
    EXPECT_EQ(hostile.stream.getPosition(), 4);
    ByteSource oneShort(std::string("\x04\0\0\0abc", 7));
    EXPECT_TRUE(oneShort.stream.readString().isEmpty());

    ByteSource nothing("");
    EXPECT_EQ(nothing.stream.readByte(), 0);
    EXPECT_FALSE(nothing.stream.readBool());
    EXPECT_EQ(nothing.stream.readInt16(), 0);
    EXPECT_EQ(nothing.stream.readInt64(), 0);
    EXPECT_EQ(nothing.stream.readFloat(), 0.0f);
    EXPECT_EQ(nothing.stream.readDouble(), 0.0);
    // A partial value keeps the bytes that were there; the missing ones are zero.
    ByteSource partial("\x01\x02");
    EXPECT_EQ(partial.stream.readInt32(), 0x0201);
}
