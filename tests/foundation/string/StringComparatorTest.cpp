#include "foundation/string/StringComparator.h"

#include <gtest/gtest.h>

using q1framework::Comparator;
using q1framework::String;
using q1framework::StringComparator;

TEST(StringComparator, OrdersTextIgnoringAsciiCase)
{
    StringComparator comparator;
    Comparator<String>& ordering = comparator;
    EXPECT_EQ(ordering.compare(String("Hello"), String("hELLO")), 0);
    EXPECT_LT(ordering.compare(String("abc"), String("ABD")), 0);
    EXPECT_GT(ordering.compare(String("b"), String("A")), 0);
    // Letters fold to lower case: byte order would put "Z" before "a" and "_" behind "A".
    EXPECT_GT(ordering.compare(String("Z"), String("a")), 0);
    EXPECT_LT(ordering.compare(String("_"), String("A")), 0);
    EXPECT_EQ(ordering.compare(String(), String("x").erase(0, 1)), 0);
    EXPECT_LT(ordering.compare(String(), String("a")), 0);
    // Other bytes order by value, after all ASCII.
    EXPECT_GT(ordering.compare(String("\xC3\xA9"), String("z")), 0);
    EXPECT_NE(ordering.compare(String("\xC3\xA9"), String("\xC3\x89")), 0);
}
