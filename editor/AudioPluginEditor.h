#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "plugin/EditedPlugin.h"
#include "plugin/PluginEditorView.h"
#include "ui/component/Component.h"

namespace q1framework
{

// The format-independent root of an effect's editor: the component a host adapter shows in its
// window (Holder), with the plug-in it edits and the listeners that hear what the user does
// there. An effect's editor derives from it and shows its controls.
//
// What it edits is an EditedPlugin: the plug-in itself where the editor runs in the plug-in's
// address space, or what a user interface knows of a plug-in it reaches only through a format's
// ports (LV2EditedPlugin). The editor writes no value there: the listeners hand the user's values
// to the host, which sets them.
//
// Values reach the editor without the editor ever running on another thread: the plug-in marks
// the parameters whose stored values changed (PluginEditorView), on whichever thread changed them
// (a host's automation thread, its audio thread, its main thread loading a chunk). The editor
// takes the marks on its own thread, in every frame (tick) and whenever the adapter asks
// (refreshChangedControls, at the host's idle call), and shows each marked parameter again
// through refreshControl.
//
// Lifetime: attaches itself to the plug-in's editors in the constructor and detaches in the
// destructor (a plug-in measures levels only while an editor is attached). The edited plug-in
// must outlive it; listeners are not owned.
//
// Thread contract: main thread (the host's user-interface calls), but for the marks.
class AudioPluginEditor : public Component, public PluginEditorView
{
public:
    // Hears the user's doings in the editor. Empty defaults; not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // The editor wants size (pixels); whoever embeds it resizes its window.
        virtual void sizeChanged(const Point& size) { (void)size; }
        // The user's gesture on parameter index begins (a press on its control).
        virtual void gestureBegan(AudioPluginEditor* editor, int index) { (void)editor, (void)index; }
        // The user set parameter index to value, 0..1.
        virtual void valueChanged(float value, AudioPluginEditor* editor, int index)
        {
            (void)value, (void)editor, (void)index;
        }
        // The gesture on parameter index ends (the release).
        virtual void gestureEnded(AudioPluginEditor* editor, int index) { (void)editor, (void)index; }
    };

    explicit AudioPluginEditor(EditedPlugin& plugin);
    ~AudioPluginEditor() override;

    EditedPlugin& getPlugin() const { return plugin; }

    // Appends listener unless it is there already; null is ignored.
    void addListener(Listener* listener);
    // Removes it, keeping the order of the others.
    void removeListener(Listener* listener);
    using Component::addListener;
    using Component::removeListener;

    // The editor's size becomes width by height; with notify every listener hears sizeChanged,
    // in the order they were added.
    void resize(int width, int height, bool notify);
    // The host resized the editor's window to size (a host whose user drags its window): the
    // editor takes the nearest size it can show, keeps it with the plug-in, and resizes with
    // notify when that differs from its present size, so that the host hears the size taken.
    // Sizes below 1 pixel are ignored. By default the editor keeps its size.
    virtual void offerSize(const Point& size);

    // Each calls one operation on every listener, in order.
    void notifyGestureBegan(int index);
    void notifyValueChanged(float value, int index);
    void notifyGestureEnded(int index);

    // Shows the stored value of parameter index on its control again. Nothing by default.
    virtual void refreshControl(int index);
    // Takes the plug-in's marks and refreshes each marked parameter (every parameter when all
    // are marked), in index order.
    void refreshChangedControls();
    // Whether the editor draws over its frames through the rendering context (afterRender), so
    // that its window must give it one on every presenter. False by default.
    virtual bool drawsOverlay() const { return false; }

    // Component: refreshChangedControls, once a frame.
    void tick() override;

private:
    EditedPlugin& plugin;
    Array<Listener*> listeners;  // not owned
};

}  // namespace q1framework
