#pragma once

#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

// A set of rows as a sorted list of half-open y intervals: entries 2i and 2i + 1 are the start and
// the end (not included) of interval i. Entries are strictly ascending, so intervals never touch
// or overlap: the list of a given set of rows is unique, and two lists hold the same rows exactly
// when their entries are equal.
//
// Thread contract: none; a list belongs to its Region.
class SegmentList
{
public:
    SegmentList() = default;

    bool isEmpty() const { return values.isEmpty(); }
    // Number of intervals.
    int32_t getIntervalCount() const { return values.getCount() / 2; }
    int32_t getStart(int32_t interval) const { return values[2 * interval]; }
    int32_t getEnd(int32_t interval) const { return values[2 * interval + 1]; }
    // The raw entries, starts and ends alternating.
    const Array<int32_t>& getValues() const { return values; }

    bool operator==(const SegmentList& other) const;
    bool operator!=(const SegmentList& other) const { return !(*this == other); }

    void clear() { values.clear(); }
    // Makes room for intervals intervals without growing later.
    void reserve(int32_t intervals) { values.ensureCapacity(2 * intervals); }
    // Replaces the entries by those of other.
    void copyFrom(const SegmentList& other);

    // Adds the rows from (included) to to (not); nothing when to is not above from. Intervals it
    // touches or overlaps merge with it.
    void add(int32_t from, int32_t to);
    // Removes the rows from (included) to to (not); nothing when to is not above from.
    void subtract(int32_t from, int32_t to);
    // result becomes the intervals of this list cut to [from, to). result must not be this list.
    void getIntersection(int32_t from, int32_t to, SegmentList& result) const;
    // Adds dy to every entry.
    void translate(int32_t dy);

private:
    // The first index whose entry is not below value (the count when there is none).
    int32_t findFirstNotBelow(int32_t value) const;
    // Removes the entries first to last - 1.
    void erase(int32_t first, int32_t last);

    Array<int32_t> values;
};

}  // namespace q1framework
