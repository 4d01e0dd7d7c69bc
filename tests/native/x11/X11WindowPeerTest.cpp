// X11 windows as hosts and stand-alone programs use them: a child inside a host's window, a
// top-level window, their sizes, and what happens when either side goes away first.

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "RecordingWindow.h"
#include "TestDisplay.h"

#include "native/window/WindowFlags.h"
#include "native/x11/X11Connection.h"
#include "native/x11/X11WindowPeer.h"
#include "render/gl/OpenGLContext.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <memory>

using namespace q1framework;

namespace
{
using Calls = std::vector<std::string>;

void* asParent(::Window window)
{
    return reinterpret_cast<void*>(static_cast<uintptr_t>(window));
}

::Window xWindowOf(const q1framework::Window& window)
{
    return static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView()));
}
}  // namespace

TEST(X11WindowPeer, AChildWindowSitsInsideTheHostsWindow)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(100, 80, 800, 400));
    RecordingWindow editor(Rectangle(0, 0, 750, 175), 0, String(), asParent(host));
    ASSERT_TRUE(editor.isOpen());
    EXPECT_EQ(editor.getKind(), WindowPeer::childKind);
    EXPECT_EQ(test.getParent(xWindowOf(editor)), host);
    EXPECT_EQ(test.getGeometry(xWindowOf(editor)), Rectangle(0, 0, 750, 175));
    EXPECT_EQ(editor.getClientSize(), Point(750, 175));
    EXPECT_EQ(editor.getScreenPosition(), Point(100, 80));
}

TEST(X11WindowPeer, AParentThatIsNoWindowLeavesTheWindowClosed)
{
    TestDisplay test;
    RecordingWindow editor(Rectangle(0, 0, 100, 100), WindowFlags::openGL, String(), asParent(0x7ffffff));
    EXPECT_FALSE(editor.isOpen());
    EXPECT_EQ(editor.getNativeView(), nullptr);
    EXPECT_EQ(editor.getFlags(), WindowFlags::imageSurface);
}

TEST(X11WindowPeer, ATopLevelWindowHasItsTitleAndClosesThroughTheWindowManagerProtocol)
{
    TestDisplay test;
    RecordingWindow window(Rectangle(10, 10, 200, 100), 0, "Kelvane", nullptr);
    ASSERT_TRUE(window.isOpen());
    EXPECT_EQ(window.getKind(), WindowPeer::topLevelKind);
    EXPECT_EQ(test.getParent(xWindowOf(window)), DefaultRootWindow(test.get()));
    char* name = nullptr;
    ASSERT_TRUE(XFetchName(test.get(), xWindowOf(window), &name));
    EXPECT_STREQ(name, "Kelvane");
    XFree(name);

    // What a window manager sends when its close button is clicked.
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = xWindowOf(window);
    message.xclient.message_type = XInternAtom(test.get(), "WM_PROTOCOLS", False);
    message.xclient.format = 32;
    message.xclient.data.l[0] = static_cast<long>(XInternAtom(test.get(), "WM_DELETE_WINDOW", False));
    XSendEvent(test.get(), xWindowOf(window), False, NoEventMask, &message);
    EXPECT_TRUE(test.pumpUntil([&] { return !window.calls.empty(); }));
    EXPECT_EQ(window.calls, Calls{"close"});
    EXPECT_EQ(q1framework::Window::getOpenTopLevelCount(), 0);
}

TEST(X11WindowPeer, ResizesFromEitherSideReachTheWindow)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 800, 400));
    RecordingWindow editor(Rectangle(0, 0, 750, 175), 0, String(), asParent(host));
    editor.setSize(Point(500, 117));
    EXPECT_EQ(editor.calls, Calls{"resized (500,117)"});
    test.settle();
    EXPECT_EQ(test.getGeometry(xWindowOf(editor)), Rectangle(0, 0, 500, 117));

    // The host resizes the editor's window itself.
    XResizeWindow(test.get(), xWindowOf(editor), 640, 150);
    EXPECT_TRUE(test.pumpUntil([&] { return editor.callsStartingWith("resized").size() == 2; }));
    EXPECT_EQ(editor.callsStartingWith("resized"), (Calls{"resized (500,117)", "resized (640,150)"}));
    EXPECT_EQ(editor.getClientSize(), Point(640, 150));
}

TEST(X11WindowPeer, AGrowingEditorGrowsTheHostsWindowByTheSameAmount)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 790, 215));
    RecordingWindow editor(Rectangle(20, 20, 750, 175), 0, String(), asParent(host));
    editor.resizeParent(Point(1100, 257));
    test.settle();
    EXPECT_EQ(test.getGeometry(host).getSize(), Point(1140, 297));
}

TEST(X11WindowPeer, AnOpenGLWindowGetsASingleBufferedContextOfItsSize)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 800, 400));
    RecordingWindow editor(Rectangle(0, 0, 750, 175), WindowFlags::openGL | WindowFlags::highResolution, String(),
                           asParent(host));
    ASSERT_NE(editor.getRenderingContext(), nullptr);
    EXPECT_EQ(editor.getFlags(), WindowFlags::openGL | WindowFlags::highResolution);
    auto& context = static_cast<OpenGLContext&>(*editor.getRenderingContext());
    EXPECT_FALSE(context.isDoubleBuffered());
    EXPECT_EQ(context.getSize(), Point(750, 175));
    // Set up and released: no context is current on this thread between host calls.
    EXPECT_EQ(OpenGLContext::getCurrent(), nullptr);
    editor.setSize(Point(300, 70));
    EXPECT_EQ(context.getSize(), Point(300, 70));
}

TEST(X11WindowPeer, EventsOnTheirWayToAClosedWindowAreDropped)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 400, 300));
    auto editor = std::make_unique<RecordingWindow>(Rectangle(0, 0, 400, 300), 0, String(), asParent(host));
    test.settle();
    editor->calls.clear();
    // Input queued on the framework's connection, not yet delivered, when the window closes.
    test.movePointer(50, 50);
    test.click(1);
    XSync(X11Connection::get()->getDisplay(), False);
    editor->destroyNative();
    test.settle();
    EXPECT_TRUE(editor->calls.empty());

    // The same when the Window object itself is gone.
    editor = std::make_unique<RecordingWindow>(Rectangle(0, 0, 400, 300), 0, String(), asParent(host));
    test.settle();
    test.click(1);
    test.movePointer(60, 60);
    XSync(X11Connection::get()->getDisplay(), False);
    editor.reset();
    test.settle();
}

TEST(X11WindowPeer, AHostThatDestroysItsWindowFirstClosesTheEditor)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 400, 300));
    auto editor = std::make_unique<RecordingWindow>(Rectangle(0, 0, 400, 300), WindowFlags::openGL, String(),
                                                    asParent(host));
    test.settle();
    test.destroyHostWindow(host);
    EXPECT_TRUE(test.pumpUntil([&] { return !editor->isOpen(); }));
    EXPECT_EQ(editor->getRenderingContext(), nullptr);
    editor.reset();
    test.settle();
}

namespace
{
// Deletes itself when the button goes up, as a window with a close button would.
class ClosingOnRelease : public RecordingWindow
{
public:
    using RecordingWindow::RecordingWindow;
    void mouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY) override
    {
        RecordingWindow::mouseEvent(type, position, button, clickCount, deltaX, deltaY);
        if (type == 3)
            delete this;
    }
};
}  // namespace

TEST(X11WindowPeer, AWindowMayDeleteItselfFromItsOwnEvent)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 400, 300));
    bool gone = false;
    auto* window = new ClosingOnRelease(Rectangle(0, 0, 400, 300), 0, String(), asParent(host));
    window->setDeletionFlag(&gone);
    test.settle();
    test.movePointer(30, 30);
    test.click(1);
    test.movePointer(40, 40);
    EXPECT_TRUE(test.pumpUntil([&] { return gone; }));
    test.settle();
    EXPECT_EQ(X11Connection::get(), nullptr);
}
