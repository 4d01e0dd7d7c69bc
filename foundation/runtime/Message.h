#pragma once

#include <atomic>
#include <cstdint>

namespace q1framework
{

class MessagePoster;

// A message for MessagePoster::postMessage, delivered later on the main thread. Subclasses carry
// what the handler needs (ButtonNotificationMessage, for example). Whoever holds a posted message
// deletes it: its poster after handling it, or the pump's queue if it was cancelled.
class Message
{
public:
    explicit Message(int64_t payload = 0) : payload(payload) {}
    virtual ~Message();

    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

    int64_t getPayload() const { return payload; }

    // Any thread: the poster on which the message is pending; null before it is posted, once it
    // is cancelled and once it is being delivered.
    MessagePoster* getPoster() const { return poster.load(std::memory_order_acquire); }

private:
    friend class MessagePoster;

    const int64_t payload;
    // Written under the poster's lock; the pump reads it without that lock to learn where to
    // deliver, and the poster checks it again under its lock before handling.
    std::atomic<MessagePoster*> poster{nullptr};
};

}  // namespace q1framework
