#include "foundation/memory/MemoryBlock.h"

#include "foundation/memory/ByteOrder.h"
#include "foundation/memory/FileStream.h"
#include "foundation/memory/Stream.h"
#include "foundation/runtime/ReferenceCountedObject.h"
#include "foundation/string/String.h"

#include <cstdlib>
#include <cstring>

namespace q1framework
{

// The shared block behind MemoryBlock handles, counted atomically so that handles may cross
// threads.
class MemoryBlock::Internal : public ReferenceCountedObject
{
public:
    Internal(bool ownsData, void* blockData, int64_t blockSize)
        : ReferenceCountedObject(true), owned(ownsData), data(blockData), size(blockSize)
    {
    }

    ~Internal() override
    {
        if (owned)
            std::free(data);
    }

    bool owned;    // frees data and may resize it; false for wrapped memory
    void* data;    // null when empty
    int64_t size;  // bytes
};

namespace
{
// size bytes from malloc, null for a size below 1 or a failed allocation.
void* allocate(int64_t size)
{
    return size >= 1 ? std::malloc(static_cast<size_t>(size)) : nullptr;
}
}

MemoryBlock::MemoryBlock(int64_t size)
{
    void* data = allocate(size);
    internal = new Internal(true, data, data != nullptr ? size : 0);
}

MemoryBlock::MemoryBlock(const void* data, int64_t size, bool copy)
{
    if (!copy)
    {
        internal = new Internal(false, const_cast<void*>(data), data != nullptr && size > 0 ? size : 0);
        return;
    }
    void* copied = data != nullptr ? allocate(size) : nullptr;
    if (copied != nullptr)
        std::memcpy(copied, data, static_cast<size_t>(size));
    internal = new Internal(true, copied, copied != nullptr ? size : 0);
}

MemoryBlock::MemoryBlock(const MemoryBlock& other) : internal(other.internal)
{
    if (internal != nullptr)
        internal->incReferenceCount();
}

MemoryBlock& MemoryBlock::operator=(const MemoryBlock& other)
{
    // The new reference is taken before the old one goes, which makes self-assignment harmless.
    if (other.internal != nullptr)
        other.internal->incReferenceCount();
    Internal* old = internal;
    internal = other.internal;
    if (old != nullptr)
        old->decReferenceCount();
    return *this;
}

MemoryBlock::~MemoryBlock()
{
    if (internal != nullptr)
        internal->decReferenceCount();
}

void* MemoryBlock::getData() const
{
    return internal != nullptr ? internal->data : nullptr;
}

void* MemoryBlock::getDataAt(unsigned offset) const
{
    return static_cast<uint8_t*>(getData()) + offset;
}

int64_t MemoryBlock::getSize() const
{
    return internal != nullptr ? internal->size : 0;
}

bool MemoryBlock::isOwned() const
{
    return internal != nullptr && internal->owned;
}

bool MemoryBlock::setSize(int64_t size)
{
    // A negative size is a caller's error, not a request to empty the block: refused like a
    // size the allocator cannot give.
    if (!isOwned() || size < 0)
        return false;
    if (size == 0)
    {
        std::free(internal->data);
        internal->data = nullptr;
        internal->size = 0;
        return true;
    }
    void* resized = std::realloc(internal->data, static_cast<size_t>(size));
    if (resized == nullptr)
        return false;
    internal->data = resized;
    internal->size = size;
    return true;
}

void MemoryBlock::fill(int value)
{
    if (getData() != nullptr)
        std::memset(getData(), value, static_cast<size_t>(getSize()));
}

MemoryBlock MemoryBlock::duplicate() const
{
    return MemoryBlock(getData(), getSize(), true);
}

bool MemoryBlock::readFrom(Stream& stream)
{
    const int64_t size = stream.readInt64();
    // A length beyond what the stream holds cannot be honest: nothing is allocated for it.
    if (size < 0 || size > stream.getRemainingBytes())
    {
        setSize(0);
        return false;
    }
    if (!setSize(size))
        return false;
    if (size > 0)
        stream.read(getData(), size);
    return true;
}

bool MemoryBlock::writeTo(Stream& stream) const
{
    // Always true: a stream that takes fewer bytes tells its own callers (its size or state).
    const int64_t size = getSize();
    int64_t length = size;
    ByteOrder::toLittleEndian(length);
    stream.write(&length, sizeof length);
    if (size > 0)
        stream.write(getData(), size);
    return true;
}

MemoryBlock MemoryBlock::loadFromStream(Stream& stream)
{
    const int64_t size = stream.getSize();
    MemoryBlock block(0);
    if (size > 0 && block.setSize(size))
    {
        stream.setPosition(0);
        const int64_t bytesRead = stream.read(block.getData(), size);
        if (bytesRead < size)
            block.setSize(bytesRead);
    }
    return block;
}

MemoryBlock MemoryBlock::loadFromFile(const String& path)
{
    FileStream file(path, FileStream::forReading);
    return loadFromStream(file);
}

String MemoryBlock::toHexString(int spacing) const
{
    return String::toHexString(static_cast<const uint8_t*>(getData()), static_cast<unsigned>(getSize()), spacing);
}

}  // namespace q1framework
