#pragma once

#include "XvfbServer.h"

#include <string>

// An X server without GLX, for the tests of the X image put: started on construction and made the
// DISPLAY of the process (the framework opens its connection there with its first window), the
// DISPLAY before restored on destruction. Make it before whatever opens windows on it.
class DisplayWithoutGL
{
public:
    DisplayWithoutGL();
    ~DisplayWithoutGL();

    DisplayWithoutGL(const DisplayWithoutGL&) = delete;
    DisplayWithoutGL& operator=(const DisplayWithoutGL&) = delete;

    bool isRunning() const { return server.isRunning(); }

private:
    XvfbServer server;
    std::string previousDisplay;
};
