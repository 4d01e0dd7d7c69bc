#include "foundation/memory/MemoryStream.h"

#include <cstdint>
#include <cstring>

namespace q1framework
{

MemoryStream::MemoryStream() : block(0)
{
    writable = true;
}

MemoryStream::MemoryStream(const MemoryBlock& sharedBlock) : block(sharedBlock)
{
    writable = block.isOwned();
}

int64_t MemoryStream::read(void* data, int64_t count)
{
    // Another stream on the block may have shrunk it behind this one's position.
    const int64_t available = block.getSize() - position;
    if (count > available)
        count = available;
    if (count <= 0)
        return 0;
    std::memcpy(data, static_cast<const uint8_t*>(block.getData()) + position, static_cast<size_t>(count));
    position += count;
    return count;
}

int64_t MemoryStream::write(const void* data, int64_t count)
{
    if (!writable || count <= 0 || count > INT64_MAX - position)
        return 0;
    if (count > block.getSize() - position && !block.setSize(position + count))
        return 0;
    std::memcpy(static_cast<uint8_t*>(block.getData()) + position, data, static_cast<size_t>(count));
    position += count;
    return count;
}

void MemoryStream::setPosition(int64_t newPosition)
{
    const int64_t size = block.getSize();
    position = newPosition < 0 ? 0 : (newPosition > size ? size : newPosition);
}

bool MemoryStream::clear()
{
    if (!writable)
        return false;
    position = 0;
    return block.setSize(0);
}

}  // namespace q1framework
