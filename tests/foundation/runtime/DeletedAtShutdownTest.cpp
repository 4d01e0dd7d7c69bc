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
}  // namespace

TEST(DeletedAtShutdown, DeletesNewestFirstIncludingWhatDestructorsMakeAndSkippingWhatTheyDelete)
{
    DeletedAtShutdown::deleteAll();   // whatever earlier code listed (the clock singleton, say)
    std::vector<std::string> log;
    new Singleton("first", &log);
    auto* second = new Singleton("second", &log);
    new Singleton("third", &log);
    auto* gone = new Singleton("gone", &log);
    delete gone;
    auto* maker = new Singleton("maker", &log);
    maker->action = [&] {
        auto* made = new Singleton("made", &log);
        made->action = [&] { new Singleton("made by made", &log); };
        delete second;
    };
    new Singleton("newest", &log);
    EXPECT_EQ(DeletedAtShutdown::getCount(), 5) << "deleted objects leave the list";

    log.clear();
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log, (std::vector<std::string>{"newest", "maker", "second", "made", "made by made", "third", "first"}));
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
    DeletedAtShutdown::deleteAll();
    EXPECT_EQ(log.size(), 7u) << "nothing is deleted twice";
}
