#include "native/x11/X11WindowPeer.h"

#include "media/image/Image.h"
#include "native/window/SystemCursor.h"
#include "native/window/WindowFlags.h"
#include "native/x11/X11Connection.h"
#include "native/x11/X11Cursors.h"
#include "native/x11/X11DragAndDrop.h"
#include "native/x11/X11GLDrawable.h"
#include "native/x11/X11ImagePresenter.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <cstring>

namespace q1framework
{

namespace
{
constexpr long eventMask = ExposureMask | StructureNotifyMask | KeyPressMask | KeyReleaseMask | ButtonPressMask
                           | ButtonReleaseMask | PointerMotionMask | EnterWindowMask | LeaveWindowMask
                           | FocusChangeMask;

Rectangle atLeastOnePixel(const Rectangle& bounds)
{
    return Rectangle(bounds.x, bounds.y, std::max(bounds.w, 1), std::max(bounds.h, 1));
}

bool isWindowOf(X11Connection& connection, ::Window window)
{
    X11Connection::ErrorTrap trap(connection);
    XWindowAttributes attributes;
    const Status status = XGetWindowAttributes(connection.getDisplay(), window, &attributes);
    return !trap.failed() && status != 0;
}
}  // namespace

WindowPeer* WindowPeer::create(Window& window, const Rectangle& bounds, int flags, const String& title, void* parent)
{
    return X11WindowPeer::create(window, bounds, flags, title, static_cast<::Window>(reinterpret_cast<uintptr_t>(parent)));
}

void WindowPeer::dispatchNativeEvents()
{
    X11Connection::dispatchEvents();
}

X11WindowPeer* X11WindowPeer::create(Window& window, const Rectangle& bounds, int flags, const String& title,
                                     ::Window parent)
{
    X11Connection* connection = X11Connection::acquire();
    if (connection == nullptr)
        return nullptr;
    if (parent != None && !isWindowOf(*connection, parent))
    {
        X11Connection::release();
        return nullptr;
    }
    auto* peer = new X11WindowPeer(window, *connection, bounds, flags, title, parent);
    if (peer->xWindow != None)
        return peer;
    delete peer;
    return nullptr;
}

X11WindowPeer::X11WindowPeer(Window& owner, X11Connection& windowConnection, const Rectangle& initialBounds,
                             int flags, const String& initialTitle, ::Window parentWindow)
    : window(owner), connection(windowConnection), display(windowConnection.getDisplay()),
      kind(parentWindow != None ? childKind : topLevelKind), bounds(atLeastOnePixel(initialBounds)),
      title(initialTitle), parent(parentWindow != None ? parentWindow : windowConnection.getRoot()),
      cursor(windowConnection.getCursors().getSystemCursor(SystemCursor::arrow))
{
    const int screen = connection.getScreen();
    Visual* visual = DefaultVisual(display, screen);
    int depth = DefaultDepth(display, screen);
    if ((flags & WindowFlags::openGL) != 0)
    {
        bool doubleBuffered = false;
        if (XVisualInfo* glVisual = X11GLDrawable::chooseVisual(display, screen, doubleBuffered))
        {
            // The GL visual is rarely the parent's, so the window needs a colormap of its own.
            colormap = XCreateColormap(display, connection.getRoot(), glVisual->visual, AllocNone);
            xWindow = createXWindow(glVisual->visual, glVisual->depth);
            if (xWindow != None)
                glDrawable = X11GLDrawable::create(display, screen, xWindow, *glVisual, doubleBuffered);
            if (glDrawable != nullptr)
            {
                visual = glVisual->visual;
                depth = glVisual->depth;
            }
            else
            {
                if (xWindow != None)
                    XDestroyWindow(display, xWindow);
                XFreeColormap(display, colormap);
                xWindow = None;
                colormap = None;
            }
            XFree(glVisual);
        }
    }
    if (xWindow == None)
        xWindow = createXWindow(visual, depth);
    if (xWindow == None)
        return;

    presenter = new X11ImagePresenter(connection, xWindow, visual, depth, bounds.getSize());
    dragAndDrop = new X11DragAndDrop(connection, xWindow);
    if (kind == topLevelKind)
    {
        Atom protocols[] = {connection.getAtoms().wmDeleteWindow};
        XSetWMProtocols(display, xWindow, protocols, 1);
        XClassHint classHint{const_cast<char*>("kelvane"), const_cast<char*>("Kelvane")};
        XSetClassHint(display, xWindow, &classHint);
        setTitle(title);
    }
    connection.addPeer(this);
    XMapWindow(display, xWindow);
    XFlush(display);
}

::Window X11WindowPeer::createXWindow(Visual* visual, int depth)
{
    XSetWindowAttributes attributes{};
    // No background: the server never clears the window before the frame that repaints it.
    attributes.background_pixmap = None;
    attributes.border_pixel = 0;
    attributes.event_mask = eventMask;
    attributes.cursor = cursor;
    unsigned long mask = CWBackPixmap | CWBorderPixel | CWEventMask | CWCursor;
    if (colormap != None)
    {
        attributes.colormap = colormap;
        mask |= CWColormap;
    }
    X11Connection::ErrorTrap trap(connection);
    const ::Window made = XCreateWindow(display, parent, bounds.x, bounds.y, static_cast<unsigned>(bounds.w),
                                        static_cast<unsigned>(bounds.h), 0, depth, InputOutput, visual, mask,
                                        &attributes);
    if (trap.failed())
    {
        if (made != None)
            XDestroyWindow(display, made);
        return None;
    }
    return made;
}

X11WindowPeer::~X11WindowPeer()
{
    if (xWindow != None)
    {
        connection.removePeer(this);
        if (pointerLocked)
            setPointerLocked(false, lockAnchor);
        delete glDrawable;
        delete presenter;
        delete dragAndDrop;
        if (pictureCursor != None)
            XFreeCursor(display, pictureCursor);
        // A window that someone else destroyed has no id any more; events on their way to it are
        // dropped, for no peer answers to it.
        if (!destroyedByOthers)
            XDestroyWindow(display, xWindow);
        if (colormap != None)
            XFreeColormap(display, colormap);
        XFlush(display);
    }
    X11Connection::release();
}

void X11WindowPeer::setBounds(const Rectangle& newBounds)
{
    const Rectangle previous = bounds;
    bounds = atLeastOnePixel(newBounds);
    XMoveResizeWindow(display, xWindow, bounds.x, bounds.y, static_cast<unsigned>(bounds.w),
                      static_cast<unsigned>(bounds.h));
    XFlush(display);
    if (bounds.getSize() != previous.getSize())
        presenter->setWindowSize(bounds.getSize());
}

Point X11WindowPeer::getScreenPosition() const
{
    if (!screenOriginKnown)
    {
        int x = 0, y = 0;
        ::Window child = None;
        if (XTranslateCoordinates(display, xWindow, connection.getRoot(), 0, 0, &x, &y, &child))
        {
            screenOrigin = Point(x, y);
            screenOriginKnown = true;
        }
    }
    return screenOrigin;
}

void X11WindowPeer::noteScreenOrigin(int x, int y, int rootX, int rootY)
{
    screenOrigin = Point(rootX - x, rootY - y);
    screenOriginKnown = true;
}

void X11WindowPeer::setTitle(const String& newTitle)
{
    title = newTitle;
    if (kind != topLevelKind)
        return;
    const char* text = title.getCString();
    const int length = static_cast<int>(std::strlen(text));
    XChangeProperty(display, xWindow, XA_WM_NAME, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(text), length);
    XChangeProperty(display, xWindow, connection.getAtoms().netWmName, connection.getAtoms().utf8String, 8,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(text), length);
    XFlush(display);
}

void X11WindowPeer::showCursor(Cursor shown)
{
    XDefineCursor(display, xWindow, shown);
    XFlush(display);
}

void X11WindowPeer::setCursor(int systemCursor)
{
    cursor = connection.getCursors().getSystemCursor(systemCursor);
    if (pictureCursor != None)
    {
        XFreeCursor(display, pictureCursor);
        pictureCursor = None;
    }
    if (!pointerLocked)
        showCursor(cursor);
}

void X11WindowPeer::setCursorImage(const Image& picture, const Point& hotSpot)
{
    const Cursor made = connection.getCursors().createPictureCursor(picture, hotSpot);
    if (made == None)
    {
        setCursor(SystemCursor::arrow);
        return;
    }
    if (pictureCursor != None)
        XFreeCursor(display, pictureCursor);
    pictureCursor = made;
    cursor = made;
    if (!pointerLocked)
        showCursor(cursor);
}

void X11WindowPeer::warpTo(const Point& position)
{
    XWarpPointer(display, None, xWindow, 0, 0, 0, 0, position.x, position.y);
    XFlush(display);
}

void X11WindowPeer::setPointerLocked(bool locked, const Point& anchor)
{
    pointerLocked = locked;
    lockAnchor = anchor;
    pendingWarps = 0;
    if (locked)
    {
        showCursor(connection.getCursors().getSystemCursor(SystemCursor::invisible));
        if (lastPointer != anchor)
        {
            warpTo(anchor);
            ++pendingWarps;
        }
        return;
    }
    if (lastPointer != anchor)
        warpTo(anchor);
    lastPointer = anchor;
    showCursor(cursor);
}

bool X11WindowPeer::takeLockedMovement(const Point& position, Point& movement)
{
    // The motion of one of our warps: the pointer is at the anchor now, and nothing moved.
    if (pendingWarps > 0 && position == lockAnchor)
    {
        --pendingWarps;
        lastPointer = lockAnchor;
        return false;
    }
    movement = position - lastPointer;
    lastPointer = position;
    if (position != lockAnchor)
    {
        warpTo(lockAnchor);
        ++pendingWarps;
    }
    return movement != Point();
}

void X11WindowPeer::resizeParent(const Point& newSize)
{
    if (kind != childKind)
        return;
    ::Window root = None;
    int x = 0, y = 0;
    unsigned int width = 0, height = 0, border = 0, depth = 0;
    X11Connection::ErrorTrap trap(connection);
    if (XGetGeometry(display, parent, &root, &x, &y, &width, &height, &border, &depth) == 0 || trap.failed())
        return;
    const int newWidth = std::max(static_cast<int>(width) + newSize.x - bounds.w, 1);
    const int newHeight = std::max(static_cast<int>(height) + newSize.y - bounds.h, 1);
    XResizeWindow(display, parent, static_cast<unsigned>(newWidth), static_cast<unsigned>(newHeight));
    XFlush(display);
}

GLDrawable* X11WindowPeer::getGLDrawable()
{
    return glDrawable;
}

ImagePresenter& X11WindowPeer::getImagePresenter()
{
    return *presenter;
}

void* X11WindowPeer::getNativeHandle() const
{
    return reinterpret_cast<void*>(static_cast<uintptr_t>(xWindow));
}

}  // namespace q1framework
