#pragma once

// Counts the heap allocations made on the calling thread between start and stop, whoever makes
// them: this program, or a plug-in it loaded. Two variants, chosen by the build: in a plain build
// this program's own malloc, calloc and realloc stand in front of the C library's; under a
// sanitizer, whose allocator must stay in place, its allocation hook counts instead.
namespace AllocationCounter
{
// Starts counting on the calling thread, from 0.
void start();
// Stops counting on the calling thread; answers the allocations since start.
long stop();
}  // namespace AllocationCounter
