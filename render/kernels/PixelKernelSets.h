#pragma once

#include "render/kernels/PixelKernels.h"

// The tables of the instruction sets, each defined in the source built for it; seen only by the
// kernel selection.
namespace q1framework
{
namespace PixelKernelSets
{
extern const PixelKernels scalar;
extern const PixelKernels sse2;  // defined in x86-64 builds only
extern const PixelKernels avx2;  // defined in x86-64 builds only

// The table of an instruction set when this build has it and this machine runs it; null
// otherwise. Defined by the platform's own source, built with the baseline flags.
const PixelKernels* findRunnable(PixelKernels::InstructionSet instructionSet);
}
}
