#pragma once

namespace q1framework
{

// Debugging aid: prints "Current stack size: N\n" to standard output, N being the bytes of the
// calling thread's stack in use, from the top of the stack down to the caller's frame. Nothing
// calls it in normal operation.
void printStackSize();

}  // namespace q1framework
