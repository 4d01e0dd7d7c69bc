#include "dsp/DenormalGuard.h"

#include <xmmintrin.h>

namespace
{
constexpr unsigned flushToZeroBit = 1u << 15;       // MXCSR.FTZ
constexpr unsigned denormalsAreZeroBit = 1u << 6;   // MXCSR.DAZ
}

DenormalGuard::DenormalGuard() : savedMode(_mm_getcsr())
{
    _mm_setcsr(static_cast<unsigned>(savedMode) | flushToZeroBit | denormalsAreZeroBit);
}

DenormalGuard::~DenormalGuard()
{
    _mm_setcsr(static_cast<unsigned>(savedMode));
}
