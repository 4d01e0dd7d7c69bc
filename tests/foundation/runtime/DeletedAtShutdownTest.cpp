#include "foundation/runtime/DeletedAtShutdown.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using q1framework::DeletedAtShutdown;

namespace
{
struct Singleton : DeletedAtShutdown
{
    Singleton(std::string name, std::vector<std::string>* log) : name(std::move(name)), log(log) {}
    ~Singleton() override
    {
        log->push_back(name);
        if (onDestroyed)
            onDestroyed();
    }

    std::string name;
    std::vector<std::string>* log;
    std::function<void()> onDestroyed;
};

class DeletedAtShutdownTest : public ::testing::Test
{
protected:
    // Whatever earlier tests left listed (the clock singleton, say) goes first.
    void SetUp() override { DeletedAtShutdown::deleteAll(); }

    std::vector<std::string> log;
};
}  // namespace

TEST_F(DeletedAtShutdownTest, DeletesNewestFirst)
{
    new Singleton("first", &log);
    new Singleton("second", &log);
    new Singleton("third", &log);
    EXPECT_EQ(DeletedAtShutdown::getCount(), 3);

    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"third", "second", "first"}));
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log.size(), 3u) << "nothing is deleted twice";
}

TEST_F(DeletedAtShutdownTest, ObjectsMadeByADestructorAreDeletedToo)
{
    new Singleton("oldest", &log);
    auto* maker = new Singleton("maker", &log);
    maker->onDestroyed = [this] {
        auto* made = new Singleton("made", &log);
        made->onDestroyed = [this] { new Singleton("made by made", &log); };
    };

    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"maker", "made", "made by made", "oldest"}));
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
}

TEST_F(DeletedAtShutdownTest, ObjectsDeletedByADestructorAreSkipped)
{
    auto* first = new Singleton("first", &log);
    auto* second = new Singleton("second", &log);
    new Singleton("third", &log);
    // The newest deletes both older ones: the loop must not reach them again.
    auto* newest = new Singleton("newest", &log);
    newest->onDestroyed = [first, second] {
        delete second;
        delete first;
    };

    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"newest", "second", "first", "third"}));
}

TEST_F(DeletedAtShutdownTest, DeletingAnObjectYourselfUnlistsIt)
{
    auto* first = new Singleton("first", &log);
    auto* second = new Singleton("second", &log);
    delete first;
    EXPECT_EQ(DeletedAtShutdown::getCount(), 1);
    {
        Singleton onTheStack("on the stack", &log);
        EXPECT_EQ(DeletedAtShutdown::getCount(), 2);
    }
    EXPECT_EQ(DeletedAtShutdown::getCount(), 1);

    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"first", "on the stack", "second"}));
    (void)second;
}
