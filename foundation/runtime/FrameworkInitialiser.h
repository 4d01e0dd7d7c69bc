#pragma once

namespace q1framework
{

// Brings the framework's shared state up for the first plug-in instance of the process and takes
// it down after the last one; the host adapter keeps the count and owns the one object.
//
// The foundation knows nothing of fonts, look-and-feels or components, so the layers that own
// them plug their steps in as hooks, and absent hooks are skipped. Bring-up, in this order:
//   platformSetUp, createFontLibrary, createDefaultLookAndFeel.
// Take-down, in this order:
//   clearDefaultLookAndFeelSelection, then DeletedAtShutdown::deleteAll, then
//   destroyDefaultLookAndFeel, destroyFontLibrary, releaseComponentStatics.
// A later bring-up after a take-down runs the same steps again.
//
// Thread contract: main thread only, with at most one object alive at a time.
class FrameworkInitialiser
{
public:
    enum class Hook
    {
        platformSetUp,                     // the platform layer's early set-up
        createFontLibrary,                 // the font engine, into its global pointer
        createDefaultLookAndFeel,          // the default LookAndFeel, into its global pointer
        clearDefaultLookAndFeelSelection,  // no look-and-feel selected any more
        destroyDefaultLookAndFeel,         // deletes it and clears its pointer
        destroyFontLibrary,                // deletes it and clears its pointer
        releaseComponentStatics,           // the component layer's final clean-up
        count
    };

    using HookFunction = void (*)();

    // Main thread, before the bring-up that should run it: installs function for hook, replacing
    // the one there; null removes it.
    static void setHook(Hook hook, HookFunction function);
    static HookFunction getHook(Hook hook);

    // Makes the calling thread the main thread and runs the bring-up steps.
    FrameworkInitialiser();
    // Runs the take-down steps.
    ~FrameworkInitialiser();

    FrameworkInitialiser(const FrameworkInitialiser&) = delete;
    FrameworkInitialiser& operator=(const FrameworkInitialiser&) = delete;
};

}  // namespace q1framework
