#include "foundation/runtime/StackSize.h"

#include <cstdio>
#include <sys/resource.h>

namespace q1framework
{

void printStackSize()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("Current stack size: %i\n", static_cast<int>(usage.ru_isrss));
}

}  // namespace q1framework
