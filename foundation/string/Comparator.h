#pragma once

namespace q1framework
{

// The framework's ordering interface for sorting and lookups: compare answers negative, zero or
// positive as strcmp does.
//
// Thread contract: none of its own; implementations say what they read.
template <typename Value>
class Comparator
{
public:
    virtual ~Comparator() = default;
    virtual int compare(const Value& first, const Value& second) = 0;
};

}  // namespace q1framework
