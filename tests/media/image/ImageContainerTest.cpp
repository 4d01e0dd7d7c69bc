#include "media/image/Image.h"

#include "TestBytes.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using namespace q1framework;
using TestBytes::bytesOf;

namespace
{
const std::string magic = std::string("\x08\x00\x00\x00Q1IMG00\x00", 12);

// The magic and the fields width, height, stride and margin.
std::string header(int32_t width, int32_t height, int32_t stride, int32_t margin)
{
    return magic + bytesOf(width) + bytesOf(height) + bytesOf(stride) + bytesOf(margin);
}
}

TEST(ImageContainer, WritesTheWholeBlockAndReadsItBack)
{
    Image image(3, 2, true, 1);
    image.fill(10, 20, 30, 40);
    image.getData()[0] = 0x5A;  // a margin byte, kept as it stands
    MemoryStream stream;
    ASSERT_TRUE(image.writeTo(stream));
    // (2 + 2) lines of (3 + 2) * 4 = 20 bytes.
    const std::string expectedHeader = header(3, 2, 20, 1) + bytesOf(int64_t(80));
    const std::string written = TestBytes::contents(stream);
    ASSERT_EQ(written.size(), expectedHeader.size() + 80);
    EXPECT_EQ(written.substr(0, expectedHeader.size()), expectedHeader);
    EXPECT_EQ(std::memcmp(written.data() + expectedHeader.size(), image.getData(), 80), 0);

    stream.setPosition(0);
    Image read;
    ASSERT_TRUE(read.readFrom(stream));
    EXPECT_EQ(stream.getPosition(), stream.getSize());
    EXPECT_EQ(read.getSize(), image.getSize());
    EXPECT_EQ(std::memcmp(read.getData(), image.getData(), 80), 0);
    EXPECT_EQ(read.getPixelPointer(0, 0), read.getData() + 20 + 4);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(read.getData()) % 16, 0u);

    // A zero-sized block has no byte count.
    MemoryStream noBlock;
    ASSERT_TRUE(Image(0, 5, true, 0).writeTo(noBlock));
    EXPECT_EQ(TestBytes::contents(noBlock), header(0, 5, 0, 0));
    noBlock.setPosition(0);
    ASSERT_TRUE(read.readFrom(noBlock));
    EXPECT_EQ(read.getHeight(), 5);
    EXPECT_EQ(read.getData(), nullptr);
}

TEST(ImageContainer, TheNullImageIsWrittenWithFourZerosButReadWithTwo)
{
    MemoryStream stream;
    ASSERT_TRUE(Image().writeTo(stream));
    EXPECT_EQ(TestBytes::contents(stream), header(0, 0, 0, 0));
    stream.setPosition(0);
    Image target(4, 4, true);
    ASSERT_TRUE(target.readFrom(stream));
    EXPECT_TRUE(target.isNull());
    EXPECT_EQ(stream.getPosition(), 12 + 8);  // the stride and margin zeros stay unread
}

TEST(ImageContainer, InconsistentOrHostileFieldsLeaveTheTargetUnchanged)
{
    const std::string pixels(8, 'x');
    const std::string refused[] = {
        std::string("\x08\x00\x00\x00Q1IMG01\x00", 12) + bytesOf(1) + bytesOf(1),  // another magic
        header(1, 1, 4, 0) + bytesOf(int64_t(8)) + pixels,                           // byte count not the block's
        header(2, 1, 4, 0) + bytesOf(int64_t(4)) + pixels,                           // stride short of the line
        header(-2, 1, 4, 0) + bytesOf(int64_t(4)) + pixels,
        header(1, 1, 12, -1) + bytesOf(int64_t(-12)),
        // Consistent headers that ask for 40 GB and for 3 GB the stream does not have.
        header(100000, 100000, 400000, 0) + bytesOf(int64_t(40000000000)),
        header(30000, 25000, 120000, 0) + bytesOf(int64_t(3000000000)),
        header(1, 1, 4, 0) + bytesOf(int64_t(4)) + pixels.substr(0, 3),  // cut short
    };
    const Image original(2, 2, true);
    for (const std::string& bytes : refused)
    {
        MemoryStream stream(TestBytes::blockOf(bytes));
        Image target = original;
        EXPECT_FALSE(target.readFrom(stream));
        EXPECT_EQ(target, original);
    }
}
