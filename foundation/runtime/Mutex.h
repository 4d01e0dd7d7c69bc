#pragma once

#include <pthread.h>

namespace q1framework
{

// A recursive lock: the thread that holds it may lock it again, and must unlock it as often as it
// locked it. There is no try-lock. One guards each plug-in's audio block against its parameter
// changes, and each MessagePoster's pending list.
//
// Thread contract: any thread; lock and unlock on the same thread.
class Mutex
{
public:
    Mutex();
    ~Mutex();

    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    // Any thread: waits until the lock is free or already held by this thread.
    void lock();
    // Any thread that holds the lock: gives up one level of it.
    void unlock();

private:
    pthread_mutex_t mutex;
};

}  // namespace q1framework
