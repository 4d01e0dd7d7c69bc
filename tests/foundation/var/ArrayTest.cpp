#include "foundation/var/Array.h"

#include "foundation/string/String.h"

#include <gtest/gtest.h>

#include <string>

using q1framework::Array;
using q1framework::String;

namespace
{
// Counts live instances, to see constructions and destructions that the array performs.
struct Tracked
{
    static int alive;
    int value;
    explicit Tracked(int v = 0) : value(v) { ++alive; }
    Tracked(const Tracked& other) : value(other.value) { ++alive; }
    ~Tracked() { --alive; }
    bool operator==(const Tracked& other) const { return value == other.value; }
};
int Tracked::alive = 0;

template <typename T>
std::string contents(const Array<T>& array)
{
    std::string text;
    for (const T& item : array)
        text += std::to_string(item) + " ";
    return text;
}
}

TEST(Array, GrowsByHalfItsCountAndAtLeastFive)
{
    Array<int> array;
    EXPECT_EQ(array.getCapacity(), 0);
    const int expected[] = {5, 5, 5, 5, 5, 10, 10, 10, 10, 10, 15, 15, 15, 15, 15, 22};
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_EQ(array.add(i), i);
        EXPECT_EQ(array.getCapacity(), expected[i]) << "after add number " << i + 1;
    }
    for (int i = 16; i < 23; ++i)
        array.add(i);
    EXPECT_EQ(array.getCapacity(), 33);
    array.clear();
    EXPECT_EQ(array.getCount(), 0);
    EXPECT_EQ(array.getCapacity(), 33) << "the block never shrinks";
}

TEST(Array, InsertOutOfRangeAppendsAndRemoveOutOfRangeDoesNothing)
{
    Array<int> array;
    array.add(1);
    array.add(2);
    array.insert(-1, 3);
    array.insert(array.getCount() + 1, 4);
    array.insert(0, 0);
    array.insert(2, 9);
    EXPECT_EQ(contents(array), "0 1 9 2 3 4 ");
    array.removeAt(array.getCount());
    array.removeAt(-1);
    EXPECT_EQ(array.getCount(), 6);
    array.removeAt(2);
    array.removeAt(0);
    EXPECT_EQ(contents(array), "1 2 3 4 ");
    EXPECT_EQ(array.getFirstIndexOf(3), 2);
    EXPECT_EQ(array.getFirstIndexOf(7), -1);
}

TEST(Array, ListenerStyleAddAndRemoveKeepOrder)
{
    Array<int> listeners;
    EXPECT_TRUE(listeners.addIfNotAlreadyThere(7));
    EXPECT_TRUE(listeners.addIfNotAlreadyThere(3));
    EXPECT_FALSE(listeners.addIfNotAlreadyThere(7));
    listeners.add(5);
    listeners.add(3);
    EXPECT_TRUE(listeners.removeFirstMatching(3));
    EXPECT_EQ(contents(listeners), "7 5 3 ");
    EXPECT_FALSE(listeners.removeFirstMatching(42));
}

TEST(Array, ConstructsAndDestroysEachElementOnceAcrossMoves)
{
    Tracked::alive = 0;
    {
        Array<Tracked> array;
        for (int i = 0; i < 40; ++i)  // several reallocations move the elements byte by byte
            array.add(Tracked(i));
        EXPECT_EQ(Tracked::alive, 40);
        array.insert(10, Tracked(100));
        array.removeAt(0);
        EXPECT_EQ(Tracked::alive, 40);
        EXPECT_EQ(array[9].value, 100);

        Array<Tracked> copy(array);
        EXPECT_EQ(Tracked::alive, 80);
        Array<Tracked> moved(std::move(copy));
        EXPECT_EQ(Tracked::alive, 80);
        EXPECT_EQ(copy.getCount(), 0);
        EXPECT_EQ(moved[39].value, 39);
        moved = array;
        EXPECT_EQ(Tracked::alive, 80);
        array.clear();
        EXPECT_EQ(Tracked::alive, 40);
    }
    EXPECT_EQ(Tracked::alive, 0);
}

TEST(Array, AddAndInsertTakeElementsOfTheSameArray)
{
    // Each call copies an element while growing or shifting moves the block it lives in.
    Array<String> array;
    for (int i = 0; i < 5; ++i)
        array.add(String("element ") + String(i));
    ASSERT_EQ(array.getCount(), array.getCapacity());
    array.add(array[0]);
    EXPECT_EQ(array[5], "element 0");
    array.insert(0, array[4]);
    EXPECT_EQ(array[0], "element 4");
    EXPECT_EQ(array[5], "element 4");
    array.insert(1, array[3]);
    EXPECT_EQ(array[1], "element 2");
    EXPECT_EQ(array.getCount(), 8);
}
