// Files dropped on a window from another client, through the XDND protocol.

// GoogleTest comes before the X11 headers, whose macros (None, Bool) it would not survive.
#include <gtest/gtest.h>

#include "RecordingWindow.h"
#include "TestDisplay.h"

#include "native/x11/X11DragAndDrop.h"

#include <X11/Xatom.h>

#include <cstring>
#include <string>

using namespace q1framework;

namespace
{
std::vector<std::string> strings(const Array<String>& paths)
{
    std::vector<std::string> result;
    for (const String& path : paths)
        result.emplace_back(path.getCString());
    return result;
}

// A drag source on the test's connection: it offers a uri-list and answers the request for it.
class DragSource
{
public:
    explicit DragSource(TestDisplay& test) : test(test), display(test.get())
    {
        window = test.makeHostWindow(Rectangle(700, 0, 10, 10));
        XSetSelectionOwner(display, atom("XdndSelection"), window, CurrentTime);
        XSync(display, False);
    }

    void send(::Window target, const char* type, long first, long second, long third, long fourth)
    {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = target;
        event.xclient.message_type = atom(type);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(window);
        event.xclient.data.l[1] = first;
        event.xclient.data.l[2] = second;
        event.xclient.data.l[3] = third;
        event.xclient.data.l[4] = fourth;
        XSendEvent(display, target, False, NoEventMask, &event);
        XSync(display, False);
    }

    // Serves the selection request, if one came, and notes the target's answers.
    void serve(const std::string& list)
    {
        while (XPending(display) > 0)
        {
            XEvent event;
            XNextEvent(display, &event);
            if (event.type == SelectionRequest)
            {
                const XSelectionRequestEvent& request = event.xselectionrequest;
                XChangeProperty(display, request.requestor, request.property, request.target, 8, PropModeReplace,
                                reinterpret_cast<const unsigned char*>(list.data()), static_cast<int>(list.size()));
                XEvent reply{};
                reply.xselection.type = SelectionNotify;
                reply.xselection.requestor = request.requestor;
                reply.xselection.selection = request.selection;
                reply.xselection.target = request.target;
                reply.xselection.property = request.property;
                reply.xselection.time = request.time;
                XSendEvent(display, request.requestor, False, NoEventMask, &reply);
                XSync(display, False);
            }
            else if (event.type == ClientMessage && event.xclient.message_type == atom("XdndStatus"))
                statusAccepted = (event.xclient.data.l[1] & 1) != 0;
            else if (event.type == ClientMessage && event.xclient.message_type == atom("XdndFinished"))
            {
                finished = true;
                finishAccepted = (event.xclient.data.l[1] & 1) != 0;
            }
        }
    }

    Atom atom(const char* name) { return XInternAtom(display, name, False); }

    TestDisplay& test;
    Display* display;
    ::Window window = None;
    bool statusAccepted = false;
    bool finished = false;
    bool finishAccepted = false;
};
}  // namespace

TEST(X11DragAndDrop, FileUrisBecomeDecodedPaths)
{
    const std::string list = "# dragged from a file manager\r\nfile:///home/ann/Kick%2001.wav\r\n"
                             "file://studio/srv/snare.wav\r\nhttp://example.org/x.wav\r\nfile:///tmp/a%zzb\r\n";
    EXPECT_EQ(strings(X11DragAndDrop::pathsFromUriList(list.data(), list.size())),
              (std::vector<std::string>{"/home/ann/Kick 01.wav", "/srv/snare.wav", "/tmp/a%zzb"}));
    EXPECT_TRUE(X11DragAndDrop::pathsFromUriList("", 0).isEmpty());
}

TEST(X11DragAndDrop, DroppedFilesReachTheWindowAtTheDropPosition)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(100, 50, 400, 300));
    RecordingWindow window(Rectangle(0, 0, 400, 300), 0, String(), reinterpret_cast<void*>(static_cast<uintptr_t>(host)));
    const ::Window target = static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView()));
    test.settle();
    window.calls.clear();

    DragSource source(test);
    source.send(target, "XdndEnter", 5L << 24, static_cast<long>(source.atom("text/uri-list")), 0, 0);
    source.send(target, "XdndPosition", 0, (130L << 16) | 90L, CurrentTime, static_cast<long>(source.atom("XdndActionCopy")));
    test.settle();
    source.serve("");
    EXPECT_TRUE(source.statusAccepted);

    source.send(target, "XdndDrop", 0, CurrentTime, 0, 0);
    const std::string list = "file:///tmp/loop.wav\r\nfile:///tmp/a%20b.wav\r\n";
    EXPECT_TRUE(test.pumpUntil([&] {
        source.serve(list);
        return !window.callsStartingWith("dropped").empty();
    }));
    EXPECT_EQ(window.calls, (std::vector<std::string>{"interested (30,40) [/tmp/loop.wav /tmp/a b.wav]",
                                                      "dropped (30,40) [/tmp/loop.wav /tmp/a b.wav]"}));
    EXPECT_TRUE(test.pumpUntil([&] {
        source.serve(list);
        return source.finished;
    }));
    EXPECT_TRUE(source.finishAccepted);
}

TEST(X11DragAndDrop, ADragWithoutFilesIsRefused)
{
    TestDisplay test;
    const ::Window host = test.makeHostWindow(Rectangle(0, 0, 200, 200));
    RecordingWindow window(Rectangle(0, 0, 200, 200), 0, String(), reinterpret_cast<void*>(static_cast<uintptr_t>(host)));
    const ::Window target = static_cast<::Window>(reinterpret_cast<uintptr_t>(window.getNativeView()));
    test.settle();
    window.calls.clear();

    DragSource source(test);
    source.send(target, "XdndEnter", 5L << 24, static_cast<long>(XA_STRING), 0, 0);
    source.send(target, "XdndPosition", 0, (10L << 16) | 10L, CurrentTime, static_cast<long>(source.atom("XdndActionCopy")));
    source.send(target, "XdndDrop", 0, CurrentTime, 0, 0);
    EXPECT_TRUE(test.pumpUntil([&] {
        source.serve("");
        return source.finished;
    }));
    EXPECT_FALSE(source.statusAccepted);
    EXPECT_FALSE(source.finishAccepted);
    EXPECT_TRUE(window.calls.empty());
}
