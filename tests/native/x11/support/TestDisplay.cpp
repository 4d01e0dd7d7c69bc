#include "TestDisplay.h"

#include "native/window/WindowPeer.h"
#include "native/x11/X11Connection.h"

#include <X11/extensions/XTest.h>
#include <X11/extensions/Xfixes.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <chrono>
#include <thread>

using q1framework::Point;
using q1framework::Rectangle;

TestDisplay::TestDisplay() : display(XOpenDisplay(nullptr)) {}

TestDisplay::~TestDisplay()
{
    if (display == nullptr)
        return;
    for (::Window window : hostWindows)
        XDestroyWindow(display, window);
    XCloseDisplay(display);
}

::Window TestDisplay::makeHostWindow(const Rectangle& bounds)
{
    XSetWindowAttributes attributes{};
    attributes.background_pixel = BlackPixel(display, DefaultScreen(display));
    attributes.event_mask = StructureNotifyMask;
    const ::Window window = XCreateWindow(display, DefaultRootWindow(display), bounds.x, bounds.y,
                                          static_cast<unsigned>(bounds.w), static_cast<unsigned>(bounds.h), 0,
                                          CopyFromParent, InputOutput, CopyFromParent, CWBackPixel | CWEventMask,
                                          &attributes);
    XMapWindow(display, window);
    XSync(display, False);
    hostWindows.push_back(window);
    return window;
}

void TestDisplay::destroyHostWindow(::Window window)
{
    hostWindows.erase(std::remove(hostWindows.begin(), hostWindows.end(), window), hostWindows.end());
    XDestroyWindow(display, window);
    XSync(display, False);
}

Rectangle TestDisplay::getGeometry(::Window window)
{
    ::Window root = None;
    int x = 0, y = 0;
    unsigned int width = 0, height = 0, border = 0, depth = 0;
    XGetGeometry(display, window, &root, &x, &y, &width, &height, &border, &depth);
    return Rectangle(x, y, static_cast<int>(width), static_cast<int>(height));
}

::Window TestDisplay::getParent(::Window window)
{
    ::Window root = None, parent = None;
    ::Window* children = nullptr;
    unsigned int count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) && children != nullptr)
        XFree(children);
    return parent;
}

void TestDisplay::movePointer(int x, int y)
{
    XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
    XSync(display, False);
}

void TestDisplay::movePointerBy(int dx, int dy)
{
    XTestFakeRelativeMotionEvent(display, dx, dy, CurrentTime);
    XSync(display, False);
}

void TestDisplay::button(unsigned int button, bool down)
{
    XTestFakeButtonEvent(display, button, down ? True : False, CurrentTime);
    XSync(display, False);
}

void TestDisplay::click(unsigned int button)
{
    this->button(button, true);
    this->button(button, false);
}

void TestDisplay::key(unsigned long keysym, bool down)
{
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, keysym), down ? True : False, CurrentTime);
    XSync(display, False);
}

Point TestDisplay::getPointer()
{
    ::Window root = None, child = None;
    int x = 0, y = 0, windowX = 0, windowY = 0;
    unsigned int mask = 0;
    XQueryPointer(display, DefaultRootWindow(display), &root, &child, &x, &y, &windowX, &windowY, &mask);
    return Point(x, y);
}

bool TestDisplay::isCursorInvisible()
{
    XFixesCursorImage* image = XFixesGetCursorImage(display);
    if (image == nullptr)
        return false;
    bool invisible = true;
    for (unsigned int index = 0; index < static_cast<unsigned int>(image->width) * image->height; ++index)
        invisible = invisible && (image->pixels[index] >> 24) == 0;
    XFree(image);
    return invisible;
}

std::vector<uint32_t> TestDisplay::readPixels(::Window window, const Rectangle& area)
{
    std::vector<uint32_t> pixels;
    XImage* image = XGetImage(display, window, area.x, area.y, static_cast<unsigned>(area.w),
                              static_cast<unsigned>(area.h), AllPlanes, ZPixmap);
    if (image == nullptr)
        return pixels;
    for (int y = 0; y < area.h; ++y)
        for (int x = 0; x < area.w; ++x)
            pixels.push_back(static_cast<uint32_t>(XGetPixel(image, x, y)) & 0xffffffu);
    XDestroyImage(image);
    return pixels;
}

q1framework::Image TestDisplay::capture(::Window window)
{
    const q1framework::Rectangle area(q1framework::Point(), getGeometry(window).getSize());
    const std::vector<uint32_t> shown = readPixels(window, area);
    q1framework::Image picture(area.getSize(), true);
    if (shown.size() != static_cast<size_t>(area.w) * static_cast<size_t>(area.h))
        return picture;
    for (int y = 0; y < area.h; ++y)
        for (int x = 0; x < area.w; ++x)
        {
            const uint32_t word = shown[static_cast<size_t>(y * area.w + x)];
            uint8_t* pixel = picture.getPixelPointer(x, y);
            pixel[0] = static_cast<uint8_t>(word);
            pixel[1] = static_cast<uint8_t>(word >> 8);
            pixel[2] = static_cast<uint8_t>(word >> 16);
            pixel[3] = 255;
        }
    return picture;
}

bool TestDisplay::pumpUntil(const std::function<bool()>& done)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    for (;;)
    {
        XSync(display, False);
        if (q1framework::X11Connection* connection = q1framework::X11Connection::get())
            XSync(connection->getDisplay(), False);
        q1framework::WindowPeer::dispatchNativeEvents();
        if (done())
            return true;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void TestDisplay::settle()
{
    XSync(display, False);
    for (int round = 0; round < 3; ++round)
    {
        if (q1framework::X11Connection* connection = q1framework::X11Connection::get())
            XSync(connection->getDisplay(), False);
        q1framework::WindowPeer::dispatchNativeEvents();
    }
}
