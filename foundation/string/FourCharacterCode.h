#pragma once

#include <cstdint>

namespace q1framework
{

// A four-character code as one 32-bit number, the first character in the high byte: the form of
// plug-in identifiers ('K', 'e', 'L', 'v') and of the magic numbers of the VST interface and its
// preset files.
constexpr int32_t fourCharacterCode(char a, char b, char c, char d)
{
    return static_cast<int32_t>((static_cast<uint32_t>(static_cast<unsigned char>(a)) << 24)
                                | (static_cast<uint32_t>(static_cast<unsigned char>(b)) << 16)
                                | (static_cast<uint32_t>(static_cast<unsigned char>(c)) << 8)
                                | static_cast<uint32_t>(static_cast<unsigned char>(d)));
}

}  // namespace q1framework
