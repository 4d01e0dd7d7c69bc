#include "render/graphics/Alignment.h"

#include <gtest/gtest.h>

using q1framework::Alignment;
using q1framework::getAlignedBox;
using q1framework::Point;
using q1framework::Rectangle;

TEST(AlignmentTest, EveryValuePlacesTheBoxAtItsSides)
{
    // A 5 by 3 box in (10, 20, 20, 14): centre x 10 + (20 - 5) / 2 = 17, centre y 20 + 11 / 2 = 25,
    // right 10 + 20 - 5 = 25, bottom 20 + 14 - 3 = 31.
    const Rectangle area(10, 20, 20, 14);
    const Point box(5, 3);
    const struct
    {
        Alignment alignment;
        int x;
        int y;
    } cases[] = {
        {Alignment::TopLeft, 10, 20},      {Alignment::TopRight, 25, 20},   {Alignment::Centre, 17, 25},
        {Alignment::TopCentre, 17, 20},    {Alignment::BottomCentre, 17, 31}, {Alignment::CentreLeft, 10, 25},
        {Alignment::CentreRight, 25, 25},  {Alignment::BottomLeft, 10, 31}, {Alignment::BottomRight, 25, 31},
    };
    for (const auto& each : cases)
        EXPECT_EQ(getAlignedBox(area, box, each.alignment), Rectangle(each.x, each.y, 5, 3))
            << static_cast<int>(each.alignment);
    EXPECT_EQ(getAlignedBox(area, box, Alignment::Stretch), area);
    EXPECT_EQ(getAlignedBox(area, box, static_cast<Alignment>(12)), Rectangle(17, 25, 5, 3));
    EXPECT_EQ(getAlignedBox(area, box, static_cast<Alignment>(-1)), Rectangle(17, 25, 5, 3));
}

TEST(AlignmentTest, CentringRoundsTowardsZeroAndALargerBoxOverhangs)
{
    // (4 - 7) / 2 = -1 (not -2): the overhang goes one pixel further right than left.
    EXPECT_EQ(getAlignedBox(Rectangle(0, 0, 4, 4), Point(7, 7), Alignment::Centre), Rectangle(-1, -1, 7, 7));
    EXPECT_EQ(getAlignedBox(Rectangle(0, 0, 4, 4), Point(7, 1), Alignment::BottomRight), Rectangle(-3, 3, 7, 1));
    EXPECT_EQ(getAlignedBox(Rectangle(3, 3, 5, 5), Point(2, 2), Alignment::Centre), Rectangle(4, 4, 2, 2));
}
