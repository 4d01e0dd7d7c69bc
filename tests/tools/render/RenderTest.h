#pragma once

#include "ToolTest.h"

#include <string>
#include <vector>

// Ground of the kelvane-render tests: audio files written and read back with libsndfile, and runs
// of the built program with a given plug-in.
class RenderTest : public ToolTest
{
public:
    struct Audio
    {
        int channels = 0;
        int sampleRate = 0;
        int format = 0;              // libsndfile's major type and subtype, as read
        std::vector<float> samples;  // interleaved
    };

protected:
    RenderTest() : ToolTest(KELVANE_RENDER) {}

    // Writes `audio` with the libsndfile `format` (major type and subtype), 32-bit float WAV by default.
    void writeAudio(const std::string& file, const Audio& audio, int format = 0) const;
    Audio readAudio(const std::string& file) const;

    // kelvane-render --plugin `plugin` followed by `arguments`; with the test gain plug-in; with
    // the real Kelvane.so.
    Run renderWith(const char* plugin, std::vector<std::string> arguments) const;
    Run gain(const std::vector<std::string>& arguments) const { return renderWith(TEST_GAIN_PLUGIN, arguments); }
    Run kelvane(const std::vector<std::string>& arguments) const { return renderWith(KELVANE_PLUGIN, arguments); }

    // `frames` of a deterministic test signal on each channel: a sine and a slow ramp, different
    // on every channel, within -0.9..0.9.
    static Audio signal(int channels, int frames, int sampleRate);
};
