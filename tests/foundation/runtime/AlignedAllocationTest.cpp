#include "foundation/runtime/AlignedAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

using q1framework::alignedCalloc;
using q1framework::alignedFree;
using q1framework::alignedMalloc;

// The sanitizer build checks that every byte of each block can be written and that the block is
// freed through the allocator's own pointer.
TEST(AlignedAllocation, BlocksStartAtMultiplesOfTheAlignment)
{
    for (int alignment : {1, 2, 3, 8, 16, 32, 64, 100, 4096})
        for (unsigned size : {0u, 1u, 7u, 1000u, 65536u})
        {
            void* block = alignedMalloc(size, alignment);
            ASSERT_NE(block, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % static_cast<uintptr_t>(alignment), 0u)
                << "alignment " << alignment << ", size " << size;
            std::memset(block, 0x5A, size);
            alignedFree(block);
        }
}

TEST(AlignedAllocation, CallocZeroesTheWholeBlock)
{
    // Allocate and dirty first, so that a reused block would show any byte left unzeroed.
    for (int round = 0; round < 4; ++round)
    {
        void* dirty = alignedMalloc(4096, 64);
        std::memset(dirty, 0xFF, 4096);
        alignedFree(dirty);
        auto* block = static_cast<unsigned char*>(alignedCalloc(4096, 64));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 64, 0u);
        for (int i = 0; i < 4096; ++i)
            ASSERT_EQ(block[i], 0) << "byte " << i;
        alignedFree(block);
    }
}

TEST(AlignedAllocation, OddArgumentsAreQuiet)
{
    for (int alignment : {0, -16})
    {
        void* block = alignedMalloc(16, alignment);
        ASSERT_NE(block, nullptr) << "an alignment below 1 counts as 1";
        std::memset(block, 1, 16);
        alignedFree(block);
    }
    alignedFree(nullptr);
}
