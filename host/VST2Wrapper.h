#pragma once

#include "editor/AudioPluginEditor.h"
#include "foundation/memory/MemoryStream.h"
#include "host/AudioEffectX.h"
#include "plugin/AudioPlugin.h"

namespace q1framework
{

struct PluginDescription;

// The VST 2.4 adapter: presents a format-independent AudioPlugin to a host as an AudioEffectX.
// It owns the plug-in and the editor adapter (VST2Editor), turns the host's calls into the
// plug-in's operations, and tells the host what the plug-in and its editor change.
//
// The audio path copies nothing: processReplacing writes the host's channel pointers into the
// plug-in's first input and output bus and calls AudioPlugin::process, which runs in place on the
// host's memory, one whole block at a time.
//
// Threads. Real hosts differ: some call the dispatcher from their GUI thread, some from a worker
// of their own, some automate from the audio thread. The plug-in's mutex is the one lock:
// processReplacing holds it while it hands over the channel pointers and for the block,
// setParameter and processEvents hold it, and the plug-in takes it itself where a state change
// or a new block size meets the audio path. Nothing here allocates or calls the host with the
// lock held on the audio thread.
//
// Lifetime: made by createEffectInstance (one more framework instance); the host's effClose
// deletes it, which deletes the editor, then the plug-in, then lowers the instance count.
class VST2Wrapper : public AudioEffectX, private AudioPlugin::Listener
{
public:
    // Main thread (the entry point). Takes ownership of `plugin`; copies what it needs of
    // `description`. The plug-in's channel buffers are freed: the host's take their place. The
    // caller has counted one more framework instance (FrameworkInstances::add), which the
    // destructor gives back.
    VST2Wrapper(audioMasterCallback host, AudioPlugin* plugin, const PluginDescription& description);
    ~VST2Wrapper() override;

    // ---- Audio and preparation (VST2Wrapper.cpp). ---------------------------------------------
    // Host thread. The plug-in's suspend and resume; resume also asks the host for MIDI events
    // (wantEvents) when the effect is an instrument or can receive MIDI events.
    void suspend() override;
    void resume() override;
    // Host thread. Store the value, then prepare the plug-in with the block size and the rate.
    void setSampleRate(float rate) override;
    void setBlockSize(VstInt32 frames) override;
    // Audio thread. One block: the host's transport (ppqPos and tempo) into a TimeInfo, the host's
    // channel pointers into the first buses, AudioPlugin::process, then the event input lists are
    // emptied. No allocation; the plug-in's mutex is the only lock.
    void processReplacing(float** inputs, float** outputs, VstInt32 frames) override;

    // ---- Parameters (VST2WrapperParameters.cpp). ----------------------------------------------
    // Any thread. Under the plug-in's mutex.
    void setParameter(VstInt32 index, float value) override;
    // Any thread, no lock.
    float getParameter(VstInt32 index) override;
    // Host thread. Display text (with its unit) and name, copied whole: "Release Time" is longer
    // than the interface's nominal 8 bytes, and hosts give room for it.
    void getParameterDisplay(VstInt32 index, char* text) override;
    void getParameterName(VstInt32 index, char* text) override;

    // ---- State (VST2WrapperChunk.cpp). ----------------------------------------------------------
    // Host thread. The plug-in's state in chunkStream; *data points into it until the next
    // getChunk or the wrapper's end. Answers the size, 0 when there is none. isPreset is ignored.
    VstInt32 getChunk(void** data, bool isPreset) override;
    // Host thread. A copy of the host's bytes goes to AudioPlugin::setState. Answers 0 whatever
    // the bytes held. isPreset is ignored.
    VstInt32 setChunk(void* data, VstInt32 size, bool isPreset) override;

    // ---- Identity and events (VST2WrapperDispatcher.cpp). -------------------------------------
    // Host thread. Each reads a fresh PluginDescription: name, vendor, product (the name) and the
    // version number. The texts are copied whole.
    bool getEffectName(char* name) override;
    bool getVendorString(char* text) override;
    bool getProductString(char* text) override;
    VstInt32 getVendorVersion() override;
    // Host thread. AudioPlugin::vendorSpecific.
    VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* pointer, float opt) override;
    // Host thread. 1 for the five event and time-info capabilities, 0 for anything else.
    VstInt32 canDo(char* text) override;
    // Host or audio thread, before the next block. MIDI events go to the plug-in's first event
    // input, under the plug-in's mutex; other events, and all events of a plug-in without event
    // inputs, are dropped. Answers true.
    bool processEvents(VstEvents* events) override;

    // ---- Editor side (VST2WrapperEditor.cpp): calls towards the host for the editor. ---------
    // The editor's listener (EditorListener) calls the first three; the holder negotiates sizes
    // itself (Holder::sizeChanged).
    // Main thread. A gesture on parameter `index` begins (audioMasterBeginEdit).
    void editGestureBegan(VstInt32 index);
    // Main thread. The editor set parameter `index`: setParameter, then audioMasterAutomate.
    void editValueChanged(VstInt32 index, float value);
    // Main thread. The gesture ends (audioMasterEndEdit).
    void editGestureEnded(VstInt32 index);

    AudioPlugin* getPlugin() const { return plugin; }

private:
    // What the editor's user does, told to the host through the wrapper.
    class EditorListener : public AudioPluginEditor::Listener
    {
    public:
        explicit EditorListener(VST2Wrapper& wrapper) : wrapper(wrapper) {}
        void gestureBegan(AudioPluginEditor* editor, int index) override;
        void valueChanged(float value, AudioPluginEditor* editor, int index) override;
        void gestureEnded(AudioPluginEditor* editor, int index) override;

    private:
        VST2Wrapper& wrapper;
    };

    // AudioPlugin::Listener: a latency change becomes the host's initial delay (audioMasterIOChanged).
    void pluginChanged(int kind) override;

    EditorListener editorListener{*this};
    MemoryStream chunkStream;  // the last chunk handed to the host
    AudioPlugin* plugin;       // owned
};

// Main thread. One more framework instance, then the effect's description, its plug-in and the
// wrapper around them; the description is deleted again. The caller (the entry point) hands the
// wrapper's AEffect to the host.
AudioEffect* createEffectInstance(audioMasterCallback host);

}  // namespace q1framework
