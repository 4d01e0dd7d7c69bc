#include "render/graphics/Alignment.h"

#include <gtest/gtest.h>

using q1framework::Alignment;
using q1framework::getAlignedBox;
using q1framework::Point;
using q1framework::Rectangle;

TEST(AlignmentTest, EveryValuePlacesTheBoxAndCentringRoundsTowardsZero)
{
    // A 5 by 3 box in (10, 20, 20, 14): centre x 10 + (20 - 5) / 2 = 17, centre y 20 + 11 / 2 = 25,
    // right 10 + 20 - 5 = 25, bottom 20 + 14 - 3 = 31. Values outside the list centre.
    const Rectangle area(10, 20, 20, 14);
    const int cases[][3] = {{0, 10, 20}, {1, 25, 20}, {2, 17, 25}, {3, 17, 20}, {4, 17, 31}, {5, 10, 25},
                            {6, 25, 25}, {7, 10, 31}, {8, 25, 31}, {12, 17, 25}, {-1, 17, 25}};
    for (const auto& [value, x, y] : cases)
        EXPECT_EQ(getAlignedBox(area, Point(5, 3), static_cast<Alignment>(value)), Rectangle(x, y, 5, 3)) << value;
    EXPECT_EQ(getAlignedBox(area, Point(5, 3), Alignment::Stretch), area);
    // A larger box overhangs one pixel further right than left: (4 - 7) / 2 = -1, not -2.
    EXPECT_EQ(getAlignedBox(Rectangle(0, 0, 4, 4), Point(7, 7), Alignment::Centre), Rectangle(-1, -1, 7, 7));
}
