#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/RectangleList.h"
#include "media/image/Image.h"
#include "native/window/WindowPeer.h"
#include "render/region/Region.h"
#include "render/surface/ImagePresenter.h"

#include <cstdint>

namespace q1framework
{

// The native window of the null backend (library native-null): a window with no display behind
// it, for tests of the toolkit and of Window. It has a size, a position and a parent (any
// pointer, kept as given), shows presented pixels in an image of its own (the "screen"), and
// records what was asked of it. Events are injected by the test and go through the same
// Window::deliver* entry points that the X11 backend calls; they are delivered at once, so
// dispatchNativeEvents has nothing to do.
//
// It has no GL drawable: a window created with WindowFlags::openGL takes
// WindowFlags::imageSurface and presents through this peer.
//
// The pointer lock pins a pointer of its own: while locked, each injected motion is the
// movement from the anchor, after which the pointer is back at the anchor (counted as a warp).
//
// Thread contract: main thread, like the Window.
class NullWindowPeer : public WindowPeer, public ImagePresenter
{
public:
    // The null backend's peer of window; null while the window is closed.
    static NullWindowPeer* of(const Window& window);

    NullWindowPeer(Window& window, const Rectangle& bounds, int flags, const String& title, void* parent);

    int getKind() const override { return kind; }
    Rectangle getBounds() const override { return bounds; }
    // Also resizes the screen, which then counts as lost entirely.
    void setBounds(const Rectangle& bounds) override;
    // The bounds' position, also for a child (the parent counts as sitting at the screen's origin).
    Point getScreenPosition() const override { return bounds.getPosition(); }
    double getBackingScale() const override { return backingScale; }
    void invalidate(const Rectangle& area) override;
    void setTitle(const String& title) override { this->title = title; }
    String getTitle() const override { return title; }
    void setCursor(int systemCursor) override;
    void setCursorImage(const Image& picture, const Point& hotSpot) override;
    void setPointerLocked(bool locked, const Point& anchor) override;
    bool takeLockedMovement(const Point& position, Point& movement) override;
    void resizeParent(const Point& newSize) override;
    GLDrawable* getGLDrawable() override { return nullptr; }
    ImagePresenter& getImagePresenter() override { return *this; }
    // The peer itself, as an identity.
    void* getNativeHandle() const override { return const_cast<NullWindowPeer*>(this); }

    // Copies the rectangles (cut to the buffer and the screen), and the lost area, onto the
    // screen; records the cut rectangles as the last presented ones.
    void presentPixels(const uint8_t* pixels, int stride, const Point& size, const Rectangle* rectangles,
                       int count) override;

    // ---- What the window was asked ----

    // The parent given at creation; null for a top-level window.
    void* getParent() const { return parent; }
    int getFlags() const { return flags; }
    // Every rectangle passed to invalidate since the last clearInvalidated, in order.
    const RectangleList& getInvalidatedRectangles() const { return invalidated; }
    void clearInvalidated() { invalidated.clear(); }
    // The system cursor shown, or -1 while a picture is the cursor.
    int getCursor() const { return cursor; }
    // The cursor picture and its hot spot; null unless a picture is the cursor.
    const Image& getCursorImage() const { return cursorImage; }
    Point getCursorHotSpot() const { return cursorHotSpot; }
    // Whether the pointer is locked, and so hidden.
    bool isPointerLocked() const { return pointerLocked; }
    // Where the pointer is: the anchor while locked, the last injected position otherwise.
    Point getPointerPosition() const { return pointer; }
    // Times the pointer was put back at the anchor.
    int getWarpCount() const { return warpCount; }
    // The parent's size; it starts at this window's size and follows resizeParent.
    Point getParentSize() const { return parentSize; }
    int getParentResizeCount() const { return parentResizeCount; }

    // The window's pixels as presented: the bytes of the presented buffers, as they were.
    const Image& getScreen() const { return screen; }
    // Calls of presentPixels so far.
    int getPresentCount() const { return presentCount; }
    // The rectangles of the last presentPixels call, cut to the buffer and the screen; empty
    // ones left out.
    const RectangleList& getLastPresentedRectangles() const { return lastPresented; }
    // The area lost since the last present (exposed, resized, or never shown).
    const Region& getLostRegion() const { return lost; }

    // ---- Events, delivered at once through the Window's entry points ----
    // Each may delete the window, and with it this peer: a test must not use the peer after an
    // injection that closed the window.

    void injectMouse(int type, const Point& position, int button = 0, int clickCount = 0, float deltaX = 0.0f,
                     float deltaY = 0.0f);
    // A key going down or up, as a framework code; answers what Window::deliverKey answers.
    bool injectKey(bool down, int key, int nativeKeyCode = 0);
    // The modifiers now held, as KeyCodes' masks.
    void injectModifiers(uint32_t modifierMask);
    void injectBackingScale(double scale);
    bool injectFilesDropped(const Point& position, const Array<String>& paths);
    // The window was resized from outside (by the user or the window manager): new bounds and
    // screen, and the window hears of it.
    void injectResize(const Point& newSize);
    void injectExposed(const Rectangle& area);
    void injectActiveChanged(bool active);
    void injectMouseLeft(const Point& position);
    void injectCloseRequest();
    // The native window was destroyed from outside: the window closes, and this peer is deleted.
    void injectDestroyed();

private:
    void resetScreen();

    Window& window;
    int kind;
    int flags;
    Rectangle bounds;
    String title;
    void* parent;
    double backingScale = 1.0;

    RectangleList invalidated;
    int cursor = 0;
    Image cursorImage;
    Point cursorHotSpot;
    bool pointerLocked = false;
    Point pointer;
    Point anchor;
    int warpCount = 0;
    Point parentSize;
    int parentResizeCount = 0;

    Image screen;
    Region lost;
    RectangleList lastPresented;
    RectangleList lostRectangles;
    int presentCount = 0;
};

}  // namespace q1framework
