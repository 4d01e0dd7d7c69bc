#include "foundation/runtime/StackSize.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

TEST(StackSize, PrintsOneLineWithTheReportedSize)
{
    testing::internal::CaptureStdout();
    q1framework::printStackSize();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(std::regex_match(printed, std::regex("Current stack size: [0-9]+\n"))) << printed;
}
