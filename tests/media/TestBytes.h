#pragma once

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/MemoryStream.h"

#include <string>

// Byte strings for the media tests' hand-built inputs, and streams over them.
namespace TestBytes
{

// A value's bytes as they lie in memory: the little-endian wire form on the machines we build for.
template <typename Value>
std::string bytesOf(Value value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// A stream over a copy of bytes.
inline q1framework::MemoryBlock blockOf(const std::string& bytes)
{
    return q1framework::MemoryBlock(bytes.data(), static_cast<int64_t>(bytes.size()), true);
}

inline std::string contents(q1framework::MemoryStream& stream)
{
    return std::string(static_cast<const char*>(stream.getData()), static_cast<size_t>(stream.getSize()));
}

}  // namespace TestBytes
