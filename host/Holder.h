#pragma once

#include "editor/AudioPluginEditor.h"
#include "ui/window/ComponentsWindow.h"

namespace q1framework
{

// The framework window that holds a plug-in's editor inside the host's window, in any plug-in
// format: a child of the host's window at (0, 0) with the editor's size, style windowFlags plus
// WindowFlags::hostedEditor, and an empty title. The editor is its content (owned), and draws
// over its frames when it says so (AudioPluginEditor::drawsOverlay).
//
// Size negotiation: the editor's size is never chosen by the host. When the editor asks for a
// size (sizeChanged) that differs from the window's, the holder asks the host to resize its
// window, through the format's adapter (Host: VST 2.4's audioMasterSizeWindow, LV2's ui:resize);
// a host that does not follow gets its window resized by the holder (Window::resizeParent), so
// that the editor grows in it all the same. Then the holder's own window takes the size.
//
// Thread contract: the host's user-interface calls (see native/window/UiThread.h).
class Holder : public ComponentsWindow, public AudioPluginEditor::Listener
{
public:
    // The format's side of the negotiation.
    class Host
    {
    public:
        virtual ~Host() = default;
        // The editor takes size (pixels): the adapter tells the host, which resizes the window it
        // gave the editor; answers whether it did.
        virtual bool resizeHostWindow(const Point& size) = 0;
    };

    // host: the adapter, which outlives the holder. parent: the host's window (on X11 its id).
    // editor: owned from now on. The holder listens to the editor before anyone else.
    Holder(Host& host, void* parent, AudioPluginEditor* editor, int windowFlags);
    ~Holder() override;

    AudioPluginEditor* getEditor() const { return editor; }

    // AudioPluginEditor::Listener: the negotiation above.
    void sizeChanged(const Point& size) override;

private:
    Host& host;
    AudioPluginEditor* editor;  // the window's content
};

}  // namespace q1framework
