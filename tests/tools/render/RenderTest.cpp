#include "RenderTest.h"

#include <sndfile.h>

#include <cmath>

void RenderTest::writeAudio(const std::string& file, const Audio& audio, int format) const
{
    SF_INFO info{};
    info.channels = audio.channels;
    info.samplerate = audio.sampleRate;
    info.format = format != 0 ? format : SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* handle = sf_open(path(file).c_str(), SFM_WRITE, &info);
    ASSERT_NE(handle, nullptr) << sf_strerror(nullptr);
    const sf_count_t frames = static_cast<sf_count_t>(audio.samples.size()) / audio.channels;
    EXPECT_EQ(sf_writef_float(handle, audio.samples.data(), frames), frames);
    sf_close(handle);
}

RenderTest::Audio RenderTest::readAudio(const std::string& file) const
{
    Audio audio;
    SF_INFO info{};
    SNDFILE* handle = sf_open(path(file).c_str(), SFM_READ, &info);
    if (handle == nullptr)
    {
        ADD_FAILURE() << "cannot read " << file << ": " << sf_strerror(nullptr);
        return audio;
    }
    audio.channels = info.channels;
    audio.sampleRate = info.samplerate;
    audio.format = info.format;
    audio.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(handle, audio.samples.data(), info.frames);
    sf_close(handle);
    return audio;
}

ToolTest::Run RenderTest::renderWith(const char* plugin, std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"--plugin", plugin});
    return run(arguments);
}

RenderTest::Audio RenderTest::signal(int channels, int frames, int sampleRate)
{
    Audio audio;
    audio.channels = channels;
    audio.sampleRate = sampleRate;
    for (int frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channels; ++channel)
        {
            const double phase = 2.0 * M_PI * (220.0 * (channel + 1)) * frame / sampleRate;
            const double ramp = static_cast<double>(frame) / frames - 0.5;
            audio.samples.push_back(static_cast<float>(0.6 * std::sin(phase) + 0.5 * ramp * (channel == 0 ? 1 : -1)));
        }
    return audio;
}
