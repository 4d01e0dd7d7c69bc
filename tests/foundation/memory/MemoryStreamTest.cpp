#include "foundation/memory/MemoryStream.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;

TEST(MemoryStream, WritesGrowTheBlockByExactlyWhatIsMissingAndPositionsClamp)
{
    MemoryStream stream;
    stream.write("abcdef", 6);
    stream.setPosition(4);
    EXPECT_EQ(stream.write("0123456789", 10), 10);
    EXPECT_EQ(stream.getPosition(), 14);
    stream.setPosition(1);
    stream.write("XY", 2);
    EXPECT_EQ(std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize())),
              "aXYd0123456789");
    stream.setPosition(-5);
    EXPECT_EQ(stream.getPosition(), 0);
    stream.setPosition(14 + 5);
    EXPECT_EQ(stream.getPosition(), 14) << "positions clamp and never extend the block";
    stream.setPosition(11);
    char buffer[10];
    EXPECT_EQ(stream.read(buffer, 10), 3) << "reads are clipped to what is left";
    EXPECT_TRUE(stream.isEndOfStream());
}

TEST(MemoryStream, StreamsOnOneBlockShareItsBytesAndAWrappedBlockIsReadOnly)
{
    MemoryBlock block("....", 4, true);
    MemoryStream writer(block), reader(block);
    writer.setPosition(2);
    writer.write("ABCD", 4);
    char buffer[6];
    EXPECT_EQ(reader.read(buffer, 6), 6) << "growth through one stream shows in the other";
    EXPECT_EQ(std::string(buffer, 6), "..ABCD");
    EXPECT_TRUE(writer.clear());
    EXPECT_EQ(block.getSize(), 0);

    char outside[4] = {'w', 'x', 'y', 'z'};
    MemoryStream wrapped(MemoryBlock(outside, 4, false));
    EXPECT_FALSE(wrapped.isWritable());
    EXPECT_EQ(wrapped.write("ab", 2), 0);
    EXPECT_FALSE(wrapped.clear());
    EXPECT_EQ(wrapped.read(buffer, 6), 4);
    EXPECT_EQ(std::string(buffer, 4), "wxyz");
}
