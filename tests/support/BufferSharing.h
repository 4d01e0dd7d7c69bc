#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

// The ways a host may share its four buffers of a stereo block between the ports (input left,
// input right, output left, output right): the entry at each place names the buffer used there,
// numbered in order of first use. Every way, from four separate buffers to a single one.
inline std::vector<std::array<int, 4>> everyBufferSharing()
{
    std::vector<std::array<int, 4>> sharings;
    for (int b = 0; b <= 1; ++b)
        for (int c = 0; c <= std::max(0, b) + 1; ++c)
            for (int d = 0; d <= std::max({0, b, c}) + 1; ++d)
                sharings.push_back({0, b, c, d});
    return sharings;
}

// A sharing as text for a test's trace, as "buffers of in L, in R, out L, out R: AABA".
inline std::string describeBufferSharing(const std::array<int, 4>& sharing)
{
    std::string text;
    for (int place : sharing)
        text += static_cast<char>('A' + place);
    return "buffers of in L, in R, out L, out R: " + text;
}
