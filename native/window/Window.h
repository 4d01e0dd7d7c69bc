#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

class Image;
class ImagePresenter;
class RenderingContext;
class WindowPeer;

// The platform-neutral face of one native drawing area: a top-level window of the framework's
// own (kind 1, for a stand-alone program) or a child of a host's window (kind 2, a plug-in
// editor). It turns native events into calls of its virtual operations, and the toolkit's
// requests into calls of its WindowPeer (native/window/WindowPeer.h), which the backend linked
// into the program supplies (X11, or the null backend of display-free tests).
//
// The frame loop: every live window, in creation order, gets on each tick of the VSyncTimer
// (16 ms, fired from MessagePump::pump, which the host's idle call drives; see UiThread.h):
//   1. frameTick();
//   2. paint(), if the window draws through OpenGL (every frame), paints every frame
//      (WindowFlags::paintEveryFrame), or had an area invalidated or exposed since its last
//      paint.
//
// Coordinates: physical pixels of the window, origin at its top-left corner, y downwards. The
// pointer positions that reach mouseEvent are scaled by the backing scale when
// WindowFlags::highResolution is set (on X11 the scale is always 1).
//
// Mouse event types and buttons (mouseEvent):
//   type 0 wheel (deltaX, deltaY: +1 a notch up or left, -1 down or right), 1 press, 2 move or
//   drag, 3 release, 4 entered, 5 exited; button 1 left, 2 other (middle), 4 right, 0 for
//   the types other than press and release. A release always has click count 1.
//
// Subclasses: the constructor and the destructor run Window's own createNative and
// destroyNative (C++ reaches no override from there). A subclass that overrides destroyNative
// to release what it made from the rendering context (surfaces, textures) must do the same in
// its own destructor; destroyNative is also called when the platform destroys the native window
// underneath (a host that destroys its window before closing the editor), and then the override
// runs.
//
// Thread contract: main thread for everything, that is whichever host thread is calling into the
// user interface at the moment (see UiThread.h). Nothing here locks. A window may delete itself
// (or any window) from inside any of its virtual operations; no code of the window's own touches
// it after such a call returns.
class Window
{
public:
    // Creates the native window: see createNative. bounds: position (in the parent for a child,
    // on the screen for a top-level window) and size in pixels. flags: WindowFlags bits. parent:
    // the host's window (on X11 its id, cast to a pointer), or null for a top-level window.
    Window(const Rectangle& bounds, int flags, const String& title, void* parent);
    // Sets the deletion flag, if one was given, then runs Window::destroyNative.
    virtual ~Window();

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    // ---- What the platform tells the window (main thread; the defaults do nothing) ----

    // The backing scale (getBackingScale) changed.
    virtual void backingScaleChanged() {}
    // The user asked to close a top-level window (its close button). The window has already left
    // the frame loop and the count of open top-level windows; it is usually deleted now.
    virtual void closeRequested() {}
    // Whether files dropped at position would be taken; asked on each drop before filesDropped.
    virtual bool isInterestedInFiles(const Point& position, const Array<String>& paths)
    {
        (void)position;
        (void)paths;
        return false;
    }
    // Files dropped at position: absolute paths, UTF-8.
    virtual void filesDropped(const Point& position, const Array<String>& paths)
    {
        (void)position;
        (void)paths;
    }
    // A pointer event; see the table above.
    virtual void mouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY)
    {
        (void)type, (void)position, (void)button, (void)clickCount, (void)deltaX, (void)deltaY;
    }
    // The pointer's gesture was taken away at position (another client grabbed the pointer, or
    // the window was hidden): buttons that are down will not see their release.
    virtual void mouseLeft(Point position) { (void)position; }
    // The window gained (true) or lost (false) the keyboard focus of the window system.
    virtual void activeChanged(bool active) { (void)active; }
    // The client size changed (getClientSize); the rendering context already has the new size.
    virtual void resized() {}
    // Once per frame, before paint.
    virtual void frameTick() {}
    // Draws the window; see the frame loop above. A window with a rendering context brackets its
    // drawing with RenderingContext::beginFrame and endFrame; without one it shows its pixels
    // through an ImageSurface over getImagePresenter.
    virtual void paint() {}
    // A key went down or up: key is a framework code (native/window/KeyCodes.h), nativeKeyCode
    // the platform's code of the key (an X keycode; 0 for modifier changes). Answers whether the
    // key was used.
    virtual bool keyPressed(int key, int nativeKeyCode)
    {
        (void)key, (void)nativeKeyCode;
        return false;
    }
    virtual bool keyReleased(int key, int nativeKeyCode)
    {
        (void)key, (void)nativeKeyCode;
        return false;
    }

    // Makes the native window (WindowPeer::create) and, with WindowFlags::openGL, its rendering
    // context; joins the frame loop. The backing scale starts at the platform's. When no
    // rendering context can be made, the window's flags lose WindowFlags::openGL and gain
    // WindowFlags::imageSurface, so the toolkit shows it through the image put. When the
    // platform cannot make a window at all, the window stays closed (isOpen false) and every
    // request to it does nothing. Answers isOpen.
    virtual bool createNative(const Rectangle& bounds, int flags, const String& title, void* parent);
    // Leaves the frame loop, releases the pointer lock, deletes the rendering context (its
    // listeners hear of it first) and then the native window. From then on the window ignores
    // native events and requests. Calling it again does nothing.
    virtual void destroyNative();

    // ---- What the toolkit asks of the window (main thread) ----

    // The WindowFlags bits in effect (see createNative for the one change made to them).
    int getFlags() const { return flags; }
    // WindowPeer::topLevelKind (1) or childKind (2).
    int getKind() const { return kind; }
    // Whether the native window exists.
    bool isOpen() const { return peer != nullptr; }
    // Physical pixels per unit of the window system's coordinates; 1.0 on X11.
    double getBackingScale() const { return backingScale; }
    // The context of a window drawing through OpenGL, or null. Owned by the window.
    RenderingContext* getRenderingContext() const { return renderingContext; }
    // The window's image put, for Surface::create with kind 2; null while closed. Owned by the
    // window's native side.
    ImagePresenter* getImagePresenter() const;
    // The client size in physical pixels; (0, 0) while closed.
    Point getClientSize() const { return size; }
    // Position (in the parent for a child, on the screen for a top-level window) and size.
    Rectangle getBounds() const;
    // The screen position of the window's top-left pixel.
    Point getScreenPosition() const;
    // Resizes the window, keeping its position. The new size is in effect at once: resized()
    // follows before the call returns, if the size changed.
    void setSize(const Point& newSize);
    // Moves and resizes the window; resized() as with setSize.
    void setBounds(const Rectangle& bounds);
    // Asks for area (window pixels; cut to the window, nothing for an empty result) to be drawn
    // again in the next frame.
    void invalidate(const Rectangle& area);
    // The platform's handle of the native window (on X11 its window id), or null while closed.
    void* getNativeView() const;
    // Shows a system cursor (SystemCursor index) over the window.
    void setCursor(int systemCursor);
    // Shows picture as the cursor over the window, hot spot at hotSpot of the picture.
    void setCursorImage(const Image& picture, const Point& hotSpot);
    // The relative pointer mode of a control drag. Locking hides the pointer and pins it where
    // the last press was; each drag then reports the press position plus the movement added up
    // since the lock, so a control can be dragged without limit, past the screen's edge.
    // Unlocking puts the pointer back at the press position and shows it. A release unlocks
    // before it is delivered. Locking while locked, or unlocking while unlocked, does nothing.
    void setMouseLocked(bool locked);
    bool isMouseLocked() const { return mouseLocked; }
    // For a child window that changes its own size to newSize: resizes the host's window around
    // it by the same difference, for hosts that do not follow the editor's size themselves.
    void resizeParent(const Point& newSize);
    void setTitle(const String& title);
    // The title; empty while closed.
    String getTitle() const;
    // flag (not owned) is set to true when the window is deleted, so that a caller can tell
    // whether a call it made deleted it. Null clears it. One flag at a time.
    void setDeletionFlag(bool* flag) { deletionFlag = flag; }
    // The native window, for its backend and for tests of the null backend; null while closed.
    WindowPeer* getPeer() const { return peer; }

    // The live windows (joined the frame loop and not yet left it), in creation order.
    static int getWindowCount();
    static Window* getWindow(int index);
    // Top-level windows whose native window exists and whose close button was not clicked.
    static int getOpenTopLevelCount();
    // One tick of the frame loop over all live windows; the VSyncTimer runs it every 16 ms.
    // Windows created during the tick wait for the next one; windows deleted during it are left
    // out from then on.
    static void runFrame();

    // ---- The platform's side: backends (and tests, through the null backend) call these ----
    // Each does nothing while the window is closed. Positions are the platform's, before the
    // high-resolution scaling.

    // A pointer event (see the table above); buttons and click counts as mouseEvent takes them.
    // A press is remembered as the anchor of a pointer lock. A release first unlocks the pointer
    // and always reports click count 1. A move while locked reports the press position plus the
    // movement added up since the lock. Exit first shows the arrow cursor.
    void deliverMouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY);
    // A key went down or up; key is a framework code, 0 for a key without one. Answers false
    // for 0 (the key goes on to the host), true without a call for a line feed, and otherwise
    // what keyPressed or keyReleased answers.
    bool deliverKey(bool down, int key, int nativeKeyCode);
    // The modifiers now held, an or of KeyCodes' masks: four calls, for Option, Command, Shift
    // and Control in this order, keyPressed(code, 0) for each one held and keyReleased(code, 0)
    // for each one not.
    void deliverModifiers(uint32_t modifierMask);
    // Files dropped at position: filesDropped, if isInterestedInFiles answers true. Answers
    // whether they were taken.
    bool deliverFilesDropped(const Point& position, const Array<String>& paths);
    // The platform's backing scale; backingScaleChanged if it differs from the one stored.
    void deliverBackingScale(double scale);
    // The client size is now newSize: stored, given to the rendering context, and resized(),
    // when it differs from the one stored or force is true.
    void deliverResized(const Point& newSize, bool force);
    // The close button of a top-level window: leaves the frame loop and the open count, then
    // closeRequested.
    void deliverCloseRequest();
    void deliverActiveChanged(bool active);
    // The pointer's gesture was taken away at position; see mouseLeft.
    void deliverMouseLeft(Point position);
    // The window system lost area of the window: the window is painted in the next frame.
    void deliverExposed(const Rectangle& area);
    // The native window was destroyed by someone else: destroyNative (the override, if any).
    void deliverNativeDestroyed();

private:
    class DeletionWatch;

    // The position as mouseEvent gets it: scaled with the high-resolution flag.
    Point toWindowPosition(const Point& position) const;
    // The OpenGL context over the peer's GL drawable, with the window's size and swap interval;
    // null when the peer has no drawable or GL cannot serve.
    RenderingContext* createRenderingContext();
    // Whether the frame loop draws the window now; clears the pending paint.
    bool takePaintDue();
    void leaveFrameLoop();

    int32_t flags = 0;
    int32_t kind = 0;
    double backingScale = 1.0;
    RenderingContext* renderingContext = nullptr;  // owned
    WindowPeer* peer = nullptr;                    // owned; null while closed
    Point size;                                    // client size, physical pixels
    bool paintPending = false;                     // invalidated or exposed since the last paint
    bool countedAsOpenTopLevel = false;
    bool* deletionFlag = nullptr;
    uint64_t joinedFrame = 0;  // the frame number when it joined: a window made during frame n waits for n + 1

    // Pointer lock: the press position the drags are reported from, and the movement since.
    Point lastMouseDownPosition;
    bool mouseLocked = false;
    Point lockedMovement;
};

}  // namespace q1framework
