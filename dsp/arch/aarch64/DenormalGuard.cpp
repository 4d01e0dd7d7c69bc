#include "dsp/DenormalGuard.h"

namespace
{
// FPCR.FZ flushes subnormal inputs and results alike.
constexpr unsigned long flushToZeroBit = 1ul << 24;

unsigned long readControl()
{
    unsigned long value;
    asm volatile("mrs %0, fpcr" : "=r"(value));
    return value;
}

void writeControl(unsigned long value)
{
    asm volatile("msr fpcr, %0" : : "r"(value));
}
}

DenormalGuard::DenormalGuard() : savedMode(readControl())
{
    writeControl(savedMode | flushToZeroBit);
}

DenormalGuard::~DenormalGuard()
{
    writeControl(savedMode);
}
