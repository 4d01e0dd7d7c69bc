#include "BlockRenderer.h"

#include "ProgressBar.h"
#include "RenderInput.h"
#include "VstPlugin.h"
#include "common/AudioFileWriter.h"

#include <algorithm>
#include <vector>

namespace
{
// Channel buffers of one block and the pointer arrays the plug-in receives.
struct ChannelBuffers
{
    ChannelBuffers(int channels, int frames)
        : samples(static_cast<std::size_t>(channels), std::vector<float>(static_cast<std::size_t>(frames)))
    {
        for (std::vector<float>& channel : samples)
            pointers.push_back(channel.data());
    }

    std::vector<std::vector<float>> samples;
    std::vector<float*> pointers;
};
}

std::string BlockRenderer::render(VstPlugin& plugin, RenderInput& input, AudioFileWriter& output,
                                  int blockSize, ProgressBar& progress)
{
    const int fileChannels = input.channels();
    ChannelBuffers inputs(plugin.inputCount(), blockSize);
    ChannelBuffers outputs(plugin.outputCount(), blockSize);
    std::vector<float> interleaved(static_cast<std::size_t>(blockSize) * static_cast<std::size_t>(fileChannels));
    std::int64_t done = 0;
    std::string failure;

    plugin.start();
    while (failure.empty())
    {
        const int frames = static_cast<int>(input.read(interleaved.data(), blockSize));
        if (frames <= 0)
            break;
        for (int channel = 0; channel < plugin.inputCount(); ++channel)
        {
            float* destination = inputs.pointers[static_cast<std::size_t>(channel)];
            const int source = fileChannels == 1 ? 0 : channel;
            for (int frame = 0; frame < frames; ++frame)
                destination[frame] = source < fileChannels ? interleaved[static_cast<std::size_t>(frame * fileChannels + source)]
                                                           : 0.0f;
        }
        plugin.process(inputs.pointers.data(), outputs.pointers.data(), frames);
        for (int channel = 0; channel < fileChannels; ++channel)
        {
            const float* source = outputs.pointers[static_cast<std::size_t>(std::min(channel, plugin.outputCount() - 1))];
            for (int frame = 0; frame < frames; ++frame)
                interleaved[static_cast<std::size_t>(frame * fileChannels + channel)] = source[frame];
        }
        failure = output.write(interleaved.data(), frames);
        done += frames;
        progress.update(done);
    }
    plugin.stop();
    if (failure.empty())
        failure = input.failure();
    progress.finish();
    return failure;
}
