#pragma once

#include "editor/AudioPluginEditor.h"

class KLAudioPlugin;
class MainComponent;

namespace q1framework
{
class AdapterComponent;
}

// Kelvane's editor: one picture with its controls (MainComponent, at the picture's own 1500 x 350
// pixels) shown through a scaling container (an AdapterComponent) at whatever size the editor
// has. It opens at the size kept with the plug-in (EditedPlugin::getEditorWidth and
// getEditorHeight); a drag of the resize zone changes it, and so does a host that resizes the
// editor's window (offerSize), within the same limits and at the picture's aspect.
// The meters and the LED draw over each frame (drawsOverlay), through the window's rendering
// context.
//
// Thread contract: main thread only, but for the marks of AudioPluginEditor.
class KLAudioPluginEditor : public q1framework::AudioPluginEditor
{
public:
    // Made at the editor size kept with plugin, which must outlive it.
    explicit KLAudioPluginEditor(q1framework::EditedPlugin& plugin);
    ~KLAudioPluginEditor() override;

    // The factory that the shared object registers with KLAudioPlugin::setEditorFactory.
    static q1framework::AudioPluginEditor* create(KLAudioPlugin& plugin);

    MainComponent& getMainComponent() const { return *mainComponent; }
    q1framework::AdapterComponent& getContainer() const { return *container; }

    // AudioPluginEditor. A control that is pressed now shows the stored value after its
    // release: its mark is kept until then.
    void refreshControl(int index) override;
    bool drawsOverlay() const override { return true; }
    // The offered width within 300..1499 and the height from it, as a drag of the resize zone.
    void offerSize(const q1framework::Point& size) override;

    // Component. The container takes the editor's size; the overlay is the main component's.
    void resized() override;
    void paint(q1framework::SoftwareGraphics& graphics) override;
    void afterRender(q1framework::RenderingContext& context) override;

private:
    q1framework::AdapterComponent* container;  // a child; owned through the tree
    MainComponent* mainComponent;              // the container's inner tree; owned through it
};
