#include "RenderInput.h"

#include "dsp/DemoDrumLoop.h"

#include <sys/stat.h>

#include <algorithm>

RenderInput::RenderInput() = default;

RenderInput::~RenderInput() = default;

std::string RenderInput::openFile(const std::string& path)
{
    struct stat status{};
    if (stat(path.c_str(), &status) != 0)
        return "input " + path + " does not exist; check the path";
    if (S_ISDIR(status.st_mode))
        return "input " + path + " is a folder; give an audio file";
    const std::string failure = file.open(path);
    if (!failure.empty())
        return failure + "; give a WAV, FLAC, AIFF or Ogg file";
    if (file.channels() > largestChannelCount)
        return "input " + path + " has " + std::to_string(file.channels())
               + " channels; only mono and stereo files can be rendered";
    channelCount = file.channels();
    rate = file.sampleRate();
    frameCount = file.frames();
    return {};
}

void RenderInput::openDemo()
{
    demo = std::make_unique<DemoDrumLoop>();
    demoPosition = 0;
    channelCount = 2;
    rate = DemoDrumLoop::sampleRate;
    frameCount = DemoDrumLoop::frameCount;
}

std::int64_t RenderInput::read(float* interleaved, std::int64_t frames)
{
    if (demo == nullptr)
        return file.read(interleaved, frames);
    const std::int64_t count = std::min(frames, frameCount - demoPosition);
    for (std::int64_t frame = 0; frame < count; ++frame)
    {
        interleaved[2 * frame] = demo->left()[static_cast<std::size_t>(demoPosition + frame)];
        interleaved[2 * frame + 1] = demo->right()[static_cast<std::size_t>(demoPosition + frame)];
    }
    demoPosition += count;
    return count;
}

std::string RenderInput::failure() const
{
    return demo == nullptr ? file.failure() : std::string();
}
