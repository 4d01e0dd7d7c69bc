// Window's platform-neutral logic, through the null backend: what each native event becomes,
// the pointer lock, the frame loop, and what a closed window does.

#include "RecordingWindow.h"

#include "native/null/NullWindowPeer.h"
#include "native/window/KeyCodes.h"
#include "native/window/SystemCursor.h"
#include "native/window/WindowFlags.h"

#include <gtest/gtest.h>

#include <memory>

using namespace q1framework;

namespace
{
using Calls = std::vector<std::string>;

void* const hostParent = reinterpret_cast<void*>(uintptr_t{0x2a00007});

std::unique_ptr<RecordingWindow> makeChild(int flags = 0, const Rectangle& bounds = Rectangle(0, 0, 200, 100))
{
    return std::make_unique<RecordingWindow>(bounds, flags, String(), hostParent);
}

NullWindowPeer& peerOf(const Window& window)
{
    NullWindowPeer* peer = NullWindowPeer::of(window);
    EXPECT_NE(peer, nullptr);
    return *peer;
}
}  // namespace

TEST(Window, ChildWindowKeepsItsParentSizeAndKind)
{
    const auto window = makeChild(0, Rectangle(5, 6, 300, 70));
    EXPECT_TRUE(window->isOpen());
    EXPECT_EQ(window->getKind(), WindowPeer::childKind);
    EXPECT_EQ(window->getClientSize(), Point(300, 70));
    EXPECT_EQ(window->getBounds(), Rectangle(5, 6, 300, 70));
    EXPECT_EQ(peerOf(*window).getParent(), hostParent);
    EXPECT_EQ(window->getBackingScale(), 1.0);
    EXPECT_EQ(Window::getOpenTopLevelCount(), 0);
}

TEST(Window, TopLevelWindowsAreCountedUntilTheirCloseButton)
{
    RecordingWindow first(Rectangle(0, 0, 50, 50), 0, "first", nullptr);
    RecordingWindow second(Rectangle(0, 0, 50, 50), 0, "second", nullptr);
    EXPECT_EQ(first.getKind(), WindowPeer::topLevelKind);
    EXPECT_EQ(first.getTitle(), String("first"));
    EXPECT_EQ(Window::getOpenTopLevelCount(), 2);

    peerOf(first).injectCloseRequest();
    EXPECT_EQ(first.calls, Calls{"close"});
    EXPECT_EQ(Window::getOpenTopLevelCount(), 1);
    EXPECT_EQ(Window::getWindowCount(), 1);
    EXPECT_EQ(Window::getWindow(0), &second);
}

TEST(Window, WithoutAGLDrawableAnOpenGLWindowShowsThroughTheImagePut)
{
    const auto window = makeChild(WindowFlags::openGL | WindowFlags::highResolution);
    EXPECT_EQ(window->getFlags(), WindowFlags::imageSurface | WindowFlags::highResolution);
    EXPECT_EQ(window->getRenderingContext(), nullptr);
    EXPECT_EQ(window->getImagePresenter(), &peerOf(*window).getImagePresenter());
}

TEST(Window, PressAndReleaseCarryTheirButtonsAndAReleaseAlwaysCountsOneClick)
{
    const auto window = makeChild();
    NullWindowPeer& peer = peerOf(*window);
    peer.injectMouse(1, Point(10, 20), 1, 2);
    peer.injectMouse(2, Point(12, 21));
    peer.injectMouse(3, Point(12, 21), 1, 2);
    peer.injectMouse(1, Point(3, 4), 4, 1);
    peer.injectMouse(0, Point(3, 4), 0, 0, 0.0f, -1.0f);
    EXPECT_EQ(window->calls, (Calls{"mouse 1 (10,20) button 1 clicks 2 wheel 0,0",
                                    "mouse 2 (12,21) button 0 clicks 0 wheel 0,0",
                                    "mouse 3 (12,21) button 1 clicks 1 wheel 0,0",
                                    "mouse 1 (3,4) button 4 clicks 1 wheel 0,0",
                                    "mouse 0 (3,4) button 0 clicks 0 wheel 0,-1"}));
}

TEST(Window, ExitShowsTheArrowBeforeTheWindowHearsOfIt)
{
    const auto window = makeChild();
    NullWindowPeer& peer = peerOf(*window);
    window->setCursor(SystemCursor::pointingHand);
    EXPECT_EQ(peer.getCursor(), SystemCursor::pointingHand);
    peer.injectMouse(5, Point(-1, 40));
    EXPECT_EQ(peer.getCursor(), SystemCursor::arrow);
    EXPECT_EQ(window->calls, Calls{"mouse 5 (-1,40) button 0 clicks 0 wheel 0,0"});
}

TEST(Window, PositionsAreScaledOnlyInHighResolution)
{
    const auto plain = makeChild();
    const auto sharp = makeChild(WindowFlags::highResolution);
    for (RecordingWindow* window : {plain.get(), sharp.get()})
    {
        peerOf(*window).injectBackingScale(2.0);
        peerOf(*window).injectMouse(2, Point(7, 9));
    }
    EXPECT_EQ(plain->callsStartingWith("mouse"), Calls{"mouse 2 (7,9) button 0 clicks 0 wheel 0,0"});
    EXPECT_EQ(sharp->callsStartingWith("mouse"), Calls{"mouse 2 (14,18) button 0 clicks 0 wheel 0,0"});
}

TEST(Window, TheSameScaleTwiceIsReportedOnce)
{
    const auto window = makeChild();
    peerOf(*window).injectBackingScale(2.0);
    peerOf(*window).injectBackingScale(2.0);
    peerOf(*window).injectBackingScale(1.0);
    EXPECT_EQ(window->calls, (Calls{"scale 2.000000", "scale 1.000000"}));
}

TEST(Window, LockedDragsAddUpTheirMovementFromThePress)
{
    const auto window = makeChild();
    NullWindowPeer& peer = peerOf(*window);
    peer.injectMouse(1, Point(50, 60), 1, 1);
    window->setMouseLocked(true);
    EXPECT_TRUE(peer.isPointerLocked());
    // The null pointer is put back at the anchor after every motion, so each position is the
    // movement from the anchor; a motion at the anchor itself reports nothing.
    for (int step = 0; step < 100; ++step)
        peer.injectMouse(2, Point(53, 80));
    peer.injectMouse(2, Point(50, 60));
    EXPECT_EQ(window->callsStartingWith("mouse 2").size(), 100u);
    EXPECT_EQ(window->calls.back(), "mouse 2 (350,2060) button 0 clicks 0 wheel 0,0");
    EXPECT_EQ(peer.getPointerPosition(), Point(50, 60));

    // The release unlocks first: the pointer is back at the press, shown, and the next drag is
    // an ordinary one.
    peer.injectMouse(3, Point(50, 60), 1, 1);
    EXPECT_FALSE(window->isMouseLocked());
    EXPECT_FALSE(peer.isPointerLocked());
    EXPECT_EQ(peer.getPointerPosition(), Point(50, 60));
    peer.injectMouse(2, Point(51, 61));
    EXPECT_EQ(window->calls.back(), "mouse 2 (51,61) button 0 clicks 0 wheel 0,0");
}

TEST(Window, AReleasedShiftWithControlHeldGivesFourModifierCalls)
{
    const auto window = makeChild();
    peerOf(*window).injectModifiers(KeyCodes::shiftMask | KeyCodes::controlMask);
    window->calls.clear();
    peerOf(*window).injectModifiers(KeyCodes::controlMask);
    EXPECT_EQ(window->calls, (Calls{"key up 268435462 native 0", "key up 268435464 native 0",
                                    "key up 268435463 native 0", "key down 268435461 native 0"}));
}

TEST(Window, ALineFeedIsHandledWithoutACallAndAKeyWithoutCodeIsNot)
{
    const auto window = makeChild();
    NullWindowPeer& peer = peerOf(*window);
    EXPECT_TRUE(peer.injectKey(true, KeyCodes::lineFeed, 36));
    EXPECT_FALSE(peer.injectKey(true, 0, 36));
    EXPECT_TRUE(window->calls.empty());

    window->usesKeys = false;
    EXPECT_FALSE(peer.injectKey(true, KeyCodes::returnKey, 36));
    EXPECT_EQ(window->calls, Calls{"key down 13 native 36"});
}

TEST(Window, DroppedFilesReachOnlyAnInterestedWindow)
{
    const auto window = makeChild();
    Array<String> paths;
    paths.add("/tmp/kick.wav");
    paths.add("/tmp/a b.wav");
    EXPECT_TRUE(peerOf(*window).injectFilesDropped(Point(4, 5), paths));
    window->takesFiles = false;
    EXPECT_FALSE(peerOf(*window).injectFilesDropped(Point(6, 7), paths));
    EXPECT_EQ(window->calls, (Calls{"interested (4,5) [/tmp/kick.wav /tmp/a b.wav]",
                                    "dropped (4,5) [/tmp/kick.wav /tmp/a b.wav]",
                                    "interested (6,7) [/tmp/kick.wav /tmp/a b.wav]"}));
}

TEST(Window, ResizingToTheSameSizeIsReportedOnlyWhenForced)
{
    const auto window = makeChild();
    window->setSize(Point(200, 100));
    window->deliverResized(Point(200, 100), false);
    EXPECT_TRUE(window->calls.empty());
    window->deliverResized(Point(200, 100), true);
    window->setSize(Point(320, 0));
    peerOf(*window).injectResize(Point(90, 40));
    EXPECT_EQ(window->calls, (Calls{"resized (200,100)", "resized (320,1)", "resized (90,40)"}));
    EXPECT_EQ(window->getBounds(), Rectangle(0, 0, 90, 40));
}

TEST(Window, ParentGrowsByTheDifferenceOfTheChildsSizes)
{
    const auto window = makeChild(0, Rectangle(0, 0, 750, 175));
    window->resizeParent(Point(1100, 257));
    EXPECT_EQ(peerOf(*window).getParentSize(), Point(1100, 257));
    window->setSize(Point(1100, 257));
    window->resizeParent(Point(1000, 233));
    EXPECT_EQ(peerOf(*window).getParentSize(), Point(1000, 233));

    RecordingWindow topLevel(Rectangle(0, 0, 50, 50), 0, String(), nullptr);
    topLevel.resizeParent(Point(80, 80));
    EXPECT_EQ(peerOf(topLevel).getParentResizeCount(), 0);
}

TEST(Window, InvalidationIsCutToTheWindow)
{
    const auto window = makeChild();
    window->invalidate(Rectangle(190, -5, 20, 20));
    window->invalidate(Rectangle(300, 0, 5, 5));
    window->invalidate(Rectangle(10, 10, 0, 5));
    EXPECT_EQ(peerOf(*window).getInvalidatedRectangles().getCount(), 1);
    EXPECT_EQ(peerOf(*window).getInvalidatedRectangles()[0], Rectangle(190, 0, 10, 15));
}

TEST(Window, FramesPaintOnlyWindowsWithSomethingToShow)
{
    const auto idle = makeChild();
    const auto invalidated = makeChild();
    const auto exposed = makeChild();
    const auto animated = makeChild(WindowFlags::paintEveryFrame);
    Window::runFrame();  // the first frame shows every new window
    invalidated->invalidate(Rectangle(0, 0, 5, 5));
    peerOf(*exposed).injectExposed(Rectangle(0, 0, 5, 5));
    Window::runFrame();
    Window::runFrame();
    EXPECT_EQ(idle->paints, 1);
    EXPECT_EQ(invalidated->paints, 2);
    EXPECT_EQ(exposed->paints, 2);
    EXPECT_EQ(animated->paints, 3);
    for (RecordingWindow* window : {idle.get(), invalidated.get(), exposed.get(), animated.get()})
        EXPECT_EQ(window->frameTicks, 3);
}

namespace
{
// Deletes another window, or itself, from its frame tick; makes a new window from it once.
class ChurningWindow : public RecordingWindow
{
public:
    using RecordingWindow::RecordingWindow;
    std::unique_ptr<RecordingWindow>* victim = nullptr;
    std::unique_ptr<RecordingWindow>* newborn = nullptr;

    void frameTick() override
    {
        RecordingWindow::frameTick();
        if (victim != nullptr)
            victim->reset();
        if (newborn != nullptr && *newborn == nullptr)
            *newborn = makeChild();
    }
};
}  // namespace

TEST(Window, AFrameSkipsWindowsDeletedDuringItAndWaitsForNewOnes)
{
    std::unique_ptr<RecordingWindow> later, newborn;
    ChurningWindow first(Rectangle(0, 0, 10, 10), 0, String(), hostParent);
    later = makeChild();
    first.victim = &later;
    first.newborn = &newborn;
    Window::runFrame();
    EXPECT_EQ(first.frameTicks, 1);
    EXPECT_EQ(later, nullptr);
    ASSERT_NE(newborn, nullptr);
    EXPECT_EQ(newborn->frameTicks, 0);
    Window::runFrame();
    EXPECT_EQ(newborn->frameTicks, 1);
}

TEST(Window, AClosedWindowIgnoresEventsAndRequests)
{
    const auto window = makeChild();
    window->destroyNative();
    EXPECT_FALSE(window->isOpen());
    EXPECT_EQ(Window::getWindowCount(), 0);
    window->deliverMouseEvent(1, Point(1, 1), 1, 1, 0, 0);
    EXPECT_FALSE(window->deliverKey(true, 'a', 38));
    window->deliverModifiers(KeyCodes::shiftMask);
    window->deliverResized(Point(5, 5), true);
    window->setMouseLocked(true);
    window->invalidate(Rectangle(0, 0, 10, 10));
    window->setCursor(SystemCursor::crosshair);
    EXPECT_TRUE(window->calls.empty());
    EXPECT_FALSE(window->isMouseLocked());
    EXPECT_EQ(window->getNativeView(), nullptr);
    EXPECT_EQ(window->getImagePresenter(), nullptr);
}

namespace
{
// Records destroyNative, as a toolkit window does to drop its surfaces before the native side.
class TidyWindow : public RecordingWindow
{
public:
    using RecordingWindow::RecordingWindow;
    void destroyNative() override
    {
        calls.push_back("destroyNative");
        RecordingWindow::destroyNative();
    }
};
}  // namespace

TEST(Window, ANativeWindowDestroyedUnderneathClosesTheWindowThroughItsOverride)
{
    TidyWindow window(Rectangle(0, 0, 10, 10), 0, String(), hostParent);
    peerOf(window).injectDestroyed();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.calls, Calls{"destroyNative"});
}

namespace
{
// Deletes itself on its first key call.
class SelfDeletingWindow : public RecordingWindow
{
public:
    using RecordingWindow::RecordingWindow;
    std::vector<std::string>* record = nullptr;
    bool keyReleased(int key, int nativeKeyCode) override
    {
        record->push_back("key up " + std::to_string(key));
        delete this;
        (void)nativeKeyCode;
        return true;
    }
};
}  // namespace

TEST(Window, AWindowDeletedByAModifierCallHearsNoMore)
{
    std::vector<std::string> record;
    auto* window = new SelfDeletingWindow(Rectangle(0, 0, 10, 10), 0, String(), hostParent);
    window->record = &record;
    bool deleted = false;
    window->setDeletionFlag(&deleted);
    window->deliverModifiers(0);
    EXPECT_TRUE(deleted);
    EXPECT_EQ(record, Calls{"key up 268435462"});
}
