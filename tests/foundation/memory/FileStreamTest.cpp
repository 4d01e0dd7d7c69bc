#include "foundation/memory/FileStream.h"

#include "TemporaryFile.h"

#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::FileStream;
using q1framework::String;

namespace
{
const int readOnly = FileStream::forReading;
const int writeOnly = FileStream::forWriting;
const int readWrite = FileStream::forReading | FileStream::forWriting;
}

TEST(FileStream, WritingCreatesOrTruncatesAndClosingFlushes)
{
    TemporaryFile file;
    {
        FileStream stream(String(file.getPath()), writeOnly);
        ASSERT_TRUE(stream.isOpen());
        EXPECT_TRUE(stream.isWritable());
        EXPECT_EQ(stream.write("first version", 13), 13);
    }
    EXPECT_EQ(file.read(), "first version");
    {
        FileStream stream(String(file.getPath()), writeOnly);
        EXPECT_EQ(stream.getSize(), 0);
        stream.writeInt32(0x64636261);
    }
    EXPECT_EQ(file.read(), "abcd");
}

TEST(FileStream, ReadingNeverWrites)
{
    TemporaryFile file;
    file.write("contents");
    FileStream stream(String(file.getPath()), readOnly);
    ASSERT_TRUE(stream.isOpen());
    EXPECT_FALSE(stream.isWritable());
    EXPECT_EQ(stream.write("xx", 2), 0);
    EXPECT_EQ(stream.getSize(), 8);
    char buffer[16];
    EXPECT_EQ(stream.read(buffer, 16), 8);
    EXPECT_EQ(std::string(buffer, 8), "contents");
    EXPECT_TRUE(stream.isEndOfStream());
    EXPECT_EQ(file.read(), "contents");
}

TEST(FileStream, BothFlagsTruncateAnExistingFileAndReadBack)
{
    TemporaryFile file;
    file.write("old contents");
    FileStream stream(String(file.getPath()), readWrite);
    ASSERT_TRUE(stream.isOpen());
    EXPECT_TRUE(stream.isWritable());
    EXPECT_EQ(stream.getSize(), 0);

    stream.writeString(String("abc"));
    stream.setPosition(0);
    EXPECT_STREQ(stream.readString().getCString(), "abc");

    // Switching between reading and writing without a seek in between.
    stream.setPosition(4);
    char first;
    EXPECT_EQ(stream.read(&first, 1), 1);
    EXPECT_EQ(first, 'a');
    EXPECT_EQ(stream.write("XY", 2), 2);
    char next;
    EXPECT_EQ(stream.read(&next, 1), 1);
    EXPECT_EQ(next, 0);
    EXPECT_EQ(stream.getPosition(), 8);
}

TEST(FileStream, SizeLeavesThePositionWhereItWas)
{
    TemporaryFile file;
    file.write("0123456789");
    FileStream stream(String(file.getPath()), readOnly);
    stream.setPosition(3);
    EXPECT_EQ(stream.getSize(), 10);
    EXPECT_EQ(stream.getPosition(), 3);
    EXPECT_EQ(stream.readByte(), '3');
    stream.skip(2);
    EXPECT_EQ(stream.readByte(), '6');
}

TEST(FileStream, AFileThatDidNotOpenDoesNothing)
{
    TemporaryFile file;
    FileStream missing(String(file.getPath()), readOnly);
    FileStream noMode(String(file.getPath()), 0);
    FileStream unreachable(String(file.getPath()) + "/below/a/missing/folder", writeOnly);
    for (FileStream* stream : {&missing, &noMode, &unreachable})
    {
        EXPECT_FALSE(stream->isOpen());
        EXPECT_EQ(stream->isWritable(), stream == &unreachable) << "writable follows the mode";
        EXPECT_EQ(stream->getSize(), 0);
        EXPECT_EQ(stream->getPosition(), 0);
        stream->setPosition(5);
        char buffer[4];
        EXPECT_EQ(stream->read(buffer, 4), 0);
        EXPECT_EQ(stream->write("abcd", 4), 0);
        EXPECT_TRUE(stream->readString().isEmpty());
    }
    EXPECT_FALSE(file.exists()) << "flags 0 must not create the file";
}
