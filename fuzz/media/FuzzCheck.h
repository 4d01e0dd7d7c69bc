#pragma once

#include <cstdlib>

// A broken invariant ends the run as a crash, which libFuzzer records with its input.
inline void check(bool condition)
{
    if (!condition)
        std::abort();
}
