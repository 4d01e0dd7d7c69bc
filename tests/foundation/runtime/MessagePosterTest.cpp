#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/MessagePump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

using q1framework::Message;
using q1framework::MessagePoster;

namespace
{
void pump()
{
    q1framework::MessagePump::getInstance()->pump();
}

// Counts the live messages, so that one deleted twice, or never, shows.
struct CountedMessage : Message
{
    explicit CountedMessage(int64_t payload) : Message(payload) { alive.fetch_add(1); }
    ~CountedMessage() override { alive.fetch_sub(1); }
    static inline std::atomic<int> alive{0};
};

struct RecordingPoster : MessagePoster
{
    RecordingPoster() : MessagePoster(this) {}
    void handleMessage(Message* message) override
    {
        EXPECT_EQ(message->getPoster(), nullptr) << "a message being delivered is no longer pending";
        handled.push_back(message->getPayload());
        if (const std::function<void(Message*)> run = action)   // a copy: the action may delete this
            run(message);
    }
    std::vector<int64_t> handled;
    std::function<void(Message*)> action;
};
}  // namespace

TEST(MessagePoster, MessagesArriveInPostingOrderAndHandlersMayPostCancelOrDeleteTheirPoster)
{
    RecordingPoster first, second;
    Message* cancelled = new CountedMessage(1);
    Message* cancelledByHandler = new CountedMessage(3);
    first.action = [&](Message* message) {
        if (message->getPayload() == 0)
        {
            first.postMessage(new CountedMessage(5));   // lands in the next pump
            first.cancelMessage(cancelledByHandler);    // still queued in this one
        }
    };
    first.postMessage(new CountedMessage(0));
    first.postMessage(cancelled);
    second.postMessage(new CountedMessage(2));
    first.postMessage(cancelledByHandler);
    first.postMessage(new CountedMessage(4));
    first.postMessage(nullptr);
    second.cancelMessage(cancelled);   // not pending there: nothing happens
    EXPECT_EQ(first.getPendingCount(), 4);
    first.cancelMessage(cancelled);
    EXPECT_EQ(cancelled->getPoster(), nullptr);
    EXPECT_EQ(CountedMessage::alive.load(), 5) << "the pump's queue still owns the cancelled ones";

    pump();
    EXPECT_EQ(first.handled, (std::vector<int64_t>{0, 4}));
    EXPECT_EQ(second.handled, std::vector<int64_t>{2});
    pump();
    first.postMessage(new CountedMessage(6));
    first.cancelAll();
    auto* doomed = new RecordingPoster;
    int doomedHeard = 0;
    doomed->action = [doomed, &doomedHeard](Message*) {
        ++doomedHeard;
        delete doomed;   // as a click that closes its window; the destructor cancels the rest
    };
    doomed->postMessage(new CountedMessage(7));
    doomed->postMessage(new CountedMessage(8));
    pump();
    EXPECT_EQ(first.handled, (std::vector<int64_t>{0, 4, 5}));
    EXPECT_EQ(doomedHeard, 1);
    EXPECT_EQ(CountedMessage::alive.load(), 0);
}

TEST(MessagePoster, ThreadedPostsFromOtherThreadsArriveInOrderExactlyOnce)
{
    // Three producer threads post 2000 numbered messages each while this thread pumps. Every tenth
    // message is answered by a post from the handler, as a click handler might.
    constexpr int perProducer = 2000, produced = 3 * perProducer;
    RecordingPoster poster;
    int64_t lastSeen[3] = {-1, -1, -1};
    int replies = 0;
    poster.action = [&](Message* message) {
        const int64_t payload = message->getPayload();
        if (payload >= produced)
            return;
        EXPECT_GT(payload, lastSeen[payload / perProducer]) << "a producer's messages out of order";
        lastSeen[payload / perProducer] = payload;
        if (payload % 10 == 0)
            poster.postMessage(new CountedMessage(produced + replies++));
    };
    std::atomic<int> finished{0};
    std::vector<std::thread> producers;
    for (int index = 0; index < 3; ++index)
        producers.emplace_back([&, index] {
            for (int i = 0; i < perProducer; ++i)
                poster.postMessage(new CountedMessage(index * perProducer + i));
            finished.fetch_add(1);
        });
    for (bool done = false; !done;)
    {
        done = finished.load() == 3;
        pump();
    }
    for (std::thread& producer : producers)
        producer.join();
    pump();   // the replies to the last messages
    EXPECT_EQ(replies, produced / 10);
    EXPECT_EQ(poster.handled.size(), static_cast<size_t>(produced + replies));
    EXPECT_EQ(CountedMessage::alive.load(), 0);
}
