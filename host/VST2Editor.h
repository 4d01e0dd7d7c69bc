#pragma once

#include "editor/AudioPluginEditor.h"
#include "host/Holder.h"
#include "host/VST2EditorBase.h"

namespace q1framework
{

class AudioPlugin;

// The adapter's editor: opens the plug-in's editor (AudioPlugin::createEditor) in a Holder, a
// window of the framework's own inside the host's window, and closes it again. Each open makes a
// new editor and a new holder; the parameter values and the editor's size live in the plug-in,
// so they outlive a close.
//
// The host's window comes as the pointer of effEditOpen: on X11 a window id. Whatever a host
// passes beside it (some pass their Display in the value) is not used: the holder's window is a
// child of that window on the framework's own display connection, at (0, 0) with the editor's
// size, drawn through GL where a context can be made and through the X image put otherwise.
//
// Idle: effEditIdle runs the framework's user interface for a moment (UiThread::idle: native
// events, timers, the frame loop), then shows the parameters the plug-in marked since.
//
// Size: a size the editor takes is the one given to the host (getRect), and is asked of the host
// by audioMasterSizeWindow (Holder::Host).
//
// Ownership: given to AudioEffect::setEditor, which owns it. The plug-in and the listener (the
// wrapper's, which hears the user's gestures and values) are not owned.
// Thread contract: the host's user-interface calls; each enters the user-interface thread first.
class VST2Editor : public VST2EditorBase, private Holder::Host
{
public:
    VST2Editor(AudioEffect* effect, AudioPlugin* plugin, AudioPluginEditor::Listener* listener);
    // Closes an open editor.
    ~VST2Editor() override;

    // Makes the editor and its holder in parent and answers true. False when the plug-in makes
    // no editor (the parent stays stored, as for an effect without one) or no window can be made
    // in parent (a window that does not exist, no display): then nothing stays open.
    bool open(void* parent) override;
    // Deletes the holder with the editor; the plug-in stops measuring levels.
    void close() override;
    void idle() override;

    AudioPlugin* getPlugin() const { return plugin; }
    // The holder while open, else null.
    Holder* getHolder() const { return holder; }

protected:
    bool forwardKey(bool down, int key) override;

private:
    // Holder::Host: stores the size for getRect, then asks the host (AudioEffectX::sizeWindow).
    bool resizeHostWindow(const Point& size) override;

    Holder* holder = nullptr;  // owned; null while closed
    AudioPlugin* plugin;
    AudioPluginEditor::Listener* listener;
};

}  // namespace q1framework
