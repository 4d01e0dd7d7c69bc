#include "render/region/Region.h"
#include "render/region/SegmentList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using q1framework::Rectangle;
using q1framework::RectangleList;
using q1framework::Region;
using q1framework::SegmentList;

namespace
{
// A set of pixels on a fixed grid, the plain model a region is checked against.
class PixelSet
{
public:
    static constexpr int32_t first = -16;
    static constexpr int32_t size = 96;

    bool contains(int32_t x, int32_t y) const
    {
        return inGrid(x) && inGrid(y) && pixels[index(x, y)];
    }

    void set(const Rectangle& area, bool value)
    {
        for (int32_t y = area.y; y < area.getBottom(); ++y)
            for (int32_t x = area.x; x < area.getRight(); ++x)
                pixels[index(x, y)] = value;
    }

    PixelSet intersectedWith(const Rectangle& area) const
    {
        PixelSet result;
        for (int32_t y = area.y; y < area.getBottom(); ++y)
            for (int32_t x = area.x; x < area.getRight(); ++x)
                result.pixels[index(x, y)] = contains(x, y);
        return result;
    }

    PixelSet movedWithin(const Rectangle& area, int32_t dx, int32_t dy) const
    {
        PixelSet result = *this;
        result.set(area, false);
        for (int32_t y = area.y; y < area.getBottom(); ++y)
            for (int32_t x = area.x; x < area.getRight(); ++x)
                if (contains(x, y) && area.contains({x + dx, y + dy}))
                    result.pixels[index(x + dx, y + dy)] = true;
        return result;
    }

    // Each row's runs of set pixels, one rectangle of height 1 each.
    std::vector<Rectangle> getRuns() const
    {
        std::vector<Rectangle> runs;
        for (int32_t y = first; y < first + size; ++y)
            for (int32_t x = first; x < first + size; ++x)
                if (contains(x, y) && !contains(x - 1, y))
                {
                    int32_t end = x;
                    while (contains(end, y))
                        ++end;
                    runs.push_back(Rectangle(x, y, end - x, 1));
                }
        return runs;
    }

    bool operator==(const PixelSet& other) const { return pixels == other.pixels; }

private:
    static bool inGrid(int32_t value) { return value >= first && value < first + size; }
    static size_t index(int32_t x, int32_t y) { return static_cast<size_t>((y - first) * size + (x - first)); }

    std::vector<bool> pixels = std::vector<bool>(size * size, false);
};

// The region's pixels; fails the test when two of its rectangles overlap or one leaves the grid.
PixelSet pixelsOf(const Region& region)
{
    RectangleList rectangles;
    region.getRectangles(rectangles);
    PixelSet pixels;
    for (const Rectangle& rectangle : rectangles)
    {
        EXPECT_FALSE(rectangle.isEmpty());
        EXPECT_GE(rectangle.x, PixelSet::first);
        EXPECT_LE(rectangle.getRight(), PixelSet::first + PixelSet::size);
        for (int32_t y = rectangle.y; y < rectangle.getBottom(); ++y)
            for (int32_t x = rectangle.x; x < rectangle.getRight(); ++x)
                EXPECT_FALSE(pixels.contains(x, y)) << "pixel " << x << ", " << y << " listed twice";
        pixels.set(rectangle, true);
    }
    return pixels;
}

// Why the region is not in its canonical form, or an empty text.
std::string findCanonicalFault(const Region& region)
{
    const int32_t count = region.getEdgeCount();
    if (count == 0)
        return "";
    if (count == 1)
        return "a lone edge";
    if (region.getStrip(0).isEmpty())
        return "a list-free first strip";
    if (!region.getStrip(count - 1).isEmpty())
        return "no closing edge";
    for (int32_t index = 1; index < count; ++index)
    {
        if (region.getEdge(index) <= region.getEdge(index - 1))
            return "edges out of order at " + std::to_string(index);
        if (region.getStrip(index) == region.getStrip(index - 1))
            return "equal neighbouring strips at " + std::to_string(index);
    }
    return "";
}

Rectangle randomRectangle(std::mt19937& random)
{
    // Sides from 0 (an empty rectangle) to 24, anywhere on the grid.
    std::uniform_int_distribution<int32_t> side(0, 24);
    std::uniform_int_distribution<int32_t> position(PixelSet::first, PixelSet::first + PixelSet::size - 25);
    const int32_t x = position(random);
    const int32_t y = position(random);
    return Rectangle(x, y, side(random), side(random));
}

// The same pixels, built from scratch out of single-row pieces in a shuffled order.
Region rebuiltFromRuns(const PixelSet& pixels, std::mt19937& random)
{
    std::vector<Rectangle> runs = pixels.getRuns();
    std::shuffle(runs.begin(), runs.end(), random);
    Region region;
    for (const Rectangle& run : runs)
        region.addRectangle(run);
    return region;
}

std::vector<Rectangle> rectanglesOf(const Region& region)
{
    RectangleList list;
    region.getRectangles(list);
    return std::vector<Rectangle>(list.begin(), list.end());
}
}  // namespace

TEST(RegionTest, RandomAddsAndSubtractsMatchAPixelSetInCanonicalForm)
{
    for (unsigned seed = 1; seed <= 40; ++seed)
    {
        std::mt19937 random(seed);
        Region region;
        PixelSet model;
        for (int step = 0; step < 25; ++step)
        {
            const Rectangle area = randomRectangle(random);
            const bool adding = random() % 3 != 0;
            if (adding)
                region.addRectangle(area);
            else
                region.subtractRectangle(area);
            model.set(area, adding);

            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            ASSERT_EQ(findCanonicalFault(region), "");
            ASSERT_TRUE(pixelsOf(region) == model);
            ASSERT_EQ(region.isEmpty(), model.getRuns().empty());
        }
        // One form per set: the same pixels gathered row piece by row piece compare equal.
        const Region rebuilt = rebuiltFromRuns(model, random);
        EXPECT_EQ(findCanonicalFault(rebuilt), "");
        EXPECT_TRUE(rebuilt == region) << "seed " << seed << "\n"
                                       << region.getDumpText().getCString() << rebuilt.getDumpText().getCString();
    }
}

TEST(RegionTest, RandomIntersectionsAndMovesMatchAPixelSet)
{
    for (unsigned seed = 100; seed < 140; ++seed)
    {
        std::mt19937 random(seed);
        Region region;
        PixelSet model;
        for (int step = 0; step < 8; ++step)
        {
            const Rectangle area = randomRectangle(random);
            region.addRectangle(area);
            model.set(area, true);
        }
        SCOPED_TRACE("seed " + std::to_string(seed));

        const Rectangle window = randomRectangle(random);
        Region inside(3);
        inside.addRectangle(Rectangle(-100, -100, 5, 5));  // replaced, not kept
        region.getIntersection(window, inside);
        EXPECT_EQ(findCanonicalFault(inside), "");
        EXPECT_TRUE(pixelsOf(inside) == model.intersectedWith(window));

        std::uniform_int_distribution<int32_t> offset(-12, 12);
        const int32_t dx = offset(random);
        const int32_t dy = offset(random);
        region.moveRectangle(window, dx, dy);
        EXPECT_EQ(findCanonicalFault(region), "");
        EXPECT_TRUE(pixelsOf(region) == model.movedWithin(window, dx, dy));
    }
}

TEST(RegionTest, ShapesAndTheirRectangles)
{
    // Side by side with equal rows: one strip.
    Region row;
    row.addRectangle(Rectangle(0, 0, 10, 5));
    row.addRectangle(Rectangle(10, 0, 10, 5));
    EXPECT_EQ(row.getEdgeCount(), 2);
    EXPECT_EQ(rectanglesOf(row), (std::vector<Rectangle>{Rectangle(0, 0, 20, 5)}));

    // An L: the tall part on the left, the foot to its right, split at the strip edge and listed
    // strip by strip from the left, intervals from the top.
    Region shape;
    shape.addRectangle(Rectangle(0, 0, 4, 10));
    shape.addRectangle(Rectangle(4, 6, 6, 4));
    shape.addRectangle(Rectangle(20, 0, 2, 2));
    shape.addRectangle(Rectangle(20, 5, 2, 2));
    EXPECT_EQ(rectanglesOf(shape), (std::vector<Rectangle>{Rectangle(0, 0, 4, 10), Rectangle(4, 6, 6, 4),
                                                            Rectangle(20, 0, 2, 2), Rectangle(20, 5, 2, 2)}));
    EXPECT_EQ(std::string(shape.getDumpText().getCString()),
              "x=0 : 0-10, \nx=4 : 6-10, \nx=10 : empty segment\nx=20 : 0-2, 5-7, \nx=22 : empty segment\n------\n");

    // Adding and subtracting the same rectangle leaves nothing, not even an edge.
    Region gone;
    gone.addRectangle(Rectangle(3, 4, 5, 6));
    gone.subtractRectangle(Rectangle(3, 4, 5, 6));
    EXPECT_TRUE(gone.isEmpty());
    EXPECT_EQ(gone.getEdgeCount(), 0);

    // Empty rectangles change nothing; subtracting from nothing makes no edges.
    gone.addRectangle(Rectangle(3, 4, 0, 6));
    gone.subtractRectangle(Rectangle(0, 0, 50, 50));
    EXPECT_EQ(gone.getEdgeCount(), 0);
    Region copy = shape;
    copy.addRectangle(Rectangle(1, 1, -2, 3));
    copy.subtractRectangle(Rectangle(1, 1, 3, 0));
    EXPECT_TRUE(copy == shape);
}

TEST(RegionTest, MoveKeepsOnlyWhatLandsInsideTheArea)
{
    Region region;
    region.addRectangle(Rectangle(0, 0, 10, 10));
    region.addRectangle(Rectangle(30, 0, 5, 5));  // outside the area: stays
    region.moveRectangle(Rectangle(0, 0, 20, 20), 15, 0);
    // Columns 0 to 4 land at 15 to 19; columns 5 to 9 move out and are dropped.
    EXPECT_EQ(rectanglesOf(region), (std::vector<Rectangle>{Rectangle(15, 0, 5, 10), Rectangle(30, 0, 5, 5)}));

    region.moveRectangle(Rectangle(0, 0, 20, 20), 0, 30);
    EXPECT_EQ(rectanglesOf(region), (std::vector<Rectangle>{Rectangle(30, 0, 5, 5)}));
}

TEST(RegionTest, CopiesTranslationAndSelfIntersection)
{
    Region region;
    region.addRectangle(Rectangle(0, 0, 4, 4));
    region.addRectangle(Rectangle(2, 2, 4, 4));

    Region copy;
    copy.addRectangle(Rectangle(50, 50, 1, 1));
    copy = region;
    EXPECT_TRUE(copy == region);
    EXPECT_TRUE(Region() != region);
    copy.subtractRectangle(Rectangle(0, 0, 1, 1));
    EXPECT_TRUE(copy != region);  // no list is shared
    copy = copy;
    EXPECT_EQ(findCanonicalFault(copy), "");

    Region constructed(region);
    constructed.translate(-2, 3);
    EXPECT_EQ(rectanglesOf(constructed), (std::vector<Rectangle>{Rectangle(-2, 3, 2, 4), Rectangle(0, 3, 2, 6),
                                                                 Rectangle(2, 5, 2, 4)}));

    const Region before = region;
    region.getIntersection(Rectangle(0, 0, 1, 1), region);
    EXPECT_TRUE(region == before);
}

TEST(RegionTest, ClearedListsAreReusedFromThePool)
{
    Region region;
    region.addRectangle(Rectangle(0, 0, 10, 10));
    region.addRectangle(Rectangle(5, 5, 10, 10));
    const int32_t strips = region.getEdgeCount();
    const int32_t pooledBefore = region.getPoolCount();
    region.clear();
    EXPECT_TRUE(region.isEmpty());
    EXPECT_EQ(region.getPoolCount(), pooledBefore + strips);

    // The same shape again takes every list it needs from the pool.
    region.addRectangle(Rectangle(0, 0, 10, 10));
    region.addRectangle(Rectangle(5, 5, 10, 10));
    EXPECT_EQ(region.getEdgeCount(), strips);
    EXPECT_EQ(region.getPoolCount(), pooledBefore);
}
