// Reads arbitrary bytes as a picture container. A container that reads must write and read back
// to the same size, margin and block.
#include "FuzzCheck.h"
#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"
#include "media/image/Image.h"

#include <cstdint>
#include <cstring>

using namespace q1framework;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    MemoryStream input(MemoryBlock(data, static_cast<int64_t>(size), false));
    Image image;
    if (!image.readFrom(input) || image.isNull())
        return 0;
    const int64_t blockBytes = static_cast<int64_t>(image.getHeight() + 2 * image.getMargin()) * image.getStride();
    check(blockBytes <= static_cast<int64_t>(size));
    // Touch the corners of the picture: they must lie inside the block.
    if (!image.isEmpty() && image.getData() != nullptr)
    {
        volatile uint8_t corner = image.getPixelPointer(0, 0)[0];
        corner = image.getPixelPointer(image.getWidth() - 1, image.getHeight() - 1)[3];
        (void) corner;
    }

    MemoryStream output;
    check(image.writeTo(output));
    output.setPosition(0);
    Image again;
    check(again.readFrom(output));
    check(again.getSize() == image.getSize() && again.getMargin() == image.getMargin() && again.getStride() == image.getStride());
    check(blockBytes < 1 || std::memcmp(again.getData(), image.getData(), static_cast<size_t>(blockBytes)) == 0);
    return 0;
}
