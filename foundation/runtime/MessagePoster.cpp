#include "foundation/runtime/MessagePoster.h"

#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/ScopedLock.h"

namespace q1framework
{

MessagePoster::MessagePoster(void* owner) : owner(owner) {}

MessagePoster::~MessagePoster()
{
    {
        ScopedLock hold(lock);
        closed = true;
    }
    cancelAll();
}

void MessagePoster::postMessage(Message* message)
{
    if (message == nullptr)
        return;
    MessagePump* pump = MessagePump::getInstance();
    {
        ScopedLock hold(lock);
        if (!closed && pump != nullptr)
        {
            message->poster.store(this, std::memory_order_release);
            pending.add(message);
            // Queued while this lock is held, so that the pump delivers in the order in which
            // the messages became pending here, whichever threads posted them.
            pump->enqueueMessage(message);
            return;
        }
    }
    delete message;
}

void MessagePoster::cancelAll()
{
    ScopedLock hold(lock);
    for (Message* message : pending)
        message->poster.store(nullptr, std::memory_order_release);
    pending.clear();
}

void MessagePoster::cancelMessage(Message* message)
{
    ScopedLock hold(lock);
    if (message == nullptr || message->poster.load(std::memory_order_relaxed) != this)
        return;
    message->poster.store(nullptr, std::memory_order_release);
    pending.removeFirstMatching(message);
}

void MessagePoster::deliverMessage(Message* message)
{
    if (message == nullptr)
        return;
    bool stillPending = false;
    {
        ScopedLock hold(lock);
        if (message->poster.load(std::memory_order_relaxed) == this)
        {
            stillPending = true;
            message->poster.store(nullptr, std::memory_order_release);
            pending.removeFirstMatching(message);
        }
    }
    // Without the lock: the handler may post, cancel, or delete this poster, so nothing of this
    // object is touched once it returns.
    if (stillPending)
        handleMessage(message);
    delete message;
}

int32_t MessagePoster::getPendingCount()
{
    ScopedLock hold(lock);
    return pending.getCount();
}

}  // namespace q1framework
