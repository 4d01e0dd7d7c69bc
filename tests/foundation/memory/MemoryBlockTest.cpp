#include "foundation/memory/MemoryBlock.h"

#include "TemporaryFile.h"

#include "foundation/memory/MemoryStream.h"
#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::String;

namespace
{
std::string bytesOf(const MemoryBlock& block)
{
    return std::string(static_cast<const char*>(block.getData()), static_cast<size_t>(block.getSize()));
}

MemoryBlock blockOf(const std::string& bytes)
{
    return MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true);
}

std::string streamBytes(MemoryStream& stream)
{
    return std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
}
}

TEST(MemoryBlock, EmptyBlocksAreLiveAndOwned)
{
    for (const MemoryBlock& block : {MemoryBlock(), MemoryBlock(0), MemoryBlock(-3), MemoryBlock(nullptr, 4, true)})
    {
        EXPECT_EQ(block.getData(), nullptr);
        EXPECT_EQ(block.getSize(), 0);
        EXPECT_TRUE(block.isOwned());
    }
    const MemoryBlock sized(16);
    EXPECT_NE(sized.getData(), nullptr);
    EXPECT_EQ(sized.getSize(), 16);
}

TEST(MemoryBlock, CopiesShareBytesAndSizeAndDuplicatesDoNot)
{
    MemoryBlock original = blockOf("abc");
    const MemoryBlock copy(original);
    MemoryBlock assigned(5);
    assigned = original;
    EXPECT_EQ(copy.getData(), original.getData());
    EXPECT_EQ(assigned.getData(), original.getData());

    ASSERT_TRUE(original.setSize(5));
    std::memcpy(original.getDataAt(3), "de", 2);
    EXPECT_EQ(copy.getSize(), 5);
    EXPECT_EQ(bytesOf(assigned), "abcde");

    const MemoryBlock independent = original.duplicate();
    EXPECT_NE(independent.getData(), original.getData());
    original.fill('z');
    EXPECT_EQ(bytesOf(independent), "abcde");
    EXPECT_EQ(bytesOf(copy), "zzzzz");

    MemoryBlock& alias = original;
    original = alias;
    EXPECT_EQ(bytesOf(original), "zzzzz");
}

TEST(MemoryBlock, CopiedConstructionOwnsAPrivateCopy)
{
    char source[] = "xyz";
    const MemoryBlock block(source, 3, true);
    EXPECT_NE(block.getData(), static_cast<void*>(source));
    source[0] = 'q';
    EXPECT_EQ(bytesOf(block), "xyz");
}

TEST(MemoryBlock, WrappedMemoryIsNeverResizedOrFreed)
{
    char buffer[4] = {1, 2, 3, 4};
    {
        MemoryBlock wrapper(buffer, 4, false);
        EXPECT_FALSE(wrapper.isOwned());
        EXPECT_EQ(wrapper.getData(), static_cast<void*>(buffer));
        EXPECT_FALSE(wrapper.setSize(8));
        EXPECT_FALSE(wrapper.setSize(0));
        EXPECT_EQ(wrapper.getSize(), 4);
        EXPECT_EQ(wrapper.getData(), static_cast<void*>(buffer));
        wrapper.fill(0x5A);
        EXPECT_EQ(wrapper.getDataAt(2), static_cast<void*>(buffer + 2));
    }
    EXPECT_EQ(std::string(buffer, 4), "ZZZZ");
}

TEST(MemoryBlock, SetSizeKeepsThePrefixAndSizeZeroFrees)
{
    MemoryBlock block = blockOf("12345678");
    ASSERT_TRUE(block.setSize(3));
    EXPECT_EQ(bytesOf(block), "123");
    ASSERT_TRUE(block.setSize(4096));
    EXPECT_EQ(std::string(static_cast<const char*>(block.getData()), 3), "123");
    // A negative size is refused like a failed allocation: the bytes stay.
    ASSERT_TRUE(block.setSize(3));
    EXPECT_FALSE(block.setSize(-1));
    EXPECT_EQ(bytesOf(block), "123");
    EXPECT_TRUE(block.setSize(0));
    EXPECT_EQ(block.getData(), nullptr);
    EXPECT_EQ(block.getSize(), 0);
    block.fill(1);  // nothing to fill
    EXPECT_EQ(block.getSize(), 0);
}

TEST(MemoryBlock, PersistentFormIsALittleEndianLengthAndTheBytes)
{
    MemoryStream stream;
    EXPECT_TRUE(blockOf("\x01\x02\x03").writeTo(stream));
    EXPECT_TRUE(MemoryBlock(0).writeTo(stream));
    EXPECT_EQ(streamBytes(stream), std::string("\x03\0\0\0\0\0\0\0\x01\x02\x03"
                                               "\0\0\0\0\0\0\0\0",
                                               19));

    stream.setPosition(0);
    MemoryBlock first(7);
    EXPECT_TRUE(first.readFrom(stream));
    EXPECT_EQ(bytesOf(first), "\x01\x02\x03");
    MemoryBlock second = blockOf("stale");
    EXPECT_TRUE(second.readFrom(stream));
    EXPECT_EQ(second.getSize(), 0);
    EXPECT_TRUE(stream.isEndOfStream());
}

TEST(MemoryBlock, ReadFromRefusesLengthsTheStreamCannotDeliver)
{
    // A length of about 2^63 in front of two bytes: refused before anything is allocated.
    MemoryStream hostile(blockOf(std::string("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F" "ab", 10)));
    MemoryBlock block = blockOf("old");
    EXPECT_FALSE(block.readFrom(hostile));
    EXPECT_EQ(block.getSize(), 0);

    // One byte more than is there.
    MemoryStream oneShort(blockOf(std::string("\x03\0\0\0\0\0\0\0" "ab", 10)));
    EXPECT_FALSE(block.readFrom(oneShort));

    MemoryStream negative(blockOf(std::string("\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF" "ab", 10)));
    EXPECT_FALSE(block.readFrom(negative));

    // Exactly what is left is honest.
    MemoryStream exact(blockOf(std::string("\x02\0\0\0\0\0\0\0" "ab", 10)));
    EXPECT_TRUE(block.readFrom(exact));
    EXPECT_EQ(bytesOf(block), "ab");

    char outside[2] = {};
    MemoryBlock wrapper(outside, 2, false);
    MemoryStream again(blockOf(std::string("\x01\0\0\0\0\0\0\0" "c", 9)));
    EXPECT_FALSE(wrapper.readFrom(again)) << "a wrapped block cannot take the new size";
}

TEST(MemoryBlock, WriteToAnswersTrueAndLeavesRefusalsToTheStream)
{
    char outside[4] = {};
    MemoryStream readOnly(MemoryBlock(outside, 4, false));
    EXPECT_TRUE(blockOf("ab").writeTo(readOnly));
    EXPECT_EQ(readOnly.getPosition(), 0) << "the wrapped block took nothing";
}

TEST(MemoryBlock, LoadsWholeStreamsAndFiles)
{
    MemoryStream stream(blockOf("whole"));
    stream.setPosition(3);
    EXPECT_EQ(bytesOf(MemoryBlock::loadFromStream(stream)), "whole");

    MemoryStream empty;
    const MemoryBlock nothing = MemoryBlock::loadFromStream(empty);
    EXPECT_EQ(nothing.getSize(), 0);
    EXPECT_TRUE(nothing.isOwned());

    TemporaryFile file;
    const MemoryBlock missing = MemoryBlock::loadFromFile(String(file.getPath()));
    EXPECT_TRUE(missing.isOwned()) << "a live, empty block, not a null handle";
    EXPECT_EQ(missing.getSize(), 0);

    file.write(std::string("bin\0ary", 7));
    EXPECT_EQ(bytesOf(MemoryBlock::loadFromFile(String(file.getPath()))), std::string("bin\0ary", 7));
}

TEST(MemoryBlock, HexTextOfTheBytes)
{
    EXPECT_STREQ(blockOf("\x01\xAB\xFF").toHexString(1).getCString(), "01 AB FF");
    EXPECT_STREQ(blockOf("\x01\xAB\xFF").toHexString(0).getCString(), "01ABFF");
    EXPECT_TRUE(MemoryBlock(0).toHexString(1).isEmpty());
}

TEST(MemoryBlock, ThreadedCopiesAndReleasesKeepOneCount)
{
    // A lost count would free the block early (reported by the address sanitizer) or leak it.
    const MemoryBlock shared = blockOf("shared bytes");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&shared] {
            for (int i = 0; i < 20000; ++i)
            {
                MemoryBlock copy(shared);
                MemoryBlock another;
                another = copy;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(bytesOf(shared), "shared bytes");
}
