#include "foundation/runtime/Thread.h"

#include "foundation/runtime/MessagePump.h"
#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ScopedLock.h"

#include <atomic>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace q1framework
{

// The system side of one started thread. The owner frees it only after the thread has finished.
struct NativeThread
{
    Thread* owner;
    pthread_t handle{};
    std::atomic<bool> cancelled{false};
    std::atomic<bool> executing{true};   // true from the start request until run has returned

    Mutex priorityLock;                  // guards the three fields below
    pid_t kernelThreadId = 0;            // while the thread runs; 0 before and after
    int baseNice = 0;                    // the nice value of the thread that started it
    int priority = Thread::defaultPriority;
};

namespace
{
// Linux keeps a nice value per thread (POSIX only per process), from -20 (most favoured) to 19.
// Priority 5 is the starter's own nice value; each step away from it moves 3.8 nice levels, so
// that 0 and 10 reach the two ends of the range from an ordinary starter.
int niceValueFor(int priority, int baseNice)
{
    const int clamped = priority < 0 ? 0 : (priority > 10 ? 10 : priority);
    const int nice = baseNice + static_cast<int>(std::lround((Thread::defaultPriority - clamped) * 3.8));
    return nice < -20 ? -20 : (nice > 19 ? 19 : nice);
}

// The most favoured nice value that an unprivileged thread may set for itself (RLIMIT_NICE).
int lowestPermittedNiceValue()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NICE, &limit) != 0)
        return 20;
    if (limit.rlim_cur == RLIM_INFINITY || limit.rlim_cur >= 40)
        return -20;
    return 20 - static_cast<int>(limit.rlim_cur);
}

// Called with priorityLock held, once the thread's kernel id is known.
void applyPriority(NativeThread& native)
{
    const int target = niceValueFor(native.priority, native.baseNice);
    if (setpriority(PRIO_PROCESS, static_cast<id_t>(native.kernelThreadId), target) == 0)
        return;
    // Refused: the process may not raise priority that far. Take the nearest it may take, if
    // that is still a raise; otherwise the thread keeps what it has.
    errno = 0;
    const int current = getpriority(PRIO_PROCESS, static_cast<id_t>(native.kernelThreadId));
    if (errno != 0)
        return;
    const int floor = lowestPermittedNiceValue();
    const int nearest = target > floor ? target : floor;
    if (nearest < current)
        setpriority(PRIO_PROCESS, static_cast<id_t>(native.kernelThreadId), nearest);
}

void* threadEntry(void* argument)
{
    auto* native = static_cast<NativeThread*>(argument);
    {
        ScopedLock hold(native->priorityLock);
        native->kernelThreadId = static_cast<pid_t>(syscall(SYS_gettid));
        applyPriority(*native);
    }
    native->owner->run();
    {
        // The kernel may give the id to another thread once this one is gone.
        ScopedLock hold(native->priorityLock);
        native->kernelThreadId = 0;
    }
    // The last access: the owner may free the record as soon as it sees this.
    native->executing.store(false, std::memory_order_release);
    return nullptr;
}
}  // namespace

Thread::Thread() = default;

Thread::~Thread()
{
    stopThread();
}

void Thread::startThread(int newPriority)
{
    if (native != nullptr)
    {
        if (native->executing.load(std::memory_order_acquire))
            return;
        stopThread();
    }
    if (newPriority != priority)
        priority = newPriority;

    auto* created = new NativeThread{};
    created->owner = this;
    errno = 0;
    const int callerNice = getpriority(PRIO_PROCESS, 0);
    created->baseNice = errno == 0 ? callerNice : 0;
    created->priority = priority;
    native = created;
    if (pthread_create(&created->handle, nullptr, threadEntry, created) != 0)
    {
        native = nullptr;
        delete created;
    }
}

void Thread::setPriority(int newPriority)
{
    if (newPriority == priority || native == nullptr)
        return;
    priority = newPriority;
    ScopedLock hold(native->priorityLock);
    native->priority = newPriority;
    // A thread that has not run yet applies the priority itself when it starts.
    if (native->kernelThreadId != 0)
        applyPriority(*native);
}

void Thread::stopThread()
{
    if (native == nullptr)
        return;
    native->cancelled.store(true, std::memory_order_release);
    // A thread cannot wait for its own end; the owner's next stop or start cleans up.
    if (pthread_equal(pthread_self(), native->handle))
        return;
    while (native->executing.load(std::memory_order_acquire))
        usleep(1000);
    pthread_join(native->handle, nullptr);
    delete native;
    native = nullptr;
}

bool Thread::isThreadRunning() const
{
    return native != nullptr && native->executing.load(std::memory_order_acquire);
}

bool Thread::threadShouldExit() const
{
    return native != nullptr && native->cancelled.load(std::memory_order_acquire);
}

void Thread::sleep(int ms)
{
    if (ms <= 0)
        return;
    timespec remaining{ms / 1000, static_cast<long>(ms % 1000) * 1000000L};
    while (nanosleep(&remaining, &remaining) != 0 && errno == EINTR)
    {
    }
}

bool Thread::isMainThread()
{
    return MessagePump::isMainThread();
}

}  // namespace q1framework
