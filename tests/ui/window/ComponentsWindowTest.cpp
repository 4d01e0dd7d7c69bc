// ComponentsWindow on the null backend: events in, cursors and the pointer lock out, and frames
// painted the normal and the scaled way.

#include "ui/window/ComponentsWindow.h"

#include "support/TreeHarness.h"

#include "native/null/NullWindowPeer.h"
#include "native/window/WindowFlags.h"
#include "render/image/ImageScaling.h"
#include "ui/controls/Knob.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using namespace q1framework;
using Log = Probe::Log;

namespace
{
using namespace PointerKind;

constexpr int imageStyle = WindowFlags::imageSurface;
constexpr int scaledStyle = WindowFlags::imageSurface | WindowFlags::scaledContent;

// A window of the null backend (a child of a stand-in parent) showing a 200 x 100 probe with one
// child, "child" at (20, 20, 40, 30).
struct WindowHarness
{
    explicit WindowHarness(int flags) : window(Rectangle(0, 0, 10, 10), flags, String(), this)
    {
        root = new Probe("root", &log, Colour(30, 60, 90, 255));
        root->setOpaque(true);
        root->setBounds(Rectangle(0, 0, 200, 100), false);
        child = root->addProbe("child", Rectangle(20, 20, 40, 30), Colour(200, 150, 100, 255));
        window.setContent(root, true);
        peer = NullWindowPeer::of(window);
    }

    // One frame of the frame loop (a window made in a frame waits for the next one).
    void frame() { Window::runFrame(); }

    std::vector<Rectangle> invalidated() const
    {
        return std::vector<Rectangle>(peer->getInvalidatedRectangles().begin(), peer->getInvalidatedRectangles().end());
    }

    std::vector<Rectangle> presented() const
    {
        return std::vector<Rectangle>(peer->getLastPresentedRectangles().begin(),
                                      peer->getLastPresentedRectangles().end());
    }

    Log log;
    ComponentsWindow window;
    Probe* root;
    Probe* child;
    NullWindowPeer* peer;
};


// A fresh painting of the tree of container, at its size.
Image paintTree(ComponentsContainer& container)
{
    Image picture(container.getSize(), true);
    container.invalidateAll();
    container.paint(picture.getPixelPointer(0, 0), picture.getSize(), picture.getStride(), true);
    return picture;
}
}

// ---- Content and events ----

TEST(ComponentsWindowTest, ContentGivesTheWindowItsSize)
{
    WindowHarness harness(imageStyle);
    EXPECT_EQ(harness.window.getClientSize(), Point(200, 100));
    EXPECT_EQ(harness.window.getContainer().getSize(), Point(200, 100));
    EXPECT_EQ(harness.root->getContainer()->getWindow(), &harness.window);
}

TEST(ComponentsWindowTest, AWindowMadeAtItsContentsSizeShowsTheContent)
{
    ComponentsWindow window(Rectangle(0, 0, 200, 100), imageStyle, String(), reinterpret_cast<void*>(1));
    Log log;
    auto* root = new Probe("root", &log, Colour(30, 60, 90, 255));
    root->setOpaque(true);
    root->setBounds(Rectangle(0, 0, 200, 100), false);
    window.setContent(root, true);
    EXPECT_EQ(window.getContainer().getSize(), Point(200, 100));
    Window::runFrame();
    EXPECT_EQ(NullWindowPeer::of(window)->getScreen().getPixelPointer(100, 50)[0], 90);
}

TEST(ComponentsWindowTest, ResizedWindowResizesTheTree)
{
    WindowHarness harness(imageStyle);
    harness.peer->injectResize(Point(300, 120));
    EXPECT_EQ(harness.root->getSize(), Point(300, 120));
}

TEST(ComponentsWindowTest, ScaledWindowKeepsTheTreeSizeAndMapsPointerPositions)
{
    WindowHarness harness(scaledStyle);
    harness.peer->injectResize(Point(100, 50));
    EXPECT_EQ(harness.root->getSize(), Point(200, 100));
    harness.peer->injectMouse(move, Point(15, 12));
    EXPECT_EQ(Point(harness.child->lastEvent.x, harness.child->lastEvent.y), Point(10, 4));
    EXPECT_EQ(harness.window.windowToRoot(Point(99, 49)), Point(198, 98));
    EXPECT_EQ(harness.window.rootToWindow(Point(3, 3), false), Point(1, 1));
    EXPECT_EQ(harness.window.rootToWindow(Point(3, 3), true), Point(2, 2));
}

TEST(ComponentsWindowTest, KeysAndModifiersReachTheTree)
{
    WindowHarness harness(imageStyle);
    harness.child->setWantsFocus(true);
    harness.child->grabFocus();
    harness.child->usesKey = 'k';
    EXPECT_TRUE(harness.peer->injectKey(true, 'k', 45));
    harness.peer->injectKey(false, 'k', 45);
    harness.peer->injectModifiers(KeyCodes::shiftMask);
    EXPECT_TRUE(harness.child->isModifierKeyDown(KeyEvent::shift));
    harness.peer->injectModifiers(0);
    EXPECT_FALSE(harness.child->isModifierKeyDown(KeyEvent::shift));
}

TEST(ComponentsWindowTest, HoveredComponentsCursorIsTheWindowsCursor)
{
    WindowHarness harness(imageStyle);
    harness.child->setCursor(Mouse::Cursor(Mouse::openHandCursor));
    harness.peer->injectMouse(move, Point(30, 30));
    EXPECT_EQ(harness.peer->getCursor(), Mouse::openHandCursor);
    harness.peer->injectMouse(move, Point(100, 80));
    EXPECT_EQ(harness.peer->getCursor(), Mouse::arrowCursor);
}

TEST(ComponentsWindowTest, KnobDragLocksThePointerAndGoesOnPastTheScreensEdge)
{
    WindowHarness harness(imageStyle);
    auto* knob = new Knob();
    knob->setBounds(Rectangle(100, 20, 40, 40), false);
    harness.root->addAndMakeVisible(knob);
    harness.peer->injectMouse(move, Point(120, 40));
    harness.peer->injectMouse(press, Point(120, 40), 1, 1);
    EXPECT_TRUE(harness.peer->isPointerLocked());
    for (int step = 1; step <= 5; ++step)
        harness.peer->injectMouse(move, Point(120, 40 - 30));
    EXPECT_DOUBLE_EQ(knob->getValue(), 1.0);
    harness.peer->injectMouse(release, Point(120, 40 - 30), 1, 1);
    EXPECT_FALSE(harness.peer->isPointerLocked());
    EXPECT_EQ(harness.peer->getPointerPosition(), Point(120, 40));
}

TEST(ComponentsWindowTest, LostActivationReleasesTheHeldButton)
{
    WindowHarness harness(imageStyle);
    harness.peer->injectMouse(move, Point(30, 30));
    harness.peer->injectMouse(press, Point(30, 30), 1, 1);
    harness.log.clear();
    harness.peer->injectActiveChanged(false);
    EXPECT_EQ(harness.log, (Log{"child.up", "child.exit"}));
    EXPECT_EQ(harness.window.getContainer().getPointer(0).heldButtons, 0u);
}

TEST(ComponentsWindowTest, FilesDroppedReachTheComponentUnderThem)
{
    WindowHarness harness(imageStyle);
    harness.child->wantsFiles = harness.child->takesFiles = true;
    Array<String> paths;
    paths.add(String("/tmp/loop.wav"));
    EXPECT_TRUE(harness.peer->injectFilesDropped(Point(25, 26), paths));
    EXPECT_EQ(harness.log.back(), "child.filesDropped 5,6 1");
}

// ---- Frames ----

TEST(ComponentsWindowTest, WindowWithoutAPresentingStylePaintsNothing)
{
    WindowHarness harness(WindowFlags::noContext);
    harness.frame();
    harness.frame();
    EXPECT_EQ(harness.peer->getPresentCount(), 0);
}

TEST(ComponentsWindowTest, NormalFrameShowsThePresentRegion)
{
    WindowHarness harness(imageStyle);
    harness.frame();
    EXPECT_TRUE(samePixels(harness.peer->getScreen(), paintTree(harness.window.getContainer())));
    // Only the repainted part of the child shows its new colour.
    harness.child->colour = Colour(0, 0, 255, 255);
    harness.child->repaint(Rectangle(5, 5, 10, 10));
    harness.frame();
    const Image& screen = harness.peer->getScreen();
    EXPECT_EQ(screen.getPixelPointer(25, 25)[0], 255);
    EXPECT_EQ(screen.getPixelPointer(34, 34)[0], 255);
    EXPECT_EQ(screen.getPixelPointer(35, 34)[0], 100);
    EXPECT_EQ(screen.getPixelPointer(24, 25)[0], 100);
    EXPECT_TRUE(harness.window.getContainer().getDirtyRegion().isEmpty());
}

TEST(ComponentsWindowTest, ScaledFrameMarksAndShowsTheScaledRectanglesRoundedOutward)
{
    WindowHarness harness(scaledStyle);
    harness.peer->injectResize(Point(150, 75));
    harness.frame();
    EXPECT_EQ(harness.presented(), (std::vector<Rectangle>{Rectangle(0, 0, 150, 75)}));
    harness.peer->clearInvalidated();
    // (10, 10, 20, 20) of the tree at 0.75: 7.5 to 22.5 each way; marked rounded outward, shown
    // one pixel wider on every side.
    harness.root->repaint(Rectangle(10, 10, 20, 20));
    EXPECT_EQ(harness.invalidated(), (std::vector<Rectangle>{Rectangle(7, 7, 16, 16)}));
    harness.frame();
    EXPECT_EQ(harness.presented(), (std::vector<Rectangle>{Rectangle(6, 6, 18, 18)}));
}

TEST(ComponentsWindowTest, ScaledFrameShowsTheTreeResampled)
{
    WindowHarness harness(scaledStyle);
    harness.peer->injectResize(Point(150, 77));
    harness.frame();
    const Image tree = paintTree(harness.window.getContainer());
    Image expected(150, 77, true);
    const Rectangle whole = expected.getBounds();
    resampleImage(tree, expected, &whole, 1, -1);
    EXPECT_TRUE(samePixels(harness.peer->getScreen(), expected));
}

TEST(ComponentsWindowTest, ResizedScaledWindowShowsItsWholeSurfaceNextFrame)
{
    WindowHarness harness(scaledStyle);
    harness.frame();
    harness.peer->injectResize(Point(120, 60));
    harness.frame();
    EXPECT_EQ(harness.presented(), (std::vector<Rectangle>{Rectangle(0, 0, 120, 60)}));
    EXPECT_EQ(harness.window.getContainer().getSize(), Point(200, 100));
}

TEST(ComponentsWindowTest, ScrollInAScaledWindowMovesTheTreesOwnPixels)
{
    WindowHarness harness(scaledStyle);
    Probe* content = harness.child->addProbe("content", Rectangle(0, 0, 40, 90), Colour(10, 20, 30, 255));
    harness.child->setClipsChildren(true);
    content->addProbe("stripe", Rectangle(0, 12, 40, 3), Colour(250, 250, 250, 255));
    harness.frame();
    content->setPosition(Point(0, -10));
    harness.frame();
    EXPECT_TRUE(samePixels(harness.peer->getScreen(), [&] {
        Image expected(harness.window.getClientSize(), true);
        const Rectangle whole = expected.getBounds();
        resampleImage(paintTree(harness.window.getContainer()), expected, &whole, 1, -1);
        return expected;
    }()));
}

// ---- Overlay drawing ----

namespace
{
// A root that draws a red square through the rendering context after each frame.
class OverlayRoot : public Probe
{
public:
    explicit OverlayRoot(Log* log) : Probe("root", log, Colour(30, 60, 90, 255)) { setOpaque(true); }

    void afterRender(RenderingContext& context) override
    {
        ++overlays;
        context.fillRect(square, Colour(255, 0, 0, 255));
    }

    Rectangle square{10, 10, 5, 5};
    int overlays = 0;
};

struct OverlayHarness
{
    OverlayHarness() : window(Rectangle(0, 0, 10, 10), imageStyle, String(), this)
    {
        root = new OverlayRoot(&log);
        root->setBounds(Rectangle(0, 0, 60, 30), false);
        window.setContent(root, true);
        window.setOverlayDrawing(true);
        peer = NullWindowPeer::of(window);
        Window::runFrame();
    }

    // Red, green and blue of the screen's pixel.
    std::vector<int> shownAt(int x, int y) const
    {
        const uint8_t* pixel = peer->getScreen().getPixelPointer(x, y);
        return {pixel[2], pixel[1], pixel[0]};
    }

    Log log;
    ComponentsWindow window;
    OverlayRoot* root;
    NullWindowPeer* peer;
};
}  // namespace

TEST(ComponentsWindowTest, OverlayIsDrawnOverTheImagePutsFrame)
{
    OverlayHarness harness;
    EXPECT_EQ(harness.root->overlays, 1);
    EXPECT_EQ(harness.shownAt(12, 12), (std::vector<int>{255, 0, 0}));
    EXPECT_EQ(harness.shownAt(20, 12), (std::vector<int>{30, 60, 90}));
}

TEST(ComponentsWindowTest, AMovedOverlayShowsTheTreeWhereItWasWithoutRepaintingTheTree)
{
    OverlayHarness harness;
    harness.root->paintedClips.clear();
    harness.root->square = Rectangle(30, 10, 5, 5);
    harness.window.invalidate(harness.root->square);
    Window::runFrame();
    EXPECT_EQ(harness.shownAt(12, 12), (std::vector<int>{30, 60, 90}));
    EXPECT_EQ(harness.shownAt(32, 12), (std::vector<int>{255, 0, 0}));
    EXPECT_TRUE(harness.root->paintedClips.empty());
}

TEST(ComponentsWindowTest, WithoutOverlayDrawingTheRootIsNotAskedToDraw)
{
    OverlayHarness harness;
    harness.window.setOverlayDrawing(false);
    Window::runFrame();
    EXPECT_EQ(harness.root->overlays, 1);
    EXPECT_EQ(harness.shownAt(12, 12), (std::vector<int>{30, 60, 90}));
}
