// x86-64: SSE2 is part of the baseline; AVX2 is used where the processor reports it. This file is
// built with the baseline flags, so the test itself runs on any x86-64 machine.
#include "render/kernels/PixelKernelSets.h"

namespace q1framework
{

const PixelKernels* PixelKernelSets::findRunnable(PixelKernels::InstructionSet instructionSet)
{
    switch (instructionSet)
    {
        case PixelKernels::InstructionSet::scalar: return &scalar;
        case PixelKernels::InstructionSet::sse2: return &sse2;
        case PixelKernels::InstructionSet::avx2: return __builtin_cpu_supports("avx2") ? &avx2 : nullptr;
    }
    return nullptr;
}

}  // namespace q1framework
