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
using q1framework::MessagePump;

namespace
{
void pump()
{
    MessagePump::getInstance()->pump();
}

// Counts its own deletions per payload, so that a message deleted twice or never shows.
struct CountedMessage : Message
{
    CountedMessage(int64_t payload, std::vector<std::atomic<int>>* deletions) : Message(payload), deletions(deletions) {}
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
    MessagePosterTest() : deletions(64) {}

    Message* make(int64_t payload) { return new CountedMessage(payload, &deletions); }

    void expectEachDeletedOnce(int count)
    {
        for (int payload = 0; payload < count; ++payload)
            EXPECT_EQ(deletions[static_cast<size_t>(payload)].load(), 1) << "message " << payload;
    }

    std::vector<std::atomic<int>> deletions;
};
}  // namespace

TEST_F(MessagePosterTest, MessagesArriveAtTheNextPumpInPostingOrder)
{
    RecordingPoster first, second;
    EXPECT_EQ(first.getOwner(), &first);
    first.postMessage(make(0));
    second.postMessage(make(1));
    first.postMessage(make(2));
    first.postMessage(nullptr);
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
    RecordingPoster poster;
    Message* kept = make(0);
    Message* cancelled = make(1);
    poster.postMessage(kept);
    poster.postMessage(cancelled);
    poster.postMessage(make(2));
    poster.cancelMessage(cancelled);
    EXPECT_EQ(cancelled->getPoster(), nullptr);
    EXPECT_EQ(kept->getPoster(), &poster);
    EXPECT_EQ(deletions[1].load(), 0) << "the pump's queue still owns it";
    pump();
    EXPECT_EQ(poster.handled, (std::vector<int64_t>{0, 2}));

    poster.postMessage(make(3));
    poster.postMessage(make(4));
    poster.cancelAll();
    EXPECT_EQ(poster.getPendingCount(), 0);
    pump();
    EXPECT_EQ(poster.handled.size(), 2u);
    expectEachDeletedOnce(5);
}

TEST_F(MessagePosterTest, CancellingAnotherPostersMessageDoesNothing)
{
    RecordingPoster owner, stranger;
    Message* message = make(0);
    owner.postMessage(message);
    stranger.cancelMessage(message);
    EXPECT_EQ(message->getPoster(), &owner);
    pump();
    EXPECT_EQ(owner.handled, std::vector<int64_t>{0});
    expectEachDeletedOnce(1);
}

TEST_F(MessagePosterTest, PosterDestroyedBeforeThePumpLeavesItsMessagesToBeDeleted)
{
    auto poster = std::make_unique<RecordingPoster>();
    poster->postMessage(make(0));
    poster->postMessage(make(1));
    poster.reset();
    EXPECT_EQ(deletions[0].load(), 0);
    pump();
    expectEachDeletedOnce(2);
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
constexpr int replyBase = producerCount * messagesPerProducer;

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
}  // namespace

TEST(MessagePosterThreads, ThreadedPostsFromOtherThreadsArriveInOrderExactlyOnce)
{
    // Payloads: 0 .. replyBase-1 from the producers; replyBase + k for the handler's own replies.
    std::vector<std::atomic<int>> deletions(replyBase + replyBase / 10 + 1);
    RecordingPoster poster;
    int replies = 0;
    poster.action = [&](Message* message) {
        // Every tenth message is answered by a post from the handler, as a click handler would.
        if (message->getPayload() < replyBase && message->getPayload() % 10 == 0)
            poster.postMessage(new CountedMessage(replyBase + replies++, &deletions));
    };

    std::vector<std::unique_ptr<Producer>> producers;
    for (int index = 0; index < producerCount; ++index)
        producers.push_back(std::make_unique<Producer>(poster, index, deletions));
    for (auto& producer : producers)
        producer->startThread(q1framework::Thread::defaultPriority);

    const auto running = [&] {
        for (auto& producer : producers)
            if (producer->isThreadRunning())
                return true;
        return false;
    };
    while (running())
        pump();
    producers.clear();
    pump();
    pump();

    EXPECT_EQ(poster.getPendingCount(), 0);
    std::vector<int64_t> lastSeen(producerCount, -1);
    int fromProducers = 0;
    for (int64_t payload : poster.handled)
    {
        if (payload >= replyBase)
            continue;
        ++fromProducers;
        const int64_t producer = payload / messagesPerProducer;
        EXPECT_GT(payload, lastSeen[static_cast<size_t>(producer)]) << "producer " << producer << " out of order";
        lastSeen[static_cast<size_t>(producer)] = payload;
    }
    EXPECT_EQ(fromProducers, replyBase);
    EXPECT_EQ(replies, replyBase / 10);
    EXPECT_EQ(static_cast<int>(poster.handled.size()), replyBase + replies);
    for (int payload = 0; payload < replyBase + replies; ++payload)
        ASSERT_EQ(deletions[static_cast<size_t>(payload)].load(), 1) << "message " << payload;
}

TEST(MessagePosterThreads, ThreadedCancellingWhilePostingDeletesEveryMessageOnce)
{
    std::vector<std::atomic<int>> deletions(replyBase);
    RecordingPoster poster;
    std::vector<std::unique_ptr<Producer>> producers;
    for (int index = 0; index < producerCount; ++index)
        producers.push_back(std::make_unique<Producer>(poster, index, deletions));
    for (auto& producer : producers)
        producer->startThread(q1framework::Thread::defaultPriority);

    // The main thread alternates cancelling what is pending with delivering what is left.
    int rounds = 0;
    for (bool anyRunning = true; anyRunning; ++rounds)
    {
        anyRunning = false;
        for (auto& producer : producers)
            anyRunning = anyRunning || producer->isThreadRunning();
        if (rounds % 2 == 0)
            poster.cancelAll();
        pump();
    }
    producers.clear();
    pump();

    std::vector<int64_t> lastSeen(producerCount, -1);
    for (int64_t payload : poster.handled)
    {
        const int64_t producer = payload / messagesPerProducer;
        EXPECT_GT(payload, lastSeen[static_cast<size_t>(producer)]);
        lastSeen[static_cast<size_t>(producer)] = payload;
    }
    for (int payload = 0; payload < replyBase; ++payload)
        ASSERT_EQ(deletions[static_cast<size_t>(payload)].load(), 1) << "message " << payload;
}
