// The block path with eight lanes, compiled for AVX2 (this file only) and used where the machine
// has it.
#include "dsp/TransientBlockKernel.h"

bool TransientBlockPaths::hasEightLanes()
{
    return __builtin_cpu_supports("avx2");
}

void TransientBlockPaths::processEightLanes(TransientProcessor& processor, const Buffers& buffers, int channels,
                                            int count, bool accumulate)
{
    processBlock<8>(processor, buffers, channels, count, accumulate);
}
