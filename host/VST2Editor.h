#pragma once

#include "host/AEffEditor.h"

namespace q1framework
{

class AudioPlugin;

// The adapter's editor as the host sees it: the rectangle the host sizes its window to, and the
// open and close calls. An effect's editor is shown inside the host's window by the editor layer;
// until that layer is part of the build there is nothing to show, so the rectangle stays at its
// initial 1000 by 1000 pixels and open answers false, as for an effect that makes no editor.
//
// Ownership: the wrapper gives it to AudioEffect::setEditor, which owns it. The plug-in is not
// owned. Thread contract: main thread (the host's editor calls).
class VST2Editor : public AEffEditor
{
public:
    static constexpr int initialWidth = 1000;
    static constexpr int initialHeight = 1000;

    VST2Editor(AudioEffect* effect, AudioPlugin* plugin);

    // Main thread. The editor's size from (0, 0), each side narrowed to 16 bits; true. (open and
    // close stay AEffEditor's: the host's window is stored and cleared, and no editor is made.)
    bool getRect(ERect** rectangle) override;

    AudioPlugin* getPlugin() const { return plugin; }

private:
    int width = initialWidth;    // pixels, as told to the host
    int height = initialHeight;
    ERect rect{};
    AudioPlugin* plugin;
};

}  // namespace q1framework
