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
}

TEST(MemoryBlock, CopiesShareBytesAndSizeAndDuplicatesDoNot)
{
    for (const MemoryBlock& empty : {MemoryBlock(0), MemoryBlock(-3), MemoryBlock(nullptr, 4, true)})
        EXPECT_TRUE(empty.getData() == nullptr && empty.getSize() == 0 && empty.isOwned());

    char source[] = "abc";
    MemoryBlock original(source, 3, true);
    source[0] = 'q';   // copied at construction
    const MemoryBlock copy(original);
    MemoryBlock assigned(5);
    assigned = original;
    ASSERT_TRUE(original.setSize(5));
    std::memcpy(original.getDataAt(3), "de", 2);
    EXPECT_EQ(bytesOf(copy), "abcde");
    EXPECT_EQ(assigned.getData(), original.getData());

    const MemoryBlock independent = original.duplicate();
    original.fill('z');
    EXPECT_EQ(bytesOf(independent), "abcde");
    EXPECT_EQ(bytesOf(copy), "zzzzz");
    // Resizing keeps the prefix; a negative size is refused with the bytes intact; 0 frees.
    ASSERT_TRUE(original.setSize(2));
    EXPECT_FALSE(original.setSize(-1));
    EXPECT_EQ(bytesOf(copy), "zz");
    EXPECT_TRUE(original.setSize(0));
    EXPECT_EQ(copy.getData(), nullptr);
}

TEST(MemoryBlock, WrappedMemoryIsNeverResizedOrFreedButMayBeFilled)
{
    char buffer[4] = {1, 2, 3, 4};
    {
        MemoryBlock wrapper(buffer, 4, false);
        EXPECT_FALSE(wrapper.isOwned());
        EXPECT_FALSE(wrapper.setSize(8));
        EXPECT_FALSE(wrapper.setSize(0));
        wrapper.fill(0x5A);
        MemoryStream stream(blockOf(std::string("\x01\0\0\0\0\0\0\0c", 9)));
        EXPECT_FALSE(wrapper.readFrom(stream)) << "a wrapped block cannot take the new size";
        EXPECT_EQ(wrapper.getSize(), 4);
    }
    EXPECT_EQ(std::string(buffer, 4), "ZZZZ");
}

TEST(MemoryBlock, PersistentFormIsALittleEndianLengthAndTheBytes)
{
    MemoryStream stream;
    EXPECT_TRUE(blockOf("\x01\x02\x03").writeTo(stream));
    EXPECT_TRUE(MemoryBlock(0).writeTo(stream));
    EXPECT_EQ(bytesOf(stream.getMemoryBlock()), std::string("\x03\0\0\0\0\0\0\0\x01\x02\x03\0\0\0\0\0\0\0\0", 19));
    stream.setPosition(0);
    MemoryBlock block(7);
    EXPECT_TRUE(block.readFrom(stream));
    EXPECT_EQ(bytesOf(block), "\x01\x02\x03");
    EXPECT_TRUE(block.readFrom(stream));
    EXPECT_EQ(block.getSize(), 0);
}

TEST(MemoryBlock, ReadFromRefusesLengthsTheStreamCannotDeliver)
{
    // About 2^63, one more than is there, and a negative length, each in front of two bytes:
    // refused before anything is allocated, and the block is left empty.
    for (const char* length :
         {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", "\x03\0\0\0\0\0\0\0", "\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"})
    {
        MemoryStream hostile(blockOf(std::string(length, 8) + "ab"));
        MemoryBlock block = blockOf("old");
        EXPECT_FALSE(block.readFrom(hostile));
        EXPECT_EQ(block.getSize(), 0);
    }
}

TEST(MemoryBlock, LoadsWholeStreamsAndFiles)
{
    MemoryStream stream(blockOf("whole"));
    stream.setPosition(3);
    EXPECT_EQ(bytesOf(MemoryBlock::loadFromStream(stream)), "whole");
    TemporaryFile file;
    const MemoryBlock missing = MemoryBlock::loadFromFile(String(file.getPath()));
    EXPECT_TRUE(missing.isOwned() && missing.getSize() == 0) << "a live, empty block, not a null handle";
    file.write(std::string("bin\0ary", 7));
    EXPECT_EQ(bytesOf(MemoryBlock::loadFromFile(String(file.getPath()))), std::string("bin\0ary", 7));
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
