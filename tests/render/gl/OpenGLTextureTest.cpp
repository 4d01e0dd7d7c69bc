// Textures of the OpenGL context: what reaches the device on an upload, read back texel for
// texel, and how they are drawn.

#include "GLTestWindow.h"

#include "media/image/Image.h"
#include "render/gl/OpenGLTexture.h"

#include <cstring>
#include <memory>

using namespace q1framework;

namespace
{
Image filledImage(int width, int height, uint32_t pixel)
{
    Image image(width, height, true);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            std::memcpy(image.getPixelPointer(x, y), &pixel, 4);
    return image;
}

void setPixel(Image& image, int x, int y, uint32_t pixel)
{
    std::memcpy(image.getPixelPointer(x, y), &pixel, 4);
}

uint32_t texelAt(const std::vector<uint32_t>& texels, int width, int x, int y)
{
    return texels[static_cast<size_t>(y) * width + x];
}
}  // namespace

// Through a pixel buffer, as the context's own textures upload where the device has them, and
// through memory.
TEST(OpenGLTexture, OnlyTheDirtyRectanglesReachTheDevice)
{
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    std::unique_ptr<Texture> made(gl.context->createTexture(64, 32, 0, 1));
    EXPECT_TRUE(static_cast<OpenGLTexture&>(*made).usesPixelBuffer());
    OpenGLTexture throughMemory(*gl.context, 64, 32, 1, false);
    EXPECT_FALSE(throughMemory.usesPixelBuffer());
    const Rectangle dirty(10, 5, 20, 7);
    for (Texture* texture : {made.get(), static_cast<Texture*>(&throughMemory)})
    {
        texture->uploadWhole(filledImage(64, 32, 0xff112233), false);
        texture->upload(filledImage(64, 32, 0xffaabbcc), &dirty, 1, false);
        const std::vector<uint32_t> texels = GLTestWindow::readTexels(texture->getNativeHandle(), 64, 32);
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 64; ++x)
                ASSERT_EQ(texelAt(texels, 64, x, y), dirty.contains(Point(x, y)) ? 0xffaabbccu : 0xff112233u)
                    << (texture == made.get() ? "pixel buffer, " : "memory, ") << x << "," << y;
    }
}

TEST(OpenGLTexture, UnpremultiplyingDividesTheColourByAlpha)
{
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    std::unique_ptr<Texture> texture(gl.context->createTexture(3, 1, 0, 1));
    Image image(3, 1, true);
    setPixel(image, 0, 0, 0x80400000);  // alpha 128, red 64: 64 * (255 / 128) = 127.5, truncated
    setPixel(image, 1, 0, 0x00102030);  // alpha 0 gives 0
    setPixel(image, 2, 0, 0xff102030);  // opaque stays
    texture->uploadWhole(image, true);
    EXPECT_EQ(GLTestWindow::readTexels(texture->getNativeHandle(), 3, 1),
              (std::vector<uint32_t>{0x807f0000, 0x00000000, 0xff102030}));
}

TEST(OpenGLTexture, AnUploadPartlyOutsideTheImageCopiesTheOverlap)
{
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    std::unique_ptr<Texture> texture(gl.context->createTexture(32, 32, 0, 1));
    texture->clear();
    const Rectangle reaching(10, 10, 16, 16);
    texture->upload(filledImage(20, 20, 0xff445566), &reaching, 1, false);
    const std::vector<uint32_t> texels = GLTestWindow::readTexels(texture->getNativeHandle(), 32, 32);
    EXPECT_EQ(texelAt(texels, 32, 10, 10), 0xff445566u);
    EXPECT_EQ(texelAt(texels, 32, 19, 19), 0xff445566u);
    EXPECT_EQ(texelAt(texels, 32, 9, 10), 0u);
}

TEST(OpenGLTexture, ATextureOfWidthZeroDrawsNothingAndLeavesTexturingAlone)
{
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    std::unique_ptr<Texture> empty(gl.context->createTexture(0, 10, 0, 1));
    const double source[4] = {0, 0, 0, 10};
    const double corners[8] = {0, 0, 50, 0, 50, 50, 0, 50};
    glEnable(GL_TEXTURE_2D);
    empty->drawQuad(source, corners, 1.0f);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    glDisable(GL_TEXTURE_2D);
    empty->drawQuad(source, corners, 1.0f);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(gl.readPixel(25, 25), 0xff000000u);
}

TEST(OpenGLTexture, DrawShowsTheTextureScaledAboutItsCentre)
{
    GLTestWindow gl(100, 100);
    ASSERT_TRUE(gl.beginFrame());
    std::unique_ptr<Texture> texture(gl.context->createTexture(40, 40, 0, 1));
    texture->uploadWhole(filledImage(40, 40, 0xff30a050), false);
    // At half size about its centre, drawn at (30, 30): the quad covers 40 to 60.
    texture->draw(30.0, 30.0, 0.5, 1.0f, 0.0f);
    EXPECT_TRUE(closePixels(gl.readPixel(45, 45), 0xff30a050, 1));
    EXPECT_EQ(gl.readPixel(35, 45), 0xff000000u);
    EXPECT_EQ(gl.readPixel(62, 45), 0xff000000u);
}
