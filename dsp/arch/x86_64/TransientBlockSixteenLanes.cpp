// The block path with sixteen lanes, compiled for AVX-512 (this file only) and used where the
// machine has the foundation, double/quad-word, byte/word and vector-length extensions.
#include "dsp/TransientBlockKernel.h"

bool TransientBlockPaths::hasSixteenLanes()
{
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq")
           && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl");
}

void TransientBlockPaths::processSixteenLanes(TransientProcessor& processor, const Buffers& buffers, int channels,
                                              int count, bool accumulate)
{
    processBlock<16>(processor, buffers, channels, count, accumulate);
}
