#pragma once

#include <cstdint>

namespace q1framework
{

class Stream;

// Audio in memory: one block per channel, each with a margin of spare samples before and after
// the data, so that filters may read a little past either end. Samples are stored at
// bitsPerSample bits each: the file's own little-endian integers for 8, 16 and 24 bits (8-bit
// data as the file holds it), 32-bit float after a conversion (see loadWAV).
//
// Copies are deep: a copy owns a copy of every block.
//
// Thread contract: one thread at a time; not for the audio thread, which never allocates.
class Sample
{
public:
    static constexpr int maximumChannels = 64;
    // A record read from a stream may ask for at most this many margin samples, and at most
    // 64 bits a sample.
    static constexpr int maximumMargin = 1024;
    static constexpr int maximumBitsPerSample = 64;

    // An empty sample: no channels, no frames, rate 0.
    Sample() = default;
    // channels (at most 64) blocks of (frames + 2 * margin) * (bits / 8) zeroed bytes, each
    // channel's data starting margin samples into its block. A block that cannot be allocated
    // leaves that channel's pointers null. With ownsData false nothing is allocated and every
    // channel pointer is null: the sample describes audio held elsewhere.
    Sample(int channels, int64_t frames, int bits, int margin, bool ownsData, double rate);
    Sample(const Sample& other);
    Sample& operator=(const Sample& other);
    ~Sample();

    // The record of a resource pack's sound entry: version 1, channels, bits, margin (32-bit),
    // the owns-data flag (a bool byte), frames (64-bit), rate (a double), then each channel's
    // frames * (bits / 8) bytes, margins not stored. read gives a new sample that owns its data,
    // or null for another version, for fields out of range (channels above 64, bits above 64,
    // margin above 1024, negative frames) and for data the stream does not hold in full; nothing
    // is allocated for a length the stream cannot back.
    static Sample* read(Stream& stream);
    // False when a channel has no data or the stream did not take every byte.
    bool write(Stream& stream) const;

    // The audio of a WAV stream, or null for an empty stream or one without frames or channels.
    // nativeFormat: samples at the file's width, copied as stored. Otherwise 32-bit float, from
    // WAVReader::readFloat. The sample owns its data, has the given margin (cleared) and as many
    // frames as the stream actually delivered. The caller keeps the stream.
    static Sample* loadWAV(Stream* stream, bool nativeFormat, int margin);

    // Reallocates every block for frames frames (new samples undefined) and places the channels
    // again. False when an allocation failed; growing then keeps the old length.
    bool setLength(int64_t frames);
    // Zeroes the margin before and after the data of every channel.
    void clearMargins();
    // numFrames / sampleRate in seconds, 0 when the rate is 0.
    double getDuration() const;
    // Same channel count, width and length, and the same data bytes; margins are not compared.
    bool equals(const Sample& other) const;

    bool ownsItsData() const { return ownsData; }
    double getSampleRate() const { return sampleRate; }
    int getNumChannels() const { return numChannels; }
    int64_t getNumFrames() const { return numFrames; }
    int getBitsPerSample() const { return bitsPerSample; }
    int getMargin() const { return margin; }
    // The first data sample of a channel (behind the front margin); null for a channel out of
    // range or without a block.
    void* getChannel(int channel) const;
    float* getFloatChannel(int channel) const { return static_cast<float*>(getChannel(channel)); }

private:
    int getBytesPerSample() const { return bitsPerSample / 8; }
    // Bytes of one channel's data, margins excluded; 0 without channels.
    int64_t getDataBytes() const;
    // Bytes of one channel's block, margins included.
    int64_t getBlockBytes() const;
    void allocateBlocks();
    void releaseBlocks();

    bool ownsData = true;
    double sampleRate = 0.0;
    int32_t numChannels = 0;
    int64_t numFrames = 0;
    int32_t bitsPerSample = 0;
    int32_t margin = 0;
    uint8_t* channels[maximumChannels] = {};  // data start of each channel
    uint8_t* blocks[maximumChannels] = {};    // allocation of each channel
};

}  // namespace q1framework
