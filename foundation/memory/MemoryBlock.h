#pragma once

#include <cstdint>

namespace q1framework
{

class Stream;
class String;

// The framework's shared byte buffer: a handle of one pointer onto a reference-counted block.
// Copies share the bytes; duplicate() makes an independent copy.
//
// Every constructor creates a live block, also for size 0, so a handle is never null in use; the
// accessors still answer for a null handle (0, null, false). A block either owns its bytes (from
// the C allocator; it may be resized and frees them) or wraps memory that belongs to someone else,
// which must outlive every handle and which is never resized or freed.
//
// Persistent form (writeTo/readFrom): a 64-bit little-endian length, then the raw bytes.
//
// Thread contract: handles may be copied and released on any thread (the count is atomic); the
// bytes themselves are not protected.
class MemoryBlock
{
public:
    class Internal;

    // An owned block of size bytes with undefined contents. Below 1, or when the allocation
    // fails, the block is empty: no data, size 0.
    explicit MemoryBlock(int64_t size = 0);
    // copy true: an owned copy of size bytes from data. copy false: wraps data without owning it.
    MemoryBlock(const void* data, int64_t size, bool copy);
    MemoryBlock(const MemoryBlock& other);
    MemoryBlock& operator=(const MemoryBlock& other);
    ~MemoryBlock();

    void* getData() const;                      // null for an empty block
    void* getDataAt(unsigned offset) const;     // data + offset, unchecked
    int64_t getSize() const;
    bool isOwned() const;

    // Resizes an owned block, keeping its first bytes; new bytes are undefined. Size 0 frees the
    // data. False for a wrapped block, a negative size or a failed allocation, which leave the
    // block as it was. Every handle on the block sees the change.
    bool setSize(int64_t size);
    // Sets every byte to value's low byte; nothing for an empty block. Also works on wrapped memory.
    void fill(int value);
    // A new owned block with a copy of the bytes, sharing nothing.
    MemoryBlock duplicate() const;

    // Reads the persistent form into this block. False when the resize failed, or when the
    // length is negative or more than the stream has left: nothing is allocated for such a length
    // and an owned block is emptied. A short read of honest data is not reported.
    bool readFrom(Stream& stream);
    // Writes the persistent form; always true. A stream that refuses bytes shows it in its own
    // position and size.
    bool writeTo(Stream& stream) const;

    // The whole stream from its start, in a new owned block; empty for an empty stream. A short
    // read leaves the block at what was read.
    static MemoryBlock loadFromStream(Stream& stream);
    // The whole file; an empty block when the file does not open.
    static MemoryBlock loadFromFile(const String& path);

    // Two upper-case hex digits a byte, spacing blanks between bytes (see String::toHexString).
    String toHexString(int spacing) const;

private:
    Internal* internal;
};

}  // namespace q1framework
