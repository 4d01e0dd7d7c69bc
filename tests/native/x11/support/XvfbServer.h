#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

// A virtual X server of the test's own: Xvfb on a display number it picks itself (-displayfd,
// since the socket folder is shared with other jobs), with -noreset, so that a client connecting
// while the last one leaves is never refused. Stopped by its process id, and by the system when
// the program dies without stopping it.
class XvfbServer
{
public:
    // Starts "Xvfb -displayfd N -screen 0 1920x1080x24 -nolisten tcp -noreset" and the extra
    // arguments, and waits until it tells its display number. Nothing starts when Xvfb is
    // missing; isRunning then answers false.
    explicit XvfbServer(const std::vector<std::string>& extraArguments = {});
    // Stops the server (SIGTERM); it finishes exiting on its own.
    ~XvfbServer();

    XvfbServer(const XvfbServer&) = delete;
    XvfbServer& operator=(const XvfbServer&) = delete;

    bool isRunning() const { return process > 0 && !name.empty(); }
    // ":N".
    const std::string& getDisplayName() const { return name; }

private:
    pid_t process = -1;
    std::string name;
};
