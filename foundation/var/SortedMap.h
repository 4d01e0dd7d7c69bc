#pragma once

#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

// A small map from int keys to values, for the handful of properties and colour overrides that a
// component carries. In spite of its name it is not sorted: entries stay in the order in which
// their keys were first set, keys are only compared for equality, and every lookup is a linear
// scan from the front. For a few entries that beats any tree or hash.
//
// Values sit by value in one Array block, side by side with their keys, and are relocated byte
// by byte when it grows (see Array). Pointers from find() are void after the next set or remove.
//
// Thread contract: none; a map belongs to its owner's thread.
template <typename Key, typename Value>
class SortedMap
{
public:
    struct Entry
    {
        Key key;
        Value value;
    };

    SortedMap() = default;
    virtual ~SortedMap() = default;

    // Replaces the value of key in place, or appends a new entry behind the others.
    void set(const Key& key, const Value& value)
    {
        if (Value* stored = find(key))
            *stored = value;
        else
            entries.add(Entry{key, value});
    }

    // The stored value of key, null when absent.
    Value* find(const Key& key)
    {
        for (Entry& entry : entries)
            if (entry.key == key)
                return &entry.value;
        return nullptr;
    }

    const Value* find(const Key& key) const { return const_cast<SortedMap*>(this)->find(key); }

    bool contains(const Key& key) const { return find(key) != nullptr; }

    // Destroys the entry of key and closes the gap, keeping the order of the others; false when
    // there was none.
    bool remove(const Key& key)
    {
        for (int32_t i = 0; i < entries.getCount(); ++i)
        {
            if (entries[i].key == key)
            {
                entries.removeAt(i);
                return true;
            }
        }
        return false;
    }

    int32_t getCount() const { return entries.getCount(); }
    // Entries in insertion order.
    const Entry* begin() const { return entries.begin(); }
    const Entry* end() const { return entries.end(); }

private:
    Array<Entry> entries;
};

}  // namespace q1framework
