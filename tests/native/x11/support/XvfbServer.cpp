#include "XvfbServer.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

XvfbServer::XvfbServer(const std::vector<std::string>& extraArguments)
{
    int channel[2];
    if (pipe(channel) != 0)
        return;
    process = fork();
    if (process == 0)
    {
        close(channel[0]);
        // A test program that crashes or is killed takes its server with it.
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        // The server's own output would keep the test runner's pipes open after the test.
        const int quiet = open("/dev/null", O_RDWR);
        dup2(quiet, STDIN_FILENO);
        dup2(quiet, STDOUT_FILENO);
        dup2(quiet, STDERR_FILENO);
        std::vector<std::string> arguments{"Xvfb", "-displayfd", std::to_string(channel[1]), "-screen", "0",
                                           "1920x1080x24", "-nolisten", "tcp", "-noreset"};
        arguments.insert(arguments.end(), extraArguments.begin(), extraArguments.end());
        std::vector<char*> argv;
        for (std::string& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        execvp("Xvfb", argv.data());
        _exit(127);
    }
    close(channel[1]);
    if (process < 0)
    {
        close(channel[0]);
        return;
    }
    // The server writes its display number and a line feed once it accepts clients.
    std::string number;
    pollfd waiting{channel[0], POLLIN, 0};
    while (poll(&waiting, 1, 10000) > 0)
    {
        char byte = 0;
        if (read(channel[0], &byte, 1) != 1 || byte == '\n')
            break;
        number += byte;
    }
    close(channel[0]);
    if (!number.empty())
        name = ":" + number;
}

XvfbServer::~XvfbServer()
{
    if (process <= 0)
        return;
    kill(process, SIGTERM);
    // Reaped if it is already gone; otherwise it is left to finish (it takes about two seconds).
    waitpid(process, nullptr, WNOHANG);
}
