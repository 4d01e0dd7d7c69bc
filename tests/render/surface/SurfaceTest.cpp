#include "MemoryContext.h"

#include "render/surface/ImagePresenter.h"
#include "render/surface/ImageSurface.h"
#include "render/surface/MemorySurface.h"
#include "render/surface/Surface.h"
#include "render/surface/TextureSurface.h"

#include <gtest/gtest.h>

#include <memory>

using namespace q1framework;

namespace
{
class DiscardingPresenter : public ImagePresenter
{
public:
    void presentPixels(const uint8_t*, int, const Point&, const Rectangle*, int) override {}
};
}  // namespace

TEST(Surface, EachKindMakesItsSurfaceWhenItHasWhatItNeeds)
{
    MemoryContext context;
    DiscardingPresenter presenter;
    const Point size(30, 20);
    std::unique_ptr<Surface> memory(Surface::create(nullptr, 0, size));
    std::unique_ptr<Surface> texture(Surface::create(&context, 1, size));
    std::unique_ptr<Surface> image(Surface::create(nullptr, 2, size, &presenter));
    std::unique_ptr<Surface> texture3(Surface::create(&context, 3, size));
    EXPECT_NE(dynamic_cast<MemorySurface*>(memory.get()), nullptr);
    EXPECT_NE(dynamic_cast<TextureSurface*>(texture.get()), nullptr);
    EXPECT_NE(dynamic_cast<ImageSurface*>(image.get()), nullptr);
    EXPECT_NE(dynamic_cast<TextureSurface*>(texture3.get()), nullptr);
    EXPECT_EQ(texture->getSize(), size);

    EXPECT_EQ(Surface::create(nullptr, 1, size), nullptr);
    EXPECT_EQ(Surface::create(&context, 2, size), nullptr);
    EXPECT_EQ(Surface::create(&context, 4, size, &presenter), nullptr);
    EXPECT_EQ(Surface::create(&context, -1, size, &presenter), nullptr);
}

TEST(Surface, ItsImageSharesThePixelsAndReportsTheMargin)
{
    MemorySurface surface(30, 20);
    int stride = 0;
    uint8_t* pixels = surface.getPixels(&stride);
    const Image& image = surface.getImage();
    EXPECT_EQ(image.getSize(), Point(30, 20));
    EXPECT_EQ(image.getMargin(), 16);
    EXPECT_EQ(image.getStride(), stride);
    EXPECT_EQ(image.getPixelPointer(0, 0), pixels);
    EXPECT_EQ(image.getData(), pixels - 16 * stride - 16 * 4);
    EXPECT_EQ(&surface.getImage(), &image);
}

TEST(Surface, ASurfaceWithoutPixelsHasANullImage)
{
    MemorySurface surface(1 << 21, 4);
    EXPECT_TRUE(surface.getImage().isNull());
}
