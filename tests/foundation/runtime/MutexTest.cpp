#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/Thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using q1framework::Mutex;

TEST(Mutex, ThreadedRecursiveLockIsHeldUntilTheLastUnlock)
{
    Mutex mutex;
    mutex.lock();
    mutex.lock();   // the owner may lock again without waiting for itself

    std::atomic<bool> acquired{false};
    std::thread other([&] {
        mutex.lock();
        acquired = true;
        mutex.unlock();
    });
    q1framework::Thread::sleep(20);
    EXPECT_FALSE(acquired) << "another thread got in while the lock was held twice";
    mutex.unlock();
    q1framework::Thread::sleep(20);
    EXPECT_FALSE(acquired) << "another thread got in while the lock was still held once";
    mutex.unlock();
    other.join();
    EXPECT_TRUE(acquired);
}

TEST(Mutex, ThreadedLockKeepsIncrementsWhole)
{
    Mutex mutex;
    long counter = 0;   // deliberately plain: only the lock protects it
    std::thread threads[4];
    for (std::thread& thread : threads)
        thread = std::thread([&] {
            for (int i = 0; i < 50000; ++i)
            {
                mutex.lock();
                mutex.lock();
                ++counter;
                mutex.unlock();
                mutex.unlock();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, 200000);
}
