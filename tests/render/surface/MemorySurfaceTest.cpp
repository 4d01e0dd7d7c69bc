#include "render/surface/MemorySurface.h"

#include <gtest/gtest.h>

using q1framework::MemorySurface;
using q1framework::Point;

TEST(MemorySurfaceTest, PixelsStartInsideAClearedMarginAndImpossibleSizesHaveNone)
{
    MemorySurface surface(30, 20);
    int stride = 0;
    const uint8_t* pixels = surface.getPixels(&stride);
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(stride, (30 + 32) * 4);
    // The whole block is zero: from 16 lines and 16 pixels before (0, 0) to as far after the last.
    const uint8_t* block = pixels - 16 * stride - 16 * 4;
    for (int byte = 0; byte < (20 + 32) * stride; ++byte)
        ASSERT_EQ(block[byte], 0) << byte;

    MemorySurface empty(0, -4);
    EXPECT_EQ(empty.getSize(), Point(0, 0));
    EXPECT_NE(empty.getPixels(&stride), nullptr);  // the margin alone
    MemorySurface huge(1 << 21, 4);
    EXPECT_EQ(huge.getSize(), Point(0, 0));
    EXPECT_EQ(huge.getPixels(&stride), nullptr);
}
