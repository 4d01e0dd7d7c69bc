#pragma once

// Counts the heap allocations made on the calling thread between start and stop, split by who
// asked: the framework (code linked into this program) or the shared libraries it calls (Xlib
// and libxcb for replies and events, the GL driver for its own buffers). The program's malloc,
// calloc, realloc and operator new stand in front of the C library's and look at their caller's
// address.
namespace FrameAllocations
{
struct Counts
{
    long framework = 0;
    long libraries = 0;
};

void start();
Counts stop();
}  // namespace FrameAllocations
