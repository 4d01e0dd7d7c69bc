#include "plugin/AudioBus.h"

#include "foundation/runtime/AlignedAllocation.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
constexpr int bufferAlignment = 16;
// Each owned buffer holds blockSize doubles, so that a 64-bit path could use it as well.
constexpr int samplesPerFrame = static_cast<int>(sizeof(double) / sizeof(float));
// The largest owned buffer; a block size that asks for more gets no buffers (null channels,
// which process leaves alone) rather than an overflowing size.
constexpr uint64_t largestBufferBytes = uint64_t{1} << 26;  // 8 Mi frames
}  // namespace

AudioPlugin::AudioBus::AudioBus(AudioPlugin& owner, const String& name, int channels)
    : Bus(owner, name), layoutChannels(channels > 0 ? channels : 0), channelCount(layoutChannels)
{
    array = makeChannelArray(0);
    channelCount = array.length;
}

AudioPlugin::AudioBus::~AudioBus()
{
    freeChannelArray(array);
}

void AudioPlugin::AudioBus::setChannelPointers(float* const* pointers, int count)
{
    channelCount = count < 0 ? 0 : (count > array.length ? array.length : count);
    for (int channel = 0; channel < channelCount; ++channel)
        array.channels[channel] = pointers != nullptr ? pointers[channel] : nullptr;
}

void AudioPlugin::AudioBus::clear(int frames)
{
    if (!array.withBuffers || frames < 1)
        return;
    const int samples = frames < array.bufferSamples ? frames : array.bufferSamples;
    for (int channel = 0; channel < array.length; ++channel)
        if (array.channels[channel] != nullptr)
            std::memset(array.channels[channel], 0, sizeof(float) * static_cast<size_t>(samples));
}

AudioPlugin::AudioBus::ChannelArray AudioPlugin::AudioBus::makeChannelArray(int blockSize) const
{
    ChannelArray fresh;
    fresh.channels = static_cast<float**>(std::calloc(static_cast<size_t>(layoutChannels > 0 ? layoutChannels : 1),
                                                      sizeof(float*)));
    // Without an array the bus has no channels, and process leaves the block alone.
    fresh.length = fresh.channels != nullptr ? layoutChannels : 0;
    fresh.withBuffers = ownsBuffers && fresh.channels != nullptr;
    if (fresh.withBuffers && blockSize > 0 && uint64_t(blockSize) * sizeof(double) <= largestBufferBytes)
    {
        fresh.bufferSamples = blockSize * samplesPerFrame;
        for (int channel = 0; channel < fresh.length; ++channel)
            fresh.channels[channel] = static_cast<float*>(
                alignedCalloc(static_cast<unsigned>(fresh.bufferSamples) * sizeof(float), bufferAlignment));
    }
    return fresh;
}

AudioPlugin::AudioBus::ChannelArray AudioPlugin::AudioBus::swapChannelArray(const ChannelArray& replacement)
{
    const ChannelArray old = array;
    array = replacement;
    channelCount = replacement.length;
    return old;
}

void AudioPlugin::AudioBus::freeChannelArray(const ChannelArray& array)
{
    if (array.channels == nullptr)
        return;
    if (array.withBuffers)
        for (int channel = 0; channel < array.length; ++channel)
            alignedFree(array.channels[channel]);
    std::free(array.channels);
}

void AudioPlugin::AudioBus::releaseBuffers()
{
    if (!ownsBuffers)
        return;
    if (array.withBuffers)
        for (int channel = 0; channel < array.length; ++channel)
        {
            alignedFree(array.channels[channel]);
            array.channels[channel] = nullptr;
        }
    array.withBuffers = false;
    array.bufferSamples = 0;
    ownsBuffers = false;
}

}  // namespace q1framework
