#include "ui/controls/AnimatableComponent.h"

#include "MemoryContext.h"
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

// ---- The texture path ----

namespace
{
// A memory context that reports a largest texture side of 7 texels.
struct SmallTextureContext : MemoryContext
{
    SmallTextureContext() { maximumTextureSize = 7; }
};
}

TEST(AnimatableComponentTest, TextureStripIsCutIntoTilesOfWholeFrames)
{
    SmallTextureContext context;
    AnimatableComponent component;
    component.setTextureStrip(context, makeStrip(9), 9);
    // Frames 2 high, 7 / 2 = 3 to a tile: tiles of 3, 3 and 3 frames.
    EXPECT_EQ(component.getFramesPerTile(), 3);
    EXPECT_EQ(component.getTileCount(), 3);
    EXPECT_FALSE(component.hasImage());
    component.setTextureStrip(context, makeStrip(8), 8);
    EXPECT_EQ(component.getTileCount(), 3);
    EXPECT_EQ(context.liveTextures, 3);
}

TEST(AnimatableComponentTest, FrameTextureIsDrawnFromItsTile)
{
    SmallTextureContext context;
    AnimatableComponent component;
    component.setTextureStrip(context, makeStrip(8), 8);
    component.setPosition(5.0f / 7.0f, true);
    const double destination[4] = {10.0, 20.0, 3.0, 2.0};
    component.drawFrameTexture(destination, 1.0f, 0.0, 0.0, 0.0);
    ASSERT_EQ(context.quads.size(), 1u);
    // Frame 5 is the third of the second tile, 2 rows down per frame.
    EXPECT_EQ(std::vector<double>(context.quads[0].source, context.quads[0].source + 4),
              (std::vector<double>{0.0, 4.0, 3.0, 2.0}));
    EXPECT_DOUBLE_EQ(context.quads[0].corners[0], 10.0);
    EXPECT_DOUBLE_EQ(context.quads[0].corners[1], 20.0);
}

TEST(AnimatableComponentTest, TexturePathNeitherPaintsNorRepaints)
{
    TreeHarness tree(20, 20);
    auto* component = new AnimatableComponent();
    component->setBounds(Rectangle(5, 5, 3, 2), false);
    tree.root->addAndMakeVisible(component);
    SmallTextureContext context;
    component->setTextureStrip(context, makeStrip(4), 4);
    tree.settle();
    component->setPosition(1.0f, true);
    EXPECT_TRUE(tree.container.getDirtyRegion().isEmpty());
    component->setImage(Image(), 0);
    EXPECT_EQ(context.liveTextures, 0);
}

TEST(AnimatableComponentTest, TilesGoWithTheirContext)
{
    AnimatableComponent component;
    {
        SmallTextureContext context;
        component.setTextureStrip(context, makeStrip(4), 4);
        EXPECT_EQ(context.liveTextures, 2);
    }
    EXPECT_EQ(component.getTileCount(), 0);
    const double destination[4] = {0.0, 0.0, 3.0, 2.0};
    component.drawFrameTexture(destination, 1.0f, 0.0, 0.0, 0.0);
}

TEST(AnimatableComponentTest, RefusedTextureLeavesNoTiles)
{
    SmallTextureContext context;
    context.refuseTextures = true;
    AnimatableComponent component;
    component.setTextureStrip(context, makeStrip(4), 4);
    EXPECT_EQ(component.getTileCount(), 0);
    EXPECT_EQ(context.getListenerCount(), 0);
}
