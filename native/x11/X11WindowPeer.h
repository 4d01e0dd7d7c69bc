#pragma once

#include "foundation/string/String.h"
#include "native/window/ClickCounter.h"
#include "native/window/WindowPeer.h"

#include <X11/Xlib.h>

namespace q1framework
{

class X11Connection;
class X11DragAndDrop;
class X11GLDrawable;
class X11ImagePresenter;

// The native window of the X11 backend (library native-x11): an X window on the framework's own
// connection (X11Connection), either top-level (kind 1, with a title and a close button through
// WM_DELETE_WINDOW) or a child of a host's window (kind 2). A window asked to draw through
// OpenGL gets a GLX visual, its own colormap, and a GL drawable; if GLX cannot serve, it is made
// as a plain window and has none.
//
// Events become the Window's entry points:
//   buttons 1, 2, 3 -> presses and releases of 1, 2, 4, with click counts from ClickCounter;
//   buttons 4, 5, 6, 7 -> wheel events of (0, +1), (0, -1), (+1, 0), (-1, 0);
//   motion -> type 2; crossing in and out -> 4 and 5, and a crossing because another client
//   grabbed the pointer -> mouseLeft; unmapping -> mouseLeft;
//   keys -> framework codes (X11Keys), modifier keys -> the four modifier calls;
//   focus -> activeChanged; exposure -> repaint and put again; a new size -> resized;
//   XDND drops -> filesDropped (X11DragAndDrop); WM_DELETE_WINDOW -> closeRequested;
//   the X window destroyed by someone else (a host that destroys its window first) -> the
//   Window's destroyNative, after which the X window is not touched again.
//
// The relative pointer mode: while locked, the pointer shows the invisible cursor and is warped
// back to the anchor after each motion away from it; each warp comes back as one motion at the
// anchor, which is counted and taken as a reset rather than a movement.
//
// The screen position is that of the last pointer event (x_root - x), asked of the server only
// before the first one.
//
// Thread contract: main thread (see native/window/UiThread.h).
class X11WindowPeer : public WindowPeer
{
public:
    // The peer of a new X window; null without a display, or when parent is given and is not a
    // window of the display.
    static X11WindowPeer* create(Window& window, const Rectangle& bounds, int flags, const String& title, ::Window parent);
    ~X11WindowPeer() override;

    ::Window getXWindow() const { return xWindow; }
    // One event of the window, from X11Connection::dispatchEvents. It may delete the Window and
    // this peer with it; nothing of the peer is touched after the delivery to the Window.
    void handleEvent(XEvent& event);

    int getKind() const override { return kind; }
    Rectangle getBounds() const override { return bounds; }
    void setBounds(const Rectangle& bounds) override;
    Point getScreenPosition() const override;
    double getBackingScale() const override { return 1.0; }
    // Nothing to tell the server: the Window paints in its next frame.
    void invalidate(const Rectangle& area) override { (void)area; }
    void setTitle(const String& title) override;
    String getTitle() const override { return title; }
    void setCursor(int systemCursor) override;
    void setCursorImage(const Image& picture, const Point& hotSpot) override;
    void setPointerLocked(bool locked, const Point& anchor) override;
    bool takeLockedMovement(const Point& position, Point& movement) override;
    void resizeParent(const Point& newSize) override;
    GLDrawable* getGLDrawable() override;
    ImagePresenter& getImagePresenter() override;
    void* getNativeHandle() const override;

    // The image put, for tests that choose between its two paths.
    X11ImagePresenter& getX11ImagePresenter() { return *presenter; }

private:
    X11WindowPeer(Window& window, X11Connection& connection, const Rectangle& bounds, int flags, const String& title,
                  ::Window parent);
    // Makes the X window with visual (the default one when null); None on failure.
    ::Window createXWindow(Visual* visual, int depth);
    void showCursor(Cursor cursor);
    void warpTo(const Point& position);
    // Keeps the screen origin of a pointer event.
    void noteScreenOrigin(int x, int y, int rootX, int rootY);

    void handleButton(const XButtonEvent& event, bool pressed);
    void handleMotion(const XMotionEvent& event);
    void handleCrossing(const XCrossingEvent& event);
    void handleKey(XKeyEvent& event, bool pressed);
    void handleConfigure(const XConfigureEvent& event);
    void handleClientMessage(const XClientMessageEvent& message);

    Window& window;
    X11Connection& connection;
    Display* display;
    int kind;
    Rectangle bounds;
    String title;
    ::Window parent;           // the host's window, or the root for a top-level window
    ::Window xWindow = None;
    Colormap colormap = None;  // of a GL visual; None with the default visual
    X11GLDrawable* glDrawable = nullptr;
    X11ImagePresenter* presenter = nullptr;
    X11DragAndDrop* dragAndDrop = nullptr;
    bool destroyedByOthers = false;

    Cursor cursor;                 // the cursor the window shows when unlocked
    Cursor pictureCursor = None;   // owned, when a picture is the cursor
    ClickCounter clickCounter;
    Point lastPointer;             // the last pointer position the window saw
    mutable Point screenOrigin;
    mutable bool screenOriginKnown = false;

    bool pointerLocked = false;
    Point lockAnchor;
    int pendingWarps = 0;          // warps whose motion has not arrived yet
};

}  // namespace q1framework
