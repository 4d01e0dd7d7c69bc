#pragma once

#include "render/context/GLDrawable.h"

#include <GL/glx.h>

namespace q1framework
{

// The GL drawable of an X window: a GLX context of the window's visual, direct rendering where
// the driver offers it.
//
// Buffering. A single-buffered visual is chosen where the driver offers one: the
// frame ends with glFlush, which presents the front buffer (Mesa presents it at the flush,
// llvmpipe under Xvfb exactly), and no frame ever waits for a vertical blank on the host's
// thread. Only a driver without single-buffered visuals gets a double-buffered one, and then a
// frame ends with glXSwapBuffers.
//
// The swap interval goes through GLX_EXT_swap_control, else GLX_MESA_swap_control, else
// GLX_SGI_swap_control (which cannot set 0), whichever the display offers.
//
// Thread contract: main thread (see native/window/UiThread.h); the context is current only
// between makeCurrent and releaseCurrent within one host call.
class X11GLDrawable : public GLDrawable
{
public:
    // The visual for a GL window on screen, or null without GLX or a suitable visual; the caller
    // frees it with XFree. doubleBuffered tells which kind it is.
    static XVisualInfo* chooseVisual(Display* display, int screen, bool& doubleBuffered);
    // A drawable over window, which was created with visual; null when no context can be made.
    static X11GLDrawable* create(Display* display, int screen, ::Window window, XVisualInfo& visual, bool doubleBuffered);
    // Releases the context if it is current on this thread, then destroys it.
    ~X11GLDrawable() override;

    bool makeCurrent() override;
    void releaseCurrent() override;
    bool isCurrent() const override;
    bool isDoubleBuffered() const override { return doubleBuffered; }
    void swapBuffers() override;
    bool setSwapInterval(int interval) override;
    void* getProcAddress(const char* name) override;
    void* getNativeContext() const override { return context; }

private:
    X11GLDrawable(Display* display, int screen, ::Window window, GLXContext context, bool doubleBuffered);

    Display* display;
    int screen;
    ::Window window;
    GLXContext context;
    bool doubleBuffered;
};

}  // namespace q1framework
