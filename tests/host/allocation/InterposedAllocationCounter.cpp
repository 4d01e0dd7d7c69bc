// The allocation counter of plain builds: malloc, calloc and realloc of the whole process, the
// loaded plug-in included, come here first and go on to the C library's allocator.

#include "AllocationCounter.h"

#include <cstddef>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
}

namespace
{
thread_local bool counting = false;
thread_local long allocations = 0;

void note()
{
    if (counting)
        ++allocations;
}
}  // namespace

extern "C" void* malloc(std::size_t size)
{
    note();
    return __libc_malloc(size);
}

extern "C" void* calloc(std::size_t count, std::size_t size)
{
    note();
    return __libc_calloc(count, size);
}

extern "C" void* realloc(void* block, std::size_t size)
{
    note();
    return __libc_realloc(block, size);
}

extern "C" void free(void* block)
{
    __libc_free(block);
}

namespace AllocationCounter
{
void start()
{
    allocations = 0;
    counting = true;
}

long stop()
{
    counting = false;
    return allocations;
}
}  // namespace AllocationCounter
