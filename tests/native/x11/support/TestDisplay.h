#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

#include <X11/Xlib.h>

#include <cstdint>
#include <functional>
#include <vector>

// The test's own connection to the X server, the "third connection" beside the framework's and
// the host's: it makes the windows a host would make, moves the pointer and presses buttons and
// keys through XTest (real input, never XSendEvent), and reads back what windows show.
class TestDisplay
{
public:
    // Opens DISPLAY; isOpen answers whether that worked.
    TestDisplay();
    ~TestDisplay();

    TestDisplay(const TestDisplay&) = delete;
    TestDisplay& operator=(const TestDisplay&) = delete;

    bool isOpen() const { return display != nullptr; }
    Display* get() const { return display; }

    // A plain mapped top-level window, as a host makes for an editor; destroyed with this object
    // unless destroyed before.
    ::Window makeHostWindow(const q1framework::Rectangle& bounds);
    // Destroys a window made by makeHostWindow, as a host that closes its window does.
    void destroyHostWindow(::Window window);
    q1framework::Rectangle getGeometry(::Window window);
    // The window's parent in the window tree.
    ::Window getParent(::Window window);

    // XTest: the pointer to a screen position, or by an offset; a button or a key (by keysym)
    // down or up. Each waits until the server has taken it.
    void movePointer(int x, int y);
    void movePointerBy(int dx, int dy);
    void button(unsigned int button, bool down);
    void click(unsigned int button);
    void key(unsigned long keysym, bool down);
    q1framework::Point getPointer();
    // Whether the cursor on the screen now has no visible pixel (XFixes).
    bool isCursorInvisible();

    // The window's pixels as 0x00RRGGBB words, row by row (XGetImage).
    std::vector<uint32_t> readPixels(::Window window, const q1framework::Rectangle& area);
    // The window's whole area as it shows now, as an opaque picture.
    q1framework::Image capture(::Window window);

    // Delivers the framework's pending events (WindowPeer::dispatchNativeEvents) until done
    // answers true or two seconds have passed; answers done's last answer.
    bool pumpUntil(const std::function<bool()>& done);
    // Lets both connections settle: the server has taken every request of both, and the
    // framework has received and delivered every event that resulted.
    void settle();

private:
    Display* display = nullptr;
    std::vector<::Window> hostWindows;
};
