#pragma once

#include "dsp/TransientProcessor.h"

// The transient processor's per-sample path written out plainly, one sample after the other, as
// the oracle for the processor's block paths. Same contract as processStereo (two channels) and
// processMono (one channel: the right pointers are not used); the processor's public state is read
// and updated in place.
void referenceProcess(TransientProcessor& processor, const float* inLeft, const float* inRight, float* outLeft,
                      float* outRight, int channels, int count, bool accumulate);
