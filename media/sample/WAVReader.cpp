#include "media/sample/WAVReader.h"

#include "foundation/memory/ByteOrder.h"
#include "foundation/memory/Stream.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace q1framework
{

// Chunk walk: after "RIFF", a size and "WAVE", chunks of an 8-byte header (4-byte id, 32-bit
// little-endian size) and a body follow until the stream ends. The body of a chunk of odd size
// is followed by a pad byte; rather than rounding sizes up, the walk notices a header that makes
// sense one byte later (see readChunkHeader), which also copes with writers that leave the pad out.
struct WAVReader::ChunkHeader
{
    uint8_t bytes[8];

    bool hasId(const char* id) const { return std::memcmp(bytes, id, 4) == 0; }
    uint32_t getSize() const
    {
        uint32_t size;
        std::memcpy(&size, bytes + 4, 4);
        ByteOrder::fromLittleEndian(size);
        return size;
    }
};

namespace
{
// The chunk ids the header repair knows. "cue" is written without its blank and so matches no
// real header: a "cue " chunk behind a pad byte is not found.
constexpr char knownIds[13][4] = {{'a', 'c', 'i', 'd'}, {'d', 'a', 't', 'a'}, {'f', 'm', 't', ' '},
                                  {'i', 'n', 's', 't'}, {'a', 'c', 'i', 'd'}, {'f', 'a', 'c', 't'},
                                  {'s', 't', 'r', 'c'}, {'c', 'u', 'e', '\0'}, {'L', 'I', 'S', 'T'},
                                  {'l', 'i', 's', 't'}, {'l', 'a', 'b', 'l'}, {'n', 'o', 't', 'e'},
                                  {'l', 't', 'x', 't'}};
constexpr int cueRecordBytes = 24;
constexpr int longestLabel = 256;

bool isKnownId(const uint8_t* id)
{
    for (const auto& known : knownIds)
        if (std::memcmp(id, known, 4) == 0)
            return true;
    return false;
}

int32_t readLittleEndian32(const uint8_t* bytes)
{
    int32_t value;
    std::memcpy(&value, bytes, 4);
    ByteOrder::fromLittleEndian(value);
    return value;
}

// One stored sample of 8, 16, 24 or 32 bits as float.
inline float toFloat(const uint8_t* sample, int bits, bool isFloat)
{
    constexpr float scale8 = 0.0078125f;
    constexpr float scale16 = 3.0517578e-05f;
    constexpr float scale32 = 4.656613e-10f;
    switch (bits)
    {
        case 8: return static_cast<float>(static_cast<int8_t>(sample[0])) * scale8;
        case 16: return static_cast<float>(static_cast<int16_t>(sample[0] | sample[1] << 8)) * scale16;
        case 24:
            return static_cast<float>(static_cast<int32_t>(static_cast<uint32_t>(sample[0]) << 8
                                                           | static_cast<uint32_t>(sample[1]) << 16
                                                           | static_cast<uint32_t>(sample[2]) << 24))
                   * scale32;
        default:
        {
            const int32_t word = readLittleEndian32(sample);
            if (!isFloat)
                return static_cast<float>(word) * scale32;
            float value;
            std::memcpy(&value, &word, 4);
            return value;
        }
    }
}
}

WAVReader::WAVReader(Stream* source, bool readAllChunks, bool owns) : ownsStream(owns), stream(source)
{
    if (stream == nullptr)
        return;
    uint8_t riff[12];
    if (stream->read(riff, 12) != 12 || std::memcmp(riff, "RIFF", 4) != 0 || std::memcmp(riff + 8, "WAVE", 4) != 0)
        return;
    int64_t dataPosition = -1;
    ChunkHeader header;
    while (!stream->isEndOfStream() && readChunkHeader(header))
    {
        const int64_t body = stream->getPosition();
        const uint32_t size = header.getSize();
        if (header.hasId("fmt "))
            readFormat();
        else if (header.hasId("data"))
        {
            dataPosition = body;
            readData(size);
            if (!readAllChunks)
                break;
        }
        else if (header.hasId("acid"))
        {
            hasAcid = true;
            stream->read(acid, sizeof acid);
        }
        else if (header.hasId("cue "))
            readCuePoints(size);
        else if ((header.hasId("LIST") || header.hasId("list")) && size > 4)
            readList(body, size);
        stream->setPosition(body + size);
    }
    if (numFrames == 0)
        bitsPerSample = numChannels = sampleRate = 0;
    stream->setPosition(dataPosition >= 0 ? dataPosition : 0);
}

WAVReader::~WAVReader()
{
    std::free(readBuffer);
    if (ownsStream)
        delete stream;
}

bool WAVReader::readChunkHeader(ChunkHeader& header)
{
    if (stream->read(header.bytes, 8) != 8)
        return false;
    if (isKnownId(header.bytes) || !isKnownId(header.bytes + 1))
        return true;
    // The header really starts one byte later: the byte before it was a pad byte.
    std::memmove(header.bytes, header.bytes + 1, 7);
    return stream->read(header.bytes + 7, 1) == 1;
}

void WAVReader::readFormat()
{
    const uint16_t tag = static_cast<uint16_t>(stream->readInt16());
    if (tag != 1 && tag != 3)
        return;
    isFloat = tag == 3;
    numFrames = 0;
    numChannels = static_cast<uint16_t>(stream->readInt16());
    sampleRate = stream->readInt32();
    stream->skip(4);
    blockSize = static_cast<uint16_t>(stream->readInt16());
    bitsPerSample = static_cast<uint16_t>(stream->readInt16());
}

void WAVReader::readData(uint32_t size)
{
    if (blockSize != 0)
        numFrames = size / static_cast<uint32_t>(blockSize);
    // Formats the reader cannot hold a block of are refused outright.
    if (numChannels < 1 || numChannels > maximumChannels || bitsPerSample < 8 || bitsPerSample > maximumBitsPerSample)
        numFrames = 0;
    std::free(readBuffer);
    readBuffer = nullptr;
    if (numFrames > 0)
        readBuffer = static_cast<uint8_t*>(
            std::malloc(static_cast<size_t>(bitsPerSample / 8) * static_cast<size_t>(numChannels) * framesPerRead));
}

void WAVReader::readCuePoints(uint32_t size)
{
    const int64_t available = std::min<int64_t>(size, stream->getRemainingBytes());
    const int64_t count = std::min<int64_t>(static_cast<uint32_t>(stream->readInt32()), (available - 4) / cueRecordBytes);
    cues.clear();
    cues.ensureCapacity(static_cast<int32_t>(std::max<int64_t>(count, 0)));
    for (int64_t index = 0; index < count; ++index)
    {
        uint8_t record[cueRecordBytes];
        if (stream->read(record, cueRecordBytes) != cueRecordBytes)
            break;
        Cue cue;
        cue.id = readLittleEndian32(record);
        cue.position = readLittleEndian32(record + 4);
        cues.add(cue);
    }
}

void WAVReader::readList(int64_t listPosition, uint32_t size)
{
    uint8_t kind[4];
    if (stream->read(kind, 4) != 4 || std::memcmp(kind, "adtl", 4) != 0)
        return;
    const int64_t listEnd = listPosition + size;
    ChunkHeader header;
    while (stream->getPosition() + 8 <= listEnd && readChunkHeader(header))
    {
        const int64_t body = stream->getPosition();
        const uint32_t chunkSize = header.getSize();
        if (header.hasId("ltxt"))
        {
            const int32_t id = stream->readInt32();
            const int32_t length = stream->readInt32();
            for (Cue& cue : cues)
                if (cue.id == id)
                    cue.length = length;
        }
        else if (header.hasId("labl"))
        {
            const int32_t id = stream->readInt32();
            char text[longestLabel];
            const auto textBytes = static_cast<int>(std::clamp<int64_t>(static_cast<int64_t>(chunkSize) - 4, 0, longestLabel));
            const int64_t received = stream->read(text, textBytes);
            const String name(text, 0, static_cast<unsigned>(std::max<int64_t>(received, 0)));
            for (Cue& cue : cues)
                if (cue.id == id)
                    cue.name = name;
        }
        stream->setPosition(body + chunkSize);
    }
}

int WAVReader::getFormat() const
{
    if (isFloat)
        return 5;
    switch (bitsPerSample)
    {
        case 8: return 1;
        case 16: return 2;
        case 24: return 3;
        case 32: return 4;
        default: return 0;
    }
}

template <typename Store>
unsigned WAVReader::readFrames(unsigned frames, Store store)
{
    if (readBuffer == nullptr || numChannels == 0)
        return 0;
    const int64_t frameBytes = static_cast<int64_t>(bitsPerSample / 8) * numChannels;
    const auto total = static_cast<unsigned>(std::min<int64_t>(frames, numFrames));
    unsigned delivered = 0;
    while (delivered < total)
    {
        const unsigned wanted = std::min<unsigned>(total - delivered, framesPerRead);
        const auto received = static_cast<unsigned>(stream->read(readBuffer, wanted * frameBytes) / frameBytes);
        store(received, delivered);
        delivered += received;
        if (received < wanted)
            break;
    }
    return delivered;
}

unsigned WAVReader::readFloat(float** channels, unsigned frames)
{
    const int bytesPerSample = bitsPerSample / 8;
    const bool convertible = bitsPerSample == 8 || bitsPerSample == 16 || bitsPerSample == 24 || bitsPerSample == 32;
    return readFrames(frames, [&](unsigned received, unsigned first) {
        if (!convertible)
            return;
        for (int channel = 0; channel < numChannels; ++channel)
        {
            if (channels[channel] == nullptr)
                continue;
            const uint8_t* sample = readBuffer + channel * bytesPerSample;
            float* output = channels[channel] + first;
            for (unsigned frame = 0; frame < received; ++frame, sample += bytesPerSample * numChannels)
                output[frame] = toFloat(sample, bitsPerSample, isFloat);
        }
    });
}

unsigned WAVReader::readRaw(void** channels, unsigned frames)
{
    const int bytesPerSample = bitsPerSample / 8;
    return readFrames(frames, [&](unsigned received, unsigned first) {
        for (int channel = 0; channel < numChannels; ++channel)
        {
            if (channels[channel] == nullptr)
                continue;
            const uint8_t* sample = readBuffer + channel * bytesPerSample;
            uint8_t* output = static_cast<uint8_t*>(channels[channel]) + static_cast<size_t>(first) * bytesPerSample;
            for (unsigned frame = 0; frame < received; ++frame, sample += bytesPerSample * numChannels)
                std::memcpy(output + static_cast<size_t>(frame) * bytesPerSample, sample, static_cast<size_t>(bytesPerSample));
        }
    });
}

}  // namespace q1framework
