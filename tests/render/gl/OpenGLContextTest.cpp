// The OpenGL context on Mesa's software GL: version, clip and scissor arithmetic, the colour
// quirks, the circle shader's edge, and a whole frame reaching the screen.

#include "GLTestWindow.h"

#include "render/gl/OpenGLShader.h"
#include "render/surface/Surface.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <string>

using namespace q1framework;

namespace
{
constexpr uint32_t opaqueBlack = 0xff000000u;
constexpr uint32_t opaqueWhite = 0xffffffffu;

uint8_t channel(uint32_t pixel, int shift)
{
    return static_cast<uint8_t>(pixel >> shift);
}
}  // namespace

TEST(OpenGLContext, TheVersionIsTheNumbersAtTheStartOfTheVersionString)
{
    GLTestWindow gl;
    ASSERT_TRUE(gl.beginFrame());
    int major = 0, minor = 0;
    const String version = gl.context->getVersion(major, minor);
    EXPECT_GE(major, 2);
    const std::string expectedStart = std::to_string(major) + "." + std::to_string(minor);
    EXPECT_EQ(std::string(version.getCString()).compare(0, expectedStart.size(), expectedStart), 0) << version.getCString();
}

TEST(OpenGLContext, AnEmptyClipTurnsClippingOffAndKeepsTheLastBox)
{
    GLTestWindow gl(100, 100);
    ASSERT_TRUE(gl.beginFrame());
    gl.context->setClip(Rectangle(10, 20, 30, 40));
    gl.context->setClip(Rectangle(5, 5, 0, 10));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    EXPECT_EQ(gl.context->getClip(), Rectangle(10, 20, 30, 40));
    gl.context->fillRect(Rectangle(0, 0, 100, 100), Colour(opaqueWhite));
    EXPECT_EQ(gl.readPixel(0, 0), opaqueWhite);
}

TEST(OpenGLContext, FillsStayInsideTheClip)
{
    GLTestWindow gl(100, 100);
    ASSERT_TRUE(gl.beginFrame());
    gl.context->setClip(Rectangle(10, 20, 30, 40));
    gl.context->fillRect(Rectangle(0, 0, 100, 100), Colour(opaqueWhite));
    EXPECT_EQ(gl.readPixel(10, 20), opaqueWhite);
    EXPECT_EQ(gl.readPixel(39, 59), opaqueWhite);
    EXPECT_EQ(gl.readPixel(9, 20), opaqueBlack);
    EXPECT_EQ(gl.readPixel(10, 19), opaqueBlack);
    EXPECT_EQ(gl.readPixel(40, 59), opaqueBlack);
    EXPECT_EQ(gl.readPixel(39, 60), opaqueBlack);
}

TEST(OpenGLContext, ALineWithARedOf200DrawsNoRed)
{
    GLTestWindow gl(100, 40);
    ASSERT_TRUE(gl.beginFrame());
    // glColor4b takes signed bytes: 200 arrives as -56, which GL clamps to 0; 100 is 100 / 127.
    gl.context->drawLine(5, 10, 95, 10, Colour(200, 100, 0, 127));
    int greenest = 0;
    for (uint32_t pixel : gl.readFrame(Rectangle(0, 8, 100, 4)))
    {
        EXPECT_EQ(channel(pixel, 16), 0) << std::hex << pixel;
        greenest = std::max<int>(greenest, channel(pixel, 8));
    }
    EXPECT_NEAR(greenest, 100 * 255 / 127, 2);
}

TEST(OpenGLContext, TheCircleFadesOverOnePixelCentredOnItsRadius)
{
    GLTestWindow gl(100, 100);
    ASSERT_NE(gl.context, nullptr);
    ASSERT_NE(gl.context->getCircleShader(), nullptr);
    gl.context->beginFrame();
    // Radius 20 about (40, 40): white over black shows the shader's alpha in each channel.
    gl.context->fillCircle(Rectangle(20, 20, 40, 40), Colour(opaqueWhite));
    const std::vector<uint32_t> box = gl.readFrame(Rectangle(20, 20, 40, 40));
    int edgePixels = 0;
    for (int y = 20; y < 60; ++y)
        for (int x = 20; x < 60; ++x)
        {
            // The fragment of pixel (x, y) sits at its centre.
            const double distance = std::hypot(x + 0.5 - 40.0, y + 0.5 - 40.0);
            const double t = std::clamp(distance - 19.5, 0.0, 1.0);
            const double coverage = std::sqrt(1.0 - t * t * (3.0 - 2.0 * t));
            edgePixels += coverage > 0.1 && coverage < 0.9;
            const uint32_t pixel = box[static_cast<size_t>(y - 20) * 40 + (x - 20)];
            ASSERT_NEAR(channel(pixel, 0), 255.0 * coverage, 2.0) << x << "," << y;
        }
    EXPECT_GT(edgePixels, 40);
}

TEST(OpenGLContext, ItIsCurrentOnlyInsideAFrame)
{
    GLTestWindow gl;
    ASSERT_NE(gl.context, nullptr);
    EXPECT_EQ(OpenGLContext::getCurrent(), nullptr);
    gl.context->beginFrame();
    EXPECT_EQ(OpenGLContext::getCurrent(), gl.context);
    gl.context->endFrame();
    EXPECT_EQ(OpenGLContext::getCurrent(), nullptr);
}

TEST(OpenGLContext, AShaderThatDoesNotCompileIsLoggedAndRefused)
{
    GLTestWindow gl;
    ASSERT_NE(gl.context, nullptr);
    gl.context->makeCurrent();
    testing::internal::CaptureStderr();
    OpenGLShader* shader = OpenGLShader::create(*gl.context, "void main() { gl_Position = ftransform(); }",
                                                "void main() { gl_FragColor = undeclared; }");
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(shader, nullptr);
    EXPECT_EQ(log.compare(0, 19, "[FRAGMENT SHADER]: "), 0) << log;
    EXPECT_NE(log.find("[PROGRAM]: "), std::string::npos) << log;
}

TEST(OpenGLContext, AFramePresentsTheSurfacesPixels)
{
    constexpr int width = 90, height = 50;
    GLTestWindow gl(width, height);
    ASSERT_NE(gl.context, nullptr);
    std::unique_ptr<Surface> surface(Surface::create(gl.context, Surface::openGLKind, Point(width, height)));
    int stride = 0;
    uint8_t* pixels = surface->getPixels(&stride);
    std::vector<uint32_t> expected;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
        {
            const uint32_t pixel = 0xff000000u | uint32_t(x * 2) << 16 | uint32_t(y * 5) << 8 | uint32_t((x ^ y) & 0xff);
            std::memcpy(pixels + y * stride + x * 4, &pixel, 4);
            expected.push_back(pixel & 0xffffff);
        }
    RectangleList whole;
    whole.add(Rectangle(0, 0, width, height));
    gl.context->beginFrame();
    surface->update(whole, nullptr, nullptr);
    surface->present();
    gl.context->endFrame();
    gl.test.settle();
    const std::vector<uint32_t> shown = gl.test.readPixels(gl.xWindow(), Rectangle(0, 0, width, height));
    ASSERT_EQ(shown.size(), expected.size());
    for (size_t index = 0; index < shown.size(); ++index)
        ASSERT_TRUE(closePixels(shown[index], expected[index], 1)) << index << ": " << std::hex << shown[index];
}
