#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/sample/AudioFormatReader.h"

#include <cstdint>

namespace q1framework
{

class Stream;

// Reads RIFF/WAVE data from a Stream: PCM integers of 8, 16, 24 and 32 bits and 32-bit float,
// with cue points and their labels.
//
// The constructor walks the chunks (see WAVReader.cpp) and leaves the stream at the start of the
// audio data. A stream that is not RIFF/WAVE, or that has no usable format and data, leaves an
// empty reader: length 0, no channels.
//
// Hostile headers stay harmless: more than 64 channels or a sample wider than 64 bits makes the
// reader empty, cue counts are limited by the chunk's size, and every chunk size is taken as
// unsigned, so the walk always moves forward.
//
// Thread contract: one thread at a time; not for the audio thread.
class WAVReader : public AudioFormatReader
{
public:
    // A cue point, with the label and length that a LIST "adtl" chunk gives it.
    struct Cue
    {
        int32_t id = 0;
        String name;           // empty until a "labl" chunk names it
        int32_t position = 0;  // in frames from the start of the data
        int32_t length = 0;    // in frames, from an "ltxt" chunk
    };

    static constexpr int maximumChannels = 64;
    static constexpr int maximumBitsPerSample = 64;
    // Frames of one read from the stream; the read buffer holds this many.
    static constexpr int framesPerRead = 65536;

    // stream is required. readAllChunks: go on past the "data" chunk (to find cue labels behind
    // the audio); otherwise the walk stops there. ownsStream: the reader deletes the stream.
    WAVReader(Stream* stream, bool readAllChunks, bool ownsStream);
    ~WAVReader() override;

    WAVReader(const WAVReader&) = delete;
    WAVReader& operator=(const WAVReader&) = delete;

    int getFormat() const override;
    int64_t getLength() const override { return numFrames; }
    int getNumChannels() const override { return numChannels; }
    int getBitsPerSample() const override { return bitsPerSample; }
    double getSampleRate() const override { return sampleRate; }
    // Conversions to float: 8-bit bytes are taken as signed and scaled by 1/128 (the WAV offset
    // of 128 is not removed); 16-bit by 1/32768; 24-bit placed in the top of a 32-bit value and
    // scaled by 1/2^31, as 32-bit integers are; 32-bit float copied. Other widths are read and
    // dropped, leaving the arrays untouched.
    unsigned readFloat(float** channels, unsigned frames) override;
    // As readFloat, copying each sample at its stored width (bitsPerSample / 8 bytes) instead.
    unsigned readRaw(void** channels, unsigned frames);

    bool hasAcidChunk() const { return hasAcid; }
    // The 24 bytes of the "acid" chunk, zero without one.
    const uint8_t* getAcid() const { return acid; }
    const Array<Cue>& getCues() const { return cues; }

private:
    struct ChunkHeader;

    bool readChunkHeader(ChunkHeader& header);
    void readFormat();
    void readData(uint32_t size);
    void readCuePoints(uint32_t size);
    void readList(int64_t listPosition, uint32_t size);
    // Reads frames through readBuffer, calling store(frame data, frames, first frame) per block.
    template <typename Store>
    unsigned readFrames(unsigned frames, Store store);

    bool hasAcid = false;
    uint8_t acid[24] = {};
    Array<Cue> cues;
    bool ownsStream;
    Stream* stream;
    uint8_t* readBuffer = nullptr;  // framesPerRead frames of the stored width
    int64_t numFrames = 0;
    int32_t bitsPerSample = 0;
    int32_t numChannels = 0;
    int32_t sampleRate = 0;
    bool isFloat = false;
    int32_t blockSize = 0;  // bytes a frame, as the format chunk states it
};

}  // namespace q1framework
