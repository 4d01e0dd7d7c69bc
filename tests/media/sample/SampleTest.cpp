#include "media/sample/Sample.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "sample/WavFileBuilder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

using q1framework::MemoryBlock;
using q1framework::MemoryStream;
using q1framework::Sample;
using Wav = WavFileBuilder;

namespace
{
MemoryBlock blockOf(const std::string& bytes)
{
    return MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true);
}

std::string int64Bytes(int64_t value)
{
    return std::string(reinterpret_cast<const char*>(&value), 8);
}

std::string doubleBytes(double value)
{
    return std::string(reinterpret_cast<const char*>(&value), 8);
}

// A record header: version, channels, bits, margin, owns-data flag, frames, rate.
std::string recordHeader(int version, int channels, int bits, int margin, int64_t frames, double rate)
{
    return Wav::int32(version) + Wav::int32(channels) + Wav::int32(bits) + Wav::int32(margin) + std::string(1, '\1')
           + int64Bytes(frames) + doubleBytes(rate);
}

// A 16-bit stereo sample whose samples count up from start.
Sample countingSample(int64_t frames, int margin, int16_t start)
{
    Sample sample(2, frames, 16, margin, true, 48000.0);
    for (int channel = 0; channel < 2; ++channel)
        for (int64_t frame = 0; frame < frames; ++frame)
            static_cast<int16_t*>(sample.getChannel(channel))[frame] = static_cast<int16_t>(start + channel * 1000 + frame);
    return sample;
}
}

TEST(Sample, ChannelsLieBehindZeroedMargins)
{
    const Sample sample(3, 10, 24, 4, true, 44100.0);
    EXPECT_EQ(sample.getNumChannels(), 3);
    EXPECT_EQ(sample.getNumFrames(), 10);
    EXPECT_EQ(sample.getBitsPerSample(), 24);
    EXPECT_EQ(sample.getMargin(), 4);
    for (int channel = 0; channel < 3; ++channel)
    {
        const auto* data = static_cast<const uint8_t*>(sample.getChannel(channel));
        ASSERT_NE(data, nullptr);
        // Margin, data and margin: (10 + 8) * 3 bytes, all zero.
        for (int byte = -12; byte < 30 + 12; ++byte)
            EXPECT_EQ(data[byte], 0);
    }
    EXPECT_EQ(sample.getChannel(3), nullptr);
    EXPECT_EQ(sample.getChannel(-1), nullptr);
    EXPECT_EQ(Sample(100, 1, 8, 0, true, 1.0).getNumChannels(), 64);
    EXPECT_EQ(Sample(2, 5, 16, 0, false, 1.0).getChannel(0), nullptr);
    EXPECT_DOUBLE_EQ(sample.getDuration(), 10.0 / 44100.0);
    EXPECT_EQ(Sample(1, 10, 16, 0, true, 0.0).getDuration(), 0.0);
}

TEST(Sample, RecordRoundTripWithoutMargins)
{
    const Sample original = countingSample(5, 3, 100);
    MemoryStream stream;
    ASSERT_TRUE(original.write(stream));
    const std::string expected = recordHeader(1, 2, 16, 3, 5, 48000.0) + Wav::samples({100, 101, 102, 103, 104}, 16)
                                 + Wav::samples({1100, 1101, 1102, 1103, 1104}, 16);
    ASSERT_EQ(stream.getSize(), static_cast<int64_t>(expected.size()));
    EXPECT_EQ(std::memcmp(stream.getData(), expected.data(), expected.size()), 0);

    stream.setPosition(0);
    std::unique_ptr<Sample> read(Sample::read(stream));
    ASSERT_NE(read, nullptr);
    EXPECT_TRUE(read->equals(original));
    EXPECT_EQ(read->getMargin(), 3);
    EXPECT_EQ(read->getSampleRate(), 48000.0);
    EXPECT_TRUE(read->ownsItsData());
    EXPECT_EQ(static_cast<int16_t*>(read->getChannel(1))[-1], 0);
}

TEST(Sample, BadRecordsGiveNull)
{
    const auto readOf = [](const std::string& bytes) {
        MemoryStream stream(blockOf(bytes));
        return std::unique_ptr<Sample>(Sample::read(stream));
    };
    const std::string data = Wav::samples({1, 2, 3, 4}, 16);
    EXPECT_NE(readOf(recordHeader(1, 1, 16, 0, 4, 8000.0) + data), nullptr);
    EXPECT_EQ(readOf(recordHeader(2, 1, 16, 0, 4, 8000.0) + data), nullptr);        // version
    EXPECT_EQ(readOf(recordHeader(1, 1, 16, 0, 5, 8000.0) + data), nullptr);        // data short
    EXPECT_EQ(readOf(recordHeader(1, 65, 16, 0, 0, 8000.0)), nullptr);              // channels
    EXPECT_EQ(readOf(recordHeader(1, 1, 72, 0, 4, 8000.0) + data), nullptr);        // width
    EXPECT_EQ(readOf(recordHeader(1, 1, 16, 5000, 4, 8000.0) + data), nullptr);     // margin
    EXPECT_EQ(readOf(recordHeader(1, 1, 16, 0, -4, 8000.0) + data), nullptr);       // frames
    // Frames that would need 16 exabytes: refused before any allocation.
    EXPECT_EQ(readOf(recordHeader(1, 64, 64, 0, int64_t(1) << 60, 8000.0) + data), nullptr);
    // Without channels no data follows, but a length that overflows any byte count is refused
    // all the same (found by fuzzing).
    EXPECT_EQ(readOf(recordHeader(1, 0, 24, 0, int64_t(0x7ED4230053000000), 8000.0)), nullptr);
    const auto silent = readOf(recordHeader(1, 0, 16, 0, 1000, 8000.0));
    ASSERT_NE(silent, nullptr);
    MemoryStream echo;
    EXPECT_TRUE(silent->write(echo));
    EXPECT_EQ(echo.getSize(), 4 * 4 + 1 + 8 + 8);
}

TEST(Sample, EqualityCopiesAndLength)
{
    const Sample first = countingSample(6, 0, 10);
    const Sample wideMargin = countingSample(6, 9, 10);
    EXPECT_TRUE(first.equals(wideMargin));  // margins do not count
    EXPECT_FALSE(first.equals(countingSample(6, 0, 11)));
    EXPECT_FALSE(first.equals(countingSample(5, 0, 10)));

    Sample copy = wideMargin;
    EXPECT_TRUE(copy.equals(wideMargin));
    EXPECT_NE(copy.getChannel(0), wideMargin.getChannel(0));
    static_cast<int16_t*>(copy.getChannel(0))[0] = 999;
    EXPECT_FALSE(copy.equals(wideMargin));

    Sample resized = countingSample(6, 2, 10);
    ASSERT_TRUE(resized.setLength(8));
    EXPECT_EQ(resized.getNumFrames(), 8);
    EXPECT_EQ(static_cast<int16_t*>(resized.getChannel(1))[5], 1015);
    resized.clearMargins();
    EXPECT_EQ(static_cast<int16_t*>(resized.getChannel(1))[8], 0);
    EXPECT_EQ(static_cast<int16_t*>(resized.getChannel(1))[9], 0);
    EXPECT_EQ(static_cast<int16_t*>(resized.getChannel(1))[-2], 0);
    ASSERT_TRUE(resized.setLength(3));
    EXPECT_EQ(static_cast<int16_t*>(resized.getChannel(0))[2], 12);
}

TEST(Sample, LoadWavInNativeAndFloatForms)
{
    const std::string file = Wav::file(Wav::format(1, 2, 22050, 8) + Wav::chunk("data", Wav::samples({0x80, 0x00, 0x40, 0xFF, 0x7F, 0x01}, 8)));
    MemoryStream stream(blockOf(file));
    std::unique_ptr<Sample> native(Sample::loadWAV(&stream, true, 2));
    ASSERT_NE(native, nullptr);
    EXPECT_EQ(native->getBitsPerSample(), 8);
    EXPECT_EQ(native->getNumFrames(), 3);
    EXPECT_EQ(native->getSampleRate(), 22050.0);
    EXPECT_EQ(std::memcmp(native->getChannel(0), "\x80\x40\x7F", 3), 0);
    EXPECT_EQ(std::memcmp(native->getChannel(1), "\x00\xFF\x01", 3), 0);
    EXPECT_EQ(static_cast<uint8_t*>(native->getChannel(0))[-1], 0);

    stream.setPosition(0);
    std::unique_ptr<Sample> converted(Sample::loadWAV(&stream, false, 0));
    ASSERT_NE(converted, nullptr);
    EXPECT_EQ(converted->getBitsPerSample(), 32);
    EXPECT_EQ(converted->getFloatChannel(0)[0], -1.0f);
    EXPECT_EQ(converted->getFloatChannel(0)[1], 0.5f);
    EXPECT_EQ(converted->getFloatChannel(1)[1], -1.0f / 128);

    MemoryStream empty;
    EXPECT_EQ(Sample::loadWAV(&empty, true, 0), nullptr);
    MemoryStream noAudio(blockOf(Wav::file(Wav::format(1, 1, 8000, 16))));
    EXPECT_EQ(Sample::loadWAV(&noAudio, true, 0), nullptr);
}

TEST(Sample, LoadWavAllocatesOnlyWhatTheFileHolds)
{
    // The data chunk claims 2 GB of 64-channel audio; two frames are there.
    const std::string header = Wav::chunk("fmt ", Wav::int16(1) + Wav::int16(64) + Wav::int32(8000) + Wav::int32(0) + Wav::int16(128) + Wav::int16(16));
    const std::string file = Wav::file(header + "data" + Wav::int32(0x7FFFFF80) + std::string(256, '\x02'));
    MemoryStream stream(blockOf(file));
    std::unique_ptr<Sample> sample(Sample::loadWAV(&stream, true, 0));
    ASSERT_NE(sample, nullptr);
    EXPECT_EQ(sample->getNumChannels(), 64);
    EXPECT_EQ(sample->getNumFrames(), 2);
    EXPECT_EQ(static_cast<int16_t*>(sample->getChannel(63))[1], 0x0202);
}
