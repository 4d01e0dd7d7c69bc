// LevelMeter: the needle's angle and length, its texture by scale class, and where it is drawn.

#include "editor/LevelMeter.h"

#include "render/context/Texture.h"
#include "render/software/SoftwareContext.h"
#include "ui/layout/AdapterComponent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace q1framework;

namespace
{
// The input meter of a 1500 x 350 picture, shown by an adapter of the given width, drawing into
// a target of the adapter's size (grey, so that the needle shows darker).
struct MeterHarness
{
    explicit MeterHarness(int width)
    {
        adapter.setBounds(Rectangle(0, 0, width, width * 350 / 1500), false);
        auto* picture = new Component();
        picture->setBounds(Rectangle(0, 0, 1500, 350), false);
        meter = new LevelMeter(adapter);
        meter->setBounds(Rectangle(177, 56, 272, 131), false);
        picture->addAndMakeVisible(meter);
        adapter.setInnerComponent(picture);
        target = Image(adapter.getSize(), true);
        target.fill(128, 128, 128, 255);
        context = std::make_unique<SoftwareContext>();
        context->setTarget(target);
    }

    void draw()
    {
        context->beginFrame();
        meter->drawResource(*context);
    }

    // The darkest red byte in a column of the target, over the meter's rows.
    int darkestInColumn(int x) const
    {
        int darkest = 255;
        for (int y = 0; y < target.getHeight(); ++y)
            darkest = std::min<int>(darkest, target.getPixelPointer(x, y)[2]);
        return darkest;
    }

    AdapterComponent adapter;
    LevelMeter* meter;
    Image target;
    std::unique_ptr<SoftwareContext> context;
};
}  // namespace

TEST(LevelMeter, TheNeedleSweeps091RadiansEitherSideOfUpright)
{
    EXPECT_DOUBLE_EQ(LevelMeter::angleOfLevel(0.0f), -0.91);
    EXPECT_DOUBLE_EQ(LevelMeter::angleOfLevel(0.5f), 0.0);
    EXPECT_NEAR(LevelMeter::angleOfLevel(1.0f), 0.91, 1e-12);
}

TEST(LevelMeter, ScaleClassesChangeAtTheReciprocalsOfWholeSteps)
{
    const struct
    {
        double scale;
        int step, needle, texture;
    } classes[] = {{1.5, 1, 4, 8}, {1.0, 2, 2, 6}, {0.5, 3, 2, 6}, {0.49, 3, 2, 6},
                   {0.34, 3, 2, 6}, {0.33, 4, 1, 5}, {0.05, 8, 1, 5}, {0.0, 1, 4, 8}};
    for (const auto& expected : classes)
    {
        const LevelMeter::ScaleClass chosen = LevelMeter::chooseScaleClass(expected.scale);
        EXPECT_EQ(chosen.step, expected.step) << expected.scale;
        EXPECT_EQ(chosen.needleWidth, expected.needle) << expected.scale;
        EXPECT_EQ(chosen.textureWidth, expected.texture) << expected.scale;
    }
}

TEST(LevelMeter, TheTextureIsMadeAgainOnlyWhenTheScaleClassChanges)
{
    MeterHarness harness(750);
    harness.draw();
    const Texture* first = harness.meter->getTexture();
    ASSERT_NE(first, nullptr);
    // Half size: step 3, a texture 6 texels wide and twice the meter's height.
    EXPECT_EQ(harness.meter->getScaleStep(), 3);
    EXPECT_EQ(first->getSize(), Point(6, 2 * 131));
    harness.adapter.setSize(700, 163);
    harness.draw();
    EXPECT_EQ(harness.meter->getScaleStep(), 3);
    EXPECT_EQ(harness.meter->getTexture(), first);
    harness.adapter.setSize(1100, 257);
    harness.draw();
    EXPECT_EQ(harness.meter->getScaleStep(), 2);
    EXPECT_EQ(harness.meter->getTexture()->getSize(), Point(6, 2 * 131));
}

TEST(LevelMeter, TheTextureGoesWithItsContext)
{
    MeterHarness harness(750);
    harness.draw();
    const int live = Texture::getLiveCount();
    harness.context.reset();
    EXPECT_EQ(harness.meter->getTexture(), nullptr);
    EXPECT_EQ(Texture::getLiveCount(), live - 1);
}

TEST(LevelMeter, AnUprightNeedleStandsAtTheMetersCentreAndStaysInsideIt)
{
    MeterHarness harness(1500 - 1);
    harness.meter->setLevel(0.5f);
    harness.draw();
    // The centre column of the meter, x = 177 + 136 (scale 0.999): the needle's 4 pixels there.
    EXPECT_LT(harness.darkestInColumn(312), 40);
    EXPECT_EQ(harness.darkestInColumn(300), 128);
    for (const Rectangle& area : harness.context->getDrawnAreas())
    {
        EXPECT_TRUE(area.getIntersection(Rectangle(176, 55, 273, 132)) == area) << area.x << ", " << area.y;
    }
}

TEST(LevelMeter, AtTheTopOfItsSweepTheNeedleLeansRight)
{
    MeterHarness harness(1499);
    harness.meter->setLevel(1.0f);
    harness.draw();
    // Leaning 0.91 radians clockwise, the tip is far right of the centre and the centre column
    // near the top of the face stays clear.
    EXPECT_EQ(harness.darkestInColumn(312), 128);
    EXPECT_LT(harness.darkestInColumn(400), 40);
}
