#include "common/AudioFileReader.h"

#include <sndfile.h>

AudioFileReader::~AudioFileReader()
{
    if (file != nullptr)
        sf_close(file);
}

std::string AudioFileReader::open(const std::string& path)
{
    SF_INFO info{};
    SNDFILE* opened = sf_open(path.c_str(), SFM_READ, &info);
    if (opened == nullptr)
        return "cannot read " + path + ": " + sf_strerror(nullptr);
    if (file != nullptr)
        sf_close(file);
    file = opened;
    filePath = path;
    channelCount = info.channels;
    rate = info.samplerate;
    frameCount = info.frames;
    return {};
}

std::int64_t AudioFileReader::read(float* interleaved, std::int64_t frames)
{
    if (file == nullptr || frames <= 0)
        return 0;
    return sf_readf_float(file, interleaved, frames);
}

std::string AudioFileReader::failure() const
{
    if (file == nullptr || sf_error(file) == SF_ERR_NO_ERROR)
        return {};
    return "cannot read " + filePath + ": " + sf_strerror(file);
}
