#pragma once

namespace q1framework
{

class ResourcePack;

// The effect's resource pack ("resources.bin" in the bundle), opened by the first plug-in
// instance of the process and shared by every instance until the last one ends; the editors read
// their pictures from it. The count of instances here is the effect's own, apart from the
// framework's.
//
// The plug-in layer does not know how a pack is read: the layer that sets the shared object up
// (the plug-in's entry, which links the media layer) registers the operations that load and
// delete one. Without them nothing is loaded and get() answers null.
//
// Thread contract: the host threads that make and delete plug-in instances; a lock guards the
// count, so two hosts' threads may do so at once.
class SharedResourcePack
{
public:
    // Loads the pack of the resource file fileName, null when there is none; deletes one.
    using LoadFunction = ResourcePack* (*)(const char* fileName);
    using UnloadFunction = void (*)(ResourcePack* pack);

    // Before the first instance: the operations to use; null removes them.
    static void setFunctions(LoadFunction load, UnloadFunction unload);

    // A plug-in instance begins: the first one loads the pack of fileName.
    static void acquire(const char* fileName);
    // A plug-in instance ends: the last one deletes the pack.
    static void release();

    // The shared pack, null when none is loaded. Owned here.
    static ResourcePack* get();
    // Plug-in instances that hold the pack now.
    static int getInstanceCount();
};

}  // namespace q1framework
