#include "media/sample/Sample.h"

#include "foundation/memory/Stream.h"
#include "media/sample/WAVReader.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace q1framework
{

namespace
{
constexpr int32_t recordVersion = 1;
// Frames beyond this would overflow the byte count of a block.
constexpr int64_t largestFrameCount = std::numeric_limits<int64_t>::max() / 16;
}

Sample::Sample(int channelCount, int64_t frames, int bits, int marginSamples, bool owns, double rate)
    : ownsData(owns), sampleRate(rate), numChannels(std::clamp(channelCount, 0, maximumChannels)),
      numFrames(std::max<int64_t>(frames, 0)), bitsPerSample(std::max(bits, 0)), margin(std::max(marginSamples, 0))
{
    if (ownsData)
        allocateBlocks();
}

Sample::Sample(const Sample& other)
{
    *this = other;
}

Sample& Sample::operator=(const Sample& other)
{
    if (this == &other)
        return *this;
    releaseBlocks();
    ownsData = true;
    sampleRate = other.sampleRate;
    numChannels = other.numChannels;
    numFrames = other.numFrames;
    bitsPerSample = other.bitsPerSample;
    margin = other.margin;
    allocateBlocks();
    const int64_t blockBytes = getBlockBytes();
    for (int channel = 0; channel < numChannels; ++channel)
        if (blocks[channel] != nullptr && other.channels[channel] != nullptr)
            std::memcpy(blocks[channel], other.channels[channel] - static_cast<int64_t>(margin) * getBytesPerSample(),
                        static_cast<size_t>(blockBytes));
    return *this;
}

Sample::~Sample()
{
    releaseBlocks();
}

int64_t Sample::getBlockBytes() const
{
    if (numFrames > largestFrameCount)
        return -1;
    return (numFrames + 2 * static_cast<int64_t>(margin)) * getBytesPerSample();
}

int64_t Sample::getDataBytes() const
{
    return numChannels > 0 && numFrames <= largestFrameCount ? numFrames * getBytesPerSample() : 0;
}

void Sample::allocateBlocks()
{
    const int64_t blockBytes = getBlockBytes();
    for (int channel = 0; channel < numChannels; ++channel)
    {
        blocks[channel] = nullptr;
        channels[channel] = nullptr;
        if (blockBytes < 1 || static_cast<uint64_t>(blockBytes) > std::numeric_limits<size_t>::max())
            continue;
        blocks[channel] = static_cast<uint8_t*>(std::calloc(static_cast<size_t>(blockBytes), 1));
        if (blocks[channel] != nullptr)
            channels[channel] = blocks[channel] + static_cast<int64_t>(margin) * getBytesPerSample();
    }
}

void Sample::releaseBlocks()
{
    for (int channel = 0; channel < maximumChannels; ++channel)
    {
        if (ownsData)
            std::free(blocks[channel]);
        blocks[channel] = nullptr;
        channels[channel] = nullptr;
    }
}

void* Sample::getChannel(int channel) const
{
    return channel >= 0 && channel < numChannels ? channels[channel] : nullptr;
}

Sample* Sample::read(Stream& stream)
{
    if (stream.readInt32() != recordVersion)
        return nullptr;
    const int32_t channelCount = stream.readInt32();
    const int32_t bits = stream.readInt32();
    const int32_t marginSamples = stream.readInt32();
    stream.readBool();  // the bytes read here always belong to the new sample
    const int64_t frames = stream.readInt64();
    const double rate = stream.readDouble();
    if (channelCount < 0 || channelCount > maximumChannels || bits < 0 || bits > maximumBitsPerSample
        || marginSamples < 0 || marginSamples > maximumMargin || frames < 0 || frames > largestFrameCount)
        return nullptr;
    const int64_t frameBytes = static_cast<int64_t>(channelCount) * (bits / 8);
    if (frameBytes > 0 && frames > stream.getRemainingBytes() / frameBytes)
        return nullptr;

    auto* sample = new Sample(channelCount, frames, bits, marginSamples, true, rate);
    const int64_t dataBytes = sample->getDataBytes();
    for (int channel = 0; channel < channelCount && dataBytes > 0; ++channel)
    {
        if (sample->channels[channel] == nullptr || stream.read(sample->channels[channel], dataBytes) != dataBytes)
        {
            delete sample;
            return nullptr;
        }
    }
    return sample;
}

bool Sample::write(Stream& stream) const
{
    const int64_t start = stream.getPosition();
    stream.writeInt32(recordVersion);
    stream.writeInt32(numChannels);
    stream.writeInt32(bitsPerSample);
    stream.writeInt32(margin);
    stream.writeBool(ownsData);
    stream.writeInt64(numFrames);
    stream.writeDouble(sampleRate);
    const int64_t dataBytes = getDataBytes();
    for (int channel = 0; channel < numChannels && dataBytes > 0; ++channel)
        if (channels[channel] == nullptr || stream.write(channels[channel], dataBytes) != dataBytes)
            return false;
    return stream.getPosition() - start == 4 * 4 + 1 + 8 + 8 + dataBytes * numChannels;
}

Sample* Sample::loadWAV(Stream* stream, bool nativeFormat, int marginSamples)
{
    if (stream == nullptr || stream->getSize() == 0)
        return nullptr;
    WAVReader reader(stream, false, false);
    if (reader.getLength() <= 0 || reader.getNumChannels() <= 0)
        return nullptr;
    // A header may claim far more frames than the file holds; only those that can arrive are
    // allocated.
    const int64_t frameBytes = static_cast<int64_t>(reader.getNumChannels()) * (reader.getBitsPerSample() / 8);
    const int64_t frames = std::min(reader.getLength(), stream->getRemainingBytes() / std::max<int64_t>(frameBytes, 1));
    auto* sample = new Sample(reader.getNumChannels(), frames, nativeFormat ? reader.getBitsPerSample() : 32,
                              marginSamples, true, reader.getSampleRate());
    for (int channel = 0; channel < sample->numChannels; ++channel)
    {
        if (sample->channels[channel] == nullptr && frames > 0)
        {
            delete sample;
            return nullptr;
        }
    }
    const auto framesToRead = static_cast<unsigned>(std::min<int64_t>(frames, std::numeric_limits<unsigned>::max()));
    // The readers take arrays of their own pointer types.
    void* rawChannels[maximumChannels];
    float* floatChannels[maximumChannels];
    for (int channel = 0; channel < sample->numChannels; ++channel)
    {
        rawChannels[channel] = sample->channels[channel];
        floatChannels[channel] = reinterpret_cast<float*>(sample->channels[channel]);
    }
    sample->numFrames = nativeFormat ? reader.readRaw(rawChannels, framesToRead) : reader.readFloat(floatChannels, framesToRead);
    sample->clearMargins();
    return sample;
}

bool Sample::setLength(int64_t frames)
{
    frames = std::max<int64_t>(frames, 0);
    if (frames == numFrames || frames > largestFrameCount || !ownsData)
        return frames == numFrames;
    const int64_t newBytes = (frames + 2 * static_cast<int64_t>(margin)) * getBytesPerSample();
    bool complete = true;
    for (int channel = 0; channel < numChannels && newBytes > 0; ++channel)
    {
        auto* resized = static_cast<uint8_t*>(std::realloc(blocks[channel], static_cast<size_t>(newBytes)));
        if (resized == nullptr)
        {
            complete = false;
            continue;
        }
        blocks[channel] = resized;
        channels[channel] = resized + static_cast<int64_t>(margin) * getBytesPerSample();
    }
    // A block that could not shrink is merely larger than needed; one that could not grow is not.
    if (complete || frames < numFrames)
        numFrames = frames;
    return complete;
}

void Sample::clearMargins()
{
    const size_t marginBytes = static_cast<size_t>(margin) * getBytesPerSample();
    if (marginBytes == 0)
        return;
    for (int channel = 0; channel < numChannels; ++channel)
    {
        if (channels[channel] == nullptr)
            continue;
        std::memset(channels[channel] - marginBytes, 0, marginBytes);
        std::memset(channels[channel] + numFrames * getBytesPerSample(), 0, marginBytes);
    }
}

double Sample::getDuration() const
{
    return sampleRate == 0.0 ? 0.0 : static_cast<double>(numFrames) / sampleRate;
}

bool Sample::equals(const Sample& other) const
{
    if (numChannels != other.numChannels || bitsPerSample != other.bitsPerSample || numFrames != other.numFrames)
        return false;
    const int64_t dataBytes = getDataBytes();
    for (int channel = 0; channel < numChannels && dataBytes > 0; ++channel)
    {
        if (channels[channel] == nullptr || other.channels[channel] == nullptr)
        {
            if (channels[channel] != other.channels[channel])
                return false;
            continue;
        }
        if (std::memcmp(channels[channel], other.channels[channel], static_cast<size_t>(dataBytes)) != 0)
            return false;
    }
    return true;
}

}  // namespace q1framework
