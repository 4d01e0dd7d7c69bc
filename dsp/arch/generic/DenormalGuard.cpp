#include "dsp/DenormalGuard.h"

// Architectures without a known flush-to-zero control keep the caller's mode: results are the same
// for normal numbers, only decays into silence cost more.
DenormalGuard::DenormalGuard() : savedMode(0) {}

DenormalGuard::~DenormalGuard() {}
