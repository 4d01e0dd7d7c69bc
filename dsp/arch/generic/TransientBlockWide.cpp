// Without a wider vector unit known to the build, the portable path is the widest.
#include "dsp/TransientBlockPaths.h"

bool TransientBlockPaths::hasWide()
{
    return false;
}

void TransientBlockPaths::processWide(TransientProcessor& processor, const Buffers& buffers, int channels,
                                      int count, bool accumulate)
{
    processPortable(processor, buffers, channels, count, accumulate);
}
