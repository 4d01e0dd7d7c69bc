#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Mix-in for the tests' timers, callbacks and listeners: each call appends the object's name to a
// log shared by the test, then runs an optional action, which may start, stop or delete others.
struct LoggedCalls
{
    LoggedCalls(std::string name, std::vector<std::string>* log) : name(std::move(name)), log(log) {}

    void record()
    {
        ++calls;
        log->push_back(name);
        if (action)
            action();
    }

    std::string name;
    std::vector<std::string>* log;
    int calls = 0;
    std::function<void()> action;
};
