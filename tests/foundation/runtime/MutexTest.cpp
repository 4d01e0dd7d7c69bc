#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ScopedLock.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using q1framework::Mutex;
using q1framework::ScopedLock;

TEST(Mutex, ThreadedRecursiveLockIsHeldUntilTheLastUnlock)
{
    Mutex mutex;
    mutex.lock();
    mutex.lock();   // the owner may lock again without waiting for itself
    std::atomic<bool> acquired{false};
    std::thread other([&] {
        ScopedLock hold(mutex);
        acquired = true;
    });
    q1framework::Thread::sleep(20);
    mutex.unlock();
    q1framework::Thread::sleep(20);
    EXPECT_FALSE(acquired) << "another thread got in while the lock was still held once";
    mutex.unlock();
    other.join();
    EXPECT_TRUE(acquired);
}
