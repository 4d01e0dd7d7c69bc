// The allocation counter of sanitizer builds: the sanitizer's allocator tells a hook of every
// allocation in the process.

#include "AllocationCounter.h"

#include <cstddef>

// The sanitizer runtime's allocator interface.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*mallocHook)(const volatile void*, std::size_t),
                                                         void (*freeHook)(const volatile void*));

namespace
{
[[maybe_unused]] const bool hooksInstalled = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) { AllocationCounter::note(); }, [](const volatile void*) {});
}  // namespace
