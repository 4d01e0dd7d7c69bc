#include "foundation/runtime/ReferenceCountedObject.h"

namespace q1framework
{

ReferenceCountedObject::ReferenceCountedObject(bool atomicCount) : referenceCount(0), atomic(atomicCount) {}

ReferenceCountedObject::~ReferenceCountedObject() = default;

void ReferenceCountedObject::incReferenceCount()
{
    if (atomic)
        __atomic_add_fetch(&referenceCount, 1, __ATOMIC_SEQ_CST);
    else
        ++referenceCount;
}

void ReferenceCountedObject::decReferenceCount()
{
    // The count goes negative when the last owner lets go.
    if (atomic)
    {
        if (__atomic_add_fetch(&referenceCount, -1, __ATOMIC_SEQ_CST) < 0)
            delete this;
    }
    else if (referenceCount-- == 0)
    {
        delete this;
    }
}

}  // namespace q1framework
