#pragma once

// Sets the processor's flush-to-zero and denormals-are-zero modes for its lifetime and restores
// the caller's mode when it ends. Placed around one audio block so that long multiplicative decays
// into silence cost no more than signal: subnormal results become 0 and subnormal inputs read as
// 0; arithmetic on normal numbers is unchanged.
//
// Thread contract: any thread; it changes only the calling thread's floating-point control word.
class DenormalGuard
{
public:
    DenormalGuard();
    ~DenormalGuard();

    DenormalGuard(const DenormalGuard&) = delete;
    DenormalGuard& operator=(const DenormalGuard&) = delete;

private:
    unsigned long savedMode;  // the caller's control word, as the architecture stores it
};
