#pragma once

#include "foundation/runtime/Mutex.h"
#include "foundation/var/Array.h"

#include <cstdint>

namespace q1framework
{

class Message;

// Defers work onto the main thread by messages: postMessage may be called on any thread, and each
// message reaches handleMessage later on the main thread, in posting order, through the
// MessagePump. Button derives from it for its asynchronous clicks.
//
// The lock covers the list of pending messages only. It is never held during handleMessage, so a
// handler may post, cancel, or delete this poster.
class MessagePoster
{
public:
    // Any thread. owner is the object this poster serves; it is not owned.
    explicit MessagePoster(void* owner);
    // Main thread. Closes the poster, so that later posts are refused, and cancels what is
    // pending. The pump's queue still owns the cancelled messages and deletes them.
    virtual ~MessagePoster();

    MessagePoster(const MessagePoster&) = delete;
    MessagePoster& operator=(const MessagePoster&) = delete;

    // Main thread, from deliverMessage: the message as it was posted. The caller deletes it after
    // this returns.
    virtual void handleMessage(Message* message) = 0;

    // Any thread. Takes ownership of message (null is ignored). A closed poster deletes it at
    // once; otherwise it is listed as pending here and queued for the main thread. The poster must
    // outlive the call.
    void postMessage(Message* message);
    // Any thread: cancels every pending message. They are not deleted here: the pump's queue
    // holds them and deletes them when their turn comes.
    void cancelAll();
    // Any thread: cancels message if it is pending on this poster; otherwise nothing.
    void cancelMessage(Message* message);
    // Main thread, called by the pump. Takes message off the pending list; then, outside the lock,
    // hands it to handleMessage unless it was cancelled meanwhile, and deletes it either way.
    void deliverMessage(Message* message);

    void* getOwner() const { return owner; }
    // Any thread: number of messages posted here and neither delivered nor cancelled yet.
    int32_t getPendingCount();

private:
    void* const owner;
    bool closed = false;
    Mutex lock;
    Array<Message*> pending;
};

}  // namespace q1framework
