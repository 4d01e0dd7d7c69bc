#pragma once

#include <string>
#include <vector>

// Writes audio to disk through libsndfile for the command-line programs.
class AudioFile
{
public:
    // Writes one or two equally long channels as a 32-bit float WAV file, replacing any file of
    // that name. Returns an empty string on success, otherwise a one-line reason.
    static std::string writeFloatWav(const std::string& path,
                                     const std::vector<const std::vector<float>*>& channels,
                                     int sampleRate);
};
