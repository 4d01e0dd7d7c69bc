#include "native/x11/X11Connection.h"

#include "native/x11/X11Cursors.h"
#include "native/x11/X11WindowPeer.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XShm.h>

namespace q1framework
{

namespace
{
X11Connection* instance = nullptr;
XErrorHandler previousHandler = nullptr;
}  // namespace

X11Connection::ErrorTrap::ErrorTrap(X11Connection& trapped) : connection(trapped)
{
    // Errors of earlier requests are not this trap's.
    XSync(connection.display, False);
    previousCount = connection.errorCount;
}

X11Connection::ErrorTrap::~ErrorTrap() = default;

bool X11Connection::ErrorTrap::failed()
{
    XSync(connection.display, False);
    return connection.errorCount != previousCount;
}

X11Connection* X11Connection::acquire()
{
    if (instance == nullptr)
    {
        Display* display = XOpenDisplay(nullptr);
        if (display == nullptr)
            return nullptr;
        instance = new X11Connection(display);
    }
    ++instance->references;
    return instance;
}

void X11Connection::release()
{
    if (instance != nullptr && --instance->references <= 0)
    {
        delete instance;
        instance = nullptr;
    }
}

X11Connection* X11Connection::get()
{
    return instance;
}

X11Connection::X11Connection(Display* openedDisplay)
    : display(openedDisplay), screen(DefaultScreen(openedDisplay)), root(RootWindow(openedDisplay, screen))
{
    previousHandler = XSetErrorHandler(handleError);
    // A held key repeats as presses alone, without the release before each repeat.
    XkbSetDetectableAutoRepeat(display, True, nullptr);

    const char* names[] = {"WM_PROTOCOLS", "WM_DELETE_WINDOW", "_NET_WM_NAME", "UTF8_STRING",
                           "XdndAware", "XdndEnter", "XdndPosition", "XdndStatus", "XdndLeave", "XdndDrop",
                           "XdndFinished", "XdndSelection", "XdndTypeList", "XdndActionCopy", "text/uri-list",
                           "Q1_DROPPED_FILES"};
    Atom* targets[] = {&atoms.wmProtocols, &atoms.wmDeleteWindow, &atoms.netWmName, &atoms.utf8String,
                       &atoms.xdndAware, &atoms.xdndEnter, &atoms.xdndPosition, &atoms.xdndStatus, &atoms.xdndLeave,
                       &atoms.xdndDrop, &atoms.xdndFinished, &atoms.xdndSelection, &atoms.xdndTypeList,
                       &atoms.xdndActionCopy, &atoms.uriList, &atoms.dropProperty};
    constexpr int count = sizeof(names) / sizeof(names[0]);
    Atom interned[count];
    XInternAtoms(display, const_cast<char**>(names), count, False, interned);
    for (int index = 0; index < count; ++index)
        *targets[index] = interned[index];

    cursors = new X11Cursors(display);
    // Asked by name first: XShmQueryVersion on a server without the extension complains on the
    // standard error stream.
    int opcode = 0, firstEvent = 0, firstError = 0;
    int major = 0, minor = 0;
    Bool pixmaps = False;
    sharedMemoryUsable = XQueryExtension(display, "MIT-SHM", &opcode, &firstEvent, &firstError)
                         && XShmQueryVersion(display, &major, &minor, &pixmaps) == True;
}

X11Connection::~X11Connection()
{
    delete cursors;
    XCloseDisplay(display);
    // Put the handler before ours back, unless someone has replaced ours meanwhile.
    const XErrorHandler current = XSetErrorHandler(previousHandler);
    if (current != handleError)
        XSetErrorHandler(current);
}

int X11Connection::handleError(Display* display, XErrorEvent* event)
{
    if (instance != nullptr && display == instance->display)
    {
        ++instance->errorCount;
        return 0;
    }
    return previousHandler != nullptr ? previousHandler(display, event) : 0;
}

void X11Connection::addPeer(X11WindowPeer* peer)
{
    peers.addIfNotAlreadyThere(peer);
}

void X11Connection::removePeer(X11WindowPeer* peer)
{
    peers.removeFirstMatching(peer);
}

X11WindowPeer* X11Connection::findPeer(::Window window) const
{
    for (X11WindowPeer* peer : peers)
        if (peer->getXWindow() == window)
            return peer;
    return nullptr;
}

void X11Connection::dispatchEvents()
{
    // The connection is looked up afresh for every event: delivering one may close the last
    // window, and with it the connection.
    while (X11Connection* connection = get())
    {
        if (XPending(connection->display) == 0)
            return;
        XEvent event;
        XNextEvent(connection->display, &event);
        if (event.type == MappingNotify)
        {
            XRefreshKeyboardMapping(&event.xmapping);
            continue;
        }
        if (X11WindowPeer* peer = connection->findPeer(event.xany.window))
            peer->handleEvent(event);
    }
}

}  // namespace q1framework
