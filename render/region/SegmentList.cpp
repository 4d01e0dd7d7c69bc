#include "render/region/SegmentList.h"

#include <algorithm>
#include <cstring>

namespace q1framework
{

bool SegmentList::operator==(const SegmentList& other) const
{
    const int32_t count = values.getCount();
    return count == other.values.getCount()
           && (count == 0 || std::memcmp(values.begin(), other.values.begin(), sizeof(int32_t) * count) == 0);
}

void SegmentList::copyFrom(const SegmentList& other)
{
    if (this != &other)
        values = other.values;
}

int32_t SegmentList::findFirstNotBelow(int32_t value) const
{
    return static_cast<int32_t>(std::lower_bound(values.begin(), values.end(), value) - values.begin());
}

void SegmentList::erase(int32_t first, int32_t last)
{
    for (int32_t index = last - 1; index >= first; --index)
        values.removeAt(index);
}

// An even index is a start or the position of a gap, an odd one an end or a position inside an
// interval. Both operations insert the new boundaries that land in the other kind of place, and
// then drop every boundary strictly between the two.
void SegmentList::add(int32_t from, int32_t to)
{
    if (to <= from)
        return;
    int32_t a = findFirstNotBelow(from);
    int32_t b = findFirstNotBelow(to);

    if ((b & 1) == 0)
    {
        // to lies in a gap: it ends the new interval, unless an interval starts right there,
        // which then joins it.
        if (b < values.getCount() && values[b] == to)
            ++b;
        else
            values.insert(b, to);
    }
    // Otherwise to lies inside an interval, whose end stays.

    if ((a & 1) != 0)
    {
        // from lies inside an interval (or on its end): that interval's start stays.
        erase(a, b);
        return;
    }
    if (a >= values.getCount() || values[a] != from)
    {
        values.insert(a, from);
        ++b;
    }
    erase(a + 1, b);
}

void SegmentList::subtract(int32_t from, int32_t to)
{
    if (to <= from || values.isEmpty())
        return;
    const int32_t a = findFirstNotBelow(from);
    int32_t b = findFirstNotBelow(to);
    if (a >= values.getCount() || b == 0)
        return;

    if ((b & 1) != 0)
    {
        // to lies inside an interval: what remains of it starts at to, unless it ends there.
        if (values[b] == to)
            ++b;
        else
            values.insert(b, to);
    }

    if ((a & 1) == 0)
    {
        erase(a, b);
        return;
    }
    // from lies inside an interval: what remains of it ends at from.
    if (values[a] != from)
    {
        values.insert(a, from);
        ++b;
    }
    erase(a + 1, b);
}

void SegmentList::getIntersection(int32_t from, int32_t to, SegmentList& result) const
{
    result.values.clear();
    const int32_t count = values.getCount();
    for (int32_t index = 0; index < count; index += 2)
    {
        const int32_t start = std::max(values[index], from);
        const int32_t end = std::min(values[index + 1], to);
        if (start < end)
        {
            result.values.add(start);
            result.values.add(end);
        }
    }
}

void SegmentList::translate(int32_t dy)
{
    for (int32_t& value : values)
        value += dy;
}

}  // namespace q1framework
