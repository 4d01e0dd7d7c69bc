#include "foundation/memory/MemoryStream.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;

namespace
{
std::string contentsOf(const MemoryBlock& block)
{
    return std::string(static_cast<const char*>(block.getData()), static_cast<size_t>(block.getSize()));
}
}

TEST(MemoryStream, WritesGrowTheBlockByExactlyWhatIsMissing)
{
    MemoryStream stream;
    EXPECT_TRUE(stream.isWritable());
    EXPECT_EQ(stream.write("abcdef", 6), 6);
    stream.setPosition(4);
    EXPECT_EQ(stream.write("0123456789", 10), 10);
    EXPECT_EQ(stream.getSize(), 14);
    EXPECT_EQ(stream.getPosition(), 14);
    EXPECT_EQ(contentsOf(stream.getMemoryBlock()), "abcd0123456789");

    // Inside the block nothing grows.
    stream.setPosition(1);
    EXPECT_EQ(stream.write("XY", 2), 2);
    EXPECT_EQ(stream.getSize(), 14);
    EXPECT_EQ(contentsOf(stream.getMemoryBlock()), "aXYd0123456789");

    EXPECT_EQ(stream.write("", 0), 0);
    EXPECT_EQ(stream.write("x", -1), 0);
    EXPECT_EQ(stream.getData(), stream.getMemoryBlock().getData());
}

TEST(MemoryStream, ReadsAreClippedToWhatIsLeft)
{
    MemoryStream stream(MemoryBlock("hello", 5, true));
    stream.setPosition(3);
    char buffer[10] = {};
    EXPECT_EQ(stream.read(buffer, 10), 2);
    EXPECT_EQ(std::string(buffer, 2), "lo");
    EXPECT_EQ(stream.getPosition(), 5);
    EXPECT_EQ(stream.read(buffer, 10), 0);
    EXPECT_EQ(stream.read(buffer, -4), 0);
}

TEST(MemoryStream, SetPositionClampsAndNeverExtends)
{
    MemoryStream stream(MemoryBlock("123456", 6, true));
    stream.setPosition(-5);
    EXPECT_EQ(stream.getPosition(), 0);
    stream.setPosition(6 + 5);
    EXPECT_EQ(stream.getPosition(), 6);
    EXPECT_EQ(stream.getSize(), 6);
    EXPECT_TRUE(stream.isEndOfStream());
}

TEST(MemoryStream, AWrappedBlockIsReadOnly)
{
    char outside[4] = {'w', 'x', 'y', 'z'};
    MemoryStream stream(MemoryBlock(outside, 4, false));
    EXPECT_FALSE(stream.isWritable());
    EXPECT_EQ(stream.write("ab", 2), 0);
    EXPECT_FALSE(stream.clear());
    EXPECT_EQ(stream.getSize(), 4);
    char buffer[4];
    EXPECT_EQ(stream.read(buffer, 4), 4);
    EXPECT_EQ(std::string(buffer, 4), "wxyz");
}

TEST(MemoryStream, StreamsOnOneBlockShareItsBytesWithTheirOwnPositions)
{
    MemoryBlock block("....", 4, true);
    MemoryStream writer(block);
    MemoryStream reader(block);
    EXPECT_TRUE(writer.isWritable());

    writer.setPosition(2);
    writer.write("ABCD", 4);
    EXPECT_EQ(reader.getSize(), 6) << "growth through one stream shows in the other";
    EXPECT_EQ(reader.getPosition(), 0);
    char buffer[6];
    EXPECT_EQ(reader.read(buffer, 6), 6);
    EXPECT_EQ(std::string(buffer, 6), "..ABCD");
    EXPECT_EQ(contentsOf(block), "..ABCD");

    // Emptied by one stream, the other reads nothing, whatever its position.
    EXPECT_TRUE(writer.clear());
    EXPECT_EQ(writer.getPosition(), 0);
    EXPECT_EQ(block.getSize(), 0);
    EXPECT_EQ(reader.read(buffer, 6), 0);
}
