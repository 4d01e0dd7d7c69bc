#pragma once

#include "common/PendingFile.h"

#include <cstdint>
#include <string>

struct sf_private_tag;

// Writes 32-bit float frames to an audio file whose format follows its name: ".wav" gives 32-bit
// float WAV, which keeps every sample exactly; ".flac" gives 24-bit FLAC, clipped to -1..1. The
// file appears under its name only when `finish` succeeds (see PendingFile).
class AudioFileWriter
{
public:
    AudioFileWriter() = default;
    ~AudioFileWriter();

    AudioFileWriter(const AudioFileWriter&) = delete;
    AudioFileWriter& operator=(const AudioFileWriter&) = delete;

    // An empty string when `path` names a format this writer makes, otherwise a one-line reason.
    static std::string checkFormat(const std::string& path);

    // Starts the file. Returns an empty string on success, otherwise a one-line reason.
    std::string open(const std::string& path, int channels, int sampleRate);

    // Appends `frames` interleaved frames. Returns an empty string on success.
    std::string write(const float* interleaved, std::int64_t frames);

    // Completes the file and moves it into place, over an existing file only with
    // `replaceExisting`. Returns an empty string on success; on failure nothing is left behind.
    std::string finish(bool replaceExisting);

private:
    PendingFile pending;
    sf_private_tag* file = nullptr;
    std::string filePath;
};
