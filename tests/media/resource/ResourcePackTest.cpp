#include "media/resource/ResourcePack.h"

#include "TestBytes.h"
#include "image/TestPictures.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/sample/Sample.h"
#include "sample/WavFileBuilder.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace q1framework;
using TestBytes::bytesOf;

namespace
{
const std::string packMagic = std::string("\x0A\x00\x00\x00Q1RESPK00\x00", 14);
const std::string entryMagic = std::string("\x08\x00\x00\x00Q1RES00\x00", 12);

// The wire form of a string: its length with the NUL, the bytes, the NUL.
std::string wireString(const std::string& text)
{
    return bytesOf(static_cast<int32_t>(text.size() + 1)) + text + std::string(1, '\0');
}

std::string entry(const std::string& name, int32_t type, const std::string& payload, const std::string& magic = entryMagic)
{
    return magic + wireString(name) + bytesOf(type) + payload;
}

std::string textEntry(const std::string& name, const std::string& text)
{
    return entry(name, Resource::textType, wireString(text));
}

std::string pack(int32_t count, const std::string& entries)
{
    return packMagic + bytesOf(count) + entries;
}

// A pack read from bytes; the result of read is stored in readResult.
std::unique_ptr<ResourcePack> packOf(const std::string& bytes, bool& readResult)
{
    auto result = std::make_unique<ResourcePack>();
    MemoryStream stream(TestBytes::blockOf(bytes));
    readResult = result->read(stream);
    return result;
}

std::vector<std::string> names(const Array<String>& list)
{
    std::vector<std::string> result;
    for (const String& name : list)
        result.push_back(name.getCString());
    return result;
}

// The count of entries at each change.
struct CountingListener : ResourcePack::Listener
{
    void resourcePackChanged(ResourcePack* changed) override { counts.push_back(changed->getNumResources()); }
    std::vector<int> counts;
};

// The folder that the tests' resource path operation points into.
std::string resourceFolder;
}

TEST(ResourcePack, EveryTypeRoundTrips)
{
    MemoryStream empty;
    ASSERT_TRUE(ResourcePack().write(empty));
    EXPECT_EQ(TestBytes::contents(empty), pack(0, ""));  // 18 bytes

    Image picture(3, 2, true);
    Sample sound(1, 4, 16, 0, true, 44100.0);
    static_cast<int16_t*>(sound.getChannel(0))[3] = -7;
    ResourcePack original;
    original.addString("greeting", "h\xC3\xA9llo");
    original.addString("nothing", String());
    original.addImage("picture", picture);
    original.addMemoryBlock("blob", MemoryBlock("\x09\x08\x07", 3, true));
    original.addSample("sound", sound);
    MemoryStream stream;
    ASSERT_TRUE(original.write(stream));
    // The empty text is a length of 1 and one NUL.
    EXPECT_NE(TestBytes::contents(stream).find(textEntry("nothing", "")), std::string::npos);

    stream.setPosition(0);
    ResourcePack read;
    ASSERT_TRUE(read.read(stream));
    EXPECT_EQ(stream.getPosition(), stream.getSize());
    EXPECT_EQ(names(read.getNames(-1)), (std::vector<std::string>{"greeting", "nothing", "picture", "blob", "sound"}));
    EXPECT_STREQ(read.getString("greeting").getCString(), "h\xC3\xA9llo");
    EXPECT_EQ(read.getImage("picture").getSize(), picture.getSize());
    EXPECT_EQ(read.getImage("picture"), read.getImage("picture"));  // shared, not copied
    const MemoryBlock blob = read.getMemoryBlock("blob");
    EXPECT_EQ(std::string(static_cast<const char*>(blob.getData()), static_cast<size_t>(blob.getSize())), "\x09\x08\x07");
    EXPECT_TRUE(read.getSample("sound").equals(sound));
    // The type must match as well as the name.
    EXPECT_TRUE(read.getImage("blob").isNull());
    EXPECT_EQ(read.getSample("greeting").getNumChannels(), 0);
}

TEST(ResourcePack, ForeignAndDamagedFiles)
{
    bool result = false;
    // A count of 0 or below is an empty pack.
    EXPECT_EQ(packOf(pack(-3, textEntry("a", "b")), result)->getNumResources(), 0);
    EXPECT_TRUE(result);
    // Another magic: an empty pack and no error, and entries of an earlier read stay.
    auto read = packOf(pack(1, textEntry("kept", "x")), result);
    MemoryStream foreign(TestBytes::blockOf("RIFF1234WAVE and more"));
    EXPECT_TRUE(read->read(foreign));
    EXPECT_TRUE(read->exists("kept"));

    // A bad entry magic or an unknown type code stops the read; earlier entries are usable.
    const std::string badMagic = entry("b", 0, wireString("y"), std::string("\x08\x00\x00\x00Q1RES01\x00", 12));
    for (const std::string& damaged : {badMagic, entry("odd", 4, wireString("y"))})
    {
        read = packOf(pack(3, textEntry("a", "first") + damaged + textEntry("c", "z")), result);
        EXPECT_FALSE(result);
        EXPECT_EQ(names(read->getNames(-1)), (std::vector<std::string>{"a"}));
        EXPECT_STREQ(read->getString("a").getCString(), "first");
    }

    // A null image is written with four zeros but read with two: the next entry then starts
    // eight bytes early and fails on its magic.
    ResourcePack withNull;
    withNull.addImage("none", Image());
    withNull.addString("after", "text");
    MemoryStream stream;
    ASSERT_TRUE(withNull.write(stream));
    read = packOf(TestBytes::contents(stream), result);
    EXPECT_FALSE(result);
    EXPECT_EQ(names(read->getNames(-1)), (std::vector<std::string>{"none"}));
    EXPECT_TRUE(read->getImage("none").isNull());
}

TEST(ResourcePack, HostileLengthsStopQuietly)
{
    // A binary entry whose length asks for a terabyte, an image for 40 GB, a sample for an
    // exabyte: nothing is allocated for them, and checked reading reports the damage.
    const std::string hugeBlob = entry("blob", Resource::binaryType, bytesOf(int64_t(1) << 40));
    const std::string hugeImage = entry("image", Resource::imageType, std::string("\x08\x00\x00\x00Q1IMG00\x00", 12) + bytesOf(100000) + bytesOf(100000)
                                                                          + bytesOf(400000) + bytesOf(0) + bytesOf(int64_t(40000000000)));
    // Sample record: version, channels, bits, margin, owns data, frames, rate.
    const std::string hugeSound = entry("sound", Resource::soundType, bytesOf(1) + bytesOf(64) + bytesOf(32) + bytesOf(0) + std::string(1, '\1')
                                                                          + bytesOf(int64_t(1) << 60) + bytesOf(0.0));
    for (const std::string& bytes : {hugeBlob, hugeImage, hugeSound})
    {
        MemoryStream stream(TestBytes::blockOf(bytes));
        Resource resource("dummy");
        EXPECT_EQ(resource.readEntryChecked(stream), Resource::ReadResult::damagedPayload);
    }
    bool result = false;
    EXPECT_EQ(packOf(pack(0x7FFFFFFF, hugeBlob), result)->getMemoryBlock("blob").getSize(), 0);
    // An entry count far beyond the file ends with the file.
    EXPECT_EQ(packOf(pack(0x7FFFFFFF, textEntry("a", "b")), result)->getNumResources(), 1);
    EXPECT_FALSE(result);
}

TEST(ResourcePack, NamesLookupsAndEditing)
{
    ResourcePack edited;
    CountingListener listener;
    edited.addListener(&listener);
    edited.addListener(&listener);  // refused: still told once per change
    edited.addString("knob", "1");
    edited.addMemoryBlock("knob1", MemoryBlock(3));
    edited.addString("Knob", "2");
    edited.addString("knob", "second of the name");
    EXPECT_EQ(listener.counts, (std::vector<int>{1, 2, 3, 4}));

    EXPECT_STREQ(edited.makeUniqueName("knob").getCString(), "knob2");
    EXPECT_STREQ(edited.makeUniqueName("Knob").getCString(), "Knob1");
    EXPECT_STREQ(edited.makeUniqueName("slider").getCString(), "slider");
    EXPECT_EQ(edited.getIndex("Knob"), 2);
    EXPECT_EQ(edited.getIndex("KNOB"), -1);
    EXPECT_STREQ(edited.getString("knob").getCString(), "1");  // the first of two
    EXPECT_EQ(names(edited.getNames(Resource::textType)), (std::vector<std::string>{"knob", "Knob", "knob"}));
    EXPECT_EQ(edited.find("knob1"), edited.getResource(1));
    EXPECT_EQ(edited.find("missing"), nullptr);

    EXPECT_TRUE(edited.remove("knob"));
    EXPECT_STREQ(edited.getString("knob").getCString(), "second of the name");
    EXPECT_FALSE(edited.remove("missing"));
    edited.rename(0, "strip");
    edited.rename(17, "nowhere");
    EXPECT_EQ(names(edited.getNames(-1)), (std::vector<std::string>{"strip", "Knob", "knob"}));
    EXPECT_EQ(listener.counts, (std::vector<int>{1, 2, 3, 4, 3, 3}));
    edited.removeListener(&listener);
    edited.clear();
    EXPECT_EQ(edited.getNumResources(), 0);
    EXPECT_EQ(listener.counts.size(), 6u);
}

TEST(ResourcePack, FilesAddedAndLoaded)
{
    resourceFolder = testing::TempDir() + "pack-resources";
    ASSERT_EQ(std::system(("rm -rf '" + resourceFolder + "' && mkdir -p '" + resourceFolder + "'").c_str()), 0);
    const auto write = [](const std::string& name, const std::string& bytes) {
        return TestPictures::writeFile(resourceFolder + "/" + name, bytes);
    };
    ASSERT_TRUE(write("picture.png", TestPictures::encodePng({2, 2, PNG_COLOR_TYPE_GRAY, 8, false, {{10, 20}, {10, 20}}})));
    ASSERT_TRUE(write("sound.wav", WavFileBuilder::file(WavFileBuilder::format(1, 1, 8000, 32) + WavFileBuilder::chunk("data", bytesOf(0x40000000)))));
    ASSERT_TRUE(write("some.bin", "some bytes") && write("empty.bin", "") && write("resources.bin", pack(1, textEntry("title", "Kelvane"))));

    // A picture, else a sound, else the bytes; never a name that exists or an empty file.
    ResourcePack added;
    const auto add = [&added](const char* name, const std::string& file) {
        return added.addFromFile(name, (resourceFolder + "/" + file).c_str());
    };
    EXPECT_TRUE(add("image", "picture.png") && add("sound", "sound.wav") && add("binary", "some.bin"));
    EXPECT_FALSE(add("image", "some.bin") || add("empty", "empty.bin") || add("missing", "no-such-file"));
    EXPECT_EQ(names(added.getNames(Resource::imageType)), std::vector<std::string>{"image"});
    EXPECT_EQ(added.getImage("image").getPixelPointer(1, 1)[0], 20);
    EXPECT_EQ(added.getSample("sound").getFloatChannel(0)[0], 0.5f);  // 32-bit integers kept as float
    EXPECT_EQ(added.getMemoryBlock("binary").getSize(), 10);

    // Without a resource path, and for an empty or missing file, no pack.
    EXPECT_EQ(ResourcePack::loadResourcePack("resources.bin"), nullptr);
    ResourcePack::setResourcePathFunction([](const String& name) { return String((resourceFolder + "/").c_str()) + name; });
    std::unique_ptr<ResourcePack> loaded(ResourcePack::loadResourcePack("resources.bin"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_STREQ(loaded->getString("title").getCString(), "Kelvane");
    EXPECT_EQ(ResourcePack::loadResourcePack("empty.bin"), nullptr);
    EXPECT_EQ(ResourcePack::loadResourcePack("missing.bin"), nullptr);
    ResourcePack::setResourcePathFunction(nullptr);
}
