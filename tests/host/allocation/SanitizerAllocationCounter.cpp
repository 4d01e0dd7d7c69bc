// The allocation counter of sanitizer builds: the sanitizer's allocator tells a hook of every
// allocation in the process.

#include "AllocationCounter.h"

#include <cstddef>

// The sanitizer runtime's allocator interface.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*mallocHook)(const volatile void*, std::size_t),
                                                         void (*freeHook)(const volatile void*));

namespace
{
thread_local bool counting = false;
thread_local long allocations = 0;

void noteAllocation(const volatile void*, std::size_t)
{
    if (counting)
        ++allocations;
}

void noteFree(const volatile void*)
{
}

const bool hooksInstalled = __sanitizer_install_malloc_and_free_hooks(noteAllocation, noteFree) != 0;
}  // namespace

namespace AllocationCounter
{
void start()
{
    allocations = hooksInstalled ? 0 : -1;
    counting = true;
}

long stop()
{
    counting = false;
    return allocations;
}
}  // namespace AllocationCounter
