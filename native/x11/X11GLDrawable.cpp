#include "native/x11/X11GLDrawable.h"

#include <cstring>

namespace q1framework
{

namespace
{
// Whether the GLX extension string of the screen names extension as a whole word.
bool hasExtension(Display* display, int screen, const char* extension)
{
    const char* list = glXQueryExtensionsString(display, screen);
    const size_t length = std::strlen(extension);
    for (const char* at = list; at != nullptr && (at = std::strstr(at, extension)) != nullptr; at += length)
        if ((at == list || at[-1] == ' ') && (at[length] == ' ' || at[length] == 0))
            return true;
    return false;
}

void* lookUp(const char* name)
{
    return reinterpret_cast<void*>(glXGetProcAddressARB(reinterpret_cast<const GLubyte*>(name)));
}
}  // namespace

XVisualInfo* X11GLDrawable::chooseVisual(Display* display, int screen, bool& doubleBuffered)
{
    int errorBase = 0, eventBase = 0;
    if (!glXQueryExtension(display, &errorBase, &eventBase))
        return nullptr;
    int single[] = {GLX_RGBA, GLX_RED_SIZE, 8, GLX_GREEN_SIZE, 8, GLX_BLUE_SIZE, 8, GLX_DEPTH_SIZE, 24, None};
    if (XVisualInfo* visual = glXChooseVisual(display, screen, single))
    {
        doubleBuffered = false;
        return visual;
    }
    int twice[] = {GLX_RGBA, GLX_DOUBLEBUFFER, GLX_RED_SIZE, 8, GLX_GREEN_SIZE, 8, GLX_BLUE_SIZE, 8,
                   GLX_DEPTH_SIZE, 24, None};
    doubleBuffered = true;
    return glXChooseVisual(display, screen, twice);
}

X11GLDrawable* X11GLDrawable::create(Display* display, int screen, ::Window window, XVisualInfo& visual,
                                 bool doubleBuffered)
{
    const GLXContext context = glXCreateContext(display, &visual, nullptr, True);
    if (context == nullptr)
        return nullptr;
    return new X11GLDrawable(display, screen, window, context, doubleBuffered);
}

X11GLDrawable::X11GLDrawable(Display* glDisplay, int glScreen, ::Window glWindow, GLXContext glContext,
                         bool isDoubleBuffered)
    : display(glDisplay), screen(glScreen), window(glWindow), context(glContext), doubleBuffered(isDoubleBuffered)
{
}

X11GLDrawable::~X11GLDrawable()
{
    releaseCurrent();
    glXDestroyContext(display, context);
}

bool X11GLDrawable::makeCurrent()
{
    return glXMakeCurrent(display, window, context) == True;
}

void X11GLDrawable::releaseCurrent()
{
    if (glXGetCurrentContext() == context)
        glXMakeCurrent(display, None, nullptr);
}

bool X11GLDrawable::isCurrent() const
{
    return glXGetCurrentContext() == context;
}

void X11GLDrawable::swapBuffers()
{
    if (doubleBuffered)
        glXSwapBuffers(display, window);
}

bool X11GLDrawable::setSwapInterval(int interval)
{
    if (hasExtension(display, screen, "GLX_EXT_swap_control"))
    {
        if (auto set = reinterpret_cast<PFNGLXSWAPINTERVALEXTPROC>(lookUp("glXSwapIntervalEXT")))
        {
            set(display, window, interval);
            return true;
        }
    }
    if (hasExtension(display, screen, "GLX_MESA_swap_control") && isCurrent())
    {
        if (auto set = reinterpret_cast<PFNGLXSWAPINTERVALMESAPROC>(lookUp("glXSwapIntervalMESA")))
            return set(static_cast<unsigned int>(interval)) == 0;
    }
    if (interval > 0 && hasExtension(display, screen, "GLX_SGI_swap_control") && isCurrent())
    {
        if (auto set = reinterpret_cast<PFNGLXSWAPINTERVALSGIPROC>(lookUp("glXSwapIntervalSGI")))
            return set(interval) == 0;
    }
    return false;
}

void* X11GLDrawable::getProcAddress(const char* name)
{
    return lookUp(name);
}

}  // namespace q1framework
