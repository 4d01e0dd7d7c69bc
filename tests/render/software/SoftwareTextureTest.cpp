#include "render/software/SoftwareContext.h"
#include "render/software/SoftwareTexture.h"

#include "TargetPixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace q1framework;

namespace
{
void setPixel(Image& image, int x, int y, std::vector<int> bgra)
{
    uint8_t* pixel = image.getPixelPointer(x, y);
    for (int index = 0; index < 4; ++index)
        pixel[index] = static_cast<uint8_t>(bgra[static_cast<size_t>(index)]);
}

struct Drawing
{
    Drawing(int width, int height) : target(width, height, true)
    {
        target.fill(0, 0, 0, 255);
        context.setTarget(target);
        context.beginFrame();
    }

    std::unique_ptr<Texture> texture(const Image& picture, bool unpremultiply = false)
    {
        std::unique_ptr<Texture> made(context.createTextureFromImage(picture, 1, unpremultiply));
        return made;
    }

    Image target;
    SoftwareContext context;
};

void drawAt(Texture& texture, double x, double y, double width, double height, float alpha)
{
    const double source[4] = {0, 0, static_cast<double>(texture.getWidth(1)), static_cast<double>(texture.getHeight(1))};
    const double destination[4] = {x, y, width, height};
    texture.drawRotated(alpha, 0.0, 0.0, 0.0, source, destination);
}
}  // namespace

TEST(SoftwareTexture, AQuadOfTheTexturesOwnSizeShowsEachOpaqueTexelExactly)
{
    Drawing drawing(8, 6);
    Image picture(3, 2, true);
    setPixel(picture, 0, 0, {10, 20, 30, 255});
    setPixel(picture, 1, 0, {40, 50, 60, 255});
    setPixel(picture, 2, 0, {70, 80, 90, 255});
    setPixel(picture, 0, 1, {100, 110, 120, 255});
    setPixel(picture, 1, 1, {130, 140, 150, 255});
    setPixel(picture, 2, 1, {160, 170, 180, 255});
    std::unique_ptr<Texture> texture = drawing.texture(picture);
    drawAt(*texture, 2, 1, 3, 2, 1.0f);
    // Each pixel centre falls on a texel centre: no mixing with a neighbour.
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(pixelAt(drawing.target, 2 + x, 1 + y), pixelAt(picture, x, y)) << x << ", " << y;
    EXPECT_EQ(pixelAt(drawing.target, 1, 1), (std::vector<int>{0, 0, 0, 255}));
    EXPECT_EQ(pixelAt(drawing.target, 5, 2), (std::vector<int>{0, 0, 0, 255}));
}

TEST(SoftwareTexture, TheQuadsAlphaIsTheBlendFactorOfEveryChannel)
{
    Drawing drawing(2, 2);
    drawing.target.fill(40, 80, 120, 255);
    Image picture(1, 1, true);
    setPixel(picture, 0, 0, {50, 100, 200, 255});
    std::unique_ptr<Texture> texture = drawing.texture(picture);
    drawAt(*texture, 0, 0, 1, 1, 0.5f);
    // blue 50 * 0.5 + 120 * 0.5 = 85; green 100 * 0.5 + 80 * 0.5 = 90; red 200 * 0.5 + 40 * 0.5 =
    // 120; alpha 255 * 0.5 * 0.5 + 255 * 0.5 = 191.25.
    EXPECT_EQ(pixelAt(drawing.target, 0, 0), (std::vector<int>{85, 90, 120, 191}));
}

TEST(SoftwareTexture, AStretchedTextureMixesNeighbouringTexelsAndWrapsAtItsEdges)
{
    Drawing drawing(4, 1);
    Image picture(2, 1, true);
    setPixel(picture, 0, 0, {0, 0, 0, 255});
    setPixel(picture, 1, 0, {255, 255, 255, 255});
    std::unique_ptr<Texture> texture = drawing.texture(picture);
    drawAt(*texture, 0, 0, 4, 1, 1.0f);
    // Pixel x samples at texel position (x + 0.5) / 2, that is x / 2 - 0.25 from the first texel
    // centre: -0.25 mixes the first texel with the last (wrapped) by 0.25, then 0.25, 0.75, and
    // 1.25, which mixes the last texel with the first by 0.25. White shares 64, 64, 191, 191.
    const int expected[4] = {64, 64, 191, 191};
    for (int x = 0; x < 4; ++x)
        EXPECT_EQ(pixelAt(drawing.target, x, 0)[0], expected[x]) << x;
}

TEST(SoftwareTexture, AQuarterTurnTakesTheTopRowToTheRightColumn)
{
    Drawing drawing(6, 6);
    Image picture(2, 2, true);
    setPixel(picture, 0, 0, {255, 0, 0, 255});
    setPixel(picture, 1, 0, {0, 255, 0, 255});
    setPixel(picture, 0, 1, {0, 0, 255, 255});
    setPixel(picture, 1, 1, {255, 255, 255, 255});
    std::unique_ptr<Texture> texture = drawing.texture(picture);
    const double source[4] = {0, 0, 2, 2};
    const double destination[4] = {2, 2, 2, 2};
    // A quarter turn clockwise on the screen about the square's centre (3, 3).
    texture->drawRotated(1.0f, std::acos(-1.0) / 2, 3.0, 3.0, source, destination);
    EXPECT_EQ(pixelAt(drawing.target, 3, 2), pixelAt(picture, 0, 0));
    EXPECT_EQ(pixelAt(drawing.target, 3, 3), pixelAt(picture, 1, 0));
    EXPECT_EQ(pixelAt(drawing.target, 2, 2), pixelAt(picture, 0, 1));
    EXPECT_EQ(pixelAt(drawing.target, 2, 3), pixelAt(picture, 1, 1));
}

TEST(SoftwareTexture, TheClipLimitsTheQuadAndTheAreaItReportsAsDrawn)
{
    Drawing drawing(8, 8);
    Image picture(1, 1, true);
    setPixel(picture, 0, 0, {255, 255, 255, 255});
    std::unique_ptr<Texture> texture = drawing.texture(picture);
    drawing.context.setClip(Rectangle(3, 3, 2, 2));
    drawAt(*texture, 1, 1, 6, 6, 1.0f);
    EXPECT_EQ(pixelAt(drawing.target, 3, 3)[0], 255);
    EXPECT_EQ(pixelAt(drawing.target, 4, 4)[0], 255);
    EXPECT_EQ(pixelAt(drawing.target, 2, 3)[0], 0);
    EXPECT_EQ(pixelAt(drawing.target, 5, 4)[0], 0);
    EXPECT_EQ(areasOf(drawing.context.getDrawnAreas()), std::vector<Rectangle>{Rectangle(3, 3, 2, 2)});
}

TEST(SoftwareTexture, UploadWithUnpremultiplyDividesTheColourByAlpha)
{
    SoftwareContext context;
    Image picture(1, 1, true);
    setPixel(picture, 0, 0, {0, 0, 64, 128});
    std::unique_ptr<Texture> texture(context.createTextureFromImage(picture, 1, true));
    const uint8_t* texel = static_cast<SoftwareTexture&>(*texture).getTexel(0, 0);
    // 64 * (255 / 128) = 127.5, truncated.
    EXPECT_EQ(texel[2], 127);
    EXPECT_EQ(texel[3], 128);
}

TEST(SoftwareTexture, AnEmptyTextureDrawsNothing)
{
    Drawing drawing(4, 4);
    std::unique_ptr<Texture> texture(drawing.context.createTexture(0, 4, 0, 1));
    ASSERT_NE(texture, nullptr);
    drawAt(*texture, 0, 0, 4, 4, 1.0f);
    EXPECT_TRUE(drawing.context.getDrawnAreas().isEmpty());
}
