#include "FrameAllocations.h"

#include <cstddef>
#include <cstdint>
#include <new>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
// The linker's bounds of this program's code.
extern char __executable_start;
extern char etext;
}

namespace
{
thread_local bool counting = false;
thread_local FrameAllocations::Counts counts;

void note(const void* caller)
{
    if (!counting)
        return;
    const auto address = reinterpret_cast<uintptr_t>(caller);
    if (address >= reinterpret_cast<uintptr_t>(&__executable_start) && address < reinterpret_cast<uintptr_t>(&etext))
        ++counts.framework;
    else
        ++counts.libraries;
}
}  // namespace

namespace FrameAllocations
{
void start()
{
    counts = Counts();
    counting = true;
}

Counts stop()
{
    counting = false;
    return counts;
}
}  // namespace FrameAllocations

extern "C" {
void* malloc(std::size_t size)
{
    note(__builtin_return_address(0));
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    note(__builtin_return_address(0));
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    note(__builtin_return_address(0));
    return __libc_realloc(block, size);
}

void free(void* block)
{
    __libc_free(block);
}
}

// operator new's caller is the code that asked, unlike malloc's, which would be libstdc++.
void* operator new(std::size_t size)
{
    note(__builtin_return_address(0));
    if (void* block = __libc_malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size)
{
    note(__builtin_return_address(0));
    if (void* block = __libc_malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    __libc_free(block);
}

void operator delete[](void* block) noexcept
{
    __libc_free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    __libc_free(block);
}

void operator delete[](void* block, std::size_t) noexcept
{
    __libc_free(block);
}
