#include "render/region/SegmentList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

using q1framework::SegmentList;

namespace
{
std::vector<int32_t> entriesOf(const SegmentList& list)
{
    return std::vector<int32_t>(list.getValues().begin(), list.getValues().end());
}

SegmentList listOf(const std::vector<int32_t>& entries)
{
    SegmentList list;
    for (size_t index = 0; index + 1 < entries.size(); index += 2)
        list.add(entries[index], entries[index + 1]);
    return list;
}

struct Change
{
    int32_t from;
    int32_t to;
    std::vector<int32_t> expected;
};

// Each change applied to (10, 20) and (30, 40), results worked out on paper.
void checkChanges(bool adding, const std::vector<Change>& changes)
{
    for (const Change& change : changes)
    {
        SegmentList list = listOf({10, 20, 30, 40});
        if (adding)
            list.add(change.from, change.to);
        else
            list.subtract(change.from, change.to);
        EXPECT_EQ(entriesOf(list), change.expected)
            << (adding ? "add(" : "subtract(") << change.from << ", " << change.to << ")";
    }
}

// The canonical runs of a row set, as the list must hold them.
std::vector<int32_t> runsOf(const std::vector<bool>& rows, int32_t firstRow)
{
    std::vector<int32_t> runs;
    for (size_t index = 0; index < rows.size(); ++index)
    {
        const bool before = index > 0 && rows[index - 1];
        if (rows[index] != before)
            runs.push_back(firstRow + static_cast<int32_t>(index));
    }
    if (!rows.empty() && rows.back())
        runs.push_back(firstRow + static_cast<int32_t>(rows.size()));
    return runs;
}
}  // namespace

TEST(SegmentListTest, AddJoinsTouchingAndOverlappingIntervals)
{
    SegmentList list;
    list.add(10, 20);
    list.add(20, 30);
    EXPECT_EQ(entriesOf(list), (std::vector<int32_t>{10, 30}));
    EXPECT_EQ(list.getIntervalCount(), 1);

    checkChanges(true, {
        {0, 5, {0, 5, 10, 20, 30, 40}},
        {5, 10, {5, 20, 30, 40}},
        {12, 18, {10, 20, 30, 40}},
        {15, 35, {10, 40}},
        {20, 30, {10, 40}},
        {20, 25, {10, 25, 30, 40}},
        {25, 30, {10, 20, 25, 40}},
        {25, 26, {10, 20, 25, 26, 30, 40}},
        {40, 50, {10, 20, 30, 50}},
        {45, 50, {10, 20, 30, 40, 45, 50}},
        {0, 100, {0, 100}},
        {10, 10, {10, 20, 30, 40}},
        {18, 12, {10, 20, 30, 40}},
    });
}

TEST(SegmentListTest, SubtractSplitsAndTrimsIntervals)
{
    checkChanges(false, {
        {12, 15, {10, 12, 15, 20, 30, 40}},
        {0, 10, {10, 20, 30, 40}},
        {0, 11, {11, 20, 30, 40}},
        {19, 30, {10, 19, 30, 40}},
        {20, 31, {10, 20, 31, 40}},
        {20, 30, {10, 20, 30, 40}},
        {15, 35, {10, 15, 35, 40}},
        {39, 100, {10, 20, 30, 39}},
        {40, 50, {10, 20, 30, 40}},
        {10, 40, {}},
        {5, 45, {}},
        {15, 15, {10, 20, 30, 40}},
    });

    SegmentList empty;
    empty.subtract(0, 10);
    EXPECT_TRUE(empty.isEmpty());
}

TEST(SegmentListTest, IntersectionAndTranslation)
{
    const SegmentList list = listOf({10, 20, 30, 40});
    SegmentList result = listOf({0, 1});
    list.getIntersection(15, 35, result);
    EXPECT_EQ(entriesOf(result), (std::vector<int32_t>{15, 20, 30, 35}));
    list.getIntersection(20, 30, result);
    EXPECT_TRUE(result.isEmpty());
    list.getIntersection(0, 100, result);
    EXPECT_EQ(result, list);

    SegmentList moved = list;
    moved.translate(-15);
    EXPECT_EQ(entriesOf(moved), (std::vector<int32_t>{-5, 5, 15, 25}));
    EXPECT_NE(moved, list);
}

TEST(SegmentListTest, RandomChangesMatchARowSet)
{
    constexpr int32_t firstRow = -10;
    constexpr int32_t rowCount = 60;
    for (unsigned seed = 1; seed <= 20; ++seed)
    {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int32_t> position(firstRow, firstRow + rowCount);
        std::vector<bool> rows(rowCount, false);
        SegmentList list;
        for (int step = 0; step < 60; ++step)
        {
            const int32_t from = position(random);
            const int32_t to = position(random);
            const bool adding = random() % 3 != 0;
            if (adding)
                list.add(from, to);
            else
                list.subtract(from, to);
            for (int32_t row = from; row < to; ++row)
                rows[static_cast<size_t>(row - firstRow)] = adding;
            ASSERT_EQ(entriesOf(list), runsOf(rows, firstRow))
                << "seed " << seed << ", step " << step << (adding ? ": add(" : ": subtract(") << from << ", " << to << ")";
        }
    }
}
