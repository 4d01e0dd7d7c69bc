#pragma once

namespace q1framework
{

// The process-wide count of live plug-in instances built on the framework, which ties the
// framework's shared state (FrameworkInitialiser) to the instances rather than to the process:
// the first instance brings it up, the last one takes it down, and a later first instance brings
// it up again. A host may load the shared object, make and delete instances, and unload it, any
// number of times.
//
// Thread contract: the host threads that make and delete instances; a lock guards the count.
// The bring-up makes the thread of the first instance the framework's main thread.
class FrameworkInstances
{
public:
    // An instance begins: on the move from 0 to 1 the framework comes up.
    static void add();
    // An instance has ended: on the move to 0 the framework goes down. Unbalanced calls at 0 do
    // nothing.
    static void remove();
    // Live instances now.
    static int getCount();
};

}  // namespace q1framework
