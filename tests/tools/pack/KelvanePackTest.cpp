#include "ToolTest.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "image/TestPictures.h"
#include "media/image/Image.h"
#include "media/sample/WAVReader.h"
#include "sample/WavFileBuilder.h"

#include <png.h>

#include <cstring>
#include <memory>

using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::WAVReader;
using Wav = WavFileBuilder;

namespace
{
Image decode(const std::string& bytes)
{
    return Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
}

std::vector<uint8_t> pixels(const Image& image)
{
    std::vector<uint8_t> bytes;
    for (int y = 0; y < image.getHeight(); ++y)
        bytes.insert(bytes.end(), image.getLine(y), image.getLine(y) + image.getWidth() * 4);
    return bytes;
}

// Every sample of a WAV file as float, channel after channel.
std::vector<float> audioOf(const std::string& file)
{
    WAVReader reader(new MemoryStream(MemoryBlock(file.data(), static_cast<int64_t>(file.size()), true)), false, true);
    std::vector<std::vector<float>> channels(reader.getNumChannels(), std::vector<float>(reader.getLength()));
    std::vector<float*> pointers;
    for (auto& channel : channels)
        pointers.push_back(channel.data());
    reader.readFloat(pointers.data(), static_cast<unsigned>(reader.getLength()));
    std::vector<float> all;
    for (const auto& channel : channels)
        all.insert(all.end(), channel.begin(), channel.end());
    return all;
}
}

// The recipe of the round trip and its sources: pictures with and without alpha, sounds of every
// width, text with escapes, a binary file with every byte value.
class KelvanePackRoundTrip : public ToolTest
{
protected:
    KelvanePackRoundTrip() : ToolTest(KELVANE_PACK) {}

    void SetUp() override
    {
        ToolTest::SetUp();
        TestPictures::PngPicture translucent;
        translucent.width = 3;
        translucent.height = 2;
        translucent.colourType = PNG_COLOR_TYPE_RGB_ALPHA;
        translucent.lines = {{200, 100, 50, 255, 200, 100, 50, 128, 9, 9, 9, 0}, {10, 20, 30, 1, 250, 3, 77, 200, 1, 2, 3, 99}};
        write("art/knob.png", TestPictures::encodePng(translucent));
        TestPictures::PngPicture opaque;
        opaque.width = 2;
        opaque.height = 2;
        opaque.colourType = PNG_COLOR_TYPE_RGB;
        opaque.lines = {{1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}};
        write("art/background.png", TestPictures::encodePng(opaque));
        write("art/led.jpg", TestPictures::encodeJpeg(8, 8, 1, std::vector<uint8_t>(64, 90)));
        write("sounds/eight.wav", Wav::file(Wav::format(1, 1, 22050, 8) + Wav::chunk("data", Wav::samples({0x80, 0x01, 0xFF}, 8))));
        write("sounds/sixteen.wav", Wav::file(Wav::format(1, 2, 44100, 16) + Wav::chunk("data", Wav::samples({1, -2, 300, -32768}, 16))));
        write("sounds/twentyfour.wav", Wav::file(Wav::format(1, 1, 48000, 24) + Wav::chunk("data", Wav::samples({0x123456, -5}, 24))));
        const float floats[2] = {0.25f, -0.75f};
        write("sounds/float.wav", Wav::file(Wav::format(3, 1, 96000, 32) + Wav::chunk("data", std::string(reinterpret_cast<const char*>(floats), 8))));
        write("sounds/integer.wav", Wav::file(Wav::format(1, 1, 8000, 32) + Wav::chunk("data", Wav::samples({0x40000000, -0x40000000}, 32))));
        std::string everyByte;
        for (int value = 0; value < 256; ++value)
            everyByte += static_cast<char>(value);
        write("data/table.bin", everyByte);
        write("art.recipe",
              "# The test's art\n"
              "\n"
              "KL.0001.tif  image   art/background.png\n"
              "slice_knob   image   art/knob.png\n"
              "satled.png   image   art/led.jpg\n"
              "   # an indented comment\n"
              "eight        sound   sounds/eight.wav\n"
              "sixteen      sound   sounds/sixteen.wav\n"
              "twentyfour   sound   sounds/twentyfour.wav\n"
              "float        sound   sounds/float.wav\n"
              "integer      sound   sounds/integer.wav\n"
              "about        text    Kelvane\\sby Morvenna\\nline two\\\\ \n"
              "empty         text\n"
              "table        binary  data/table.bin\n");
    }
};

TEST_F(KelvanePackRoundTrip, BuildListExtractCompare)
{
    const Run built = run({"build", "art.recipe", "resources.bin"});
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_EQ(built.out, "resources.bin: 11 entries\n");

    const Run listed = run({"list", "resources.bin"});
    ASSERT_EQ(listed.status, 0) << listed.err;
    EXPECT_EQ(listed.out,
              "KL.0001.tif  image   2 x 2 pixels\n"
              "slice_knob   image   3 x 2 pixels\n"
              "satled.png   image   8 x 8 pixels\n"
              "eight        sound   3 frames, 1 channel, 22050 Hz, 8 bits\n"
              "sixteen      sound   2 frames, 2 channels, 44100 Hz, 16 bits\n"
              "twentyfour   sound   2 frames, 1 channel, 48000 Hz, 24 bits\n"
              "float        sound   2 frames, 1 channel, 96000 Hz, 32 bits\n"
              "integer      sound   2 frames, 1 channel, 8000 Hz, 32 bits\n"
              "about        text    29 bytes\n"
              "empty        text    0 bytes\n"
              "table        binary  256 bytes\n");

    // Pictures decode to the same premultiplied pixels; an opaque one to the very same colours.
    for (const auto& [name, source] : {std::pair{"KL.0001.tif", "art/background.png"}, std::pair{"slice_knob", "art/knob.png"},
                                       std::pair{"satled.png", "art/led.jpg"}})
    {
        const std::string output = std::string(name) + ".out.png";
        ASSERT_EQ(run({"extract", "resources.bin", name, output}).status, 0) << name;
        EXPECT_EQ(pixels(decode(read(output))), pixels(decode(read(source)))) << name;
    }
    EXPECT_EQ(pixels(decode(read("KL.0001.tif.out.png")))[0], 3);  // blue of the first pixel

    // Sounds of 8, 16 and 24 bits and float come back byte for byte; 32-bit integers as float
    // with the same values.
    for (const char* name : {"eight", "sixteen", "twentyfour", "float"})
    {
        ASSERT_EQ(run({"extract", "resources.bin", name, std::string(name) + ".out.wav"}).status, 0) << name;
        EXPECT_EQ(read(std::string(name) + ".out.wav"), read(std::string("sounds/") + name + ".wav")) << name;
    }
    ASSERT_EQ(run({"extract", "resources.bin", "integer", "integer.out.wav"}).status, 0);
    EXPECT_EQ(audioOf(read("integer.out.wav")), (std::vector<float>{0.5f, -0.5f}));
    EXPECT_EQ(audioOf(read("integer.out.wav")), audioOf(read("sounds/integer.wav")));

    ASSERT_EQ(run({"extract", "resources.bin", "about", "about.txt"}).status, 0);
    EXPECT_EQ(read("about.txt"), "Kelvane by Morvenna\nline two\\");
    ASSERT_EQ(run({"extract", "resources.bin", "table", "table.out"}).status, 0);
    EXPECT_EQ(read("table.out"), read("data/table.bin"));

    const Run verified = run({"verify", "resources.bin"});
    EXPECT_EQ(verified.status, 0);
    EXPECT_EQ(verified.out, "resources.bin: 11 entries, all intact\n");
}

TEST_F(KelvanePackRoundTrip, TheSameRecipeGivesTheSameBytesAndEditingCommandsChangeOnlyTheirEntry)
{
    ASSERT_EQ(run({"build", "art.recipe", "first.bin"}).status, 0);
    // Building over an existing pack replaces it whole.
    write("second.bin", "an old pack");
    ASSERT_EQ(run({"build", path("art.recipe"), path("second.bin")}).status, 0);
    EXPECT_EQ(read("second.bin"), read("first.bin"));

    ASSERT_EQ(run({"add", "first.bin", "slice_knob2", "image", "art/knob.png"}).status, 0);
    ASSERT_EQ(run({"add", "first.bin", "greeting", "text", "hello\\sthere"}).status, 0);
    ASSERT_EQ(run({"remove", "first.bin", "eight"}).status, 0);
    ASSERT_EQ(run({"rename", "first.bin", "sixteen", "stereo"}).status, 0);
    const std::string listed = run({"list", "first.bin"}).out;
    EXPECT_EQ(listed.find("eight "), std::string::npos);
    EXPECT_EQ(listed.find("sixteen"), std::string::npos);
    EXPECT_NE(listed.find("stereo       sound   2 frames, 2 channels"), std::string::npos) << listed;
    EXPECT_NE(listed.find("slice_knob2  image   3 x 2 pixels"), std::string::npos) << listed;
    ASSERT_EQ(run({"extract", "first.bin", "greeting", "greeting.txt"}).status, 0);
    EXPECT_EQ(read("greeting.txt"), "hello there");
    EXPECT_EQ(run({"verify", "first.bin"}).out, "first.bin: 12 entries, all intact\n");
}
