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
template <typename Value>
std::string keysOf(const SortedMap<int, Value>& map)
{
    std::string keys;
    for (const auto& entry : map)
        keys += std::to_string(entry.key) + " ";
    return keys;
}
}

TEST(SortedMap, KeepsInsertionOrderThroughReplacementAndRemoval)
{
    SortedMap<int, Var> map;
    map.set(7, Var(70));
    map.set(3, Var(String("three")));
    map.set(5, Var(50));
    map.set(3, Var(30));
    EXPECT_EQ(keysOf(map), "7 3 5 ");
    EXPECT_EQ(map.getCount(), 3);
    EXPECT_EQ(map.find(3)->getInt(), 30);

    EXPECT_TRUE(map.remove(3));
    EXPECT_EQ(keysOf(map), "7 5 ");
    EXPECT_FALSE(map.remove(3));
    EXPECT_EQ(map.find(3), nullptr);
    EXPECT_FALSE(map.contains(3));
    EXPECT_EQ(map.find(5)->getInt(), 50);

    map.set(3, Var(33));
    EXPECT_EQ(keysOf(map), "7 5 3 ") << "a key set again after removal goes to the end";
}

TEST(SortedMap, OwnsCopiesOfItsValues)
{
    const String text("property text");
    {
        SortedMap<int, Var> map;
        for (int key = 0; key < 12; ++key)
            map.set(key, Var(text));
        map.set(4, Var(1.5));
        EXPECT_TRUE(map.remove(0));
        EXPECT_EQ(map.find(4)->getDouble(), 1.5);
        EXPECT_EQ(map.find(11)->getString().getCString(), text.getCString());

        const SortedMap<int, Var>& readOnly = map;
        EXPECT_TRUE(readOnly.contains(11));
        EXPECT_EQ(readOnly.find(99), nullptr);
    }
    EXPECT_STREQ(text.getCString(), "property text");
}

TEST(SortedMap, PlainValuesAreOverwrittenInPlace)
{
    // The colour flavour: packed 0xAARRGGBB values beside their keys, eight bytes an entry.
    SortedMap<int, uint32_t> colours;
    colours.set(2, 0xFF000000);
    colours.set(1, 0xFFFFFFFF);
    const uint32_t* stored = colours.find(2);
    colours.set(2, 0x80FF0000);
    EXPECT_EQ(colours.find(2), stored);
    EXPECT_EQ(*stored, 0x80FF0000u);
    EXPECT_EQ(keysOf(colours), "2 1 ");
    EXPECT_TRUE(colours.contains(1));
    EXPECT_FALSE(colours.contains(3));
    EXPECT_EQ(sizeof(SortedMap<int, uint32_t>::Entry), 8u);
}
