// Reads arbitrary bytes as a pack's sample record. A record that reads must write back and read
// again to an equal sample.
#include "FuzzCheck.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "media/sample/Sample.h"

#include <cstdint>
#include <memory>

using namespace q1framework;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    MemoryStream input(MemoryBlock(data, static_cast<int64_t>(size), false));
    std::unique_ptr<Sample> sample(Sample::read(input));
    if (sample == nullptr)
        return 0;
    check(sample->getNumChannels() <= Sample::maximumChannels);
    const int64_t frameBytes = static_cast<int64_t>(sample->getBitsPerSample() / 8) * sample->getNumChannels();
    check(frameBytes == 0 || sample->getNumFrames() <= static_cast<int64_t>(size) / frameBytes);
    sample->clearMargins();
    MemoryStream output;
    check(sample->write(output));
    output.setPosition(0);
    std::unique_ptr<Sample> again(Sample::read(output));
    check(again != nullptr && again->equals(*sample) && again->getMargin() == sample->getMargin());
    return 0;
}
