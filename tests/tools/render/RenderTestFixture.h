#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

// Shared ground of the kelvane-render tests: a fresh folder per test in the build tree, audio
// files written and read back with libsndfile, and runs of the built program as a separate
// process with its output and exit status.
class RenderTestFixture : public ::testing::Test
{
public:
    struct Audio
    {
        int channels = 0;
        int sampleRate = 0;
        std::vector<float> samples;  // interleaved
    };

    struct Run
    {
        int status = -1;  // exit status, -1 when the program did not exit normally
        std::string out;
        std::string err;
    };

protected:
    void SetUp() override;

    // A path in the test's folder.
    std::string path(const std::string& name) const;

    // Writes `audio` with the libsndfile `format` (major type and subtype).
    void writeAudio(const std::string& file, const Audio& audio, int format) const;
    Audio readAudio(const std::string& file) const;

    // Runs kelvane-render with `arguments` in the test's folder; `environment` entries
    // ("NAME=value") replace or add to the test's own environment.
    Run render(const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment = {}) const;

    // `frames` of a deterministic test signal on each channel: a sine and a slow ramp, different
    // on every channel, within -0.9..0.9.
    static Audio signal(int channels, int frames, int sampleRate);

    std::filesystem::path folder;
};
