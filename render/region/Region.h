#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleList.h"

#include <cstdint>

namespace q1framework
{

class SegmentList;

// A set of pixels, such as the part of a window that needs repainting, as vertical strips: strip i
// covers the columns from edge i up to edge i + 1 and holds the rows of the set in those columns
// as a SegmentList.
//
// Canonical form, kept by every operation: the edges ascend strictly; the last strip is empty and
// closes the region; no two neighbouring strips hold equal lists; the first strip is not empty.
// An empty region has no edges. So a set of pixels has exactly one form, and == compares sets.
//
// The region owns its lists. Lists it no longer needs wait in a pool and are reused before a new
// one is allocated, so a region in steady use (filled and cleared every frame) does not allocate.
//
// Coordinates are whole pixels; a rectangle covers x to x + w - 1 and y to y + h - 1.
//
// Thread contract: none; a region belongs to its owner's thread.
class Region
{
public:
    // Room for initialCapacity edges before the arrays grow (10 suits a temporary).
    explicit Region(int32_t initialCapacity = 10);
    Region(const Region& other);
    ~Region();

    // Clears this region, then copies other's edges and lists into pooled lists.
    Region& operator=(const Region& other);
    // The same pixels.
    bool operator==(const Region& other) const;
    bool operator!=(const Region& other) const { return !(*this == other); }

    // No pixels and no edges; the lists go to the pool.
    void clear();
    bool isEmpty() const { return edges.getCount() < 2; }

    // Moves every pixel by (dx, dy).
    void translate(int32_t dx, int32_t dy);
    // Adds or removes the pixels of area; an empty area changes nothing.
    void addRectangle(const Rectangle& area);
    void subtractRectangle(const Rectangle& area);
    // result becomes the part of this region inside area. Nothing happens when result is this
    // region.
    void getIntersection(const Rectangle& area, Region& result) const;
    // Clears list, then adds one rectangle per interval of each strip, strips from the left and
    // intervals from the top. Rectangles of neighbouring strips are not merged.
    void getRectangles(RectangleList& list) const;
    // Moves the pixels inside area by (dx, dy), keeping only what lands inside area; pixels that
    // were inside area and are not covered by the moved ones are removed.
    void moveRectangle(const Rectangle& area, int32_t dx, int32_t dy);

    // A listing for debugging: per strip "x=<edge> : " and "<start>-<end>, " per interval, or
    // "x=<edge> : empty segment", one strip a line, closed by a line "------".
    String getDumpText() const;
    // Writes getDumpText() to the standard error stream.
    void dump() const;

    // The raw form, for inspection: edges ascending, one list per edge.
    int32_t getEdgeCount() const { return edges.getCount(); }
    int32_t getEdge(int32_t index) const { return edges[index]; }
    const SegmentList& getStrip(int32_t index) const { return *strips[index]; }
    // Number of lists waiting in the pool.
    int32_t getPoolCount() const { return pool.getCount(); }

private:
    // A list from the pool, or a new one; empty either way.
    SegmentList* takeList();
    // Clears list and puts it in the pool.
    void releaseList(SegmentList* list);
    // The first edge index not below x.
    int32_t findFirstEdgeNotBelow(int32_t x) const;
    // The index of the edge at x, inserted if missing with a copy of the strip on its left (or an
    // empty list at the far left), so the pixels stay the same.
    int32_t ensureEdge(int32_t x);
    // Appends an edge with a copy of list.
    void appendStrip(int32_t x, const SegmentList& list);
    // Removes strip index with its edge.
    void removeStrip(int32_t index);
    // Restores the canonical form after a change to the strips first to last: merges strips equal
    // to their left neighbour, then drops an empty first strip.
    void simplify(int32_t first, int32_t last);
    // addRectangle (adding true) and subtractRectangle.
    void changeRectangle(const Rectangle& area, bool adding);

    Array<int32_t> edges;
    Array<SegmentList*> strips;  // owned, parallel to edges
    Array<SegmentList*> pool;    // owned, empty lists
};

}  // namespace q1framework
