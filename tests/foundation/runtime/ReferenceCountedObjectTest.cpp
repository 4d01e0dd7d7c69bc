#include "foundation/runtime/ReferenceCountedObject.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using q1framework::ReferenceCountedObject;

namespace
{
struct Counted : ReferenceCountedObject
{
    Counted(bool atomic, int* deletions) : ReferenceCountedObject(atomic), deletions(deletions) {}
    ~Counted() override { ++*deletions; }
    int* deletions;
};
}

TEST(ReferenceCountedObject, CountStartsAtZeroMeaningOneOwnerInBothModes)
{
    for (bool atomic : {false, true})
    {
        SCOPED_TRACE(atomic ? "atomic" : "plain");
        int deletions = 0;
        auto* object = new Counted(atomic, &deletions);
        object->incReferenceCount();
        object->incReferenceCount();
        EXPECT_EQ(object->getReferenceCount(), 2);
        object->decReferenceCount();
        object->decReferenceCount();
        EXPECT_EQ(deletions, 0) << "two extra references released, the owner remains";
        object->decReferenceCount();
        EXPECT_EQ(deletions, 1);
    }
}

TEST(ReferenceCountedObject, ThreadedAtomicCountSurvivesConcurrentSharing)
{
    int deletions = 0;
    auto* object = new Counted(true, &deletions);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([object] {
            for (int i = 0; i < 100000; ++i)
            {
                object->incReferenceCount();
                object->decReferenceCount();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(deletions, 0);
    object->decReferenceCount();
    EXPECT_EQ(deletions, 1);
}
