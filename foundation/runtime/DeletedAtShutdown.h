#pragma once

#include <cstdint>

namespace q1framework
{

// Mix-in base for the framework's process-wide singletons (the clock, the font engine, the
// fallback font, ...). Every live object is listed from construction on, and the framework's
// shutdown deletes what is still listed, newest first, so that singletons created on demand go
// with the last plug-in instance and a later instance makes them afresh.
//
// Objects still listed when the shared object is unloaded are deleted then.
//
// Thread contract: main thread only; the list has no lock.
class DeletedAtShutdown
{
public:
    // Lists this object.
    DeletedAtShutdown();
    // Takes this object off the list if it is still there; it never deletes anything else.
    virtual ~DeletedAtShutdown();

    DeletedAtShutdown(const DeletedAtShutdown&) = delete;
    DeletedAtShutdown& operator=(const DeletedAtShutdown&) = delete;

    // Deletes every listed object, the most recently created first. Each object leaves the list
    // before it is deleted; objects that a destructor creates are deleted as well, and objects that
    // a destructor deletes are skipped. Returns when the list is empty.
    static void deleteAll();

    // Number of objects listed now.
    static int32_t getCount();
};

}  // namespace q1framework
