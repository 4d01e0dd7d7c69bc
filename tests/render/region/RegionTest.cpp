#include "render/region/Region.h"
#include "render/region/SegmentList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

using q1framework::Rectangle;
using q1framework::RectangleList;
using q1framework::Region;

namespace
{
// The plain model a region is checked against: the pixels of the grid from -16 to 79, row by row.
constexpr int32_t gridStart = -16, gridEnd = 80;
const Rectangle grid(gridStart, gridStart, gridEnd - gridStart, gridEnd - gridStart);
using Pixels = std::vector<bool>;
const Pixels noPixels(static_cast<size_t>(grid.w * grid.h), false);

size_t at(int32_t x, int32_t y)
{
    return static_cast<size_t>((y - gridStart) * (gridEnd - gridStart) + x - gridStart);
}

// Pixels outside the grid are left out; pixelsOf fails on them.
void setPixels(Pixels& pixels, const Rectangle& area, bool value)
{
    const Rectangle inGrid = area.getIntersection(grid);
    for (int32_t y = inGrid.y; y < inGrid.getBottom(); ++y)
        for (int32_t x = inGrid.x; x < inGrid.getRight(); ++x)
            pixels[at(x, y)] = value;
}

std::vector<Rectangle> rectanglesOf(const Region& region)
{
    RectangleList list;
    region.getRectangles(list);
    return std::vector<Rectangle>(list.begin(), list.end());
}

// The region's rectangles, which must be non-empty, inside the grid and disjoint, as pixels.
Pixels pixelsOf(const Region& region)
{
    Pixels pixels = noPixels;
    int64_t area = 0;
    for (const Rectangle& rectangle : rectanglesOf(region))
    {
        EXPECT_FALSE(rectangle.isEmpty());
        EXPECT_EQ(grid.getIntersection(rectangle), rectangle);
        area += int64_t(rectangle.w) * rectangle.h;
        setPixels(pixels, rectangle, true);
    }
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), true), area) << "overlapping rectangles";
    return pixels;
}

// Why the region is not in its canonical form, or an empty text. Each strip's list must be
// strictly ascending (no touching, overlapping or empty intervals) and of even length.
std::string findCanonicalFault(const Region& region)
{
    const int32_t count = region.getEdgeCount();
    if (count == 1 || (count > 1 && (region.getStrip(0).isEmpty() || !region.getStrip(count - 1).isEmpty())))
        return "a lone edge, a list-free first strip or no closing edge";
    for (int32_t index = 0; index < count; ++index)
    {
        const auto& values = region.getStrip(index).getValues();
        if (values.getCount() % 2 != 0 || std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) != values.end())
            return "a list out of order at " + std::to_string(index);
        if (index > 0 && (region.getEdge(index) <= region.getEdge(index - 1) || region.getStrip(index) == region.getStrip(index - 1)))
            return "edges out of order or equal neighbouring strips at " + std::to_string(index);
    }
    return "";
}

// Sides from 0 (an empty rectangle) to 24, anywhere on the grid.
Rectangle randomRectangle(std::mt19937& random)
{
    std::uniform_int_distribution<int32_t> side(0, 24), position(gridStart, gridEnd - 25);
    const int32_t x = position(random), y = position(random);
    return Rectangle(x, y, side(random), side(random));
}
}  // namespace

// Random adds and subtracts, then an intersection and a move, each against a plain pixel set, and
// the canonical form after each, of the strips and of each strip's list of intervals: one form per
// set, so the same pixels gathered from row pieces in a shuffled order compare equal.
TEST(RegionTest, RandomChangesMatchAPixelSetInOneCanonicalForm)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        std::mt19937 random(seed);
        Region region;
        Pixels model = noPixels;
        for (int step = 0; step < 25; ++step)
        {
            const Rectangle area = randomRectangle(random);
            const bool adding = random() % 3 != 0;
            adding ? region.addRectangle(area) : region.subtractRectangle(area);
            setPixels(model, area, adding);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            ASSERT_EQ(findCanonicalFault(region), "");
            ASSERT_TRUE(pixelsOf(region) == model);
            ASSERT_EQ(region.isEmpty(), std::count(model.begin(), model.end(), true) == 0);
        }
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::vector<Rectangle> runs;
        for (int32_t y = gridStart; y < gridEnd; ++y)
            for (int32_t x = gridStart, right = x; x < gridEnd; x = right + 1)
            {
                for (right = x; right < gridEnd && model[at(right, y)];)
                    ++right;
                if (right > x)
                    runs.push_back(Rectangle(x, y, right - x, 1));
            }
        std::shuffle(runs.begin(), runs.end(), random);
        Region rebuilt;
        for (const Rectangle& run : runs)
            rebuilt.addRectangle(run);
        EXPECT_EQ(findCanonicalFault(rebuilt), "");
        EXPECT_TRUE(rebuilt == region) << region.getDumpText().getCString() << rebuilt.getDumpText().getCString();

        // Inside: the pixels in the window. Moved: the window's pixels moved by (dx, dy) and kept
        // where they land in the window, the rest of the window cleared.
        const Rectangle window = randomRectangle(random);
        std::uniform_int_distribution<int32_t> offset(-12, 12);
        const int32_t dx = offset(random), dy = offset(random);
        Pixels inside = noPixels, moved = model;
        setPixels(moved, window, false);
        for (int32_t y = window.y; y < window.getBottom(); ++y)
            for (int32_t x = window.x; x < window.getRight(); ++x)
            {
                inside[at(x, y)] = model[at(x, y)];
                if (model[at(x, y)] && window.contains({x + dx, y + dy}))
                    moved[at(x + dx, y + dy)] = true;
            }
        Region intersection(3);
        intersection.addRectangle(Rectangle(-10, -10, 5, 5));  // replaced, not kept
        region.getIntersection(window, intersection);
        EXPECT_EQ(findCanonicalFault(intersection), "");
        EXPECT_TRUE(pixelsOf(intersection) == inside);
        region.moveRectangle(window, dx, dy);
        EXPECT_EQ(findCanonicalFault(region), "");
        EXPECT_TRUE(pixelsOf(region) == moved);
    }
}

TEST(RegionTest, ShapesCopiesAndThePool)
{
    // Side by side with equal rows: one strip. An L and two boxes, split at the strip edges and
    // listed strip by strip from the left, intervals from the top.
    Region shape;
    for (const Rectangle& area : {Rectangle(0, 0, 2, 10), Rectangle(2, 0, 2, 10), Rectangle(4, 6, 6, 4),
                                  Rectangle(20, 0, 2, 2), Rectangle(20, 5, 2, 2)})
        shape.addRectangle(area);
    EXPECT_EQ(rectanglesOf(shape), (std::vector<Rectangle>{Rectangle(0, 0, 4, 10), Rectangle(4, 6, 6, 4),
                                                            Rectangle(20, 0, 2, 2), Rectangle(20, 5, 2, 2)}));

    // Copies own their lists; empty rectangles change nothing; into itself an intersection does
    // nothing; subtracting all of it leaves no edge at all.
    Region copy(3), moved(shape);
    copy.addRectangle(Rectangle(50, 50, 1, 1));
    copy = shape;
    copy.addRectangle(Rectangle(1, 1, -2, 3));
    copy.subtractRectangle(Rectangle(1, 1, 3, 0));
    copy.getIntersection(Rectangle(0, 0, 1, 1), copy);
    EXPECT_TRUE(copy == shape);
    copy.subtractRectangle(Rectangle(0, 0, 1, 1));
    EXPECT_TRUE(copy != shape);
    moved.translate(0, 1);
    EXPECT_TRUE(moved != shape);  // the same edges, other rows
    moved.translate(-2, 2);
    EXPECT_EQ(rectanglesOf(moved), (std::vector<Rectangle>{Rectangle(-2, 3, 4, 10), Rectangle(2, 9, 6, 4),
                                                            Rectangle(18, 3, 2, 2), Rectangle(18, 8, 2, 2)}));
    copy.subtractRectangle(Rectangle(-5, -5, 40, 40));
    EXPECT_EQ(copy.getEdgeCount(), 0);

    // Cleared lists wait in the pool, and the same shape again takes every list it needs from it.
    const int32_t strips = shape.getEdgeCount(), pooled = shape.getPoolCount();
    shape.clear();
    EXPECT_TRUE(shape.isEmpty());
    EXPECT_EQ(shape.getPoolCount(), pooled + strips);
    shape = moved;
    EXPECT_EQ(shape.getPoolCount(), pooled);
}
