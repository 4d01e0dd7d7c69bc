#pragma once

class TransientProcessor;

// The block path of TransientProcessor, built once per instruction set. The processor picks the
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

// Whether this build and this machine offer the wide path (eight lanes on x86-64 with AVX2).
bool hasWide();
// The wide path; only to be called when hasWide() answers true.
void processWide(TransientProcessor& processor, const Buffers& buffers, int channels, int count, bool accumulate);
}
