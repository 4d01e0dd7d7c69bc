#include "HostWindow.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>

using q1framework::Image;

std::unique_ptr<HostWindow> HostWindow::open(int width, int height, const std::string& title, std::string& error)
{
    std::unique_ptr<HostWindow> host(new HostWindow());
    host->display = XOpenDisplay(nullptr);
    if (host->display == nullptr)
    {
        const char* name = std::getenv("DISPLAY");
        error = std::string("cannot open the X display ") + (name != nullptr && *name != '\0' ? name : "(DISPLAY is not set)")
                + "; the editor needs one";
        return nullptr;
    }
    Display* display = host->display;
    const int screen = DefaultScreen(display);
    host->window = XCreateSimpleWindow(display, RootWindow(display, screen), 0, 0, static_cast<unsigned>(width),
                                       static_cast<unsigned>(height), 0, BlackPixel(display, screen),
                                       BlackPixel(display, screen));
    XStoreName(display, host->window, title.c_str());
    Atom deleteMessage = XInternAtom(display, "WM_DELETE_WINDOW", False);
    host->deleteMessage = deleteMessage;
    XSetWMProtocols(display, host->window, &deleteMessage, 1);
    XSelectInput(display, host->window, StructureNotifyMask);
    XMapWindow(display, host->window);
    XSync(display, False);
    return host;
}

HostWindow::~HostWindow()
{
    if (display == nullptr)
        return;
    XDestroyWindow(display, window);
    XCloseDisplay(display);
}

void HostWindow::resize(int width, int height)
{
    XResizeWindow(display, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
    XFlush(display);
}

bool HostWindow::handleEvents()
{
    bool open = true;
    while (XPending(display) > 0)
    {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == ClientMessage && static_cast<unsigned long>(event.xclient.data.l[0]) == deleteMessage)
            open = false;
        if (event.type == DestroyNotify && event.xdestroywindow.window == window)
            open = false;
    }
    return open;
}

Image HostWindow::captureEditor()
{
    ::Window root = 0, parent = 0, *children = nullptr;
    unsigned int count = 0;
    XSync(display, False);
    if (XQueryTree(display, window, &root, &parent, &children, &count) == 0 || count == 0)
        return Image();
    const ::Window editor = children[0];
    XFree(children);
    XWindowAttributes attributes;
    if (XGetWindowAttributes(display, editor, &attributes) == 0)
        return Image();
    XImage* shot = XGetImage(display, editor, 0, 0, static_cast<unsigned>(attributes.width),
                             static_cast<unsigned>(attributes.height), AllPlanes, ZPixmap);
    if (shot == nullptr)
        return Image();
    Image picture(attributes.width, attributes.height, false);
    for (int y = 0; y < attributes.height; ++y)
        for (int x = 0; x < attributes.width; ++x)
        {
            // The default visual's masks (ff0000, 00ff00, 0000ff) read through XGetPixel.
            const unsigned long value = XGetPixel(shot, x, y);
            uint8_t* pixel = picture.getPixelPointer(x, y);
            pixel[0] = static_cast<uint8_t>(value & 0xff);
            pixel[1] = static_cast<uint8_t>(value >> 8 & 0xff);
            pixel[2] = static_cast<uint8_t>(value >> 16 & 0xff);
            pixel[3] = 255;
        }
    XDestroyImage(shot);
    return picture;
}
