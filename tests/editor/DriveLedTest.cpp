// DriveLed: the frame of its value, drawn over its bounds through the context.

#include "editor/DriveLed.h"

#include "render/software/SoftwareContext.h"
#include "ui/layout/AdapterComponent.h"

#include <gtest/gtest.h>

using namespace q1framework;

namespace
{
// A lamp of 4 x 2 picture pixels at (2, 2) in a 16 x 8 picture shown at its own size, with a
// strip of 101 frames whose frame n is grey n.
struct LedHarness
{
    LedHarness()
    {
        adapter.setBounds(Rectangle(0, 0, 16, 8), false);
        auto* picture = new Component();
        picture->setBounds(Rectangle(0, 0, 16, 8), false);
        led = new DriveLed(adapter);
        led->setBounds(Rectangle(2, 2, 4, 2), false);
        picture->addAndMakeVisible(led);
        adapter.setInnerComponent(picture);
        strip = Image(4, 2 * 101, true);
        for (int y = 0; y < strip.getHeight(); ++y)
            for (int x = 0; x < 4; ++x)
            {
                uint8_t* pixel = strip.getPixelPointer(x, y);
                pixel[0] = pixel[1] = pixel[2] = static_cast<uint8_t>(y / 2);
                pixel[3] = 255;
            }
        target = Image(16, 8, true);
        target.fill(0, 0, 0, 255);
        context.setTarget(target);
    }

    int shownAt(int x, int y)
    {
        context.beginFrame();
        led->drawResource(context);
        return target.getPixelPointer(x, y)[0];
    }

    AdapterComponent adapter;
    DriveLed* led;
    Image strip;
    Image target;
    SoftwareContext context;
};
}  // namespace

TEST(DriveLed, WithoutFramesNothingIsDrawn)
{
    LedHarness harness;
    harness.led->setValue(1.0f, false);
    EXPECT_EQ(harness.shownAt(3, 3), 0);
    EXPECT_TRUE(harness.context.getDrawnAreas().isEmpty());
}

TEST(DriveLed, ValueZeroShowsTheFirstFrameAndOneTheLast)
{
    LedHarness harness;
    harness.led->setImage(harness.strip, 101);
    EXPECT_EQ(harness.led->getFrameIndex(), 0);
    harness.led->setValue(0.505f, false);
    EXPECT_EQ(harness.led->getFrameIndex(), 50);
    harness.led->setValue(1.0f, false);
    EXPECT_EQ(harness.led->getFrameIndex(), 100);
    harness.led->setValue(7.0f, false);
    EXPECT_EQ(harness.led->getFrameIndex(), 100);
}

TEST(DriveLed, TheFrameOfTheValueCoversTheLampsBounds)
{
    LedHarness harness;
    harness.led->setImage(harness.strip, 101);
    harness.led->setValue(0.4f, false);
    // Frame trunc(0.4 * 100) = 40, grey 40, at the lamp's pixels only.
    EXPECT_EQ(harness.shownAt(3, 3), 40);
    EXPECT_EQ(harness.shownAt(2, 2), 40);
    EXPECT_EQ(harness.shownAt(6, 3), 0);
    EXPECT_EQ(harness.shownAt(3, 4), 0);
}
