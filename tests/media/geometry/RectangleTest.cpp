#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleF.h"
#include "media/geometry/RectangleList.h"

#include <gtest/gtest.h>

using namespace q1framework;

TEST(Rectangle, IntersectionKeepsTheLargerCornerWhenEmpty)
{
    // x 10..40, y 20..60 against x 25..125, y 5..35.
    const Rectangle first(10, 20, 30, 40), second(25, 5, 100, 30);
    EXPECT_EQ(first.getIntersection(second), Rectangle(25, 20, 15, 15));
    EXPECT_EQ(second.getIntersection(first), Rectangle(25, 20, 15, 15));
    EXPECT_EQ(first.getIntersection(Rectangle(15, 25, 5, 5)), Rectangle(15, 25, 5, 5));
    // Disjoint: width or height 0, the position at the maxima.
    EXPECT_EQ(Rectangle(0, 0, 10, 10).getIntersection(Rectangle(30, 5, 10, 10)), Rectangle(30, 5, 0, 5));
    EXPECT_EQ(Rectangle(0, 0, 10, 10).getIntersection(Rectangle(50, 60, 5, 5)), Rectangle(50, 60, 0, 0));
    // Touching edges share no pixel.
    EXPECT_TRUE(Rectangle(0, 0, 10, 10).getIntersection(Rectangle(10, 0, 10, 10)).isEmpty());
    EXPECT_FALSE(Rectangle(0, 0, 10, 10).intersects(Rectangle(10, 0, 10, 10)));
    EXPECT_TRUE(Rectangle(0, 0, 10, 10).intersects(Rectangle(9, 9, 10, 10)));
    EXPECT_TRUE(Rectangle(2, 3, 4, 5).contains(Point(5, 7)));
    EXPECT_FALSE(Rectangle(2, 3, 4, 5).contains(Point(6, 7)) || Rectangle(2, 3, 4, 5).contains(Point(5, 8)));
}

TEST(Rectangle, FractionalRectanglesAndTheListsGrowth)
{
    EXPECT_EQ(RectangleF(1.5, 2.25, 3.0, 1.0).toRectangle(0), Rectangle(1, 2, 4, 2));
    EXPECT_EQ(RectangleF(1.5, 2.25, 3.0, 1.0).toRectangle(2), Rectangle(-1, 0, 8, 6));
    EXPECT_EQ(RectangleF(-0.5, -1.5, 1.0, 1.0).toRectangle(0), Rectangle(-1, -2, 2, 2));

    // Full lists grow by the greater of 5 and half the count.
    RectangleList list;
    std::vector<int32_t> capacities;
    for (int index = 0; index < 40; ++index)
    {
        list.add(Rectangle(index, 0, 1, 1));
        if (capacities.empty() || capacities.back() != list.getCapacity())
            capacities.push_back(list.getCapacity());
    }
    EXPECT_EQ(capacities, (std::vector<int32_t>{5, 10, 15, 22, 33, 49}));
    EXPECT_EQ(list[39], Rectangle(39, 0, 1, 1));
}
