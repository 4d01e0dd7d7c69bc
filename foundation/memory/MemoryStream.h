#pragma once

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/Stream.h"

namespace q1framework
{

// A stream over a MemoryBlock. The stream shares the block with every other handle on it, so two
// streams on one block see each other's writes, each at its own position.
//
// Writes past the end grow the block by exactly the missing bytes (no slack). A stream over a
// wrapped block (one that does not own its bytes) is read-only.
//
// Thread contract: one thread at a time.
class MemoryStream : public Stream
{
public:
    // A writable stream over a new, empty, owned block.
    MemoryStream();
    // A stream over block, shared, at position 0; writable when the block owns its bytes.
    explicit MemoryStream(const MemoryBlock& block);

    // Copies at most the bytes between the position and the end.
    int64_t read(void* data, int64_t count) override;
    // 0 when read-only, for a count below 1, or when the block cannot grow.
    int64_t write(const void* data, int64_t count) override;
    int64_t getPosition() override { return position; }
    int64_t getSize() override { return block.getSize(); }
    // Clamps to [0, size]; never extends the block.
    void setPosition(int64_t newPosition) override;

    void* getData() const { return block.getData(); }
    // The block itself, shared with the stream.
    MemoryBlock& getMemoryBlock() { return block; }
    // Empties the block and rewinds. False for a read-only stream.
    bool clear();

private:
    int64_t position = 0;
    MemoryBlock block;
};

}  // namespace q1framework
