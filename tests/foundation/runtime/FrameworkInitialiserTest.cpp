#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "foundation/runtime/HiResCounterHandler.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

using q1framework::DeletedAtShutdown;
using q1framework::FrameworkInitialiser;
using Hook = q1framework::FrameworkInitialiser::Hook;

namespace
{
std::vector<std::string> steps;
bool fontLibraryAlive = false;

// A singleton of a later layer, made on demand and deleted with DeletedAtShutdown.
struct GlyphCache : DeletedAtShutdown
{
    ~GlyphCache() override { steps.push_back(fontLibraryAlive ? "glyph cache" : "glyph cache without library"); }
};

class FrameworkInitialiserTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeletedAtShutdown::deleteAll();
        steps.clear();
    }

    void TearDown() override
    {
        for (int hook = 0; hook < static_cast<int>(Hook::count); ++hook)
            FrameworkInitialiser::setHook(static_cast<Hook>(hook), nullptr);
    }

    static void installAllHooks()
    {
        FrameworkInitialiser::setHook(Hook::platformSetUp, [] { steps.push_back("platform"); });
        FrameworkInitialiser::setHook(Hook::createFontLibrary, [] {
            steps.push_back("create fonts");
            fontLibraryAlive = true;
        });
        FrameworkInitialiser::setHook(Hook::createDefaultLookAndFeel, [] { steps.push_back("create look"); });
        FrameworkInitialiser::setHook(Hook::clearDefaultLookAndFeelSelection, [] { steps.push_back("deselect"); });
        FrameworkInitialiser::setHook(Hook::destroyDefaultLookAndFeel, [] { steps.push_back("destroy look"); });
        FrameworkInitialiser::setHook(Hook::destroyFontLibrary, [] {
            steps.push_back("destroy fonts");
            fontLibraryAlive = false;
        });
        FrameworkInitialiser::setHook(Hook::releaseComponentStatics, [] { steps.push_back("components"); });
    }
};
}  // namespace

TEST_F(FrameworkInitialiserTest, BringsUpAndTakesDownInOrderAndAgain)
{
    installAllHooks();
    const std::vector<std::string> bringUp{"platform", "create fonts", "create look"};
    const std::vector<std::string> takeDown{"deselect", "glyph cache", "destroy look", "destroy fonts",
                                            "components"};
    for (int round = 0; round < 2; ++round)
    {
        SCOPED_TRACE(round == 0 ? "first bring-up" : "bring-up after take-down");
        steps.clear();
        auto framework = std::make_unique<FrameworkInitialiser>();
        EXPECT_EQ(steps, bringUp);
        new GlyphCache;
        q1framework::HiResCounterHandler::getInstance();
        EXPECT_EQ(DeletedAtShutdown::getCount(), 2);

        steps.clear();
        framework.reset();
        EXPECT_EQ(steps, takeDown);
        EXPECT_EQ(DeletedAtShutdown::getCount(), 0) << "the clock went too";
    }
}

TEST_F(FrameworkInitialiserTest, MissingHooksAreSkipped)
{
    FrameworkInitialiser::setHook(Hook::destroyFontLibrary, [] { steps.push_back("destroy fonts"); });
    FrameworkInitialiser::setHook(Hook::count, [] { steps.push_back("out of range"); });
    EXPECT_EQ(FrameworkInitialiser::getHook(Hook::count), nullptr);
    {
        FrameworkInitialiser framework;
        new GlyphCache;
    }
    EXPECT_EQ(steps, (std::vector<std::string>{"glyph cache without library", "destroy fonts"}));
}

namespace
{
struct BringUpThread : q1framework::Thread
{
    ~BringUpThread() override { stopThread(); }
    void run() override
    {
        FrameworkInitialiser framework;
        mainThreadAfterBringUp = Thread::isMainThread();
    }
    std::atomic<bool> mainThreadAfterBringUp{false};
};
}  // namespace

TEST_F(FrameworkInitialiserTest, ThreadedBringUpMakesItsThreadTheMainThread)
{
    BringUpThread thread;
    thread.startThread(q1framework::Thread::defaultPriority);
    thread.stopThread();
    EXPECT_TRUE(thread.mainThreadAfterBringUp);
    EXPECT_FALSE(q1framework::Thread::isMainThread());
    FrameworkInitialiser framework;
    EXPECT_TRUE(q1framework::Thread::isMainThread());
}
