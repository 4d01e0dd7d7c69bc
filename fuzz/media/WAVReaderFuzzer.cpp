// Reads arbitrary bytes as a WAV file: the chunk walk, both read forms in blocks of varying size,
// and Sample::loadWAV. Integer samples must convert within -1..1, no read may deliver more than
// asked or than the data holds, and a loaded sample must survive its record's round trip.
#include "FuzzCheck.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "media/sample/Sample.h"
#include "media/sample/WAVReader.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

using namespace q1framework;

namespace
{
void readEverything(WAVReader& reader, bool raw, unsigned blockFrames, size_t size)
{
    const int channels = reader.getNumChannels();
    check(channels >= 0 && channels <= WAVReader::maximumChannels);
    std::vector<std::vector<float>> floats(channels, std::vector<float>(blockFrames));
    std::vector<std::vector<uint8_t>> bytes(channels, std::vector<uint8_t>(blockFrames * 8));
    std::vector<float*> floatPointers;
    std::vector<void*> rawPointers;
    for (int channel = 0; channel < channels; ++channel)
    {
        floatPointers.push_back(floats[channel].data());
        rawPointers.push_back(bytes[channel].data());
    }
    const bool integer = reader.getFormat() >= 1 && reader.getFormat() <= 4;
    uint64_t total = 0;
    for (;;)
    {
        const unsigned delivered = raw ? reader.readRaw(rawPointers.data(), blockFrames)
                                       : reader.readFloat(floatPointers.data(), blockFrames);
        check(delivered <= blockFrames);
        total += delivered;
        check(total * static_cast<uint64_t>(channels) <= size);
        for (int channel = 0; channel < channels && integer && !raw; ++channel)
            for (unsigned frame = 0; frame < delivered; ++frame)
                check(std::fabs(floats[channel][frame]) <= 1.0f);
        if (delivered < blockFrames)
            break;
    }
}
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 1)
        return 0;
    const MemoryBlock bytes(data, static_cast<int64_t>(size), false);
    // The last byte chooses the options (the first ones must spell "RIFF"); the whole input is
    // the file.
    const uint8_t options = data[size - 1];
    const bool readAllChunks = (options & 1) != 0;
    const bool raw = (options & 2) != 0;
    const unsigned blockFrames = 1 + options % 61;
    {
        WAVReader reader(new MemoryStream(bytes), readAllChunks, true);
        for (const WAVReader::Cue& cue : reader.getCues())
            check(cue.name.getBytesCount() <= 256);
        readEverything(reader, raw, blockFrames, size);
    }
    MemoryStream stream(bytes);
    std::unique_ptr<Sample> sample(Sample::loadWAV(&stream, raw, options % 5));
    if (sample == nullptr)
        return 0;
    check(sample->getNumFrames() <= static_cast<int64_t>(size) / sample->getNumChannels());
    MemoryStream record;
    check(sample->write(record));
    record.setPosition(0);
    std::unique_ptr<Sample> again(Sample::read(record));
    check(again != nullptr && again->equals(*sample));
    return 0;
}
