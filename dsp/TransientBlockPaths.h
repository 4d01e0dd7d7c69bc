#pragma once

class TransientProcessor;

// The block path of TransientProcessor, built once per instruction set. The processor takes the
// widest one the machine runs; tests check each of them against the per-sample order. All give
// the same bits.
//
// Thread contract: audio thread, with the flush-to-zero mode already set by the caller.
namespace TransientBlockPaths
{
struct Buffers
{
    const float* inLeft;
    const float* inRight;  // null for one channel
    float* outLeft;
    float* outRight;       // null for one channel
};

// Four lanes with the baseline instruction set of the build.
void processPortable(TransientProcessor& processor, const Buffers& buffers, int channels, int count, bool accumulate);

// Eight lanes (AVX2 on x86-64) and sixteen lanes (AVX-512), where this build and this machine
// offer them; each process function is only to be called when its `has` function answers true.
bool hasEightLanes();
void processEightLanes(TransientProcessor& processor, const Buffers& buffers, int channels, int count,
                       bool accumulate);
bool hasSixteenLanes();
void processSixteenLanes(TransientProcessor& processor, const Buffers& buffers, int channels, int count,
                         bool accumulate);
}
