#include "plugin/SharedResourcePack.h"

#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ScopedLock.h"

namespace q1framework
{

namespace
{
struct Shared
{
    Mutex lock;
    SharedResourcePack::LoadFunction load = nullptr;
    SharedResourcePack::UnloadFunction unload = nullptr;
    ResourcePack* pack = nullptr;
    int instances = 0;
};

Shared& shared()
{
    static Shared state;
    return state;
}
}  // namespace

void SharedResourcePack::setFunctions(LoadFunction load, UnloadFunction unload)
{
    Shared& state = shared();
    const ScopedLock lock(state.lock);
    state.load = load;
    state.unload = unload;
}

void SharedResourcePack::acquire(const char* fileName)
{
    Shared& state = shared();
    const ScopedLock lock(state.lock);
    if (state.instances++ == 0 && state.load != nullptr)
        state.pack = state.load(fileName);
}

void SharedResourcePack::release()
{
    Shared& state = shared();
    const ScopedLock lock(state.lock);
    if (state.instances == 0 || --state.instances > 0)
        return;
    if (state.pack != nullptr && state.unload != nullptr)
        state.unload(state.pack);
    state.pack = nullptr;
}

ResourcePack* SharedResourcePack::get()
{
    Shared& state = shared();
    const ScopedLock lock(state.lock);
    return state.pack;
}

int SharedResourcePack::getInstanceCount()
{
    Shared& state = shared();
    const ScopedLock lock(state.lock);
    return state.instances;
}

}  // namespace q1framework
