// Every program that links this starts an Xvfb of its own before its tests and points DISPLAY
// at it, so that running it (through ctest or alone) needs no display from outside.

#include <gtest/gtest.h>

#include "XvfbServer.h"

#include <GL/glx.h>

#include <cstdlib>
#include <memory>

namespace
{
class X11TestEnvironment : public testing::Environment
{
public:
    void SetUp() override
    {
        server = std::make_unique<XvfbServer>();
        ASSERT_TRUE(server->isRunning()) << "Xvfb did not start (scripts/install-deps.sh installs it)";
        setenv("DISPLAY", server->getDisplayName().c_str(), 1);
        keepGLDriverLoaded();
    }

    void TearDown() override { server.reset(); }

private:
    // Mesa makes one-time allocations in its driver that it keeps for the life of the driver,
    // and unloads the driver when the last display connection using GLX closes. A connection of
    // the program's own, with a GL context, stays open to the end, so that the driver stays
    // loaded and LeakSanitizer finds those allocations still referenced.
    static void keepGLDriverLoaded()
    {
        Display* display = XOpenDisplay(nullptr);
        int attributes[] = {GLX_RGBA, None};
        XVisualInfo* visual = display != nullptr ? glXChooseVisual(display, DefaultScreen(display), attributes) : nullptr;
        if (visual != nullptr)
        {
            glXCreateContext(display, visual, nullptr, True);
            XFree(visual);
        }
    }

    std::unique_ptr<XvfbServer> server;
};

[[maybe_unused]] testing::Environment* const environment = testing::AddGlobalTestEnvironment(new X11TestEnvironment);
}  // namespace
