#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleF.h"
#include "media/geometry/RectangleList.h"

#include <gtest/gtest.h>

using q1framework::Point;
using q1framework::Rectangle;
using q1framework::RectangleF;
using q1framework::RectangleList;

TEST(Rectangle, IntersectionOfOverlappingRectanglesIsTheCommonPart)
{
    const Rectangle first(10, 20, 30, 40);   // x 10..40, y 20..60
    const Rectangle second(25, 5, 100, 30);  // x 25..125, y 5..35
    EXPECT_EQ(first.getIntersection(second), Rectangle(25, 20, 15, 15));
    EXPECT_EQ(second.getIntersection(first), Rectangle(25, 20, 15, 15));
    EXPECT_EQ(first.getIntersection(Rectangle(0, 0, 1000, 1000)), first);
    EXPECT_EQ(first.getIntersection(Rectangle(15, 25, 5, 5)), Rectangle(15, 25, 5, 5));
}

TEST(Rectangle, DisjointRectanglesIntersectEmptyAtTheLargerCorner)
{
    // Side by side: the width becomes 0 and the position stays at the larger edges.
    EXPECT_EQ(Rectangle(0, 0, 10, 10).getIntersection(Rectangle(30, 5, 10, 10)), Rectangle(30, 5, 0, 5));
    // Apart in both directions.
    EXPECT_EQ(Rectangle(0, 0, 10, 10).getIntersection(Rectangle(50, 60, 5, 5)), Rectangle(50, 60, 0, 0));
    // Touching edges share no pixel.
    const Rectangle touching = Rectangle(0, 0, 10, 10).getIntersection(Rectangle(10, 0, 10, 10));
    EXPECT_TRUE(touching.isEmpty());
    EXPECT_FALSE(Rectangle(0, 0, 10, 10).intersects(Rectangle(10, 0, 10, 10)));
    EXPECT_TRUE(Rectangle(0, 0, 10, 10).intersects(Rectangle(9, 9, 10, 10)));
}

TEST(Rectangle, EmptinessAndContainment)
{
    EXPECT_TRUE(Rectangle(5, 5, 0, 10).isEmpty());
    EXPECT_TRUE(Rectangle(5, 5, 10, -1).isEmpty());
    EXPECT_FALSE(Rectangle(5, 5, 1, 1).isEmpty());
    const Rectangle area(2, 3, 4, 5);
    EXPECT_TRUE(area.contains(Point(2, 3)));
    EXPECT_TRUE(area.contains(Point(5, 7)));
    EXPECT_FALSE(area.contains(Point(6, 7)));
    EXPECT_FALSE(area.contains(Point(5, 8)));
    EXPECT_EQ(area.translated(Point(-2, 10)), Rectangle(0, 13, 4, 5));
}

TEST(RectangleF, ToRectangleCoversTheFractionalAreaAndExpands)
{
    EXPECT_EQ(RectangleF(1.5, 2.25, 3.0, 1.0).toRectangle(0), Rectangle(1, 2, 4, 2));
    EXPECT_EQ(RectangleF(1.5, 2.25, 3.0, 1.0).toRectangle(2), Rectangle(-1, 0, 8, 6));
    EXPECT_EQ(RectangleF(4.0, 5.0, 2.0, 3.0).toRectangle(0), Rectangle(4, 5, 2, 3));
    EXPECT_EQ(RectangleF(-0.5, -1.5, 1.0, 1.0).toRectangle(0), Rectangle(-1, -2, 2, 2));
}

TEST(RectangleList, GrowsByHalfTheCountOrFive)
{
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
