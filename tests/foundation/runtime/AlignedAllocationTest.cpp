#include "foundation/runtime/AlignedAllocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

using q1framework::alignedCalloc;
using q1framework::alignedFree;
using q1framework::alignedMalloc;

// The sanitizer build checks that every byte of each block can be written and that the block is
// freed through the allocator's own pointer.
TEST(AlignedAllocation, BlocksStartAtMultiplesOfTheAlignmentAndCallocZeroes)
{
    for (int alignment : {-16, 0, 1, 3, 8, 64, 100, 4096})   // below 1 counts as 1
        for (unsigned size : {0u, 1u, 7u, 65536u})
        {
            void* block = alignedMalloc(size, alignment);
            ASSERT_NE(block, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % static_cast<uintptr_t>(alignment < 1 ? 1 : alignment), 0u)
                << "alignment " << alignment << ", size " << size;
            std::memset(block, 0xFF, size);   // dirty, so that a reused block shows unzeroed bytes
            alignedFree(block);
            auto* zeroed = static_cast<unsigned char*>(alignedCalloc(size, alignment));
            for (unsigned i = 0; i < size; ++i)
                ASSERT_EQ(zeroed[i], 0) << "byte " << i;
            alignedFree(zeroed);
        }
    alignedFree(nullptr);
}
