#include "media/image/Image.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::MemoryStream;

namespace
{
std::string contents(MemoryStream& stream)
{
    return std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
}

std::string int32Bytes(int32_t value)
{
    return std::string(reinterpret_cast<const char*>(&value), 4);
}

std::string int64Bytes(int64_t value)
{
    return std::string(reinterpret_cast<const char*>(&value), 8);
}

const std::string magic = std::string("\x08\x00\x00\x00Q1IMG00\x00", 12);

MemoryBlock blockOf(const std::string& bytes)
{
    return MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true);
}
}

TEST(ImageContainer, WritesTheWholeBlockAndReadsItBack)
{
    Image image(3, 2, true, 1);
    image.fill(10, 20, 30, 40);
    image.getData()[0] = 0x5A;  // a margin byte, kept as it stands
    MemoryStream stream;
    ASSERT_TRUE(image.writeTo(stream));
    const int64_t blockBytes = (2 + 2) * (3 + 2) * 4;
    const std::string expectedHeader = magic + int32Bytes(3) + int32Bytes(2) + int32Bytes(20) + int32Bytes(1) + int64Bytes(blockBytes);
    const std::string written = contents(stream);
    ASSERT_EQ(written.size(), expectedHeader.size() + blockBytes);
    EXPECT_EQ(written.substr(0, expectedHeader.size()), expectedHeader);
    EXPECT_EQ(std::memcmp(written.data() + expectedHeader.size(), image.getData(), blockBytes), 0);

    stream.setPosition(0);
    Image read;
    ASSERT_TRUE(read.readFrom(stream));
    EXPECT_EQ(stream.getPosition(), stream.getSize());
    EXPECT_EQ(read.getSize(), image.getSize());
    EXPECT_EQ(read.getMargin(), 1);
    EXPECT_EQ(read.getStride(), 20);
    EXPECT_EQ(std::memcmp(read.getData(), image.getData(), blockBytes), 0);
    EXPECT_EQ(read.getPixelPointer(0, 0), read.getData() + 20 + 4);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(read.getData()) % 16, 0u);
}

TEST(ImageContainer, TheNullImageIsWrittenWithFourZerosButReadWithTwo)
{
    MemoryStream stream;
    ASSERT_TRUE(Image().writeTo(stream));
    EXPECT_EQ(contents(stream), magic + std::string(16, '\0'));

    stream.setPosition(0);
    Image target(4, 4, true);
    ASSERT_TRUE(target.readFrom(stream));
    EXPECT_TRUE(target.isNull());
    // The stride and margin zeros stay unread.
    EXPECT_EQ(stream.getPosition(), 12 + 8);
}

TEST(ImageContainer, AZeroSizedBlockHasNoByteCount)
{
    const Image noBytes(0, 5, true, 0);
    MemoryStream stream;
    ASSERT_TRUE(noBytes.writeTo(stream));
    EXPECT_EQ(contents(stream), magic + int32Bytes(0) + int32Bytes(5) + int32Bytes(0) + int32Bytes(0));
    stream.setPosition(0);
    Image read;
    ASSERT_TRUE(read.readFrom(stream));
    EXPECT_FALSE(read.isNull());
    EXPECT_EQ(read.getHeight(), 5);
    EXPECT_EQ(read.getData(), nullptr);
}

TEST(ImageContainer, InconsistentOrHostileFieldsLeaveTheTargetUnchanged)
{
    const Image original(2, 2, true);
    const auto expectRefused = [&original](const std::string& bytes) {
        MemoryStream stream(blockOf(bytes));
        Image target = original;
        EXPECT_FALSE(target.readFrom(stream));
        EXPECT_EQ(target, original);
    };
    // Another magic.
    expectRefused(std::string("\x08\x00\x00\x00Q1IMG01\x00", 12) + int32Bytes(1) + int32Bytes(1));
    // A byte count that is not the block's size.
    expectRefused(magic + int32Bytes(1) + int32Bytes(1) + int32Bytes(4) + int32Bytes(0) + int64Bytes(8) + std::string(8, 'x'));
    // A stride too short for the line.
    expectRefused(magic + int32Bytes(2) + int32Bytes(1) + int32Bytes(4) + int32Bytes(0) + int64Bytes(4) + std::string(4, 'x'));
    // Negative fields.
    expectRefused(magic + int32Bytes(-2) + int32Bytes(1) + int32Bytes(4) + int32Bytes(0) + int64Bytes(4) + std::string(4, 'x'));
    expectRefused(magic + int32Bytes(1) + int32Bytes(1) + int32Bytes(12) + int32Bytes(-1) + int64Bytes(-12));
    // A consistent header that asks for 40 GB the stream does not have, and one for 3 GB.
    expectRefused(magic + int32Bytes(100000) + int32Bytes(100000) + int32Bytes(400000) + int32Bytes(0) + int64Bytes(40000000000));
    expectRefused(magic + int32Bytes(30000) + int32Bytes(25000) + int32Bytes(120000) + int32Bytes(0) + int64Bytes(3000000000));
    // A block cut short.
    expectRefused(magic + int32Bytes(1) + int32Bytes(1) + int32Bytes(4) + int32Bytes(0) + int64Bytes(4) + std::string(3, 'x'));
}
