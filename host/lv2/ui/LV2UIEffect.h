#pragma once

namespace q1framework
{

class AudioPluginEditor;
class EditedPlugin;

// What an effect's LV2 user interface needs of the effect beyond its description: what a user
// interface must know of the plug-in for itself, since it may run where no plug-in object is (a
// host that gives no instance access, or runs the interface in another process). The effect
// makes it (getLV2UIEffect), as it makes its PluginDescription.
//
// Thread contract: any thread; a constant record, but for createEditor.
struct LV2UIEffect
{
    // The control ports, one per parameter in parameter order, and the meter ports
    // (LV2PortLayout); the same counts as the plug-in's getNumParameters and getNumMeters.
    int numParameters;
    int numMeters;
    // The 0..1 value of parameter `index` in a fresh instance.
    float (*getDefault)(int index);
    // A 0..1 value in the physical unit of its control port, and back, as the plug-in converts
    // them (AudioPlugin::toPhysicalValue, fromPhysicalValue).
    float (*toPhysical)(float value, int index);
    float (*fromPhysical)(float physical, int index);
    // The editor's size in pixels where no plug-in keeps one.
    int editorWidth;
    int editorHeight;
    // The resource pack the editor draws from (SharedResourcePack), in the bundle.
    const char* resourceFileName;
    // Main thread. The effect's editor of `plugin`, owned by the caller; null when it can make
    // none.
    AudioPluginEditor* (*createEditor)(EditedPlugin& plugin);
};

// Made by the effect.
const LV2UIEffect& getLV2UIEffect();

}  // namespace q1framework
