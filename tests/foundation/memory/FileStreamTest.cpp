#include "foundation/memory/FileStream.h"

#include "TemporaryFile.h"

#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::FileStream;
using q1framework::String;

TEST(FileStream, WritingCreatesOrTruncatesAndReadingNeverWrites)
{
    TemporaryFile file;
    file.write("old contents");
    {
        FileStream stream(String(file.getPath()), FileStream::forWriting);
        EXPECT_EQ(stream.getSize(), 0);
        stream.writeInt32(0x64636261);
    }
    EXPECT_EQ(file.read(), "abcd") << "closing flushes";

    FileStream stream(String(file.getPath()), FileStream::forReading);
    EXPECT_FALSE(stream.isWritable());
    EXPECT_EQ(stream.write("xx", 2), 0);
    stream.setPosition(1);
    EXPECT_EQ(stream.getSize(), 4);
    EXPECT_EQ(stream.getPosition(), 1) << "measuring the size leaves the position";
    char buffer[8];
    EXPECT_EQ(stream.read(buffer, 8), 3);
    EXPECT_EQ(std::string(buffer, 3), "bcd");
    EXPECT_EQ(file.read(), "abcd");
}

TEST(FileStream, BothFlagsTruncateAnExistingFileAndReadBack)
{
    TemporaryFile file;
    file.write("old contents");
    FileStream stream(String(file.getPath()), FileStream::forReading | FileStream::forWriting);
    EXPECT_EQ(stream.getSize(), 0);
    stream.writeString(String("abc"));
    stream.setPosition(4);
    // Switching between reading and writing without a seek in between.
    EXPECT_EQ(stream.readByte(), 'a');
    EXPECT_EQ(stream.write("XY", 2), 2);
    EXPECT_EQ(stream.readByte(), 0);
    EXPECT_EQ(file.read(), std::string("\x04\0\0\0aXY\0", 8));
}

TEST(FileStream, AFileThatDidNotOpenDoesNothing)
{
    TemporaryFile file;
    FileStream missing(String(file.getPath()), FileStream::forReading);
    FileStream noMode(String(file.getPath()), 0);
    FileStream unreachable(String(file.getPath()) + "/below/a/missing/folder", FileStream::forWriting);
    for (FileStream* stream : {&missing, &noMode, &unreachable})
    {
        stream->setPosition(5);
        EXPECT_EQ(stream->getSize() + stream->getPosition(), 0);
        char buffer[4];
        EXPECT_EQ(stream->read(buffer, 4), 0);
        EXPECT_EQ(stream->write("abcd", 4), 0);
    }
    EXPECT_FALSE(file.exists()) << "flags 0 must not create the file";
}
