// Every program that links this starts an Xvfb of its own before its tests and points DISPLAY
// at it, so that running it (through ctest or alone) needs no display from outside.

#include "XvfbServer.h"

#include <gtest/gtest.h>

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
    }

    void TearDown() override { server.reset(); }

private:
    std::unique_ptr<XvfbServer> server;
};

[[maybe_unused]] testing::Environment* const environment = testing::AddGlobalTestEnvironment(new X11TestEnvironment);
}  // namespace
