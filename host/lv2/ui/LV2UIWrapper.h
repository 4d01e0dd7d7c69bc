#pragma once

#include "editor/AudioPluginEditor.h"
#include "host/Holder.h"
#include "host/lv2/LV2PortLayout.h"

#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

namespace q1framework
{

class LV2EditedPlugin;
struct LV2UIEffect;

// The LV2 user interface of an effect, an X11 UI (ui:X11UI): the effect's editor in a Holder, a
// window of the framework's own inside the window the host gives (ui:parent), the sibling of
// VST2Editor. The widget the host gets is that window's id.
//
// What the editor edits is an LV2EditedPlugin: controls are read from the host's port
// notifications and written through the host's write function, in the control ports' physical
// units (LV2UIEffect::toPhysical); a press and a release of a control are told to the host
// through ui:touch where it offers that. Where the host gives the plug-in's instance (instance
// access) the meters and the editor's size are the plug-in's own; otherwise the meters follow
// the meter ports and the size lasts as long as the interface.
//
// The frame loop runs from the host's idle calls (ui:idleInterface), as VST2Editor's from
// effEditIdle: UiThread::idle, then the values marked since. Size: the editor's size is told to
// the host through ui:resize, at the start and whenever the editor changes it, and where the host
// offers no ui:resize (or refuses) the host's window is resized by the holder (Holder). A host
// that resizes its window itself offers the size to the editor (the interface's own ui:resize),
// which takes what it can show of it.
//
// Features: ui:parent and ui:idleInterface are required; ui:resize, ui:touch, the instance
// access and urid:map (to know the float protocol by its URID) are used where offered.
//
// Thread contract: the host's user-interface calls (instantiate, port_event, idle, the resize
// interface, cleanup); each enters the framework's user-interface thread first (UiThread).
class LV2UIWrapper : private Holder::Host, private AudioPluginEditor::Listener
{
public:
    // The interface for the plug-in `pluginUri` in the host's window. Null, with nothing left
    // open, when the URI is not the effect's, a required feature is missing, the effect makes no
    // editor or no window can be made in the parent. `write` may be null: the user's values then
    // reach no one.
    static LV2UIWrapper* create(const char* pluginUri, LV2UI_Write_Function write, LV2UI_Controller controller,
                                const LV2_Feature* const* features);
    // Closes the editor and its window.
    ~LV2UIWrapper() override;

    LV2UIWrapper(const LV2UIWrapper&) = delete;
    LV2UIWrapper& operator=(const LV2UIWrapper&) = delete;

    // The editor's window, for the host: its X window id.
    LV2UI_Widget getWidget() const;

    // port_event: a port's new value. Only the float protocol is read (protocol 0, or the URID
    // of ui:floatProtocol where urid:map was offered), one float; anything else is ignored.
    void portEvent(uint32_t port, uint32_t size, uint32_t protocol, const void* buffer);
    // The idle interface: one step of the user interface. Answers 0: the interface is embedded
    // in the host's window and never closes by itself.
    int idle();
    // The interface's own resize: the host's window is now width by height
    // (AudioPluginEditor::offerSize). Answers 0.
    int offerSize(int width, int height);

    Holder& getHolder() const { return *holder; }
    AudioPluginEditor& getEditor() const { return *holder->getEditor(); }
    LV2EditedPlugin& getEditedPlugin() const { return *edited; }

private:
    struct Features;
    LV2UIWrapper(const Features& features, LV2UI_Write_Function write, LV2UI_Controller controller);

    // Holder::Host: ui:resize of the host; false without it or when it refuses.
    bool resizeHostWindow(const Point& size) override;
    // AudioPluginEditor::Listener: the user's gestures and values to the host.
    void gestureBegan(AudioPluginEditor* editor, int index) override;
    void valueChanged(float value, AudioPluginEditor* editor, int index) override;
    void gestureEnded(AudioPluginEditor* editor, int index) override;
    void touch(int index, bool grabbed);

    const LV2UIEffect& effect;
    LV2PortLayout layout;
    LV2UI_Write_Function write;
    LV2UI_Controller controller;
    const LV2UI_Resize* hostResize;  // the host's, or null
    const LV2UI_Touch* hostTouch;    // the host's, or null
    LV2_URID floatProtocol = 0;      // 0 without urid:map
    LV2EditedPlugin* edited = nullptr;  // owned
    Holder* holder = nullptr;           // owned; holds the editor
};

}  // namespace q1framework
