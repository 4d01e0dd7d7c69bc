// The picture container "Q1IMG00" of a resource pack's picture entries.
#include "media/image/Image.h"

#include "foundation/memory/Stream.h"
#include "foundation/runtime/AlignedAllocation.h"
#include "foundation/string/String.h"
#include "media/image/InternalImage.h"

#include <limits>

namespace q1framework
{

namespace
{
const char* const containerMagic = "Q1IMG00";
constexpr int blockAlignment = 16;
}

bool Image::writeTo(Stream& stream) const
{
    const int64_t start = stream.getPosition();
    stream.writeString(containerMagic);
    int64_t expected = 4 + 8 + 4 * 4;
    if (internal == nullptr)
    {
        for (int field = 0; field < 4; ++field)
            stream.writeInt32(0);
        return stream.getPosition() - start == expected;
    }
    stream.writeInt32(internal->width);
    stream.writeInt32(internal->height);
    stream.writeInt32(internal->stride);
    stream.writeInt32(internal->margin);
    const int64_t byteCount = internal->getByteCount();
    if (byteCount >= 1)
    {
        stream.writeInt64(byteCount);
        // An image whose allocation failed has no block to write; its size is 0 by 0 then.
        if (internal->data != nullptr)
            stream.write(internal->data, byteCount);
        expected += 8 + byteCount;
    }
    return stream.getPosition() - start == expected;
}

bool Image::readFrom(Stream& stream)
{
    if (stream.readString() != containerMagic)
        return false;
    const int32_t width = stream.readInt32();
    const int32_t height = stream.readInt32();
    if (width < 1 && height < 1)
    {
        *this = Image();
        return true;
    }
    const int32_t stride = stream.readInt32();
    const int32_t margin = stream.readInt32();
    // Every line must hold its picture and margins, and the block must be one the stream holds in
    // full: hostile fields never allocate.
    if (width < 0 || height < 0 || margin < 0 || stride < (static_cast<int64_t>(width) + 2 * static_cast<int64_t>(margin)) * 4)
        return false;
    const int64_t byteCount = (static_cast<int64_t>(height) + 2 * static_cast<int64_t>(margin)) * stride;
    if (byteCount < 1)
    {
        *this = Image(new InternalImage(nullptr, width, height, stride, margin));
        return true;
    }
    if (stream.readInt64() != byteCount || byteCount > std::numeric_limits<uint32_t>::max()
        || byteCount > stream.getRemainingBytes())
        return false;
    auto* block = static_cast<uint8_t*>(alignedMalloc(static_cast<unsigned>(byteCount), blockAlignment));
    if (block == nullptr)
        return false;
    if (stream.read(block, byteCount) != byteCount)
    {
        alignedFree(block);
        return false;
    }
    *this = Image(new InternalImage(block, width, height, stride, margin));
    return true;
}

}  // namespace q1framework
