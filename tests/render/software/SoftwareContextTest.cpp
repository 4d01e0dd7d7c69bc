#include "render/software/SoftwareContext.h"
#include "render/context/Texture.h"

#include "TargetPixels.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace q1framework;

namespace
{
struct Target
{
    explicit Target(int side) : image(side, side, true)
    {
        image.fill(0, 0, 0, 255);
        context.setTarget(image);
        context.beginFrame();
    }

    Image image;
    SoftwareContext context;
};
}  // namespace

TEST(SoftwareContext, FillRectBlendsItsColourWithItsAlpha)
{
    Target target(4);
    target.context.fillRect(Rectangle(1, 1, 2, 2), Colour(200, 100, 50, 128));
    // Red 200 * 128 / 255 = 100.4, green 100 * 0.502 = 50.2, blue 50 * 0.502 = 25.1; alpha
    // 255 * 0.502 * 0.502 + 255 * 0.498 = 191.25.
    EXPECT_EQ(pixelAt(target.image, 1, 1), (std::vector<int>{25, 50, 100, 191}));
    EXPECT_EQ(pixelAt(target.image, 0, 0), (std::vector<int>{0, 0, 0, 255}));
    EXPECT_EQ(areasOf(target.context.getDrawnAreas()), std::vector<Rectangle>{Rectangle(1, 1, 2, 2)});
}

TEST(SoftwareContext, BeginFrameForgetsTheAreasDrawnBefore)
{
    Target target(4);
    target.context.fillRect(Rectangle(0, 0, 2, 2), Colour(255, 255, 255, 255));
    target.context.beginFrame();
    EXPECT_TRUE(target.context.getDrawnAreas().isEmpty());
}

TEST(SoftwareContext, AFrameBeginsClippedToTheWholeTarget)
{
    Target target(4);
    target.context.setClip(Rectangle(1, 1, 1, 1));
    target.context.beginFrame();
    EXPECT_EQ(target.context.getClip(), Rectangle(0, 0, 4, 4));
}

TEST(SoftwareContext, AnEmptyClipTurnsClippingOffAndKeepsTheLastClip)
{
    Target target(4);
    target.context.setClip(Rectangle(1, 1, 1, 1));
    target.context.setClip(Rectangle(0, 0, 0, 0));
    EXPECT_EQ(target.context.getClip(), Rectangle(1, 1, 1, 1));
    target.context.fillRect(Rectangle(0, 0, 4, 4), Colour(255, 255, 255, 255));
    EXPECT_EQ(pixelAt(target.image, 0, 0), (std::vector<int>{255, 255, 255, 255}));
}

TEST(SoftwareContext, LineChannelsOfHalfAndMoreCountAsNothing)
{
    Target target(4);
    // Red 200 is 0 through the signed colour call; green and alpha 127 are full.
    target.context.drawLine(0, 1, 4, 1, Colour(200, 127, 0, 127));
    EXPECT_EQ(pixelAt(target.image, 2, 1), (std::vector<int>{0, 255, 0, 255}));
    EXPECT_EQ(pixelAt(target.image, 2, 0), (std::vector<int>{0, 0, 0, 255}));
}

TEST(SoftwareContext, ACircleIsFullInsideAndFadesAcrossItsRadius)
{
    Target target(8);
    target.context.fillCircle(Rectangle(0, 0, 8, 8), Colour(255, 255, 255, 255));
    EXPECT_EQ(pixelAt(target.image, 4, 4)[0], 255);
    EXPECT_EQ(pixelAt(target.image, 0, 0)[0], 0);
    // The pixel (7, 4) has its centre 3.5 from the centre (4, 4): smoothstep(3.5, 4.5, 3.5) is 0.
    EXPECT_EQ(pixelAt(target.image, 7, 4)[0], 255);
}

TEST(SoftwareContext, WithoutATargetNothingIsDrawn)
{
    SoftwareContext context;
    context.fillRect(Rectangle(0, 0, 4, 4), Colour(255, 255, 255, 255));
    EXPECT_TRUE(context.getDrawnAreas().isEmpty());
    EXPECT_EQ(context.getNativeContext(), nullptr);
}

TEST(SoftwareContext, TexturesBeyondTheLargestSideAreRefused)
{
    SoftwareContext context;
    EXPECT_EQ(context.createTexture(SoftwareContext::maximumTextureSide + 1, 1, 0, 1), nullptr);
    std::unique_ptr<Texture> texture(context.createTexture(SoftwareContext::maximumTextureSide, 1, 0, 1));
    EXPECT_NE(texture, nullptr);
}
