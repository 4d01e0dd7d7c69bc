#pragma once

namespace q1framework
{

// Debugging aid: prints "Current stack size: N\n" to standard output, N being the process's
// integral unshared stack size as the system's resource usage reports it (Linux reports 0).
// Nothing calls it in normal operation.
void printStackSize();

}  // namespace q1framework
