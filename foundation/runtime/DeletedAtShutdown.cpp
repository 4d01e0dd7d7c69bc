#include "foundation/runtime/DeletedAtShutdown.h"

#include "foundation/runtime/StaticInitOrder.h"
#include "foundation/var/Array.h"

namespace q1framework
{

namespace
{
// False once the registry has been torn down at unload: objects made or destroyed after that, by
// other load-time objects' destructors, are neither listed nor looked up.
bool registryAlive = true;

struct Registry
{
    // Deletes what the last framework shutdown left, or what was made since (the clock of a
    // plug-in that a host scanned without opening it, for example), so that unloading leaks nothing.
    ~Registry()
    {
        DeletedAtShutdown::deleteAll();
        registryAlive = false;
    }

    Array<DeletedAtShutdown*> objects;
};

__attribute__((init_priority(StaticInitOrder::deletedAtShutdown))) Registry registry;
}  // namespace

DeletedAtShutdown::DeletedAtShutdown()
{
    if (registryAlive)
        registry.objects.add(this);
}

DeletedAtShutdown::~DeletedAtShutdown()
{
    if (registryAlive)
        registry.objects.removeFirstMatching(this);
}

void DeletedAtShutdown::deleteAll()
{
    // The count is read afresh on every round: a destructor may list or delete other objects.
    while (registryAlive && !registry.objects.isEmpty())
    {
        DeletedAtShutdown* newest = registry.objects.getLast();
        registry.objects.removeAt(registry.objects.getCount() - 1);
        delete newest;
    }
}

int32_t DeletedAtShutdown::getCount()
{
    return registryAlive ? registry.objects.getCount() : 0;
}

}  // namespace q1framework
