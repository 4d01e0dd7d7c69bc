#include "host/FrameworkInstances.h"

#include "foundation/runtime/FrameworkInitialiser.h"
#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ScopedLock.h"

namespace q1framework
{

namespace
{
struct Instances
{
    Mutex lock;
    int count = 0;
    FrameworkInitialiser* initialiser = nullptr;
};

Instances& instances()
{
    static Instances state;
    return state;
}
}  // namespace

void FrameworkInstances::add()
{
    Instances& state = instances();
    const ScopedLock lock(state.lock);
    if (state.count++ == 0)
        state.initialiser = new FrameworkInitialiser;
}

void FrameworkInstances::remove()
{
    Instances& state = instances();
    const ScopedLock lock(state.lock);
    if (state.count == 0 || --state.count > 0)
        return;
    delete state.initialiser;
    state.initialiser = nullptr;
}

int FrameworkInstances::getCount()
{
    Instances& state = instances();
    const ScopedLock lock(state.lock);
    return state.count;
}

}  // namespace q1framework
