#pragma once

#include <cstdint>

namespace q1framework
{

// A reader of audio from a file format, delivering frames as 32-bit float channels.
//
// Thread contract: one thread at a time; not for the audio thread.
class AudioFormatReader
{
public:
    virtual ~AudioFormatReader() = default;

    // Format code: 1, 2, 3, 4 for 8, 16, 24, 32-bit integer samples, 5 for 32-bit float, 0 for
    // anything else.
    virtual int getFormat() const = 0;
    // Frames in the audio data.
    virtual int64_t getLength() const = 0;
    virtual int getNumChannels() const = 0;
    virtual int getBitsPerSample() const = 0;
    // Frames a second.
    virtual double getSampleRate() const = 0;
    // Reads up to frames frames from the current place into one float array per channel (a null
    // array skips its channel), each with room for frames values; full scale is -1 to 1. Returns
    // the frames delivered, fewer at the end of the data.
    virtual unsigned readFloat(float** channels, unsigned frames) = 0;
};

}  // namespace q1framework
