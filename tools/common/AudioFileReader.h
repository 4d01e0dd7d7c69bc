#pragma once

#include <cstdint>
#include <string>

struct sf_private_tag;

// Reads an audio file of any format libsndfile knows (WAV, AIFF, FLAC, Ogg, ...) as 32-bit float
// frames, integer formats scaled to -1..1.
class AudioFileReader
{
public:
    AudioFileReader() = default;
    ~AudioFileReader();

    AudioFileReader(const AudioFileReader&) = delete;
    AudioFileReader& operator=(const AudioFileReader&) = delete;

    // Returns an empty string on success, otherwise a one-line reason that names the file.
    std::string open(const std::string& path);

    int channels() const { return channelCount; }
    int sampleRate() const { return rate; }
    std::int64_t frames() const { return frameCount; }

    // Reads up to `frames` interleaved frames into `interleaved` (frames * channels() floats);
    // returns the frames read, 0 at the end or on a read error (see failure()).
    std::int64_t read(float* interleaved, std::int64_t frames);

    // Why the last read stopped early; empty when it reached the end.
    std::string failure() const;

private:
    sf_private_tag* file = nullptr;
    std::string filePath;
    int channelCount = 0;
    int rate = 0;
    std::int64_t frameCount = 0;
};
