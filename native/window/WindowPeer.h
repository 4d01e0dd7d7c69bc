#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

class GLDrawable;
class Image;
class ImagePresenter;
class String;
class Window;

// What a Window asks of the platform: the native window behind it. One backend is linked into
// each program, chosen by the build, and supplies create and dispatchNativeEvents:
//   native-x11  (native/x11/)  windows of the X server, through a display connection of the
//                              framework's own;
//   native-null (native/null/) windows in memory, for tests that need no display.
// What the platform tells the window goes the other way, through Window's deliver* entry
// points, which end in Window's virtual operations.
//
// Coordinates: pixels, y downwards. A window's own positions (pointer, invalidation, anchors) are
// relative to its top-left corner; bounds are relative to the parent for a child window and to
// the screen for a top-level one.
//
// Thread contract: main thread (see native/window/UiThread.h). A peer belongs to its Window,
// which deletes it in Window::destroyNative.
class WindowPeer
{
public:
    // A top-level window of the framework's own.
    static constexpr int topLevelKind = 1;
    // A child of a parent window given by the host (a plug-in editor).
    static constexpr int childKind = 2;

    // Makes the native window of window and shows it: a child of parent when parent is not null
    // (on X11 the parent window's id, cast to a pointer), otherwise a top-level window with the
    // title. With WindowFlags::openGL in flags the backend also tries to make a GL drawable for
    // it. bounds: position and size; a side below 1 counts as 1. Null when the platform cannot
    // make a window (no display, a parent that does not exist); the Window then stays closed.
    static WindowPeer* create(Window& window, const Rectangle& bounds, int flags, const String& title, void* parent);
    // Delivers every native event waiting for the framework's windows, in order, to their
    // Windows. Events for windows that are gone are dropped. Returns at once when none wait.
    static void dispatchNativeEvents();

    // Destroys the native window. Events that are still on their way to it are dropped.
    virtual ~WindowPeer() = default;

    // topLevelKind or childKind.
    virtual int getKind() const = 0;
    // Position (in the parent, or on the screen) and size in pixels.
    virtual Rectangle getBounds() const = 0;
    // Moves and resizes the native window; a side below 1 counts as 1. For a top-level window
    // the window manager may adjust it, which then arrives as a resize.
    virtual void setBounds(const Rectangle& bounds) = 0;
    // The screen position of the window's top-left pixel.
    virtual Point getScreenPosition() const = 0;
    // Physical pixels per unit of the window system's coordinates (1.0 on X11).
    virtual double getBackingScale() const = 0;
    // Records that area (window pixels, already cut to the window) is to be drawn again. The
    // drawing itself happens in the next frame of the Window.
    virtual void invalidate(const Rectangle& area) = 0;
    virtual void setTitle(const String& title) = 0;
    virtual String getTitle() const = 0;
    // Shows a system cursor over the window (an index of SystemCursor; unknown ones show the
    // arrow).
    virtual void setCursor(int systemCursor) = 0;
    // Shows picture (premultiplied pixels) as the cursor, with its hot spot at hotSpot of the
    // picture. A null picture shows the arrow.
    virtual void setCursorImage(const Image& picture, const Point& hotSpot) = 0;
    // locked: hides the pointer and keeps it at anchor, so that every movement can be told
    // apart from the anchor and the pointer never reaches the screen's edge. Unlocked: puts the
    // pointer at anchor and shows it again.
    virtual void setPointerLocked(bool locked, const Point& anchor) = 0;
    // While locked, for each pointer motion at position (window pixels): true with the
    // movement since the last one in *movement, or false when the motion is only the pointer
    // being put back at the anchor (then there is nothing to report).
    virtual bool takeLockedMovement(const Point& position, Point& movement) = 0;
    // For a child window whose owner grows or shrinks it to newSize: resizes the parent window
    // by the same difference (its size plus newSize minus this window's size). Nothing for a
    // top-level window or without a parent.
    virtual void resizeParent(const Point& newSize) = 0;
    // The GL drawable made for the window with WindowFlags::openGL, or null (not asked for, or
    // the platform cannot make one). Owned by the peer.
    virtual GLDrawable* getGLDrawable() = 0;
    // The image put of the window, for ImageSurface. Owned by the peer; never null.
    virtual ImagePresenter& getImagePresenter() = 0;
    // The platform's handle of the native window (an X window id on X11), as a pointer.
    virtual void* getNativeHandle() const = 0;
};

}  // namespace q1framework
