#pragma once

#include <cstdint>

namespace q1framework
{

// Work deferred onto the main thread: trigger counts a request, and the next MessagePump::pump
// calls handleAsyncCallback once per counted request. One hop of the pump serves every callback
// that is pending, in the order the callbacks were created.
//
// Thread contract: construction, destruction and dispatch on the main thread; the registry of
// live callbacks has no lock. trigger is for the main thread, or for any thread with coalesce
// true, where a trigger lost to a race does no harm because one is already counted.
class AsyncCallback
{
public:
    // Main thread. Registers the callback, with nothing pending.
    AsyncCallback();
    // Main thread. Unregisters it; pending calls are dropped.
    virtual ~AsyncCallback();

    AsyncCallback(const AsyncCallback&) = delete;
    AsyncCallback& operator=(const AsyncCallback&) = delete;

    // Main thread, from dispatchPending: one counted request.
    virtual void handleAsyncCallback() = 0;

    // Main thread (or any thread, coalesced; see above). With coalesce true and a request
    // already pending, does nothing; otherwise counts one more request. Then asks the pump for
    // its hop.
    void trigger(bool coalesce);

    // Main thread, the pump's hop: walks the registry by index; while an entry has requests
    // pending, takes one off and calls its handleAsyncCallback. The registry and the count are
    // read afresh after every call, since a callback may create or delete callbacks, itself
    // included. A callback that triggers itself from its handler is called again in the same
    // walk.
    static void dispatchPending();

    // Main thread: whether any live callback has a request pending.
    static bool isAnyPending();

    // Requests counted and not yet handled.
    int32_t getPendingCount() const;

private:
    // Not an atomic counter: relaxed loads and stores only, so a racing trigger may be lost (see
    // the thread contract) but never tears.
    int32_t pendingCount = 0;
};

}  // namespace q1framework
