// The null backend's image put: what reaches its screen, and when.

#include "native/null/NullWindowPeer.h"
#include "native/window/Window.h"
#include "render/surface/ImageSurface.h"
#include "render/surface/Surface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using namespace q1framework;

namespace
{
uint32_t screenPixel(const NullWindowPeer& peer, int x, int y)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, peer.getScreen().getPixelPointer(x, y), 4);
    return pixel;
}

// Fills the whole surface with one pixel word.
void fill(Surface& surface, uint32_t pixel)
{
    int stride = 0;
    uint8_t* pixels = surface.getPixels(&stride);
    for (int y = 0; y < surface.getSize().y; ++y)
        for (int x = 0; x < surface.getSize().x; ++x)
            std::memcpy(pixels + y * stride + x * 4, &pixel, 4);
}

struct PresentingWindow
{
    Window window{Rectangle(0, 0, 40, 30), 0, String(), reinterpret_cast<void*>(uintptr_t{7})};
    NullWindowPeer& peer = *NullWindowPeer::of(window);
    std::unique_ptr<Surface> surface{Surface::create(nullptr, Surface::imageKind, Point(40, 30), window.getImagePresenter())};
};
}  // namespace

TEST(NullWindowPeer, TheFirstPresentShowsTheWholeNeverShownWindow)
{
    PresentingWindow presenting;
    fill(*presenting.surface, 0xff102030);
    presenting.surface->present();
    EXPECT_EQ(presenting.peer.getPresentCount(), 1);
    EXPECT_TRUE(presenting.peer.getLastPresentedRectangles().isEmpty());
    EXPECT_EQ(screenPixel(presenting.peer, 0, 0), 0xff102030u);
    EXPECT_EQ(screenPixel(presenting.peer, 39, 29), 0xff102030u);
    EXPECT_TRUE(presenting.peer.getLostRegion().isEmpty());
}

TEST(NullWindowPeer, UpdatesShowOnlyTheirRectanglesCutToTheWindow)
{
    PresentingWindow presenting;
    presenting.surface->present();
    fill(*presenting.surface, 0xff0000ff);
    RectangleList dirty;
    dirty.add(Rectangle(35, 25, 10, 10));
    dirty.add(Rectangle(50, 0, 5, 5));
    presenting.surface->update(dirty, nullptr, nullptr);
    ASSERT_EQ(presenting.peer.getLastPresentedRectangles().getCount(), 1);
    EXPECT_EQ(presenting.peer.getLastPresentedRectangles()[0], Rectangle(35, 25, 5, 5));
    EXPECT_EQ(screenPixel(presenting.peer, 35, 25), 0xff0000ffu);
    EXPECT_EQ(screenPixel(presenting.peer, 34, 25), 0u);
    EXPECT_EQ(screenPixel(presenting.peer, 35, 24), 0u);
}

TEST(NullWindowPeer, AnExposedAreaIsShownAgainAtTheNextPresent)
{
    PresentingWindow presenting;
    presenting.surface->present();
    fill(*presenting.surface, 0xff00ff00);
    presenting.peer.injectExposed(Rectangle(10, 10, 4, 3));
    presenting.surface->present();
    EXPECT_EQ(screenPixel(presenting.peer, 10, 10), 0xff00ff00u);
    EXPECT_EQ(screenPixel(presenting.peer, 13, 12), 0xff00ff00u);
    EXPECT_EQ(screenPixel(presenting.peer, 14, 12), 0u);
    EXPECT_EQ(screenPixel(presenting.peer, 13, 13), 0u);
}

TEST(NullWindowPeer, AResizeLosesTheWholeScreen)
{
    PresentingWindow presenting;
    presenting.surface->present();
    presenting.peer.injectResize(Point(60, 20));
    EXPECT_EQ(presenting.peer.getScreen().getSize(), Point(60, 20));
    RectangleList lost;
    presenting.peer.getLostRegion().getRectangles(lost);
    ASSERT_EQ(lost.getCount(), 1);
    EXPECT_EQ(lost[0], Rectangle(0, 0, 60, 20));
}

TEST(NullWindowPeer, ACursorPictureReplacesTheSystemCursorUntilOneIsSet)
{
    PresentingWindow presenting;
    const Image picture(8, 8, true);
    presenting.window.setCursorImage(picture, Point(3, 4));
    EXPECT_EQ(presenting.peer.getCursor(), -1);
    EXPECT_EQ(presenting.peer.getCursorImage(), picture);
    EXPECT_EQ(presenting.peer.getCursorHotSpot(), Point(3, 4));
    presenting.window.setCursor(99);
    EXPECT_EQ(presenting.peer.getCursor(), 0);
    EXPECT_TRUE(presenting.peer.getCursorImage().isNull());
}
