#pragma once

#include "common/AudioFileReader.h"

#include <cstdint>
#include <memory>
#include <string>

class DemoDrumLoop;

// The audio kelvane-render processes: a file, read as it goes, or the built-in demo drum loop.
class RenderInput
{
public:
    static constexpr int largestChannelCount = 2;

    RenderInput();
    ~RenderInput();

    // Opens a mono or stereo file. Returns an empty string on success, otherwise a one-line reason.
    std::string openFile(const std::string& path);
    // Uses the demo drum loop: 8 s of stereo at 44.1 kHz.
    void openDemo();

    int channels() const { return channelCount; }
    int sampleRate() const { return rate; }
    std::int64_t frames() const { return frameCount; }

    // Reads up to `frames` interleaved frames; returns the frames read, 0 at the end or on error.
    std::int64_t read(float* interleaved, std::int64_t frames);
    // Why the input ended early; empty when it reached its end.
    std::string failure() const;

private:
    AudioFileReader file;
    std::unique_ptr<DemoDrumLoop> demo;
    std::int64_t demoPosition = 0;
    int channelCount = 0;
    int rate = 0;
    std::int64_t frameCount = 0;
};
