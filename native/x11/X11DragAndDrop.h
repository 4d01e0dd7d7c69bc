#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "media/geometry/Point.h"

#include <X11/Xlib.h>

#include <cstddef>

namespace q1framework
{

class Window;
class X11Connection;

// The drop target side of XDND (version 5) for one window: the window announces itself with
// XdndAware, accepts a drag that offers "text/uri-list" with the copy action, and on the drop
// asks the source for the list, turns its file URIs into paths and hands them to the Window
// (Window::deliverFilesDropped) at the position of the drop. Anything that does not offer a
// list of files is refused. The source hears XdndStatus and XdndFinished as the protocol asks.
//
// Thread contract: main thread, from the events of the window's peer.
class X11DragAndDrop
{
public:
    // Marks window as a drop target.
    X11DragAndDrop(X11Connection& connection, ::Window window);

    // One of the protocol's client messages; false for any other message. A drop ends in the
    // selection's arrival (handleSelection).
    bool handleClientMessage(const XClientMessageEvent& message);
    // The dropped list arrived (or did not): tells the source, then delivers the paths to owner
    // at the drop's position (windowOrigin: the window's top-left pixel on the screen). The
    // delivery is the last thing this does, since it may delete the window. False when the
    // event was not the drop's.
    bool handleSelection(const XSelectionEvent& event, Window& owner, const Point& windowOrigin);

    // The paths of the "file:" URIs in a text/uri-list (lines ending in CR LF, "#" lines are
    // comments), percent-decoded, host part dropped; other URIs are left out.
    static Array<String> pathsFromUriList(const char* text, size_t length);

private:
    void sendToSource(Atom type, long second, long third, long fourth, long fifth);
    void finish(bool accepted);

    X11Connection& connection;
    Display* display;
    ::Window window;
    ::Window source = None;   // the drag's source window; None outside a drag
    bool offersFiles = false;
    Point dropPosition;       // on the screen
};

}  // namespace q1framework
