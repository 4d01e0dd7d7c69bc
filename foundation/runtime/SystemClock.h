#pragma once

#include "foundation/runtime/Date.h"

#include <cstdint>

namespace q1framework
{

// The operating system's clocks, as the runtime needs them. Each platform supplies its own
// source file; HiResCounterHandler is the interface the rest of the framework uses.
//
// Thread contract: any thread.
class SystemClock
{
public:
    // The tick length of getTicks as a fraction: one tick lasts numerator / denominator
    // nanoseconds. Both are at least 1.
    static void getTimebase(uint64_t& numerator, uint64_t& denominator);

    // Ticks of a clock that never jumps and keeps counting while the process sleeps or waits; its
    // origin is arbitrary but fixed for the life of the process.
    static uint64_t getTicks();

    // The wall clock's current time in the local time zone; all fields 0 if it cannot be read.
    static Date getLocalDate();
};

}  // namespace q1framework
