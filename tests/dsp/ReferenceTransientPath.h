#pragma once

#include "dsp/TransientProcessor.h"

// The transient processor's per-sample path written out plainly, one sample after the other, as
// the oracle for the processor's two-pass block path. Same contract as processStereo and
// processMono; the processor's public state is read and updated in place.
void referenceProcessStereo(TransientProcessor& processor, const float* inLeft, const float* inRight,
                            float* outLeft, float* outRight, int count, bool accumulate);
void referenceProcessMono(TransientProcessor& processor, const float* in, float* out, int count,
                          bool accumulate);
