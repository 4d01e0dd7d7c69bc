#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "foundation/runtime/HiResCounterHandler.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using q1framework::DeletedAtShutdown;
using q1framework::FrameworkInitialiser;
using Hook = q1framework::FrameworkInitialiser::Hook;

namespace
{
std::vector<std::string> steps;
const char* const hookNames[] = {"platform", "create fonts", "create look", "deselect",
                                 "destroy look", "destroy fonts", "components"};

template <int hook>
void logStep()
{
    steps.push_back(hookNames[hook]);
}

// A singleton of a later layer, made on demand and deleted with DeletedAtShutdown.
struct GlyphCache : DeletedAtShutdown
{
    ~GlyphCache() override { steps.push_back("glyph cache"); }
};
}  // namespace

TEST(FrameworkInitialiser, BringsUpAndTakesDownInOrderAndAgain)
{
    DeletedAtShutdown::deleteAll();
    const FrameworkInitialiser::HookFunction functions[] = {logStep<0>, logStep<1>, logStep<2>, logStep<3>,
                                                            logStep<4>, logStep<5>, logStep<6>};
    for (int hook = 0; hook < static_cast<int>(Hook::count); ++hook)
        FrameworkInitialiser::setHook(static_cast<Hook>(hook), functions[hook]);
    FrameworkInitialiser::setHook(Hook::createDefaultLookAndFeel, nullptr);   // absent hooks are skipped

    for (int round = 0; round < 2; ++round)
    {
        SCOPED_TRACE(round == 0 ? "first bring-up" : "bring-up after take-down");
        steps.clear();
        auto framework = std::make_unique<FrameworkInitialiser>();
        EXPECT_EQ(steps, (std::vector<std::string>{"platform", "create fonts"}));
        new GlyphCache;
        q1framework::HiResCounterHandler::getInstance();
        steps.clear();
        framework.reset();
        EXPECT_EQ(steps, (std::vector<std::string>{"deselect", "glyph cache", "destroy look", "destroy fonts",
                                                   "components"}));
        EXPECT_EQ(DeletedAtShutdown::getCount(), 0) << "the clock went too";
    }
    for (int hook = 0; hook < static_cast<int>(Hook::count); ++hook)
        FrameworkInitialiser::setHook(static_cast<Hook>(hook), nullptr);
}
