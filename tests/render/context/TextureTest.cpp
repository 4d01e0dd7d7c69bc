#include "MemoryContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using namespace q1framework;

namespace
{
void expectCorners(const MemoryContext::Quad& quad, const std::vector<double>& expected)
{
    for (int index = 0; index < 8; ++index)
        EXPECT_NEAR(quad.corners[index], expected[static_cast<size_t>(index)], 1e-9) << "corner value " << index;
}
}  // namespace

TEST(Texture, UploadWholeSendsTheTexturesOwnRectangle)
{
    MemoryContext context;
    std::unique_ptr<Texture> texture(context.createTexture(30, 20, 0, 1));
    texture->uploadWhole(Image(50, 50, true), false);
    EXPECT_EQ(context.uploads, std::vector<Rectangle>{Rectangle(0, 0, 30, 20)});
}

TEST(Texture, DrawScalesAboutTheTexturesCentre)
{
    MemoryContext context;
    std::unique_ptr<Texture> texture(context.createTexture(40, 20, 0, 1));
    texture->draw(100.0, 50.0, 0.5, 0.25f, 0.0f);
    ASSERT_EQ(context.quads.size(), 1u);
    const MemoryContext::Quad& quad = context.quads[0];
    // Destination (100 + 10, 50 + 5, 20, 10): the half-size quad keeps the centre (120, 60).
    expectCorners(quad, {110, 55, 130, 55, 130, 65, 110, 65});
    EXPECT_EQ(std::vector<double>(quad.source, quad.source + 4), (std::vector<double>{0, 0, 40, 20}));
    EXPECT_EQ(quad.alpha, 0.25f);
}

TEST(Texture, DrawRotatedTurnsTheCornersClockwiseAboutTheCentre)
{
    MemoryContext context;
    std::unique_ptr<Texture> texture(context.createTexture(8, 8, 0, 1));
    const double source[4] = {2, 0, 4, 8};
    const double destination[4] = {10, 20, 4, 8};
    texture->drawRotated(1.0f, std::acos(-1.0) / 2, 12.0, 24.0, source, destination);
    ASSERT_EQ(context.quads.size(), 1u);
    // A quarter turn about (12, 24) takes an offset (dx, dy) to (-dy, dx): the top-left corner,
    // at (-2, -4) from the centre, goes to (4, -2), the top-right one at (2, -4) to (4, 2).
    expectCorners(context.quads[0], {16, 22, 16, 26, 8, 26, 8, 22});
}
