#pragma once

namespace q1framework
{

// What the window system offers a window that draws through OpenGL: a GL context bound to the
// window's drawable, made by the native layer (over GLX on X11). OpenGLContext draws through it
// and never sees the window system itself.
//
// Thread contract: main thread, that is whichever host thread is calling into the user
// interface at the moment (see native/window/UiThread.h). A GL context can be current on one
// thread only, so whoever makes it current releases it before the host's call returns.
class GLDrawable
{
public:
    virtual ~GLDrawable() = default;

    // Makes the context current on the calling thread, bound to the window. False when the
    // window system refuses (the window is gone); the GL calls that follow then go nowhere.
    virtual bool makeCurrent() = 0;
    // Leaves the calling thread with no current context, if this one is current there.
    virtual void releaseCurrent() = 0;
    // Whether this context is the calling thread's current one.
    virtual bool isCurrent() const = 0;

    // Whether the drawable has a back buffer: then a frame ends with swapBuffers, otherwise with
    // glFlush into the front buffer, which the window shows.
    virtual bool isDoubleBuffered() const = 0;
    // Shows the back buffer (a double-buffered drawable only; otherwise nothing happens).
    virtual void swapBuffers() = 0;
    // Sets how many vertical blanks a swap waits for (0: none, 1: one). False when the window
    // system has no way to set it; the interval is then the driver's.
    virtual bool setSwapInterval(int interval) = 0;

    // The address of a GL entry point by name, for those beyond GL 1.2 (buffers, shaders,
    // framebuffers); null when the implementation has none of that name.
    virtual void* getProcAddress(const char* name) = 0;
    // The window system's handle of the context (a GLXContext on X11), for identification only.
    virtual void* getNativeContext() const = 0;
};

}  // namespace q1framework
