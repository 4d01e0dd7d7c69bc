#pragma once

#include "foundation/runtime/Date.h"
#include "foundation/runtime/DeletedAtShutdown.h"

#include <cstdint>

namespace q1framework
{

// The framework's clock: milliseconds of a monotonic counter with sub-millisecond resolution,
// and the wall-clock date. A process-wide singleton, made on first use and deleted with the other
// DeletedAtShutdown objects when the framework shuts down (the next use makes it again).
//
// The conversion keeps the tick length as a fraction of whole numbers: for a tick of
// numer / denom nanoseconds, numerator / denominator is the tick in milliseconds, with the
// factor 1000000 taken out of numer when it divides it and put into denominator otherwise.
class HiResCounterHandler : public DeletedAtShutdown
{
public:
    // Main thread for the first call, which creates and lists the singleton; any thread after
    // that, until the framework shuts down. Never null.
    static HiResCounterHandler* getInstance();

    // Main thread. A converter for a clock whose tick lasts timebaseNumerator /
    // timebaseDenominator nanoseconds (a 0 counts as 1). The singleton is made with the system
    // clock's timebase; other instances are only converters and do not replace it.
    HiResCounterHandler(uint64_t timebaseNumerator, uint64_t timebaseDenominator);
    // Main thread. Clears the singleton pointer if this is the singleton.
    ~HiResCounterHandler() override;

    // Any thread (see getInstance): the monotonic clock in milliseconds, from an arbitrary origin
    // fixed for the process. This is the time base of Timer and MessagePump.
    static double getMillisecondCounterHiRes();

    // Any thread: the wall clock now, in local time.
    static Date getDate();

    // Milliseconds that a tick count of this clock stands for.
    double ticksToMilliseconds(uint64_t ticks) const { return static_cast<double>(ticks) * millisecondsPerTick; }

    uint64_t getTicksPerSecond() const { return ticksPerSecond; }
    uint64_t getNumerator() const { return numerator; }
    uint64_t getDenominator() const { return denominator; }
    double getMillisecondsPerTick() const { return millisecondsPerTick; }

private:
    uint64_t ticksPerSecond;
    uint64_t numerator;
    uint64_t denominator;
    double millisecondsPerTick;
};

}  // namespace q1framework
