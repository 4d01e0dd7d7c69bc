#pragma once

namespace q1framework
{

class PluginEditorView;

// What an editor reads of the plug-in it edits, wherever that plug-in is: the stored values of
// its parameters (0..1), the levels its meters show, the size of the editor kept with the
// plug-in, and the marks of changed values (PluginEditorView) for the editors attached to it.
//
// An AudioPlugin is one, for an editor in the plug-in's own address space (VST 2.4). An LV2 user
// interface edits an LV2EditedPlugin, whose values the host's port notifications fill, and which
// takes the meters and the size from the plug-in's instance where the host gives access to it.
// The editor writes nothing here but its size: what the user sets goes to its listeners
// (AudioPluginEditor::Listener), which hand it to the host.
//
// Thread contract: the editor calls everything on its thread (the main thread, see
// native/window/UiThread.h); an AudioPlugin also answers the parameters on any thread.
class EditedPlugin
{
public:
    virtual ~EditedPlugin() = default;

    // The parameter count, and the stored 0..1 value of one (0 for an index out of range).
    virtual int getNumParameters() = 0;
    virtual double getParameter(int index) = 0;

    // Once per frame of an editor: the value meter `index` shows now (the effect's meters, as
    // AudioPlugin::getNumMeters counts them; for Kelvane those of KLMeters). A meter that shows
    // the peak since it was last read starts again. 0 for an index out of range.
    virtual float readMeter(int index) = 0;

    // The editor's size in pixels kept with the plug-in, which the next editor opens at; a
    // resize of the editor by the user writes it.
    virtual int getEditorWidth() = 0;
    virtual int getEditorHeight() = 0;
    virtual void setEditorSize(int width, int height) = 0;

    // From an editor's constructor and destructor: the editor is marked with every value that
    // changes while it is attached. Attaching twice, or null, does nothing.
    virtual void addEditor(PluginEditorView* editor) = 0;
    virtual void removeEditor(PluginEditorView* editor) = 0;
};

}  // namespace q1framework
