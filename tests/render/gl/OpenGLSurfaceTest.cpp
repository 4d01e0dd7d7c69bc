// The surface of a GL window: made by Surface::create, and copying regions on the device.

#include "GLTestWindow.h"

#include "render/context/Texture.h"
#include "render/gl/OpenGLSurface.h"
#include "render/surface/Surface.h"

#include <cstring>
#include <memory>

using namespace q1framework;

TEST(OpenGLSurface, TheGLKindsGiveAnOpenGLSurface)
{
    GLTestWindow gl;
    ASSERT_NE(gl.context, nullptr);
    for (int kind : {1, 3})
    {
        std::unique_ptr<Surface> surface(Surface::create(gl.context, kind, Point(20, 10)));
        EXPECT_NE(dynamic_cast<OpenGLSurface*>(surface.get()), nullptr);
    }
}

TEST(OpenGLSurface, ACopiedRegionLandsAtItsDestinationInTheTexture)
{
    constexpr int width = 40, height = 30;
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    OpenGLSurface surface(*gl.context, width, height);
    int stride = 0;
    uint8_t* pixels = surface.getPixels(&stride);
    const auto pixelOf = [](int x, int y) { return 0xff000000u | uint32_t(x) << 16 | uint32_t(y) << 8; };
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            const uint32_t pixel = pixelOf(x, y);
            std::memcpy(pixels + y * stride + x * 4, &pixel, 4);
        }
    RectangleList whole;
    whole.add(Rectangle(0, 0, width, height));
    surface.update(whole, nullptr, nullptr);

    surface.copyRegion(nullptr, Rectangle(2, 3, 10, 8), Point(25, 20));
    const std::vector<uint32_t> texels = GLTestWindow::readTexels(surface.getTexture()->getNativeHandle(), width, height);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 10; ++x)
            ASSERT_EQ(texels[static_cast<size_t>(20 + y) * width + 25 + x], pixelOf(2 + x, 3 + y)) << x << "," << y;
    // Outside the destination the texture is as uploaded.
    EXPECT_EQ(texels[static_cast<size_t>(19) * width + 25], pixelOf(25, 19));
    // A destination partly outside copies what fits.
    surface.copyRegion(nullptr, Rectangle(0, 0, 10, 10), Point(35, 25));
    const std::vector<uint32_t> after = GLTestWindow::readTexels(surface.getTexture()->getNativeHandle(), width, height);
    EXPECT_EQ(after[static_cast<size_t>(29) * width + 39], pixelOf(4, 4));
}
