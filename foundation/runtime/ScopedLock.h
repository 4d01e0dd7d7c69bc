#pragma once

#include "foundation/runtime/Mutex.h"

namespace q1framework
{

// Holds a Mutex for the lifetime of a scope: locks in the constructor, unlocks in the destructor.
// The mutex must outlive the lock.
class ScopedLock
{
public:
    explicit ScopedLock(Mutex& mutexToHold) : mutex(&mutexToHold) { mutex->lock(); }
    ~ScopedLock() { mutex->unlock(); }

    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    Mutex* mutex;
};

}  // namespace q1framework
