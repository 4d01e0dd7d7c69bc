#pragma once

#include "foundation/runtime/AsyncCallback.h"
#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Timer.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// Mix-in for the tests' timers, callbacks and listeners: each call appends the object's name to a
// log shared by the test, then runs an optional action, which may start, stop or delete others or
// the object itself (the action runs from a copy, and nothing of the object is touched after it).
struct LoggedCalls
{
    LoggedCalls(std::string name, std::vector<std::string>* log) : name(std::move(name)), log(log) {}

    void record()
    {
        ++calls;
        log->push_back(name);
        if (const std::function<void()> run = action)
            run();
    }

    std::string name;
    std::vector<std::string>* log;
    int calls = 0;
    std::function<void()> action;
};

struct LoggingTimer : q1framework::Timer, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    void timerCallback() override { record(); }
};

struct LoggingCallback : q1framework::AsyncCallback, LoggedCalls
{
    using LoggedCalls::LoggedCalls;
    void handleAsyncCallback() override { record(); }
};

// One pass of the main thread's pump at the clock's time now.
inline void pump()
{
    q1framework::MessagePump::getInstance()->pump();
}
