#include "render/font/FontServices.h"

#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "render/font/FallbackFont.h"
#include "render/font/Font.h"
#include "render/font/FontEngine.h"

#include <gtest/gtest.h>

#include <memory>

using q1framework::FallbackFont;
using q1framework::Font;
using q1framework::FontEngine;
using q1framework::FrameworkInitialiser;
using Hook = q1framework::FrameworkInitialiser::Hook;

// Without the hooks the engine comes on first use and goes with the framework's shutdown. With
// them (registered twice, which must not double them) it comes with every framework and goes with
// it, and the fallback font works in every round.
TEST(FontServicesTest, TheFrameworkBringsFontsUpAndTakesThemDownEachTime)
{
    q1framework::DeletedAtShutdown::deleteAll();
    {
        FrameworkInitialiser framework;
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
        EXPECT_NE(Font::getFallback().getFace(), nullptr);
    }
    EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
    EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);

    q1framework::registerFontServices();
    q1framework::registerFontServices();
    for (int round = 0; round < 2; ++round)
    {
        auto framework = std::make_unique<FrameworkInitialiser>();
        EXPECT_NE(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_GT(Font::getFallback().getTextWidth("Kelvane"), 30.0f);
        framework.reset();
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);
    }
    FrameworkInitialiser::setHook(Hook::createFontLibrary, nullptr);
    FrameworkInitialiser::setHook(Hook::destroyFontLibrary, nullptr);
}
