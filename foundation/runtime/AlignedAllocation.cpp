#include "foundation/runtime/AlignedAllocation.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace q1framework
{

namespace
{
constexpr size_t headerSize = 8;
static_assert(sizeof(void*) <= headerSize, "the header holds one pointer");
}

void* alignedMalloc(unsigned size, int alignment)
{
    const size_t step = alignment > 1 ? static_cast<size_t>(alignment) : 1;
    void* raw = std::malloc(static_cast<size_t>(size) + step + headerSize);
    if (raw == nullptr)
        return nullptr;
    // Rounding up behind the header moves at most step - 1 bytes further.
    const uintptr_t behindHeader = reinterpret_cast<uintptr_t>(raw) + headerSize;
    const uintptr_t aligned = (behindHeader + step - 1) / step * step;
    // The header need not be aligned for a pointer, so it is copied bytewise.
    std::memcpy(reinterpret_cast<void*>(aligned - headerSize), &raw, sizeof raw);
    return reinterpret_cast<void*>(aligned);
}

void* alignedCalloc(unsigned size, int alignment)
{
    void* block = alignedMalloc(size, alignment);
    if (block != nullptr)
        std::memset(block, 0, size);
    return block;
}

void alignedFree(void* block)
{
    if (block == nullptr)
        return;
    void* raw = nullptr;
    std::memcpy(&raw, static_cast<char*>(block) - headerSize, sizeof raw);
    std::free(raw);
}

}  // namespace q1framework
