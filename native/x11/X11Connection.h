#pragma once

#include "foundation/var/Array.h"

#include <X11/Xlib.h>

namespace q1framework
{

class X11Cursors;
class X11WindowPeer;

// The framework's own connection to the X server, shared by all its windows: opened (from the
// DISPLAY of the process) when the first window is made and closed when the last one goes. A
// host's Display is never used: only the host's threads may touch it, and the framework's calls
// come from whichever host thread calls in (see native/window/UiThread.h).
//
// X errors on this connection never reach Xlib's default handler, which would end the host's
// process: while the connection is open the framework's handler takes the errors of this
// connection (counting them for ErrorTrap) and passes those of any other connection on to the
// handler that was installed before.
//
// Thread contract: main thread.
class X11Connection
{
public:
    // Counts the X errors of the connection between its construction and the end of its
    // lifetime or the last check; used around requests that may fail (a parent window that does
    // not exist, a shared-memory attach on a remote display).
    class ErrorTrap
    {
    public:
        explicit ErrorTrap(X11Connection& connection);
        ~ErrorTrap();
        ErrorTrap(const ErrorTrap&) = delete;
        ErrorTrap& operator=(const ErrorTrap&) = delete;
        // Waits for the server to answer every request so far; whether any of them failed.
        bool failed();

    private:
        X11Connection& connection;
        unsigned long previousCount;
    };

    // The connection, opened now if it is not open; null when no display can be opened. Each
    // acquire is matched by a release.
    static X11Connection* acquire();
    // Closes the connection after the last release.
    static void release();
    // The open connection, or null; no reference is taken.
    static X11Connection* get();

    Display* getDisplay() const { return display; }
    int getScreen() const { return screen; }
    ::Window getRoot() const { return root; }
    X11Cursors& getCursors() const { return *cursors; }
    // Whether the server offers MIT-SHM image puts and the connection may use them (false
    // after an attach has failed once, as on a remote display).
    bool canUseSharedMemory() const { return sharedMemoryUsable; }
    void disableSharedMemory() { sharedMemoryUsable = false; }

    // The peers of the framework's windows, for event delivery.
    void addPeer(X11WindowPeer* peer);
    void removePeer(X11WindowPeer* peer);
    X11WindowPeer* findPeer(::Window window) const;

    // Delivers every event waiting on the open connection, if any, to the peer of its window;
    // events of windows without a peer are dropped.
    static void dispatchEvents();

    // Atoms the windows use, interned once.
    struct Atoms
    {
        Atom wmProtocols, wmDeleteWindow, netWmName, utf8String;
        Atom xdndAware, xdndEnter, xdndPosition, xdndStatus, xdndLeave, xdndDrop, xdndFinished;
        Atom xdndSelection, xdndTypeList, xdndActionCopy, uriList, dropProperty;
    };
    const Atoms& getAtoms() const { return atoms; }

private:
    explicit X11Connection(Display* display);
    ~X11Connection();

    static int handleError(Display* display, XErrorEvent* event);

    Display* display;
    int screen;
    ::Window root;
    Atoms atoms;
    X11Cursors* cursors;
    bool sharedMemoryUsable;
    unsigned long errorCount = 0;
    int references = 0;
    Array<X11WindowPeer*> peers;
};

}  // namespace q1framework
