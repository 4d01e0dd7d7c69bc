// The host's idle call drives everything: native events, timers and the frame loop. Hosts may
// open, idle and close an editor from two threads in turn; the frames still reach the screen,
// through GL and through the image put.

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "TestDisplay.h"

#include "native/window/UiThread.h"
#include "native/window/Window.h"
#include "native/window/WindowFlags.h"
#include "render/context/RenderingContext.h"
#include "render/gl/OpenGLContext.h"
#include "render/surface/Surface.h"

#include <chrono>
#include <cstring>
#include <memory>
#include <thread>

using namespace q1framework;

namespace
{
constexpr int width = 120, height = 60;

// Paints its whole surface in one colour per frame and shows it: through its rendering context
// when it has one, else through the image put, as the toolkit's window does.
class PaintingWindow : public q1framework::Window
{
public:
    PaintingWindow(int flags, ::Window host)
        : q1framework::Window(Rectangle(0, 0, width, height), flags, String(), reinterpret_cast<void*>(static_cast<uintptr_t>(host)))
    {
    }
    ~PaintingWindow() override { surface.reset(); }

    void destroyNative() override
    {
        surface.reset();
        q1framework::Window::destroyNative();
    }

    void paint() override
    {
        RenderingContext* context = getRenderingContext();
        if (surface == nullptr)
            surface.reset(Surface::create(context, context != nullptr ? Surface::openGLKind : Surface::imageKind,
                                          getClientSize(), getImagePresenter()));
        ++frames;
        const uint32_t colour = colourOfFrame(frames);
        int stride = 0;
        uint8_t* pixels = surface->getPixels(&stride);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                std::memcpy(pixels + y * stride + x * 4, &colour, 4);
        RectangleList dirty;
        dirty.add(Rectangle(0, 0, width, height));
        if (context != nullptr)
            context->beginFrame();
        surface->update(dirty, nullptr, nullptr);
        surface->present();
        if (context != nullptr)
            context->endFrame();
    }

    static uint32_t colourOfFrame(int frame) { return 0xff000000u | uint32_t(frame * 40 & 0xff) << 16 | 0x3070u; }

    std::unique_ptr<Surface> surface;
    int frames = 0;
};

::Window xWindowOf(const q1framework::Window& window)
{
    return static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView()));
}

// The host's idle at about 25 Hz: every call is late enough for one frame.
void idleFor(int calls)
{
    for (int call = 0; call < calls; ++call)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        UiThread::idle();
    }
}
}  // namespace

TEST(UiThread, IdleRunsFramesThatReachTheScreenThroughGLAndTheImagePut)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 2 * width, height));
    PaintingWindow gl(WindowFlags::openGL, host);
    PaintingWindow image(WindowFlags::imageSurface, host);
    image.setBounds(Rectangle(width, 0, width, height));
    ASSERT_NE(gl.getRenderingContext(), nullptr);
    idleFor(5);
    EXPECT_GE(gl.frames, 4);
    EXPECT_GE(image.frames, 1);
    test.settle();
    const std::vector<uint32_t> glShown = test.readPixels(xWindowOf(gl), Rectangle(0, 0, width, height));
    const std::vector<uint32_t> imageShown = test.readPixels(xWindowOf(image), Rectangle(0, 0, width, height));
    EXPECT_EQ(glShown, std::vector<uint32_t>(width * height, PaintingWindow::colourOfFrame(gl.frames) & 0xffffff));
    EXPECT_EQ(imageShown, std::vector<uint32_t>(width * height, PaintingWindow::colourOfFrame(image.frames) & 0xffffff));
    // An image window paints again only when something changed.
    const int imageFrames = image.frames;
    idleFor(2);
    EXPECT_EQ(image.frames, imageFrames);
    image.invalidate(Rectangle(0, 0, 4, 4));
    idleFor(1);
    EXPECT_EQ(image.frames, imageFrames + 1);
}

TEST(UiThread, ThreadedOpenIdleAndCloseFromTwoHostThreadsInTurn)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 2 * width, height));
    for (int round = 0; round < 3; ++round)
    {
        std::unique_ptr<PaintingWindow> gl, image;
        // The host's main thread opens, its event-loop thread idles, the main thread closes;
        // joining the thread is the handover that a host makes with its own means.
        std::thread([&] {
            UiThread::enter();
            gl = std::make_unique<PaintingWindow>(WindowFlags::openGL, host);
            image = std::make_unique<PaintingWindow>(WindowFlags::imageSurface, host);
            image->setBounds(Rectangle(width, 0, width, height));
        }).join();
        std::thread([&] { idleFor(4); }).join();
        ASSERT_GE(gl->frames, 3);
        test.settle();
        EXPECT_EQ(test.readPixels(xWindowOf(*gl), Rectangle(0, 0, 1, 1)).at(0),
                  PaintingWindow::colourOfFrame(gl->frames) & 0xffffff);
        std::thread([&] {
            UiThread::enter();
            gl.reset();
            image.reset();
        }).join();
        EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    }
}
