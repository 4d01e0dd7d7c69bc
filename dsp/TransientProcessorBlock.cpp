// The processing entry points of TransientProcessor: empty blocks, bypass and the floating-point
// mode here, the block itself in the widest block path the machine runs (TransientBlockKernel.h).

#include "dsp/DenormalGuard.h"
#include "dsp/TransientBlockPaths.h"
#include "dsp/TransientProcessor.h"

namespace
{
void process(TransientProcessor& processor, const TransientBlockPaths::Buffers& buffers, int channels, int count,
             bool accumulate)
{
    const DenormalGuard denormalGuard;
    if (TransientBlockPaths::hasSixteenLanes())
        TransientBlockPaths::processSixteenLanes(processor, buffers, channels, count, accumulate);
    else if (TransientBlockPaths::hasEightLanes())
        TransientBlockPaths::processEightLanes(processor, buffers, channels, count, accumulate);
    else
        TransientBlockPaths::processPortable(processor, buffers, channels, count, accumulate);
}
}

void TransientProcessor::processMono(const float* in, float* out, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (bypassed)
    {
        for (int i = 0; i < count; ++i)
            out[i] = in[i];
        return;
    }
    process(*this, {in, nullptr, out, nullptr}, 1, count, accumulate);
}

void TransientProcessor::processStereo(const float* inLeft, const float* inRight, float* outLeft,
                                       float* outRight, int count, bool accumulate)
{
    if (count < 1)
        return;
    if (bypassed)
    {
        // Both inputs of a frame are read before either output of it is written: a host may hand
        // one buffer as an output of one channel and the input of the other.
        for (int i = 0; i < count; ++i)
        {
            const float left = inLeft[i];
            const float right = inRight[i];
            outLeft[i] = left;
            outRight[i] = right;
        }
        return;
    }
    process(*this, {inLeft, inRight, outLeft, outRight}, 2, count, accumulate);
}
