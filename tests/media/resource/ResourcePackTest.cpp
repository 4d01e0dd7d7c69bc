#include "media/resource/ResourcePack.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
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

using q1framework::Array;
using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Resource;
using q1framework::ResourcePack;
using q1framework::Sample;
using q1framework::String;
using Wav = WavFileBuilder;

namespace
{
const std::string packMagic = std::string("\x0A\x00\x00\x00Q1RESPK00\x00", 14);
const std::string entryMagic = std::string("\x08\x00\x00\x00Q1RES00\x00", 12);

std::string wireString(const std::string& text)
{
    return Wav::int32(static_cast<int64_t>(text.size()) + 1) + text + std::string(1, '\0');
}

std::string textEntry(const std::string& name, const std::string& text)
{
    return entryMagic + wireString(name) + Wav::int32(0) + wireString(text);
}

std::string contents(MemoryStream& stream)
{
    return std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
}

// A pack read from bytes; the result of read is stored in readResult.
std::unique_ptr<ResourcePack> packOf(const std::string& bytes, bool& readResult)
{
    auto pack = std::make_unique<ResourcePack>();
    MemoryStream stream(MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true));
    readResult = pack->read(stream);
    return pack;
}

std::vector<std::string> names(const Array<String>& list)
{
    std::vector<std::string> result;
    for (const String& name : list)
        result.push_back(name.getCString());
    return result;
}

class CountingListener : public ResourcePack::Listener
{
public:
    void resourcePackChanged(ResourcePack* pack) override
    {
        ++calls;
        lastCount = pack->getNumResources();
    }

    int calls = 0;
    int lastCount = -1;
};

// The folder that the tests' resource path operation points into.
std::string resourceFolder;

String pathInResourceFolder(const String& name)
{
    return String((resourceFolder + "/").c_str()) + name;
}
}

TEST(ResourcePack, AnEmptyPackIsEighteenBytes)
{
    ResourcePack pack;
    MemoryStream stream;
    ASSERT_TRUE(pack.write(stream));
    EXPECT_EQ(contents(stream), packMagic + Wav::int32(0));

    bool result = false;
    const auto read = packOf(packMagic + Wav::int32(0), result);
    EXPECT_TRUE(result);
    EXPECT_EQ(read->getNumResources(), 0);
    // A negative count reads as no entries too.
    EXPECT_EQ(packOf(packMagic + Wav::int32(-3) + textEntry("a", "b"), result)->getNumResources(), 0);
    EXPECT_TRUE(result);
}

TEST(ResourcePack, EveryTypeRoundTrips)
{
    Image picture(3, 2, true);
    picture.fill(1, 2, 3, 4);
    const uint8_t bytes[5] = {9, 8, 7, 6, 5};
    Sample sound(1, 4, 16, 0, true, 44100.0);
    static_cast<int16_t*>(sound.getChannel(0))[3] = -7;

    ResourcePack pack;
    pack.addString("greeting", "h\xC3\xA9llo");
    pack.addString("nothing", String());
    pack.addImage("picture", picture);
    pack.addMemoryBlock("blob", MemoryBlock(bytes, 5, true));
    pack.addSample("sound", sound);
    MemoryStream stream;
    ASSERT_TRUE(pack.write(stream));
    // The empty text is a length of 1 and one NUL.
    EXPECT_NE(contents(stream).find(textEntry("nothing", "")), std::string::npos);

    stream.setPosition(0);
    ResourcePack read;
    ASSERT_TRUE(read.read(stream));
    EXPECT_EQ(stream.getPosition(), stream.getSize());
    EXPECT_EQ(names(read.getNames(-1)), (std::vector<std::string>{"greeting", "nothing", "picture", "blob", "sound"}));
    EXPECT_STREQ(read.getString("greeting").getCString(), "h\xC3\xA9llo");
    EXPECT_TRUE(read.getString("nothing").isEmpty());
    const Image image = read.getImage("picture");
    ASSERT_EQ(image.getSize(), picture.getSize());
    EXPECT_EQ(std::memcmp(image.getData(), picture.getData(), static_cast<size_t>(picture.getStride()) * 34), 0);
    EXPECT_EQ(read.getImage("picture"), image);  // shared, not copied
    const MemoryBlock blob = read.getMemoryBlock("blob");
    ASSERT_EQ(blob.getSize(), 5);
    EXPECT_EQ(std::memcmp(blob.getData(), bytes, 5), 0);
    EXPECT_TRUE(read.getSample("sound").equals(sound));

    // Asking with the wrong type, or for a missing name, gives the empty value.
    EXPECT_TRUE(read.getImage("blob").isNull());
    EXPECT_EQ(read.getMemoryBlock("picture").getSize(), 0);
    EXPECT_TRUE(read.getString("sound").isEmpty());
    EXPECT_EQ(read.getSample("greeting").getNumChannels(), 0);
    EXPECT_TRUE(read.getImage("Picture").isNull());
}

TEST(ResourcePack, ForeignAndDamagedFiles)
{
    bool result = false;
    // Another magic: an empty pack and no error, and entries of an earlier read stay.
    EXPECT_EQ(packOf("RIFF1234WAVE", result)->getNumResources(), 0);
    EXPECT_TRUE(result);
    auto pack = packOf(packMagic + Wav::int32(1) + textEntry("kept", "x"), result);
    MemoryStream foreign(MemoryBlock("not a pack at all", 17, true));
    EXPECT_TRUE(pack->read(foreign));
    EXPECT_TRUE(pack->exists("kept"));

    // A bad entry magic or an unknown type code stops the read; earlier entries are usable.
    const std::string badMagic = std::string("\x08\x00\x00\x00Q1RES01\x00", 12) + wireString("b") + Wav::int32(0) + wireString("y");
    pack = packOf(packMagic + Wav::int32(3) + textEntry("a", "first") + badMagic + textEntry("c", "z"), result);
    EXPECT_FALSE(result);
    EXPECT_EQ(names(pack->getNames(-1)), (std::vector<std::string>{"a"}));
    EXPECT_STREQ(pack->getString("a").getCString(), "first");

    const std::string typeFour = entryMagic + wireString("odd") + Wav::int32(4) + wireString("y");
    pack = packOf(packMagic + Wav::int32(2) + textEntry("a", "first") + typeFour, result);
    EXPECT_FALSE(result);
    EXPECT_EQ(pack->getNumResources(), 1);

    // A null image is written with four zeros but read with two: the next entry then starts
    // eight bytes early and fails on its magic.
    ResourcePack withNull;
    withNull.addImage("none", Image());
    withNull.addString("after", "text");
    MemoryStream stream;
    ASSERT_TRUE(withNull.write(stream));
    stream.setPosition(0);
    ResourcePack reread;
    EXPECT_FALSE(reread.read(stream));
    EXPECT_EQ(names(reread.getNames(-1)), (std::vector<std::string>{"none"}));
    EXPECT_TRUE(reread.getImage("none").isNull());
}

TEST(ResourcePack, HostileLengthsStopQuietly)
{
    // A binary entry whose length asks for a terabyte, an image for 40 GB, a sample for an
    // exabyte: nothing is allocated for them, and checked reading reports the damage.
    const std::string hugeBlob = entryMagic + wireString("blob") + Wav::int32(2) + std::string("\x00\x00\x00\x00\x00\x01\x00\x00", 8);
    const std::string hugeImage = entryMagic + wireString("image") + Wav::int32(1) + std::string("\x08\x00\x00\x00Q1IMG00\x00", 12)
                                  + Wav::int32(100000) + Wav::int32(100000) + Wav::int32(400000) + Wav::int32(0)
                                  + std::string("\x00\x90\x2F\x50\x09\x00\x00\x00", 8);
    const std::string hugeSound = entryMagic + wireString("sound") + Wav::int32(3) + Wav::int32(1) + Wav::int32(64) + Wav::int32(32)
                                  + Wav::int32(0) + std::string(1, '\1') + std::string("\x00\x00\x00\x00\x00\x00\x00\x10", 8)
                                  + std::string(8, '\0');
    for (const std::string& entry : {hugeBlob, hugeImage, hugeSound})
    {
        MemoryStream stream(MemoryBlock(entry.data(), static_cast<int64_t>(entry.size()), true));
        Resource resource("dummy");
        EXPECT_EQ(resource.readEntryChecked(stream), Resource::ReadResult::damagedPayload);
    }
    bool result = false;
    const auto pack = packOf(packMagic + Wav::int32(0x7FFFFFFF) + hugeBlob, result);
    EXPECT_EQ(pack->getMemoryBlock("blob").getSize(), 0);
    // And an entry count far beyond the file ends with the file.
    EXPECT_EQ(packOf(packMagic + Wav::int32(0x7FFFFFFF) + textEntry("a", "b"), result)->getNumResources(), 1);
    EXPECT_FALSE(result);
}

TEST(ResourcePack, NamesLookupsAndEditing)
{
    ResourcePack pack;
    CountingListener listener;
    pack.addListener(&listener);
    pack.addListener(&listener);  // refused: still told once per change
    pack.addString("knob", "1");
    pack.addMemoryBlock("knob1", MemoryBlock(3));
    pack.addString("Knob", "2");
    pack.addString("knob", "second of the name");
    EXPECT_EQ(listener.calls, 4);
    EXPECT_EQ(listener.lastCount, 4);

    EXPECT_STREQ(pack.makeUniqueName("knob").getCString(), "knob2");
    EXPECT_STREQ(pack.makeUniqueName("slider").getCString(), "slider");
    EXPECT_EQ(pack.getIndex("Knob"), 2);
    EXPECT_EQ(pack.getIndex("KNOB"), -1);
    EXPECT_STREQ(pack.getString("knob").getCString(), "1");  // the first of two
    EXPECT_EQ(names(pack.getNames(Resource::textType)), (std::vector<std::string>{"knob", "Knob", "knob"}));
    EXPECT_EQ(names(pack.getNames(Resource::binaryType)), (std::vector<std::string>{"knob1"}));
    EXPECT_EQ(pack.find("knob1"), pack.getResource(1));
    EXPECT_EQ(pack.find("missing"), nullptr);

    EXPECT_TRUE(pack.remove("knob"));
    EXPECT_STREQ(pack.getString("knob").getCString(), "second of the name");
    EXPECT_FALSE(pack.remove("missing"));
    pack.rename(0, "strip");
    pack.rename(17, "nowhere");
    EXPECT_EQ(names(pack.getNames(-1)), (std::vector<std::string>{"strip", "Knob", "knob"}));
    EXPECT_EQ(listener.calls, 6);

    pack.removeListener(&listener);
    pack.clear();
    EXPECT_EQ(pack.getNumResources(), 0);
    EXPECT_EQ(listener.calls, 6);
}

TEST(ResourcePack, AddFromFileTakesPicturesSoundsAndBinaries)
{
    const std::string folder = testing::TempDir();
    TestPictures::PngPicture picture;
    picture.width = 2;
    picture.height = 2;
    picture.colourType = PNG_COLOR_TYPE_GRAY;
    picture.lines.assign(2, std::vector<uint8_t>{10, 20});
    const std::string png = folder + "pack-test.png", wav = folder + "pack-test.wav", bin = folder + "pack-test.bin",
                      empty = folder + "pack-test.empty";
    ASSERT_TRUE(TestPictures::writeFile(png, TestPictures::encodePng(picture)));
    ASSERT_TRUE(TestPictures::writeFile(wav, Wav::file(Wav::format(1, 1, 8000, 32) + Wav::chunk("data", Wav::samples({0x40000000}, 32)))));
    ASSERT_TRUE(TestPictures::writeFile(bin, "some bytes"));
    ASSERT_TRUE(TestPictures::writeFile(empty, ""));

    ResourcePack pack;
    EXPECT_TRUE(pack.addFromFile("image", png.c_str()));
    EXPECT_TRUE(pack.addFromFile("sound", wav.c_str()));
    EXPECT_TRUE(pack.addFromFile("binary", bin.c_str()));
    EXPECT_FALSE(pack.addFromFile("image", bin.c_str()));  // the name exists
    EXPECT_FALSE(pack.addFromFile("empty", empty.c_str()));
    EXPECT_FALSE(pack.addFromFile("missing", (folder + "no-such-file").c_str()));

    EXPECT_EQ(pack.getImage("image").getWidth(), 2);
    const Sample sound = pack.getSample("sound");
    // 32-bit integers are kept as float: 0x40000000 / 2^31.
    EXPECT_EQ(sound.getBitsPerSample(), 32);
    EXPECT_EQ(sound.getFloatChannel(0)[0], 0.5f);
    EXPECT_EQ(pack.getMemoryBlock("binary").getSize(), 10);
    EXPECT_EQ(pack.getNumResources(), 3);
    for (const std::string& path : {png, wav, bin, empty})
        std::remove(path.c_str());
}

TEST(ResourcePack, LoadFromTheResourceFolder)
{
    resourceFolder = testing::TempDir() + "pack-resources";
    std::remove((resourceFolder + "/resources.bin").c_str());
    std::remove((resourceFolder + "/empty.bin").c_str());
    std::remove(resourceFolder.c_str());
    ASSERT_EQ(std::system(("mkdir -p '" + resourceFolder + "'").c_str()), 0);
    ASSERT_TRUE(TestPictures::writeFile(resourceFolder + "/resources.bin", packMagic + Wav::int32(1) + textEntry("title", "Kelvane")));
    ASSERT_TRUE(TestPictures::writeFile(resourceFolder + "/empty.bin", ""));

    ResourcePack::setResourcePathFunction(nullptr);
    EXPECT_EQ(ResourcePack::loadResourcePack("resources.bin"), nullptr);
    ResourcePack::setResourcePathFunction(pathInResourceFolder);
    std::unique_ptr<ResourcePack> pack(ResourcePack::loadResourcePack("resources.bin"));
    ASSERT_NE(pack, nullptr);
    EXPECT_STREQ(pack->getString("title").getCString(), "Kelvane");
    EXPECT_EQ(ResourcePack::loadResourcePack("empty.bin"), nullptr);
    EXPECT_EQ(ResourcePack::loadResourcePack("missing.bin"), nullptr);
    ResourcePack::setResourcePathFunction(nullptr);
}
