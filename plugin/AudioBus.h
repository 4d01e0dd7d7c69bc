#pragma once

#include "plugin/AudioPlugin.h"

namespace q1framework
{

// An audio connection of a plug-in: a channel count and an array of that many channel pointers.
//
// The bus either owns its channel buffers (16-byte aligned, room for blockSize doubles each, made
// by the plug-in's prepare) or, after releaseChannelBuffers, holds pointers that an adapter writes
// before every block: the host's own memory, which the effect processes in place.
//
// Thread contract: host threads and the audio thread, serialised by the owner's mutex; the channel
// array is replaced only under that mutex (see AudioPlugin::prepare).
class AudioPlugin::AudioBus : public AudioPlugin::Bus
{
public:
    // Host thread. A bus with a zeroed channel array of `channelCount` entries and, while it owns
    // its buffers, none allocated before the first prepare.
    AudioBus(AudioPlugin& owner, const String& name, int channelCount);
    ~AudioBus() override;

    int getNumChannels() const { return channelCount; }
    // getNumChannels() entries, any of which may be null.
    float* const* getChannels() const { return array.channels; }
    bool ownsChannels() const { return ownsBuffers; }

    // Audio thread, owner's mutex held: the adapter's channel pointers for the next block. The
    // channel count becomes `count`, limited to the length of the array.
    void setChannelPointers(float* const* pointers, int count);

    // Owner's mutex held: zeroes `frames` samples of each owned buffer (no more than it holds).
    void clear(int frames);

private:
    friend class AudioPlugin;

    // A channel array with its length and, when the bus owns its buffers, the buffers.
    struct ChannelArray
    {
        float** channels = nullptr;
        int length = 0;
        bool withBuffers = false;
        int bufferSamples = 0;  // floats in each buffer
    };

    // Host thread, without the mutex: a new zeroed array of the layout's channel count, with
    // zeroed buffers of blockSize doubles each where the bus owns its buffers. It reads nothing
    // that the audio thread writes.
    ChannelArray makeChannelArray(int blockSize) const;
    // Owner's mutex held: puts `replacement` in place and answers the array it replaced.
    ChannelArray swapChannelArray(const ChannelArray& replacement);
    // Any thread: frees an array that makeChannelArray made or swapChannelArray answered.
    static void freeChannelArray(const ChannelArray& array);
    // Host thread: frees the owned buffers; the array stays, zeroed, for the adapter's pointers.
    void releaseBuffers();

    const int layoutChannels;  // the channels the bus was made with
    int channelCount;          // the channels of the next block, at most the array's length
    ChannelArray array;
    bool ownsBuffers = true;
};

}  // namespace q1framework
