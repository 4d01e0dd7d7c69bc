#include "ToolTest.h"
#include "image/TestPictures.h"
#include "media/image/Image.h"
#include "sample/WavFileBuilder.h"

#include <png.h>

using q1framework::Image;
using Wav = WavFileBuilder;

namespace
{
// The pixels of a picture file, line after line.
std::vector<uint8_t> pixels(const std::string& file)
{
    const Image image = Image::decode(file.data(), static_cast<unsigned>(file.size()));
    std::vector<uint8_t> bytes;
    for (int y = 0; y < image.getHeight(); ++y)
        bytes.insert(bytes.end(), image.getLine(y), image.getLine(y) + image.getWidth() * 4);
    return bytes;
}

// A WAV file of float samples on one channel.
std::string floatWav(int rate, const std::vector<float>& samples)
{
    const std::string data(reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float));
    return Wav::file(Wav::format(3, 1, rate, 32) + Wav::chunk("data", data));
}
}  // namespace

class KelvanePackRoundTrip : public ToolTest
{
protected:
    KelvanePackRoundTrip() : ToolTest(KELVANE_PACK) {}
};

// The recipe of the round trip and its sources: pictures with and without alpha, sounds of every
// width, text with escapes, a binary file with every byte value.
TEST_F(KelvanePackRoundTrip, BuildListExtractCompareRebuildAndEdit)
{
    write("art/my knob.png", TestPictures::encodePng({3, 2, PNG_COLOR_TYPE_RGB_ALPHA, 8, false,
                                                      {{200, 100, 50, 255, 200, 100, 50, 128, 9, 9, 9, 0},
                                                       {10, 20, 30, 1, 250, 3, 77, 200, 1, 2, 3, 99}}}));
    write("art/background.png",
          TestPictures::encodePng({2, 2, PNG_COLOR_TYPE_RGB, 8, false, {{1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}}}));
    write("art/led.jpg", TestPictures::encodeJpeg(8, 8, 1, std::vector<uint8_t>(64, 90)));
    write("sounds/eight.wav", Wav::file(Wav::format(1, 1, 22050, 8) + Wav::chunk("data", Wav::samples({0x80, 0x01, 0xFF}, 8))));
    write("sounds/sixteen.wav", Wav::file(Wav::format(1, 2, 44100, 16) + Wav::chunk("data", Wav::samples({1, -2, 300, -32768}, 16))));
    write("sounds/twentyfour.wav", Wav::file(Wav::format(1, 1, 48000, 24) + Wav::chunk("data", Wav::samples({0x123456, -5}, 24))));
    write("sounds/float.wav", floatWav(96000, {0.25f, -0.75f}));
    write("sounds/integer.wav", Wav::file(Wav::format(1, 1, 8000, 32) + Wav::chunk("data", Wav::samples({0x40000000, -0x40000000}, 32))));
    std::string everyByte;
    for (int value = 0; value < 256; ++value)
        everyByte += static_cast<char>(value);
    write("data/table.bin", everyByte);
    // Blanks around fields, tabs and a line ending in CR LF; a path with a blank; an absolute path.
    write("art.recipe",
          "# The test's art\n"
          "\n"
          "KL.0001.tif  image   art/background.png\n"
          "  slice_knob\timage   art/my knob.png  \r\n"
          "satled.png   image   art/led.jpg\n"
          "   # an indented comment\n"
          "eight        sound   sounds/eight.wav\n"
          "sixteen      sound   sounds/sixteen.wav\n"
          "twentyfour   sound   sounds/twentyfour.wav\n"
          "float        sound   sounds/float.wav\n"
          "integer      sound   sounds/integer.wav\n"
          "about        text    Kelvane\\sby Morvenna\\nline two\\\\\\t \n"
          "empty         text\n"
          "table        binary  " + path("data/table.bin") + "\n");

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
              "about        text    30 bytes\n"
              "empty        text    0 bytes\n"
              "table        binary  256 bytes\n");

    // Pictures decode to the same premultiplied pixels; an opaque one to the very same colours.
    for (const auto& [name, source] : {std::pair{"KL.0001.tif", "art/background.png"}, std::pair{"slice_knob", "art/my knob.png"},
                                       std::pair{"satled.png", "art/led.jpg"}})
    {
        const std::string output = std::string(name) + ".out.png";
        ASSERT_EQ(run({"extract", "resources.bin", name, output}).status, 0) << name;
        EXPECT_EQ(pixels(read(output)), pixels(read(source))) << name;
    }
    EXPECT_EQ(pixels(read("KL.0001.tif.out.png"))[0], 3);  // blue of the first pixel

    // Sounds of 8, 16 and 24 bits and float come back byte for byte, 32-bit integers as float
    // with the same values; texts with their escapes resolved.
    const std::pair<const char*, std::string> extracted[] = {
        {"eight", read("sounds/eight.wav")}, {"sixteen", read("sounds/sixteen.wav")},
        {"twentyfour", read("sounds/twentyfour.wav")}, {"float", read("sounds/float.wav")},
        {"integer", floatWav(8000, {0.5f, -0.5f})}, {"about", "Kelvane by Morvenna\nline two\\\t"}, {"empty", ""},
        {"table", read("data/table.bin")}};
    for (const auto& [name, bytes] : extracted)
    {
        ASSERT_EQ(run({"extract", "resources.bin", name, std::string(name) + ".out"}).status, 0) << name;
        EXPECT_EQ(read(std::string(name) + ".out"), bytes) << name;
    }

    const Run verified = run({"verify", "resources.bin"});
    EXPECT_EQ(verified.status, 0);
    EXPECT_EQ(verified.out, "resources.bin: 11 entries, all intact\n");

    // The same recipe gives the same bytes; building over an existing pack replaces it whole.
    write("first.bin", "an old pack");
    ASSERT_EQ(run({"build", path("art.recipe"), path("first.bin")}).status, 0);
    EXPECT_EQ(read("first.bin"), read("resources.bin"));

    // Editing commands change only their entry.

    ASSERT_EQ(run({"add", "first.bin", "slice_knob2", "image", "art/my knob.png"}).status, 0);
    ASSERT_EQ(run({"add", "first.bin", "greeting", "text", "hello\\sthere"}).status, 0);
    ASSERT_EQ(run({"remove", "first.bin", "eight"}).status, 0);
    ASSERT_EQ(run({"rename", "first.bin", "sixteen", "stereo"}).status, 0);
    const std::string edited = run({"list", "first.bin"}).out;
    EXPECT_EQ(edited.find("eight "), std::string::npos);
    EXPECT_EQ(edited.find("sixteen"), std::string::npos);
    EXPECT_NE(edited.find("stereo       sound   2 frames, 2 channels"), std::string::npos) << edited;
    EXPECT_NE(edited.find("slice_knob2  image   3 x 2 pixels"), std::string::npos) << edited;
    ASSERT_EQ(run({"extract", "first.bin", "greeting", "greeting.txt"}).status, 0);
    EXPECT_EQ(read("greeting.txt"), "hello there");
    EXPECT_EQ(run({"verify", "first.bin"}).out, "first.bin: 12 entries, all intact\n");
}
