#include "render/region/Region.h"

#include "render/region/SegmentList.h"

#include <algorithm>
#include <cstdio>

namespace q1framework
{

namespace
{
// Room each new list starts with.
constexpr int32_t initialIntervals = 4;
}

Region::Region(int32_t initialCapacity)
{
    edges.ensureCapacity(initialCapacity);
    strips.ensureCapacity(initialCapacity);
}

Region::Region(const Region& other) : Region(other.edges.getCount())
{
    *this = other;
}

Region::~Region()
{
    for (SegmentList* list : strips)
        delete list;
    for (SegmentList* list : pool)
        delete list;
}

Region& Region::operator=(const Region& other)
{
    if (this == &other)
        return *this;
    clear();
    edges.ensureCapacity(other.edges.getCount());
    strips.ensureCapacity(other.edges.getCount());
    for (int32_t index = 0; index < other.edges.getCount(); ++index)
        appendStrip(other.edges[index], *other.strips[index]);
    return *this;
}

bool Region::operator==(const Region& other) const
{
    const int32_t count = edges.getCount();
    if (count != other.edges.getCount())
        return false;
    for (int32_t index = 0; index < count; ++index)
        if (edges[index] != other.edges[index] || *strips[index] != *other.strips[index])
            return false;
    return true;
}

void Region::clear()
{
    for (SegmentList* list : strips)
        releaseList(list);
    strips.clear();
    edges.clear();
}

void Region::translate(int32_t dx, int32_t dy)
{
    for (int32_t& edge : edges)
        edge += dx;
    for (SegmentList* list : strips)
        list->translate(dy);
}

void Region::addRectangle(const Rectangle& area) { changeRectangle(area, true); }

void Region::subtractRectangle(const Rectangle& area) { changeRectangle(area, false); }

void Region::changeRectangle(const Rectangle& area, bool adding)
{
    if (area.isEmpty() || (!adding && isEmpty()))
        return;
    // The right edge first: making the left one may shift its index, never the other way round.
    ensureEdge(area.getRight());
    const int32_t first = ensureEdge(area.x);
    const int32_t last = findFirstEdgeNotBelow(area.getRight());
    for (int32_t index = first; index < last; ++index)
    {
        if (adding)
            strips[index]->add(area.y, area.getBottom());
        else
            strips[index]->subtract(area.y, area.getBottom());
    }
    simplify(std::max(first - 1, 0), last);
}

void Region::getIntersection(const Rectangle& area, Region& result) const
{
    if (&result == this)
        return;
    result.clear();
    if (area.isEmpty() || isEmpty())
        return;
    const int32_t left = area.x;
    const int32_t right = area.getRight();
    const int32_t top = area.y;
    const int32_t bottom = area.getBottom();
    // Strips before a begin at or before left; strips from b on begin at or after right.
    const int32_t a = static_cast<int32_t>(std::upper_bound(edges.begin(), edges.end(), left) - edges.begin());
    const int32_t b = findFirstEdgeNotBelow(right);

    // The working list comes from result's pool and goes back there, so that a result in steady
    // use makes no list at all.
    SegmentList& cut = *result.takeList();
    if (a > 0)
    {
        strips[a - 1]->getIntersection(top, bottom, cut);
        if (!cut.isEmpty())
            result.appendStrip(left, cut);
    }
    for (int32_t index = a; index < b; ++index)
    {
        strips[index]->getIntersection(top, bottom, cut);
        // A list equal to the one before adds nothing, and an empty list at the start would be
        // a list-free first strip.
        const bool started = !result.strips.isEmpty();
        if (started ? cut != *result.strips.getLast() : !cut.isEmpty())
            result.appendStrip(edges[index], cut);
    }
    if (!result.strips.isEmpty() && !result.strips.getLast()->isEmpty())
    {
        cut.clear();
        result.appendStrip(right, cut);
    }
    result.releaseList(&cut);
}

void Region::getRectangles(RectangleList& list) const
{
    list.clear();
    for (int32_t index = 0; index < strips.getCount(); ++index)
    {
        const SegmentList& strip = *strips[index];
        for (int32_t interval = 0; interval < strip.getIntervalCount(); ++interval)
        {
            // Only the closing strip is empty, so a strip with intervals always has a right edge.
            const int32_t start = strip.getStart(interval);
            list.add(Rectangle(edges[index], start, edges[index + 1] - edges[index], strip.getEnd(interval) - start));
        }
    }
}

void Region::moveRectangle(const Rectangle& area, int32_t dx, int32_t dy)
{
    Region moved;
    getIntersection(area, moved);
    moved.translate(dx, dy);
    Region landed;
    moved.getIntersection(area, landed);
    subtractRectangle(area);
    RectangleList rectangles;
    landed.getRectangles(rectangles);
    for (const Rectangle& rectangle : rectangles)
        addRectangle(rectangle);
}

String Region::getDumpText() const
{
    String text;
    char line[48];
    for (int32_t index = 0; index < strips.getCount(); ++index)
    {
        const SegmentList& strip = *strips[index];
        if (strip.isEmpty())
        {
            std::snprintf(line, sizeof line, "x=%i : empty segment\n", edges[index]);
            text += line;
            continue;
        }
        std::snprintf(line, sizeof line, "x=%i : ", edges[index]);
        text += line;
        for (int32_t interval = 0; interval < strip.getIntervalCount(); ++interval)
        {
            std::snprintf(line, sizeof line, "%i-%i, ", strip.getStart(interval), strip.getEnd(interval));
            text += line;
        }
        text += "\n";
    }
    return text + "------\n";
}

void Region::dump() const { std::fputs(getDumpText().getCString(), stderr); }

SegmentList* Region::takeList()
{
    if (pool.isEmpty())
    {
        // Lists go round the pool and are handed out for any strip; starting each with room for
        // a few intervals spares them growing one after the other in the first frames.
        auto* list = new SegmentList();
        list->reserve(initialIntervals);
        return list;
    }
    SegmentList* list = pool.getLast();
    pool.removeAt(pool.getCount() - 1);
    return list;
}

void Region::releaseList(SegmentList* list)
{
    list->clear();
    pool.add(list);
}

int32_t Region::findFirstEdgeNotBelow(int32_t x) const
{
    return static_cast<int32_t>(std::lower_bound(edges.begin(), edges.end(), x) - edges.begin());
}

int32_t Region::ensureEdge(int32_t x)
{
    const int32_t index = findFirstEdgeNotBelow(x);
    if (index < edges.getCount() && edges[index] == x)
        return index;
    SegmentList* list = takeList();
    if (index > 0)
        list->copyFrom(*strips[index - 1]);
    edges.insert(index, x);
    strips.insert(index, list);
    return index;
}

void Region::appendStrip(int32_t x, const SegmentList& list)
{
    SegmentList* copy = takeList();
    copy->copyFrom(list);
    edges.add(x);
    strips.add(copy);
}

void Region::removeStrip(int32_t index)
{
    releaseList(strips[index]);
    strips.removeAt(index);
    edges.removeAt(index);
}

void Region::simplify(int32_t first, int32_t last)
{
    // Backwards, so that removing a strip never moves one still to be compared.
    for (int32_t index = std::min(last, strips.getCount() - 1); index > first; --index)
        if (*strips[index] == *strips[index - 1])
            removeStrip(index);
    // Subtracting can empty the first strip; the region then starts at the next edge. A region
    // reduced to its closing strip loses that one too and becomes empty.
    while (!strips.isEmpty() && strips[0]->isEmpty())
        removeStrip(0);
}

}  // namespace q1framework
