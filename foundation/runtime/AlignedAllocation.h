#pragma once

namespace q1framework
{

// Blocks from the C allocator whose address is a multiple of a given alignment, for pixel rows
// and vector code. Each block keeps the allocator's own pointer in the eight bytes just before the
// address it hands out, and costs size + alignment + 8 bytes.
//
// Thread contract: any thread (not the audio thread, which never allocates).

// A block of size bytes, contents undefined, at a multiple of alignment (any value from 1; below
// 1 counts as 1). Null when the allocator fails. Free it with alignedFree only.
void* alignedMalloc(unsigned size, int alignment);

// The same, with the size bytes zeroed.
void* alignedCalloc(unsigned size, int alignment);

// Frees a block from alignedMalloc or alignedCalloc; null is ignored.
void alignedFree(void* block);

}  // namespace q1framework
