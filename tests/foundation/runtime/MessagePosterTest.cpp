#include "foundation/runtime/Message.h"
#include "foundation/runtime/MessagePoster.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

using q1framework::Message;
using q1framework::MessagePoster;

namespace
{
void pump()
{
    q1framework::MessagePump::getInstance()->pump();
}

// Counts its deletions by payload, so that a message deleted twice, or never, shows.
struct CountedMessage : Message
{
    CountedMessage(int64_t payload, std::vector<std::atomic<int>>* deletions)
        : Message(payload), deletions(deletions)
    {
    }
    ~CountedMessage() override { (*deletions)[static_cast<size_t>(getPayload())].fetch_add(1); }
    std::vector<std::atomic<int>>* deletions;
};

struct RecordingPoster : MessagePoster
{
    RecordingPoster() : MessagePoster(this) {}
    void handleMessage(Message* message) override
    {
        EXPECT_EQ(message->getPoster(), nullptr) << "a message being delivered is no longer pending";
        handled.push_back(message->getPayload());
        if (action)
            action(message);
    }
    std::vector<int64_t> handled;
    std::function<void(Message*)> action;
};

// Deletes itself on its first message, as a window closed by a click would.
struct SelfDeletingPoster : MessagePoster
{
    explicit SelfDeletingPoster(std::vector<int64_t>* heard) : MessagePoster(nullptr), heard(heard) {}
    void handleMessage(Message* message) override
    {
        heard->push_back(message->getPayload());
        delete this;
    }
    std::vector<int64_t>* heard;
};

class MessagePosterTest : public ::testing::Test
{
protected:
    Message* make(int64_t payload) { return new CountedMessage(payload, &deletions); }

    void expectEachDeletedOnce(int count)
    {
        for (int payload = 0; payload < count; ++payload)
            ASSERT_EQ(deletions[static_cast<size_t>(payload)].load(), 1) << "message " << payload;
    }

    std::vector<std::atomic<int>> deletions = std::vector<std::atomic<int>>(8000);
};
}  // namespace

TEST_F(MessagePosterTest, MessagesArriveAtTheNextPumpInPostingOrder)
{
    RecordingPoster first, second;
    EXPECT_EQ(first.getOwner(), &first);
    Message* cancelledByStranger = make(0);
    first.postMessage(cancelledByStranger);
    second.postMessage(make(1));
    first.postMessage(make(2));
    first.postMessage(nullptr);
    second.cancelMessage(cancelledByStranger);   // not pending there: nothing happens
    EXPECT_EQ(first.getPendingCount(), 2);
    EXPECT_TRUE(first.handled.empty());

    pump();
    EXPECT_EQ(first.handled, (std::vector<int64_t>{0, 2}));
    EXPECT_EQ(second.handled, std::vector<int64_t>{1});
    EXPECT_EQ(first.getPendingCount(), 0);
    expectEachDeletedOnce(3);
}

TEST_F(MessagePosterTest, CancelledMessagesAreDeletedByThePumpUnhandled)
{
    auto poster = std::make_unique<RecordingPoster>();
    Message* cancelled = make(1);
    poster->postMessage(make(0));
    poster->postMessage(cancelled);
    poster->postMessage(make(2));
    poster->cancelMessage(cancelled);
    EXPECT_EQ(cancelled->getPoster(), nullptr);
    EXPECT_EQ(deletions[1].load(), 0) << "the pump's queue still owns it";
    pump();
    EXPECT_EQ(poster->handled, (std::vector<int64_t>{0, 2}));

    poster->postMessage(make(3));
    poster->postMessage(make(4));
    poster->cancelAll();
    EXPECT_EQ(poster->getPendingCount(), 0);
    pump();
    poster->postMessage(make(5));
    poster.reset();   // cancels what is pending, like cancelAll
    pump();
    expectEachDeletedOnce(6);
}

TEST_F(MessagePosterTest, HandlerMayPostCancelOrDeleteItsPoster)
{
    RecordingPoster poster;
    Message* later = make(2);
    poster.action = [&](Message* message) {
        if (message->getPayload() == 0)
        {
            poster.postMessage(make(3));   // lands in the next pump
            poster.cancelMessage(later);   // still queued in this one
        }
    };
    poster.postMessage(make(0));
    poster.postMessage(make(1));
    poster.postMessage(later);
    pump();
    EXPECT_EQ(poster.handled, (std::vector<int64_t>{0, 1}));
    pump();
    EXPECT_EQ(poster.handled, (std::vector<int64_t>{0, 1, 3}));

    std::vector<int64_t> heardByDoomed;
    auto* doomed = new SelfDeletingPoster(&heardByDoomed);
    doomed->postMessage(make(4));
    doomed->postMessage(make(5));
    pump();
    EXPECT_EQ(heardByDoomed, std::vector<int64_t>{4}) << "the second went with its poster";
    expectEachDeletedOnce(6);
}

namespace
{
constexpr int producerCount = 3;
constexpr int messagesPerProducer = 2000;
constexpr int producedCount = producerCount * messagesPerProducer;

// Posts its share of numbered messages from its own thread, as fast as it can.
struct Producer : q1framework::Thread
{
    Producer(MessagePoster& poster, int index, std::vector<std::atomic<int>>& deletions)
        : poster(poster), index(index), deletions(deletions)
    {
    }
    ~Producer() override { stopThread(); }
    void run() override
    {
        for (int i = 0; i < messagesPerProducer; ++i)
            poster.postMessage(new CountedMessage(index * messagesPerProducer + i, &deletions));
    }
    MessagePoster& poster;
    const int index;
    std::vector<std::atomic<int>>& deletions;
};

// Starts the producers, then pumps on this thread, calling beforePump first each time, until
// they are done and everything posted has been delivered or dropped.
void produceWhilePumping(MessagePoster& poster, std::vector<std::atomic<int>>& deletions,
                         const std::function<void(int round)>& beforePump)
{
    std::vector<std::unique_ptr<Producer>> producers;
    for (int index = 0; index < producerCount; ++index)
        producers.push_back(std::make_unique<Producer>(poster, index, deletions));
    for (auto& producer : producers)
        producer->startThread(q1framework::Thread::defaultPriority);
    for (int round = 0;; ++round)
    {
        bool anyRunning = false;
        for (auto& producer : producers)
            anyRunning = anyRunning || producer->isThreadRunning();
        beforePump(round);
        pump();
        if (!anyRunning)
            break;
    }
    pump();   // replies posted by the last handlers
}

void expectOrderPerProducer(const std::vector<int64_t>& handled)
{
    std::vector<int64_t> lastSeen(producerCount, -1);
    for (int64_t payload : handled)
    {
        if (payload >= producedCount)
            continue;
        const size_t producer = static_cast<size_t>(payload / messagesPerProducer);
        ASSERT_GT(payload, lastSeen[producer]) << "producer " << producer << " out of order";
        lastSeen[producer] = payload;
    }
}
}  // namespace

TEST_F(MessagePosterTest, ThreadedPostsFromOtherThreadsArriveInOrderExactlyOnce)
{
    RecordingPoster poster;
    int replies = 0;
    // Every tenth message is answered by a post from the handler, as a click handler might.
    poster.action = [&](Message* message) {
        if (message->getPayload() < producedCount && message->getPayload() % 10 == 0)
            poster.postMessage(make(producedCount + replies++));
    };
    produceWhilePumping(poster, deletions, [](int) {});

    EXPECT_EQ(replies, producedCount / 10);
    EXPECT_EQ(poster.handled.size(), static_cast<size_t>(producedCount + replies));
    expectOrderPerProducer(poster.handled);
    expectEachDeletedOnce(producedCount + replies);
}

TEST_F(MessagePosterTest, ThreadedCancellingWhilePostingDeletesEveryMessageOnce)
{
    RecordingPoster poster;
    produceWhilePumping(poster, deletions, [&](int round) {
        if (round % 2 == 0)
            poster.cancelAll();
    });
    expectOrderPerProducer(poster.handled);
    expectEachDeletedOnce(producedCount);
}
