#include "media/sample/WAVReader.h"

#include "TestBytes.h"
#include "sample/WavFileBuilder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace q1framework;
using Wav = WavFileBuilder;

namespace
{
// A reader over a copy of bytes; the reader owns its stream.
std::unique_ptr<WAVReader> readerOf(const std::string& bytes, bool readAllChunks = false)
{
    return std::make_unique<WAVReader>(new MemoryStream(TestBytes::blockOf(bytes)), readAllChunks, true);
}

// Every channel of the reader, read through readFloat in one call.
std::vector<std::vector<float>> readAll(WAVReader& reader, unsigned frames)
{
    std::vector<std::vector<float>> channels(reader.getNumChannels(), std::vector<float>(frames, -99.0f));
    std::vector<float*> pointers;
    for (auto& channel : channels)
        pointers.push_back(channel.data());
    const unsigned delivered = reader.readFloat(pointers.data(), frames);
    for (auto& channel : channels)
        channel.resize(delivered);
    return channels;
}

// Each cue as "id name position length".
std::vector<std::string> cuesOf(const WAVReader& reader)
{
    std::vector<std::string> result;
    for (const WAVReader::Cue& cue : reader.getCues())
        result.push_back(std::to_string(cue.id) + " " + cue.name.getCString() + " " + std::to_string(cue.position) + " " + std::to_string(cue.length));
    return result;
}

const std::string monoFormat = Wav::format(1, 1, 8000, 16);
}

TEST(WAVReader, EveryWidthMonoAndStereo)
{
    const float floats[4] = {0.25f, -3.5f, 1e-20f, 0.0f};
    struct Case
    {
        int tag, channels, bits, format;
        std::string data;
        std::vector<std::vector<float>> expected;
    };
    const Case cases[] = {
        // 8-bit samples are read as signed: the WAV offset of 128 stays, so 0x80 is -1.
        {1, 1, 8, 1, Wav::samples({0x00, 0x40, 0x80, 0xFF, 0x7F}, 8), {{0.0f, 0.5f, -1.0f, -1.0f / 128, 127.0f / 128}}},
        {1, 2, 16, 2, Wav::samples({16384, -32768, -1, 32767}, 16), {{0.5f, -1.0f / 32768}, {-1.0f, 32767.0f / 32768}}},
        // 24 bits go to the top of a 32-bit value, scaled by 2^-31.
        {1, 1, 24, 3, Wav::samples({0x400000, -0x800000, 0x000001}, 24), {{0.5f, -1.0f, 256.0f / 2147483648.0f}}},
        {1, 2, 32, 4, Wav::samples({0x40000000, -2147483648LL, -0x40000000, 1}, 32), {{0.5f, -0.5f}, {-1.0f, 1.0f / 2147483648.0f}}},
        {3, 2, 32, 5, std::string(reinterpret_cast<const char*>(floats), sizeof floats), {{0.25f, 1e-20f}, {-3.5f, 0.0f}}},
    };
    for (const Case& test : cases)
    {
        SCOPED_TRACE(test.format);
        const auto reader = readerOf(Wav::file(Wav::format(test.tag, test.channels, 22050, test.bits) + Wav::chunk("data", test.data)));
        EXPECT_EQ(reader->getFormat(), test.format);
        EXPECT_EQ(reader->getNumChannels(), test.channels);
        EXPECT_EQ(reader->getSampleRate(), 22050.0);
        EXPECT_EQ(reader->getLength(), static_cast<int64_t>(test.expected[0].size()));
        EXPECT_EQ(readAll(*reader, 10), test.expected);
    }

    // The raw form copies the stored bytes.
    const auto raw = readerOf(Wav::file(Wav::format(1, 2, 44100, 24) + Wav::chunk("data", Wav::samples({0x010203, 0x0A0B0C, 0x040506, 0x0D0E0F}, 24))));
    uint8_t left[6] = {}, right[6] = {};
    void* channels[2] = {left, right};
    ASSERT_EQ(raw->readRaw(channels, 2), 2u);
    EXPECT_EQ(std::memcmp(left, "\x03\x02\x01\x06\x05\x04", 6), 0);
    EXPECT_EQ(std::memcmp(right, "\x0C\x0B\x0A\x0F\x0E\x0D", 6), 0);
}

TEST(WAVReader, LongDataIsReadInBlocksAndShortDataEndsEarly)
{
    std::vector<int64_t> values(70000 * 2);
    for (size_t index = 0; index < values.size(); ++index)
        values[index] = static_cast<int64_t>(index % 65536) - 32768;
    const auto reader = readerOf(Wav::file(Wav::format(1, 2, 44100, 16) + Wav::chunk("data", Wav::samples(values, 16))));
    const auto channels = readAll(*reader, 80000);
    ASSERT_EQ(channels[0].size(), 70000u);
    for (size_t frame : {size_t(0), size_t(65535), size_t(65536), size_t(69999)})
    {
        EXPECT_EQ(channels[0][frame], static_cast<float>(values[2 * frame]) / 32768) << frame;
        EXPECT_EQ(channels[1][frame], static_cast<float>(values[2 * frame + 1]) / 32768) << frame;
    }

    // A data chunk that claims 1000 frames but holds 3.
    const auto truncated = readerOf(Wav::file(monoFormat + "data" + Wav::int32(2000) + Wav::samples({1, 2, 3}, 16)));
    EXPECT_EQ(truncated->getLength(), 1000);
    EXPECT_EQ(readAll(*truncated, 1000)[0].size(), 3u);
}

TEST(WAVReader, CuePointsAndLabelsBeforeAndAfterTheData)
{
    const std::string adtl = Wav::associatedData(Wav::label(1, "attack") + Wav::label(2, "tail") + Wav::labelledText(2, 3));
    // A label outside the list is not the list's.
    const auto before = readerOf(Wav::file(monoFormat + Wav::cues({{1, 0}, {2, 4}}) + adtl + Wav::label(1, "stray") + Wav::chunk("data", Wav::samples({1, 2, 3, 4, 5, 6, 7}, 16))));
    EXPECT_EQ(cuesOf(*before), (std::vector<std::string>{"1 attack 0 0", "2 tail 4 3"}));
    EXPECT_EQ(readAll(*before, 2)[0], (std::vector<float>{1.0f / 32768, 2.0f / 32768}));  // the stream waits at the audio

    // Behind the audio, labels need readAllChunks; reading still starts at the audio.
    const std::string after = Wav::file(monoFormat + Wav::chunk("data", Wav::samples({5, 6, 7}, 16)) + Wav::cues({{9, 1}}) + Wav::associatedData(Wav::label(9, "late")));
    EXPECT_TRUE(readerOf(after, false)->getCues().isEmpty());
    const auto all = readerOf(after, true);
    EXPECT_EQ(cuesOf(*all), (std::vector<std::string>{"9 late 1 0"}));
    EXPECT_EQ(readAll(*all, 3)[0], (std::vector<float>{5.0f / 32768, 6.0f / 32768, 7.0f / 32768}));
}

TEST(WAVReader, OddSizedChunksAreFoundWithOrWithoutTheirPadByte)
{
    const std::string audio = Wav::chunk("data", Wav::samples({100, -100}, 16));
    // An odd "junk" chunk and its pad byte: the walk lands on the pad byte and the repair moves
    // the header by one. An odd label inside the list as well.
    const auto padded = readerOf(Wav::file(Wav::chunk("junk", "abc") + monoFormat + Wav::cues({{4, 1}})
                                           + Wav::associatedData(Wav::label(4, "odd!") + Wav::labelledText(4, 1)) + audio));
    EXPECT_EQ(cuesOf(*padded), (std::vector<std::string>{"4 odd! 1 1"}));
    EXPECT_EQ(readAll(*padded, 2)[0], (std::vector<float>{100.0f / 32768, -100.0f / 32768}));
    EXPECT_EQ(readerOf(Wav::file(Wav::chunk("junk", "abc", false) + monoFormat + audio))->getLength(), 2);

    // An odd chunk before "acid", an id the repair knows.
    const auto withAcid = readerOf(Wav::file(Wav::chunk("fact", "xyz") + Wav::chunk("acid", std::string(24, '\x07')) + monoFormat + audio));
    EXPECT_TRUE(withAcid->hasAcidChunk());
    EXPECT_EQ(withAcid->getAcid()[23], 7);
    EXPECT_EQ(withAcid->getLength(), 2);

    // The repair knows "cue" without its blank, so a "cue " chunk behind a pad byte is not found:
    // the walk takes the blank and three size bytes for a size of 0x1C20 and jumps past the end.
    const std::string cuesAndAudio = Wav::cues({{1, 0}}) + monoFormat + audio;
    EXPECT_EQ(readerOf(Wav::file(Wav::chunk("junk", "ab") + cuesAndAudio))->getCues().getCount(), 1);
    const auto oddBefore = readerOf(Wav::file(Wav::chunk("junk", "abc") + cuesAndAudio));
    EXPECT_EQ(oddBefore->getCues().getCount(), 0);
    EXPECT_EQ(oddBefore->getLength(), 0);
}

TEST(WAVReader, UnusableInputGivesAnEmptyReader)
{
    const std::string audio = Wav::chunk("data", Wav::samples({1, 2, 3, 4}, 16));
    // Not RIFF, a bare "RIFF", and no format (so no block size).
    for (const std::string& file : {"RIFX" + Wav::file(monoFormat + audio).substr(4), std::string("RIFF"), Wav::file(audio)})
        EXPECT_EQ(readerOf(file)->getLength(), 0);

    // A format tag of 2 leaves the earlier format in force for the data that follows.
    const std::string adpcm = Wav::chunk("fmt ", Wav::int16(2) + Wav::int16(1) + Wav::int32(11025) + Wav::int32(0) + Wav::int16(1) + Wav::int16(4));
    const auto kept = readerOf(Wav::file(Wav::format(1, 2, 32000, 16) + adpcm + audio));
    EXPECT_EQ(kept->getNumChannels(), 2);
    EXPECT_EQ(kept->getSampleRate(), 32000.0);
    EXPECT_EQ(kept->getLength(), 2);
    const auto only = readerOf(Wav::file(adpcm + audio));
    EXPECT_EQ(only->getLength(), 0);
    EXPECT_EQ(only->getBitsPerSample(), 0);
}

TEST(WAVReader, HostileHeadersStopQuietly)
{
    const std::string audio = Wav::chunk("data", Wav::samples({1, 2}, 16));
    // 65535 channels, or samples of 64 KB, would ask for a read buffer of gigabytes.
    for (const auto& [channels, bits] : {std::pair{65535, 16}, std::pair{1, 65535}})
    {
        const auto wide = readerOf(Wav::file(Wav::chunk("fmt ", Wav::int16(1) + Wav::int16(channels) + Wav::int32(44100) + Wav::int32(0) + Wav::int16(2) + Wav::int16(bits)) + audio));
        EXPECT_EQ(wide->getLength(), 0);
        EXPECT_EQ(wide->getNumChannels(), 0);
        float sample = 0.0f;
        float* pointers[1] = {&sample};
        EXPECT_EQ(wide->readFloat(pointers, 1), 0u);
    }

    // A cue count of two billion in a chunk that holds one record.
    const auto cued = readerOf(Wav::file(monoFormat + Wav::chunk("cue ", Wav::int32(0x7FFFFFFF) + std::string(24, '\x01')) + audio));
    EXPECT_EQ(cued->getCues().getCount(), 1);
    EXPECT_EQ(cued->getLength(), 2);
    // A chunk size of 4 GB - 1 ends the walk instead of turning it backwards.
    EXPECT_EQ(readerOf(Wav::file(monoFormat + "junk" + Wav::int32(0xFFFFFFFF) + audio))->getLength(), 0);
    // A list whose inner chunk claims more than the list holds.
    const std::string list = Wav::chunk("LIST", "adtl" + std::string("labl") + Wav::int32(0xFFFFFFF0) + Wav::int32(1));
    EXPECT_EQ(readerOf(Wav::file(monoFormat + Wav::cues({{1, 0}}) + list + audio))->getLength(), 2);
}
