#pragma once

#include "editor/AudioPluginEditor.h"
#include "ui/window/ComponentsWindow.h"

namespace q1framework
{

class VST2Editor;

// The framework window that holds a plug-in's editor inside the host's window: a child of the
// host's window at (0, 0) with the editor's size, style windowFlags plus WindowFlags::hostedEditor,
// and an empty title. The editor is its content (owned), and draws over its frames when it says
// so (AudioPluginEditor::drawsOverlay).
//
// Size negotiation: the editor's size is never chosen by the host. When the editor asks for a
// size (sizeChanged) that differs from the window's, the holder stores it as the size the host is
// given (VST2Editor), asks the host to resize its window (audioMasterSizeWindow through
// AudioEffectX::sizeWindow); a host that answers no gets its window resized by the holder
// (Window::resizeParent), so that the editor grows in a host that does not follow. Then the
// holder's own window takes the size.
//
// Thread contract: the host's user-interface calls (see native/window/UiThread.h).
class Holder : public ComponentsWindow, public AudioPluginEditor::Listener
{
public:
    // owner: the adapter's editor, which outlives the holder. parent: the host's window (on X11
    // its id). editor: owned from now on. The holder listens to the editor before anyone else.
    Holder(VST2Editor& owner, void* parent, AudioPluginEditor* editor, int windowFlags);
    ~Holder() override;

    AudioPluginEditor* getEditor() const { return editor; }

    // AudioPluginEditor::Listener: the negotiation above.
    void sizeChanged(const Point& size) override;

private:
    VST2Editor& owner;
    AudioPluginEditor* editor;  // the window's content
};

}  // namespace q1framework
