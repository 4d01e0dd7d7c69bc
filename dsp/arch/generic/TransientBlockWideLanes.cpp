// Without a wider vector unit known to the build, the portable path is the widest.
#include "dsp/TransientBlockPaths.h"

bool TransientBlockPaths::hasEightLanes()
{
    return false;
}

void TransientBlockPaths::processEightLanes(TransientProcessor& processor, const Buffers& buffers, int channels,
                                            int count, bool accumulate)
{
    processPortable(processor, buffers, channels, count, accumulate);
}

bool TransientBlockPaths::hasSixteenLanes()
{
    return false;
}

void TransientBlockPaths::processSixteenLanes(TransientProcessor& processor, const Buffers& buffers, int channels,
                                              int count, bool accumulate)
{
    processPortable(processor, buffers, channels, count, accumulate);
}
