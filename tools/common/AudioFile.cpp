#include "common/AudioFile.h"

#include <sndfile.h>

std::string AudioFile::writeFloatWav(const std::string& path,
                                     const std::vector<const std::vector<float>*>& channels,
                                     int sampleRate)
{
    if (channels.empty())
        return "no channels to write";
    const std::size_t frames = channels.front()->size();
    for (const std::vector<float>* channel : channels)
        if (channel->size() != frames)
            return "channels differ in length";

    SF_INFO info{};
    info.samplerate = sampleRate;
    info.channels = static_cast<int>(channels.size());
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (file == nullptr)
        return "cannot write " + path + ": " + sf_strerror(nullptr);

    std::vector<float> interleaved(frames * channels.size());
    for (std::size_t frame = 0; frame < frames; ++frame)
        for (std::size_t channel = 0; channel < channels.size(); ++channel)
            interleaved[frame * channels.size() + channel] = (*channels[channel])[frame];
    const sf_count_t written = sf_writef_float(file, interleaved.data(), static_cast<sf_count_t>(frames));
    std::string error;
    if (written != static_cast<sf_count_t>(frames))
        error = "cannot write " + path + ": " + sf_strerror(file);
    if (sf_close(file) != 0 && error.empty())
        error = "cannot finish " + path;
    return error;
}
