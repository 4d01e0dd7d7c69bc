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

// Stands for what the later layers own: a font library and a default look-and-feel held in
// global pointers, and a singleton made on demand that goes with DeletedAtShutdown.
struct FontLibrary
{
};
struct LookAndFeel
{
};
FontLibrary* fontLibrary = nullptr;
LookAndFeel* defaultLookAndFeel = nullptr;
LookAndFeel* selectedLookAndFeel = nullptr;

struct GlyphCache : DeletedAtShutdown
{
    ~GlyphCache() override
    {
        steps.push_back(fontLibrary != nullptr ? "glyph cache deleted" : "glyph cache outlived its library");
    }
};

void installHooks()
{
    FrameworkInitialiser::setHook(Hook::platformSetUp, [] { steps.push_back("platform"); });
    FrameworkInitialiser::setHook(Hook::createFontLibrary, [] {
        steps.push_back("create fonts");
        fontLibrary = new FontLibrary;
    });
    FrameworkInitialiser::setHook(Hook::createDefaultLookAndFeel, [] {
        steps.push_back("create look");
        defaultLookAndFeel = new LookAndFeel;
        selectedLookAndFeel = defaultLookAndFeel;
    });
    FrameworkInitialiser::setHook(Hook::clearDefaultLookAndFeelSelection, [] {
        steps.push_back("deselect look");
        selectedLookAndFeel = nullptr;
    });
    FrameworkInitialiser::setHook(Hook::destroyDefaultLookAndFeel, [] {
        steps.push_back(selectedLookAndFeel == nullptr ? "destroy look" : "destroy selected look");
        delete defaultLookAndFeel;
        defaultLookAndFeel = nullptr;
    });
    FrameworkInitialiser::setHook(Hook::destroyFontLibrary, [] {
        steps.push_back("destroy fonts");
        delete fontLibrary;
        fontLibrary = nullptr;
    });
    FrameworkInitialiser::setHook(Hook::releaseComponentStatics, [] { steps.push_back("release components"); });
}

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
};
}  // namespace

TEST_F(FrameworkInitialiserTest, BringsUpAndTakesDownInOrder)
{
    installHooks();
    auto framework = std::make_unique<FrameworkInitialiser>();
    EXPECT_EQ(steps, (std::vector<std::string>{"platform", "create fonts", "create look"}));
    ASSERT_NE(fontLibrary, nullptr);
    new GlyphCache;

    steps.clear();
    framework.reset();
    EXPECT_EQ(steps, (std::vector<std::string>{"deselect look", "glyph cache deleted", "destroy look",
                                               "destroy fonts", "release components"}));
    EXPECT_EQ(fontLibrary, nullptr);
    EXPECT_EQ(defaultLookAndFeel, nullptr);
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0);
}

TEST_F(FrameworkInitialiserTest, SecondBringUpAfterTakeDownBuildsEverythingAgain)
{
    installHooks();
    auto framework = std::make_unique<FrameworkInitialiser>();
    q1framework::HiResCounterHandler::getInstance();
    framework.reset();
    EXPECT_EQ(DeletedAtShutdown::getCount(), 0) << "the clock went with the take-down";

    steps.clear();
    framework = std::make_unique<FrameworkInitialiser>();
    EXPECT_EQ(steps, (std::vector<std::string>{"platform", "create fonts", "create look"}));
    EXPECT_NE(fontLibrary, nullptr);
    EXPECT_EQ(selectedLookAndFeel, defaultLookAndFeel);
    q1framework::HiResCounterHandler::getMillisecondCounterHiRes();
    EXPECT_EQ(DeletedAtShutdown::getCount(), 1) << "and is made again on first use";
    framework.reset();
    EXPECT_EQ(fontLibrary, nullptr);
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
    EXPECT_EQ(steps, (std::vector<std::string>{"glyph cache outlived its library", "destroy fonts"}));
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
    q1framework::FrameworkInitialiser framework;
    EXPECT_TRUE(q1framework::Thread::isMainThread());
}
