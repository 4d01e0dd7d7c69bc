#include "foundation/var/Array.h"

#include "foundation/string/String.h"

#include <gtest/gtest.h>

using q1framework::Array;
using q1framework::String;

namespace
{
// Counts live instances, to see the constructions and destructions that the array performs.
struct Tracked
{
    static int alive;
    int value;
    explicit Tracked(int v = 0) : value(v) { ++alive; }
    Tracked(const Tracked& other) : value(other.value) { ++alive; }
    ~Tracked() { --alive; }
};
int Tracked::alive = 0;
}

TEST(Array, GrowsByHalfItsCountAndAtLeastFive)
{
    // Full at count c, the capacity becomes c + max(5, c / 2): 5, 10, 15, 22, 33.
    Array<int> array;
    EXPECT_EQ(array.getCapacity(), 0);
    const int expected[] = {5, 5, 5, 5, 5, 10, 10, 10, 10, 10, 15, 15, 15, 15, 15, 22, 22, 22, 22, 22, 22, 22, 33};
    for (int i = 0; i < 23; ++i)
    {
        EXPECT_EQ(array.add(i), i);
        EXPECT_EQ(array.getCapacity(), expected[i]) << "after add number " << i + 1;
    }
    array.clear();
    EXPECT_EQ(array.getCapacity(), 33) << "the block never shrinks";
}

TEST(Array, ConstructsAndDestroysEachElementOnceAcrossMoves)
{
    Tracked::alive = 0;
    {
        Array<Tracked> array;
        for (int i = 0; i < 40; ++i)   // several reallocations move the elements byte by byte
            array.add(Tracked(i));
        array.insert(10, Tracked(100));
        array.insert(-1, Tracked(41));   // out of range: appends
        array.removeAt(0);
        array.removeAt(41);              // out of range: nothing
        EXPECT_EQ(Tracked::alive, 41);
        EXPECT_EQ(array[9].value, 100);
        EXPECT_EQ(array[40].value, 41);

        Array<Tracked> copy(array);
        Array<Tracked> moved(std::move(copy));
        moved = array;
        EXPECT_EQ(Tracked::alive, 82);
        EXPECT_EQ(moved[39].value, 39);
        array.clear();
        EXPECT_EQ(Tracked::alive, 41);
    }
    EXPECT_EQ(Tracked::alive, 0);
}

TEST(Array, AddAndInsertTakeElementsOfTheSameArray)
{
    // Each call copies an element while growing or shifting moves the block it lives in.
    Array<String> array;
    for (int i = 0; i < 5; ++i)
        array.add(String(i));
    array.add(array[0]);
    array.insert(0, array[4]);
    array.insert(1, array[3]);
    EXPECT_TRUE(array[0] == "4" && array[1] == "2" && array[6] == "4" && array[7] == "0");
}
