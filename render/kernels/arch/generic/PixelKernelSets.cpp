// Without a vector unit known to the build, the scalar kernels are the only ones.
#include "render/kernels/PixelKernelSets.h"

namespace q1framework
{

const PixelKernels* PixelKernelSets::findRunnable(PixelKernels::InstructionSet instructionSet)
{
    return instructionSet == PixelKernels::InstructionSet::scalar ? &scalar : nullptr;
}

}  // namespace q1framework
