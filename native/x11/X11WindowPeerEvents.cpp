// How the X events of a window reach its Window. Every handler ends with its one call into the
// Window, because that call may delete the Window and this peer with it.

#include "native/window/Window.h"
#include "native/x11/X11Connection.h"
#include "native/x11/X11DragAndDrop.h"
#include "native/x11/X11ImagePresenter.h"
#include "native/x11/X11Keys.h"
#include "native/x11/X11WindowPeer.h"

#include <X11/Xutil.h>

namespace q1framework
{

namespace
{
// The framework's button code of X buttons 1 to 3: left, middle (other), right.
int buttonCode(unsigned int button)
{
    switch (button)
    {
        case Button1:
            return 1;
        case Button2:
            return 2;
        case Button3:
            return 4;
        default:
            return 0;
    }
}
}  // namespace

void X11WindowPeer::handleEvent(XEvent& event)
{
    switch (event.type)
    {
        case Expose:
        {
            const Rectangle area(event.xexpose.x, event.xexpose.y, event.xexpose.width, event.xexpose.height);
            presenter->addLostArea(area);
            window.deliverExposed(area);
            return;
        }
        case ConfigureNotify:
            handleConfigure(event.xconfigure);
            return;
        case ButtonPress:
        case ButtonRelease:
            handleButton(event.xbutton, event.type == ButtonPress);
            return;
        case MotionNotify:
            handleMotion(event.xmotion);
            return;
        case EnterNotify:
        case LeaveNotify:
            handleCrossing(event.xcrossing);
            return;
        case KeyPress:
        case KeyRelease:
            handleKey(event.xkey, event.type == KeyPress);
            return;
        case FocusIn:
        case FocusOut:
            // Focus moving between the pointer's windows, or inside this one, changes nothing.
            if ((event.xfocus.mode == NotifyNormal || event.xfocus.mode == NotifyWhileGrabbed)
                && event.xfocus.detail != NotifyPointer && event.xfocus.detail != NotifyInferior)
                window.deliverActiveChanged(event.type == FocusIn);
            return;
        case UnmapNotify:
            window.deliverMouseLeft(lastPointer);
            return;
        case ClientMessage:
            handleClientMessage(event.xclient);
            return;
        case SelectionNotify:
            // Asked afresh: during the drag the pointer events went to the drag's source.
            screenOriginKnown = false;
            dragAndDrop->handleSelection(event.xselection, window, getScreenPosition());
            return;
        case DestroyNotify:
            if (event.xdestroywindow.window == xWindow)
            {
                destroyedByOthers = true;
                window.deliverNativeDestroyed();
            }
            return;
        default:
            return;
    }
}

void X11WindowPeer::handleConfigure(const XConfigureEvent& event)
{
    const Point size(event.width, event.height);
    // A child's position is in its parent. A top-level window's real event is relative to the
    // window manager's frame; the synthetic one the manager sends is on the screen.
    if (kind == childKind || event.send_event)
    {
        bounds.x = event.x;
        bounds.y = event.y;
        screenOriginKnown = false;
    }
    if (size == bounds.getSize())
        return;
    bounds = Rectangle(bounds.getPosition(), size);
    presenter->setWindowSize(size);
    window.deliverResized(size, false);
}

void X11WindowPeer::handleButton(const XButtonEvent& event, bool pressed)
{
    const Point position(event.x, event.y);
    noteScreenOrigin(event.x, event.y, event.x_root, event.y_root);
    if (event.button >= 4 && event.button <= 7)
    {
        if (!pressed)
            return;
        const float deltaX = event.button == 6 ? 1.0f : event.button == 7 ? -1.0f : 0.0f;
        const float deltaY = event.button == 4 ? 1.0f : event.button == 5 ? -1.0f : 0.0f;
        window.deliverMouseEvent(0, position, 0, 0, deltaX, deltaY);
        return;
    }
    const int button = buttonCode(event.button);
    if (button == 0)
        return;
    if (!pointerLocked)
        lastPointer = position;
    if (pressed)
        window.deliverMouseEvent(1, position, button, clickCounter.press(button, position, static_cast<uint32_t>(event.time)),
                                 0.0f, 0.0f);
    else
        window.deliverMouseEvent(3, position, button, 1, 0.0f, 0.0f);
}

void X11WindowPeer::handleMotion(const XMotionEvent& event)
{
    const Point position(event.x, event.y);
    noteScreenOrigin(event.x, event.y, event.x_root, event.y_root);
    // While locked the warp arithmetic (takeLockedMovement) keeps the last position itself.
    if (!pointerLocked)
        lastPointer = position;
    window.deliverMouseEvent(2, position, 0, 0, 0.0f, 0.0f);
}

void X11WindowPeer::handleCrossing(const XCrossingEvent& event)
{
    const Point position(event.x, event.y);
    noteScreenOrigin(event.x, event.y, event.x_root, event.y_root);
    if (event.mode == NotifyGrab)
    {
        // Another client took the pointer: a gesture in progress will not see its release.
        if (event.type == LeaveNotify)
            window.deliverMouseLeft(position);
        return;
    }
    window.deliverMouseEvent(event.type == EnterNotify ? 4 : 5, position, 0, 0, 0.0f, 0.0f);
}

void X11WindowPeer::handleKey(XKeyEvent& event, bool pressed)
{
    KeySym keysym = NoSymbol;
    char text[16];
    XLookupString(&event, text, sizeof text, &keysym, nullptr);
    if (X11Keys::toModifierMask(keysym) != 0)
    {
        window.deliverModifiers(X11Keys::modifiersAfter(event.state, keysym, pressed));
        return;
    }
    window.deliverKey(pressed, X11Keys::toKeyCode(keysym), static_cast<int>(event.keycode));
}

void X11WindowPeer::handleClientMessage(const XClientMessageEvent& message)
{
    const X11Connection::Atoms& atoms = connection.getAtoms();
    if (message.message_type == atoms.wmProtocols && static_cast<Atom>(message.data.l[0]) == atoms.wmDeleteWindow)
    {
        window.deliverCloseRequest();
        return;
    }
    dragAndDrop->handleClientMessage(message);
}

}  // namespace q1framework
