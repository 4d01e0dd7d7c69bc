#include "native/x11/X11DragAndDrop.h"

#include "native/window/Window.h"
#include "native/x11/X11Connection.h"

#include <X11/Xatom.h>

#include <string>

namespace q1framework
{

namespace
{
constexpr long protocolVersion = 5;

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

// The path of one "file:" URI, or empty for another scheme.
std::string pathOf(const std::string& uri)
{
    static const std::string scheme = "file://";
    if (uri.compare(0, scheme.size(), scheme) != 0)
        return std::string();
    // After "file://" comes the host, empty or named, then the path from its first "/".
    const size_t start = uri.find('/', scheme.size());
    if (start == std::string::npos)
        return std::string();
    std::string path;
    for (size_t index = start; index < uri.size(); ++index)
    {
        if (uri[index] == '%' && index + 2 < uri.size() && hexValue(uri[index + 1]) >= 0 && hexValue(uri[index + 2]) >= 0)
        {
            path += static_cast<char>(hexValue(uri[index + 1]) * 16 + hexValue(uri[index + 2]));
            index += 2;
        }
        else
            path += uri[index];
    }
    return path;
}
}  // namespace

X11DragAndDrop::X11DragAndDrop(X11Connection& owner, ::Window target)
    : connection(owner), display(owner.getDisplay()), window(target)
{
    const long version = protocolVersion;
    XChangeProperty(display, window, connection.getAtoms().xdndAware, XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&version), 1);
}

Array<String> X11DragAndDrop::pathsFromUriList(const char* text, size_t length)
{
    Array<String> paths;
    size_t start = 0;
    while (start < length)
    {
        size_t end = start;
        while (end < length && text[end] != '\n' && text[end] != '\r' && text[end] != 0)
            ++end;
        const std::string line(text + start, end - start);
        if (!line.empty() && line[0] != '#')
        {
            const std::string path = pathOf(line);
            if (!path.empty())
                paths.add(String(path.c_str()));
        }
        start = end + 1;
    }
    return paths;
}

void X11DragAndDrop::sendToSource(Atom type, long second, long third, long fourth, long fifth)
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.display = display;
    event.xclient.window = source;
    event.xclient.message_type = type;
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(window);
    event.xclient.data.l[1] = second;
    event.xclient.data.l[2] = third;
    event.xclient.data.l[3] = fourth;
    event.xclient.data.l[4] = fifth;
    XSendEvent(display, source, False, NoEventMask, &event);
    XFlush(display);
}

void X11DragAndDrop::finish(bool accepted)
{
    const Atom action = accepted ? connection.getAtoms().xdndActionCopy : None;
    sendToSource(connection.getAtoms().xdndFinished, accepted ? 1 : 0, static_cast<long>(action), 0, 0);
    source = None;
    offersFiles = false;
}

bool X11DragAndDrop::handleClientMessage(const XClientMessageEvent& message)
{
    const X11Connection::Atoms& atoms = connection.getAtoms();
    const Atom type = message.message_type;
    if (type == atoms.xdndEnter)
    {
        source = static_cast<::Window>(message.data.l[0]);
        offersFiles = false;
        if ((message.data.l[1] & 1) == 0)
        {
            for (int index = 2; index < 5; ++index)
                offersFiles = offersFiles || static_cast<Atom>(message.data.l[index]) == atoms.uriList;
            return true;
        }
        // More than three types: the full list is a property of the source.
        Atom actualType = None;
        int format = 0;
        unsigned long count = 0, remaining = 0;
        unsigned char* data = nullptr;
        if (XGetWindowProperty(display, source, atoms.xdndTypeList, 0, 1024, False, XA_ATOM, &actualType, &format,
                               &count, &remaining, &data) == Success && data != nullptr)
        {
            const Atom* types = reinterpret_cast<const Atom*>(data);
            for (unsigned long index = 0; format == 32 && index < count; ++index)
                offersFiles = offersFiles || types[index] == atoms.uriList;
            XFree(data);
        }
        return true;
    }
    if (type == atoms.xdndPosition)
    {
        if (static_cast<::Window>(message.data.l[0]) != source)
            return true;
        dropPosition = Point(static_cast<int32_t>((message.data.l[2] >> 16) & 0xffff),
                             static_cast<int32_t>(message.data.l[2] & 0xffff));
        // Accepted with the copy action; an empty rectangle asks for a position on every move.
        sendToSource(atoms.xdndStatus, offersFiles ? 1 : 0, 0, 0,
                     static_cast<long>(offersFiles ? atoms.xdndActionCopy : None));
        return true;
    }
    if (type == atoms.xdndLeave)
    {
        source = None;
        offersFiles = false;
        return true;
    }
    if (type == atoms.xdndDrop)
    {
        if (static_cast<::Window>(message.data.l[0]) != source)
            return true;
        if (!offersFiles)
        {
            finish(false);
            return true;
        }
        XConvertSelection(display, atoms.xdndSelection, atoms.uriList, atoms.dropProperty, window,
                          static_cast<Time>(message.data.l[2]));
        XFlush(display);
        return true;
    }
    return false;
}

bool X11DragAndDrop::handleSelection(const XSelectionEvent& event, Window& owner, const Point& windowOrigin)
{
    const X11Connection::Atoms& atoms = connection.getAtoms();
    if (event.selection != atoms.xdndSelection || source == None)
        return false;
    Array<String> paths;
    if (event.property != None)
    {
        Atom actualType = None;
        int format = 0;
        unsigned long count = 0, remaining = 0;
        unsigned char* data = nullptr;
        if (XGetWindowProperty(display, window, atoms.dropProperty, 0, 1 << 20, True, AnyPropertyType, &actualType,
                               &format, &count, &remaining, &data) == Success && data != nullptr)
        {
            if (format == 8)
                paths = pathsFromUriList(reinterpret_cast<const char*>(data), count);
            XFree(data);
        }
    }
    const Point position = dropPosition - windowOrigin;
    finish(!paths.isEmpty());
    if (!paths.isEmpty())
        owner.deliverFilesDropped(position, paths);
    return true;
}

}  // namespace q1framework
