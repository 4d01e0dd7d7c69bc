#include "MemoryContext.h"

#include "render/surface/TextureSurface.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace q1framework;

TEST(TextureSurface, OnlyDirtyRectanglesAreUploaded)
{
    MemoryContext context;
    TextureSurface surface(context, 100, 40);
    const uint32_t pixel = 0xff204060;
    int stride = 0;
    std::memcpy(surface.getPixels(&stride) + 7 * stride + 3 * 4, &pixel, 4);
    RectangleList dirty;
    dirty.add(Rectangle(3, 7, 2, 2));
    surface.update(dirty, nullptr, nullptr);
    EXPECT_EQ(context.uploads, std::vector<Rectangle>{Rectangle(3, 7, 2, 2)});
    const Image& texels = static_cast<MemoryContext::MemoryTexture*>(surface.getTexture())->texels;
    uint32_t uploaded = 0;
    std::memcpy(&uploaded, texels.getPixelPointer(3, 7), 4);
    EXPECT_EQ(uploaded, pixel);

    surface.update(RectangleList(), nullptr, nullptr);
    EXPECT_EQ(context.uploads.size(), 1u);
}

TEST(TextureSurface, PresentDrawsTheWholeTextureAtTheOrigin)
{
    MemoryContext context;
    TextureSurface surface(context, 100, 40);
    surface.present();
    ASSERT_EQ(context.quads.size(), 1u);
    const MemoryContext::Quad& quad = context.quads[0];
    EXPECT_EQ(std::vector<double>(quad.corners, quad.corners + 8), (std::vector<double>{0, 0, 100, 0, 100, 40, 0, 40}));
    EXPECT_EQ(quad.alpha, 1.0f);
}

TEST(TextureSurface, AMovedRegionIsUploadedWhereItLandsInsideTheTexture)
{
    MemoryContext context;
    TextureSurface surface(context, 100, 40);
    Rectangle region(0, 0, 30, 10);
    Point destination(80, 35);
    surface.moveRegion(region, destination);
    EXPECT_EQ(context.uploads, std::vector<Rectangle>{Rectangle(80, 35, 20, 5)});
}

TEST(TextureSurface, ARefusedTextureLeavesPixelsButShowsNothing)
{
    MemoryContext context;
    context.refuseTextures = true;
    TextureSurface surface(context, 100, 40);
    EXPECT_EQ(surface.getTexture(), nullptr);
    EXPECT_NE(surface.getPixels(nullptr), nullptr);
    RectangleList dirty;
    dirty.add(Rectangle(0, 0, 5, 5));
    surface.update(dirty, nullptr, nullptr);
    surface.present();
    EXPECT_TRUE(context.uploads.empty());
    EXPECT_TRUE(context.quads.empty());
}
