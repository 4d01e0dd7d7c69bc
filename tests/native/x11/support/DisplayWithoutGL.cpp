#include "DisplayWithoutGL.h"

#include <cstdlib>

DisplayWithoutGL::DisplayWithoutGL() : server({"-extension", "GLX"})
{
    if (const char* display = std::getenv("DISPLAY"))
        previousDisplay = display;
    if (server.isRunning())
        setenv("DISPLAY", server.getDisplayName().c_str(), 1);
}

DisplayWithoutGL::~DisplayWithoutGL()
{
    setenv("DISPLAY", previousDisplay.c_str(), 1);
}
