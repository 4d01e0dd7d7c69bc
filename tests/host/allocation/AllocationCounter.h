#pragma once

// Counts the heap allocations made on the calling thread between start and stop, whoever makes
// them: this program, or a plug-in it loaded. Two variants, chosen by the build, call note() on
// every allocation of the process: in a plain build this program's own malloc, calloc and realloc
// stand in front of the C library's; under a sanitizer, whose allocator must stay in place, its
// allocation hook does. A variant that sees nothing fails KelvaneAllocation's test of the counter.
namespace AllocationCounter
{
inline thread_local bool counting = false;
inline thread_local long allocations = 0;

// Starts counting on the calling thread, from 0.
inline void start()
{
    allocations = 0;
    counting = true;
}

// Stops counting on the calling thread; answers the allocations since start.
inline long stop()
{
    counting = false;
    return allocations;
}

inline void note()
{
    if (counting)
        ++allocations;
}
}  // namespace AllocationCounter
