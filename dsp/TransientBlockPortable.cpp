#include "dsp/TransientBlockKernel.h"

void TransientBlockPaths::processPortable(TransientProcessor& processor, const Buffers& buffers, int channels,
                                          int count, bool accumulate)
{
    processBlock<4>(processor, buffers, channels, count, accumulate);
}
