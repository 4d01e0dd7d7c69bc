#include "MeterScale.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
// The meter faces of the editor are 272 x 131 pixels.
constexpr int faceWidth = 272;
constexpr int faceHeight = 131;

// The needle as the editor draws it, worked out from its drawing steps rather than taken from the
// scale's code: the quad (w / 2 - dw / 2 + bx, (h - length) + by + 20, dw, length) turned about
// its bottom centre, with length = angle^2 * 29 + (h - 26) and angle = level * 1.82 - 0.91.
MeterScale::Point editorNeedleTip(double position)
{
    const double angle = position * 1.82 - 0.91;
    const double length = angle * angle * 29.0 + (faceHeight - 26);
    const int drawnWidth = 12;  // at scale 1: (4 / 2) * 6
    const double pivotX = (faceWidth / 2 - drawnWidth / 2) + drawnWidth / 2.0;
    const double pivotY = (faceHeight - length) + 20.0 + length;
    return {pivotX + length * std::sin(angle), pivotY - length * std::cos(angle)};
}

// Distance from p to the segment from a to b, and where along it p falls (0 at a, 1 at b).
double distanceToSegment(const MeterScale::Point& p, const MeterScale::Point& a, const MeterScale::Point& b,
                         double& along)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
    const double x = a.x + along * dx;
    const double y = a.y + along * dy;
    return std::hypot(p.x - x, p.y - y);
}
}  // namespace

TEST(MeterScale, PositionsFollowTheEditorsLevelTable)
{
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(1.412), 1.0);
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(1.0), 0.66);
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(0.707), 0.39);
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(0.5), 0.22);
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(0.25), 0.07);
    EXPECT_DOUBLE_EQ(MeterScale::positionOfLevel(0.1), 0.0);
    // Halfway between the rows of 0.5 and 0.707.
    EXPECT_NEAR(MeterScale::positionOfLevel(0.6035), 0.305, 1e-12);
}

TEST(MeterScale, PositionsStopAtTheEndsOfTheTable)
{
    EXPECT_EQ(MeterScale::positionOfLevel(5.0), 1.0);
    EXPECT_EQ(MeterScale::positionOfLevel(0.05), 0.0);
    EXPECT_EQ(MeterScale::positionOfLevel(0.0), 0.0);
}

TEST(MeterScale, TheMajorMarksAreTheSixLevelsInDecibels)
{
    std::vector<double> majors;
    for (const MeterScale::Mark& mark : MeterScale::marks(faceWidth, faceHeight))
        if (mark.major)
            majors.push_back(mark.decibels);
    EXPECT_EQ(majors, (std::vector<double>{-20.0, -12.0, -6.0, -3.0, 0.0, 3.0}));
}

TEST(MeterScale, MarksRunLeftToRight)
{
    const std::vector<MeterScale::Mark> marks = MeterScale::marks(faceWidth, faceHeight);
    for (size_t index = 1; index < marks.size(); ++index)
        EXPECT_LT(marks[index - 1].outer.x, marks[index].outer.x) << marks[index].decibels << " dB";
}

TEST(MeterScale, TheNeedleAtEachMarksLevelEndsOnThatMarksTick)
{
    for (const MeterScale::Mark& mark : MeterScale::marks(faceWidth, faceHeight))
    {
        const MeterScale::Point tip = editorNeedleTip(MeterScale::positionOfLevel(std::pow(10.0, mark.decibels / 20.0)));
        double along = 0.0;
        EXPECT_LT(distanceToSegment(tip, mark.inner, mark.outer, along), 0.01) << mark.decibels << " dB";
        EXPECT_GT(along, 0.0) << mark.decibels << " dB";
        EXPECT_LE(along, 1.0) << mark.decibels << " dB";
    }
}

TEST(MeterScale, EveryTickLiesInsideTheFace)
{
    for (const MeterScale::Mark& mark : MeterScale::marks(faceWidth, faceHeight))
        for (const MeterScale::Point& end : {mark.inner, mark.outer})
        {
            EXPECT_GE(end.x, 0.0) << mark.decibels << " dB";
            EXPECT_LE(end.x, faceWidth) << mark.decibels << " dB";
            EXPECT_GE(end.y, 0.0) << mark.decibels << " dB";
            EXPECT_LE(end.y, faceHeight) << mark.decibels << " dB";
        }
}
