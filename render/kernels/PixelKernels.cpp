#include "render/kernels/PixelKernels.h"

#include "render/kernels/PixelKernelSets.h"

#include <initializer_list>

namespace q1framework
{

const PixelKernels& PixelKernels::getScalar()
{
    return PixelKernelSets::scalar;
}

const PixelKernels* PixelKernels::find(InstructionSet instructionSet)
{
    return PixelKernelSets::findRunnable(instructionSet);
}

const PixelKernels& PixelKernels::getBest()
{
    static const PixelKernels& best = [] () -> const PixelKernels& {
        for (const InstructionSet set : {InstructionSet::avx2, InstructionSet::sse2})
            if (const PixelKernels* kernels = find(set))
                return *kernels;
        return getScalar();
    }();
    return best;
}

}  // namespace q1framework
