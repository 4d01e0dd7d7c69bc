// The X image put: what an ImageSurface shows in its window, read back from the server with
// XGetImage, through MIT-SHM and without it.

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "TestDisplay.h"
#include "XvfbServer.h"

#include "native/window/Window.h"
#include "native/window/WindowFlags.h"
#include "native/x11/X11Connection.h"
#include "native/x11/X11ImagePresenter.h"
#include "native/x11/X11WindowPeer.h"
#include "render/surface/Surface.h"

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace q1framework;

namespace
{
constexpr int width = 160, height = 90;

// A pattern in which neighbouring pixels differ in every channel; seed varies it.
uint32_t patternPixel(int x, int y, int seed)
{
    return 0xff000000u | uint32_t((x * 7 + seed) & 0xff) << 16 | uint32_t((y * 13 + seed) & 0xff) << 8
           | uint32_t((x + y + seed) & 0xff);
}

void paint(Surface& surface, const Rectangle& area, int seed)
{
    int stride = 0;
    uint8_t* pixels = surface.getPixels(&stride);
    for (int y = area.y; y < area.getBottom(); ++y)
        for (int x = area.x; x < area.getRight(); ++x)
        {
            const uint32_t pixel = patternPixel(x, y, seed);
            std::memcpy(pixels + y * stride + x * 4, &pixel, 4);
        }
}

// The colour bytes the window should show for a pattern, with area painted with another seed.
std::vector<uint32_t> expectedPixels(int seed, const Rectangle& area = Rectangle(), int areaSeed = 0)
{
    std::vector<uint32_t> pixels;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels.push_back(patternPixel(x, y, area.contains(Point(x, y)) ? areaSeed : seed) & 0xffffffu);
    return pixels;
}

// An editor window drawing without GL inside a host window, with its image surface.
struct ImageWindow
{
    TestDisplay test;
    ::Window host = test.makeHostWindow(Rectangle(0, 0, width, height));
    q1framework::Window window{Rectangle(0, 0, width, height), WindowFlags::imageSurface, String(),
                  reinterpret_cast<void*>(static_cast<uintptr_t>(host))};
    std::unique_ptr<Surface> surface{Surface::create(nullptr, Surface::imageKind, Point(width, height),
                                                     window.getImagePresenter())};

    // The exposures of mapping the window are through before a test's first frame.
    ImageWindow() { test.settle(); }

    X11ImagePresenter& presenter() { return static_cast<X11WindowPeer*>(window.getPeer())->getX11ImagePresenter(); }
    ::Window xWindow() const { return static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView())); }

    void showWhole(int seed)
    {
        paint(*surface, Rectangle(0, 0, width, height), seed);
        RectangleList dirty;
        dirty.add(Rectangle(0, 0, width, height));
        surface->update(dirty, nullptr, nullptr);
        test.settle();
    }

    std::vector<uint32_t> shown() { return test.readPixels(xWindow(), Rectangle(0, 0, width, height)); }
};
}  // namespace

TEST(X11ImagePresenter, AFrameReadBackEqualsTheSurfaceThroughSharedMemory)
{
    ImageWindow shown;
    ASSERT_NE(shown.surface, nullptr);
    shown.showWhole(3);
    EXPECT_TRUE(shown.presenter().usedSharedMemory());
    EXPECT_TRUE(shown.shown() == expectedPixels(3));
}

TEST(X11ImagePresenter, ThePlainPutShowsTheSameFrame)
{
    ImageWindow shown;
    shown.presenter().setSharedMemoryAllowed(false);
    shown.showWhole(5);
    EXPECT_FALSE(shown.presenter().usedSharedMemory());
    EXPECT_TRUE(shown.shown() == expectedPixels(5));
}

TEST(X11ImagePresenter, AServerWithoutMitShmGetsThePlainPut)
{
    ASSERT_EQ(X11Connection::get(), nullptr);
    XvfbServer withoutSharedMemory({"-extension", "MIT-SHM"});
    ASSERT_TRUE(withoutSharedMemory.isRunning());
    const std::string ownDisplay = std::getenv("DISPLAY");
    setenv("DISPLAY", withoutSharedMemory.getDisplayName().c_str(), 1);
    {
        ImageWindow shown;
        EXPECT_FALSE(X11Connection::get()->canUseSharedMemory());
        shown.showWhole(9);
        EXPECT_FALSE(shown.presenter().usedSharedMemory());
        EXPECT_TRUE(shown.shown() == expectedPixels(9));
    }
    setenv("DISPLAY", ownDisplay.c_str(), 1);
}

TEST(X11ImagePresenter, OnlyTheDirtyRectanglesReachTheWindow)
{
    ImageWindow shown;
    shown.showWhole(1);
    const Rectangle knob(40, 20, 33, 27);
    paint(*shown.surface, Rectangle(0, 0, width, height), 2);
    RectangleList dirty;
    dirty.add(knob);
    shown.surface->update(dirty, nullptr, nullptr);
    shown.test.settle();
    EXPECT_TRUE(shown.shown() == expectedPixels(1, knob, 2));
}

TEST(X11ImagePresenter, WhatTheServerLostIsPutAgainAtTheNextPresent)
{
    ImageWindow shown;
    shown.showWhole(4);
    // A window of the test covers part of the editor, then goes: the server loses that part.
    const ::Window cover = shown.test.makeHostWindow(Rectangle(30, 10, 50, 40));
    XUnmapWindow(shown.test.get(), cover);
    shown.test.settle();
    EXPECT_FALSE(shown.shown() == expectedPixels(4));
    shown.surface->present();
    shown.test.settle();
    EXPECT_TRUE(shown.shown() == expectedPixels(4));
}
