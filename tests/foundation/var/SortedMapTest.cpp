#include "foundation/var/SortedMap.h"

#include "foundation/string/String.h"
#include "foundation/var/Var.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::SortedMap;
using q1framework::String;
using q1framework::Var;

namespace
{
std::string keysOf(const SortedMap<int, Var>& map)
{
    std::string keys;
    for (const auto& entry : map)
        keys += std::to_string(entry.key) + " ";
    return keys;
}
}

TEST(SortedMap, KeepsInsertionOrderThroughReplacementAndRemoval)
{
    const String text("property text");
    {
        SortedMap<int, Var> map;
        map.set(7, Var(70));
        map.set(3, Var(text));
        map.set(5, Var(text));
        map.set(9, Var(90));
        map.set(3, Var(30));
        EXPECT_EQ(keysOf(map), "7 3 5 9 ");
        EXPECT_EQ(map.find(3)->getInt(), 30);

        EXPECT_TRUE(map.remove(3));
        EXPECT_FALSE(map.remove(3));
        EXPECT_EQ(keysOf(map), "7 5 9 ");
        EXPECT_FALSE(map.contains(3));
        EXPECT_EQ(map.find(5)->getString().getCString(), text.getCString());

        map.set(3, Var(33));
        EXPECT_EQ(keysOf(map), "7 5 9 3 ") << "a key set again after removal goes to the end";
    }
    EXPECT_STREQ(text.getCString(), "property text") << "the map released only its own handles";
}
