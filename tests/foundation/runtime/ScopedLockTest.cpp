#include "foundation/runtime/ScopedLock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using q1framework::Mutex;
using q1framework::ScopedLock;

TEST(ScopedLock, ThreadedHoldsTheMutexForItsScopeOnly)
{
    Mutex mutex;
    std::atomic<int> phase{0};
    std::atomic<bool> otherInside{false};
    std::thread other;
    {
        ScopedLock hold(mutex);
        ScopedLock again(mutex);   // nested scopes on one thread
        other = std::thread([&] {
            phase = 1;
            ScopedLock inside(mutex);
            otherInside = true;
        });
        while (phase.load() == 0)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_FALSE(otherInside) << "the lock was free inside the scope";
    }
    other.join();
    EXPECT_TRUE(otherInside);
}
