// The allocation counter of plain builds: malloc, calloc and realloc of the whole process, the
// loaded plug-in included, come here first and go on to the C library's allocator.

#include "AllocationCounter.h"

#include <cstddef>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size)
{
    AllocationCounter::note();
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    AllocationCounter::note();
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    AllocationCounter::note();
    return __libc_realloc(block, size);
}

void free(void* block)
{
    __libc_free(block);
}
}
