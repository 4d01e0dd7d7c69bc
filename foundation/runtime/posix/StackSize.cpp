#include "foundation/runtime/StackSize.h"

#include <cstdint>
#include <cstdio>
#include <pthread.h>

namespace q1framework
{

// The process's resource usage has a field for the unshared stack size, but Linux leaves it at 0;
// the calling thread's own stack bounds tell what is in use. Stacks grow downwards here.
void printStackSize()
{
    volatile char here = 0;
    long used = 0;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0)
    {
        void* lowest = nullptr;
        size_t size = 0;
        if (pthread_attr_getstack(&attributes, &lowest, &size) == 0)
            used = static_cast<long>(reinterpret_cast<std::uintptr_t>(lowest) + size
                                     - reinterpret_cast<std::uintptr_t>(&here));
        pthread_attr_destroy(&attributes);
    }
    std::printf("Current stack size: %li\n", used);
}

}  // namespace q1framework
