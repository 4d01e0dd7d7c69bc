#include "render/region/SegmentList.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

using q1framework::SegmentList;

// Random adds and subtracts, empty and reversed ones included, against a plain set of rows: the
// list must hold exactly the set's runs, so touching intervals merge and an emptied one goes.
TEST(SegmentListTest, RandomChangesLeaveTheCanonicalRunsOfARowSet)
{
    constexpr int32_t firstRow = -10, rowCount = 60;
    for (unsigned seed = 1; seed <= 20; ++seed)
    {
        std::mt19937 random(seed);
        std::uniform_int_distribution<int32_t> position(firstRow, firstRow + rowCount);
        std::vector<bool> rows(rowCount, false);
        SegmentList list;
        for (int step = 0; step < 60; ++step)
        {
            const int32_t from = position(random), to = position(random);
            const bool adding = random() % 3 != 0;
            adding ? list.add(from, to) : list.subtract(from, to);
            for (int32_t row = from; row < to; ++row)
                rows[static_cast<size_t>(row - firstRow)] = adding;
            std::vector<int32_t> runs;
            for (int32_t row = firstRow; row <= firstRow + rowCount; ++row)
            {
                const bool inside = row < firstRow + rowCount && rows[static_cast<size_t>(row - firstRow)];
                if (inside != (row > firstRow && rows[static_cast<size_t>(row - 1 - firstRow)]))
                    runs.push_back(row);
            }
            ASSERT_EQ(std::vector<int32_t>(list.getValues().begin(), list.getValues().end()), runs)
                << "seed " << seed << ", step " << step << (adding ? ": add(" : ": subtract(") << from << ", " << to << ")";
        }
    }
}
