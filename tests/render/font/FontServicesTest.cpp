#include "render/font/FontServices.h"

#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/FrameworkInitialiser.h"
#include "render/font/FallbackFont.h"
#include "render/font/Font.h"
#include "render/font/FontEngine.h"
#include "render/font/Glyph.h"

#include <gtest/gtest.h>

#include <memory>

using q1framework::DeletedAtShutdown;
using q1framework::FallbackFont;
using q1framework::Font;
using q1framework::FontEngine;
using q1framework::FrameworkInitialiser;
using Hook = q1framework::FrameworkInitialiser::Hook;

namespace
{
class FontServicesTest : public ::testing::Test
{
protected:
    void SetUp() override { DeletedAtShutdown::deleteAll(); }

    void TearDown() override
    {
        FrameworkInitialiser::setHook(Hook::createFontLibrary, nullptr);
        FrameworkInitialiser::setHook(Hook::destroyFontLibrary, nullptr);
    }
};
}  // namespace

TEST_F(FontServicesTest, TheFrameworkBringsFontsUpAndTakesThemDownEachTime)
{
    ASSERT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
    q1framework::registerFontServices();
    q1framework::registerFontServices();
    EXPECT_NE(FrameworkInitialiser::getHook(Hook::createFontLibrary), nullptr);
    EXPECT_NE(FrameworkInitialiser::getHook(Hook::destroyFontLibrary), nullptr);

    for (int round = 0; round < 2; ++round)
    {
        auto framework = std::make_unique<FrameworkInitialiser>();
        EXPECT_NE(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);

        // The fallback font and its glyphs work in every round.
        const Font& fallback = Font::getFallback();
        ASSERT_NE(fallback.getFace(), nullptr);
        EXPECT_GT(fallback.getTextWidth("Kelvane"), 30.0f);

        framework.reset();
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr) << "round " << round;
        EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);
    }
}

TEST_F(FontServicesTest, WithoutTheHooksTheEngineComesOnFirstUse)
{
    {
        FrameworkInitialiser framework;
        EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
        EXPECT_NE(Font::getFallback().getGlyph('K'), nullptr);
        EXPECT_NE(FontEngine::getInstanceWithoutCreating(), nullptr);
    }
    // The shutdown of DeletedAtShutdown objects takes the engine down all the same.
    EXPECT_EQ(FontEngine::getInstanceWithoutCreating(), nullptr);
    EXPECT_EQ(FallbackFont::getInstanceWithoutCreating(), nullptr);
}
