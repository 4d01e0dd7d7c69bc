#include "ui/controls/AnimatableComponent.h"

#include "support/TreeHarness.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace q1framework;

namespace
{
// A strip of frameCount frames, 3 x 2 pixels each, frame f opaque with blue 10 * (f + 1).
Image makeStrip(int frameCount)
{
    Image strip(3, 2 * frameCount, true);
    for (int y = 0; y < strip.getHeight(); ++y)
        for (int x = 0; x < 3; ++x)
        {
            uint8_t* pixel = strip.getPixelPointer(x, y);
            pixel[0] = static_cast<uint8_t>(10 * (y / 2 + 1));
            pixel[3] = 255;
        }
    return strip;
}
}

TEST(AnimatableComponentTest, FrameIsTheRoundedShareOfTheLastFrame)
{
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(1.0, 101), 100);
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(0.5, 101), 50);
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(0.004, 101), 0);
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(0.005, 101), 1);
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(std::nan(""), 101), 0);
    EXPECT_EQ(AnimatableComponent::computeFrameIndex(0.5, 0), 0);
}

TEST(AnimatableComponentTest, PositionIsLimitedToZeroToOne)
{
    AnimatableComponent component;
    component.setPosition(1.5f, false);
    EXPECT_FLOAT_EQ(component.getFramePosition(), 1.0f);
    component.setPosition(-0.5f, false);
    EXPECT_FLOAT_EQ(component.getFramePosition(), 0.0f);
}

TEST(AnimatableComponentTest, PaintsTheFrameOfThePositionAtTheImageOffset)
{
    TreeHarness tree(20, 20);
    auto* component = new AnimatableComponent();
    component->setBounds(Rectangle(5, 5, 2, 1), false);
    tree.root->addAndMakeVisible(component);
    component->setImage(makeStrip(4), 4);
    component->setImageOffset(Point(1, 1));
    component->setPosition(0.7f, true);
    EXPECT_EQ(component->getPaintBounds(), Rectangle(4, 4, 3, 2));
    tree.paint();
    EXPECT_EQ(tree.picture.getPixelPointer(4, 4)[0], 30);
    EXPECT_EQ(tree.picture.getPixelPointer(6, 5)[0], 30);
    EXPECT_EQ(tree.picture.getPixelPointer(7, 5)[0], 20);
}

TEST(AnimatableComponentTest, NullImageBlanksTheStripButKeepsIt)
{
    AnimatableComponent component;
    const Image strip = makeStrip(2);
    component.setImage(strip, 2);
    component.setImage(Image(), 5);
    EXPECT_TRUE(component.hasImage());
    EXPECT_EQ(component.getFrameCount(), 0);
    EXPECT_EQ(strip.getPixelPointer(1, 1)[3], 0);
}

TEST(AnimatableComponentTest, ZeroFramesGiveNoFrameHeight)
{
    AnimatableComponent component;
    component.setImage(makeStrip(2), 0);
    EXPECT_EQ(component.getFrameHeight(), 0);
    component.setBounds(Rectangle(1, 2, 3, 4), false);
    EXPECT_EQ(component.getPaintBounds(), Rectangle(1, 2, 3, 4));
}
