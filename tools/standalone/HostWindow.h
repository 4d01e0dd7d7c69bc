#pragma once

#include "media/image/Image.h"

#include <memory>
#include <string>

struct _XDisplay;

// The window kelvane-standalone gives the editor: a top-level X window on a display connection of
// the program's own, which the editor opens in as it opens in a host's window (as a child of
// it, on the plug-in's own connection). Closing it through the window manager ends the program.
//
// Thread contract: the main thread only.
class HostWindow
{
public:
    // A mapped window of width by height pixels with the title; null with a one-line reason in
    // error when no X display can be opened.
    static std::unique_ptr<HostWindow> open(int width, int height, const std::string& title, std::string& error);
    ~HostWindow();

    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    // The X window id, for the plug-in's effEditOpen.
    unsigned long getId() const { return window; }
    void resize(int width, int height);
    // Handles the events that wait; false once the window was asked to close.
    bool handleEvents();
    // What the editor shows now: the pixels of the window's first child (XGetImage), opaque; the
    // null image when there is no child.
    q1framework::Image captureEditor();

private:
    HostWindow() = default;

    _XDisplay* display = nullptr;
    unsigned long window = 0;
    unsigned long deleteMessage = 0;  // the WM_DELETE_WINDOW atom
};
