#include "foundation/runtime/AsyncCallback.h"

#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/StaticInitOrder.h"
#include "foundation/var/Array.h"

namespace q1framework
{

namespace
{
// Every live callback, in creation order.
__attribute__((init_priority(StaticInitOrder::asyncCallbacks))) Array<AsyncCallback*> registry;

int32_t loadCount(const int32_t& count)
{
    return __atomic_load_n(&count, __ATOMIC_RELAXED);
}

void storeCount(int32_t& count, int32_t value)
{
    __atomic_store_n(&count, value, __ATOMIC_RELAXED);
}
}  // namespace

AsyncCallback::AsyncCallback()
{
    registry.add(this);
}

AsyncCallback::~AsyncCallback()
{
    registry.removeFirstMatching(this);
}

void AsyncCallback::trigger(bool coalesce)
{
    const int32_t count = loadCount(pendingCount);
    if (coalesce && count >= 1)
        return;
    storeCount(pendingCount, count + 1);
    MessagePump::requestAsyncDispatch();
}

void AsyncCallback::dispatchPending()
{
    for (int32_t index = 0; index < registry.getCount(); ++index)
    {
        while (index < registry.getCount() && loadCount(registry[index]->pendingCount) > 0)
        {
            AsyncCallback* callback = registry[index];
            storeCount(callback->pendingCount, loadCount(callback->pendingCount) - 1);
            callback->handleAsyncCallback();
        }
    }
}

bool AsyncCallback::isAnyPending()
{
    for (AsyncCallback* callback : registry)
        if (loadCount(callback->pendingCount) > 0)
            return true;
    return false;
}

int32_t AsyncCallback::getPendingCount() const
{
    return loadCount(pendingCount);
}

}  // namespace q1framework
