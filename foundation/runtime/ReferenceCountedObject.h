#pragma once

#include <cstdint>

namespace q1framework
{

// Intrusive reference count for the shared internals of the framework's value handles
// (String::InternalString, MemoryBlock::Internal, images, fonts, cursors).
//
// The count holds the references beyond the first: a new object has a count of 0 and one owner.
// A release that finds the count at 0 deletes the object. The counting mode is fixed at
// construction: atomic objects may be shared across threads, plain ones stay on one thread.
//
// Thread contract: any thread for atomic objects; one thread at a time for plain ones.
class ReferenceCountedObject
{
public:
    explicit ReferenceCountedObject(bool atomicCount);
    virtual ~ReferenceCountedObject();

    ReferenceCountedObject(const ReferenceCountedObject&) = delete;
    ReferenceCountedObject& operator=(const ReferenceCountedObject&) = delete;

    // Adds one reference.
    void incReferenceCount();
    // Drops one reference; deletes the object when it was the last one.
    void decReferenceCount();

    // References beyond the first (0: one owner).
    int32_t getReferenceCount() const { return __atomic_load_n(&referenceCount, __ATOMIC_RELAXED); }
    bool isAtomic() const { return atomic; }

private:
    int32_t referenceCount;
    const bool atomic;
};

}  // namespace q1framework
