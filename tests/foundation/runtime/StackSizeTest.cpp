#include "foundation/runtime/StackSize.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace
{
// What printStackSize prints, called `depth` frames of 1 KiB below the caller.
long printedAtDepth(int depth)
{
    volatile char frame[1024];
    frame[0] = static_cast<char>(depth);
    if (depth > 0)
        return printedAtDepth(depth - 1) + frame[0] - frame[0];
    testing::internal::CaptureStdout();
    q1framework::printStackSize();
    const std::string printed = testing::internal::GetCapturedStdout();
    long bytes = -1;
    EXPECT_EQ(std::sscanf(printed.c_str(), "Current stack size: %li\n", &bytes), 1) << printed;
    return bytes;
}
}  // namespace

TEST(StackSize, PrintsTheBytesOfStackInUseWhichGrowWithDeeperCalls)
{
    const long shallow = printedAtDepth(0);
    const long deep = printedAtDepth(64);
    EXPECT_GT(shallow, 0);
    EXPECT_GE(deep - shallow, 64 * 1024);
}
