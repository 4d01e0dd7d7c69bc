#include "common/AudioFileWriter.h"

#include <sndfile.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace
{
// The libsndfile format for the file name's extension, 0 for none.
int formatFor(const std::string& path)
{
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == ".wav")
        return SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    if (extension == ".flac")
        return SF_FORMAT_FLAC | SF_FORMAT_PCM_24;
    return 0;
}
}

AudioFileWriter::~AudioFileWriter()
{
    if (file != nullptr)
        sf_close(file);
}

std::string AudioFileWriter::checkFormat(const std::string& path)
{
    if (formatFor(path) == 0)
        return "cannot write " + path + ": unknown output format; name the file .wav or .flac";
    return {};
}

std::string AudioFileWriter::open(const std::string& path, int channels, int sampleRate)
{
    const std::string unsupported = checkFormat(path);
    if (!unsupported.empty())
        return unsupported;
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = sampleRate;
    info.format = formatFor(path);
    if (!sf_format_check(&info))
        return "cannot write " + path + ": the format does not take " + std::to_string(channels)
               + " channels at " + std::to_string(sampleRate) + " Hz";
    const std::string failure = pending.create(path);
    if (!failure.empty())
        return failure;
    file = sf_open_fd(pending.descriptor(), SFM_WRITE, &info, SF_FALSE);
    if (file == nullptr)
        return "cannot write " + path + ": " + sf_strerror(nullptr);
    // Integer formats would otherwise wrap samples beyond full scale around.
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    filePath = path;
    return {};
}

std::string AudioFileWriter::write(const float* interleaved, std::int64_t frames)
{
    if (file == nullptr)
        return "cannot write " + filePath + ": not open";
    if (sf_writef_float(file, interleaved, frames) != frames)
        return "cannot write " + filePath + ": " + sf_strerror(file);
    return {};
}

std::string AudioFileWriter::finish(bool replaceExisting)
{
    if (file == nullptr)
        return "cannot write " + filePath + ": not open";
    const int closed = sf_close(file);
    file = nullptr;
    if (closed != 0)
        return "cannot finish " + filePath + ": " + sf_error_number(closed);
    return pending.publish(replaceExisting);
}
