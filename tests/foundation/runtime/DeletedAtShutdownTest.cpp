#include "foundation/runtime/DeletedAtShutdown.h"

#include "LoggedCalls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using q1framework::DeletedAtShutdown;

namespace
{
// Logs its name when it is deleted, then runs its action.
struct Singleton : DeletedAtShutdown, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    ~Singleton() override { record(); }
};

class DeletedAtShutdownTest : public ::testing::Test
{
protected:
    // Whatever earlier tests left listed (the clock singleton, say) goes first.
    void SetUp() override { DeletedAtShutdown::deleteAll(); }

    std::vector<std::string> log;
};
}  // namespace

TEST_F(DeletedAtShutdownTest, DeletesNewestFirstWhatIsStillListed)
{
    auto* first = new Singleton("first", &log);
    new Singleton("second", &log);
    new Singleton("third", &log);
    {
        Singleton onTheStack("on the stack", &log);
        EXPECT_EQ(DeletedAtShutdown::getCount(), 4);
    }
    new Singleton("fourth", &log);
    delete first;
    EXPECT_EQ(DeletedAtShutdown::getCount(), 3) << "deleted objects leave the list";

    log.clear();
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"fourth", "third", "second"}));
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log.size(), 3u) << "nothing is deleted twice";
}

TEST_F(DeletedAtShutdownTest, ObjectsMadeByADestructorAreDeletedToo)
{
    new Singleton("oldest", &log);
    auto* maker = new Singleton("maker", &log);
    maker->action = [this] {
        auto* made = new Singleton("made", &log);
        made->action = [this] { new Singleton("made by made", &log); };
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
    newest->action = [first, second] {
        delete second;
        delete first;
    };

    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"newest", "second", "first", "third"}));
}
