#pragma once

#include "foundation/runtime/Mutex.h"
#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "plugin/EditedPlugin.h"
#include "plugin/TimeInfo.h"

#include <cstdint>

namespace q1framework
{

class AudioPluginEditor;
class PluginEditorView;
class Stream;

// The format-independent plug-in. A concrete effect derives from it and knows nothing of the
// plug-in format: it sees audio and event buses, parameters by index with values from 0 to 1, a
// stream for its state and a TimeInfo per block. A host adapter owns the object, fills the buses
// and calls the virtual operations.
//
// Only the first audio input and output bus carry audio in this framework's adapters; an effect
// creates its buses in configureStereo or configureMono.
//
// Threads and the mutex: `process` runs on the audio thread and holds the plug-in's mutex for the
// whole block. Everything else arrives on host threads, which are not always the host's GUI
// thread. The mutex (recursive) guards the buses' channel arrays, the editor list and whatever
// state of the effect `process` reads; an adapter holds it while it hands the host's channel
// pointers to the buses and while it sets a parameter. `prepare` swaps the channel arrays under it
// and frees the old ones outside it, so a host may call `prepare` while audio runs.
//
// An editor in the plug-in's address space edits the plug-in itself, as an EditedPlugin.
class AudioPlugin : public EditedPlugin
{
public:
    class AudioBus;
    class EventBus;

    // Base of the bus kinds: a named connection point owned by its plug-in.
    class Bus
    {
    public:
        Bus(AudioPlugin& owner, const String& name) : owner(owner), name(name) {}
        virtual ~Bus() = default;

        Bus(const Bus&) = delete;
        Bus& operator=(const Bus&) = delete;

        AudioPlugin& getOwner() const { return owner; }
        const String& getName() const { return name; }

    private:
        AudioPlugin& owner;
        String name;
    };

    // Hears what the plug-in tells its adapter. Not owned; remove it before it is destroyed.
    // Thread contract: called on the thread of the notifying call.
    class Listener
    {
    public:
        // The `kind` of pluginChanged.
        static constexpr int latencyChanged = 0;

        virtual ~Listener() = default;
        virtual void pluginChanged(int /*kind*/) {}
        virtual void gestureBegan(AudioPlugin* /*plugin*/, int /*index*/) {}
        virtual void valueChanged(float /*value*/, AudioPlugin* /*plugin*/, int /*index*/) {}
        virtual void gestureEnded(AudioPlugin* /*plugin*/, int /*index*/) {}
    };

    AudioPlugin();
    // Deletes the buses. Editors and listeners are not owned and must be gone.
    virtual ~AudioPlugin();

    AudioPlugin(const AudioPlugin&) = delete;
    AudioPlugin& operator=(const AudioPlugin&) = delete;

    // ---- Virtual operations. -------------------------------------------------------------------

    // Host thread. Writes the whole state; answers true when it did.
    virtual bool getState(Stream& stream) = 0;
    // Host thread. Reads a state that getState wrote and applies it; bad input leaves the state
    // as it was. Answers true when the call is done, whatever the input held.
    virtual bool setState(Stream& stream) = 0;

    // Main thread. Whether the effect has an editor, and a new one (owned by the caller), or null
    // when it cannot make one now. Default: none.
    virtual bool hasEditor() = 0;
    virtual AudioPluginEditor* createEditor();
    // Main thread, after the adapter has put a new editor on screen. Default: nothing.
    virtual void editorCreated(AudioPluginEditor* editor);

    // Any thread, with the plug-in's mutex held by the caller. Stores and applies a value 0..1.
    virtual void setParameter(float value, int index) = 0;
    // Any thread. Parameter count, the stored value of one (0 for an index out of range), its text
    // for `value` with the unit, and its name. Defaults: 0, 0, empty, empty.
    int getNumParameters() override;
    double getParameter(int index) override;
    virtual String getParameterText(float value, int index);
    virtual String getParameterName(int index);

    // Host thread. Processing stops and starts again. Default: nothing.
    virtual void suspend();
    virtual void resume();
    // Host thread. The largest block in frames and the rate in Hz that follow. Gives every audio
    // bus a new zeroed channel array (with buffers of blockSize doubles per channel where the bus
    // owns them), stores blockSize, and with clearBuffers zeroes the owned buffers and empties the
    // event lists.
    virtual void prepare(int blockSize, bool clearBuffers, double sampleRate);

    // Any thread. Whether a 64-bit audio path exists (default false), the latency in samples
    // (default 0), and whether silence in gives silence out, so a host may skip blocks.
    virtual bool hasDoublePrecision();
    virtual int getLatency();
    virtual bool hasNoSoundInStop() = 0;

    // Audio thread. One block of `frames` samples from the first input bus into the first output
    // bus, whose channels the adapter has set. No allocation; no lock but the plug-in's mutex.
    virtual void process(TimeInfo& timeInfo, int frames) = 0;

    // Host thread. Replaces the audio buses by one stereo or one mono input and output; answers
    // whether the effect supports the layout. Defaults: false.
    virtual bool configureStereo();
    virtual bool configureMono();

    // Host thread. Free for the effect's own use. Default: 0.
    virtual int64_t vendorSpecific(int32_t index, int64_t value, void* pointer, float opt);

    // ---- Physical units and meters, for formats that show them (LV2). ---------------------------

    // Any thread. A 0..1 value of parameter `index` in its physical unit (the number its text
    // shows: per cent, dB, a step's number, 0 or 1 for a switch), and the 0..1 value of a physical
    // one, its inverse. Defaults: the value as it stands.
    virtual float toPhysicalValue(float value, int index);
    virtual float fromPhysicalValue(float physical, int index);
    // Any thread. The number of levels the effect reports to hosts that show them. Default 0.
    virtual int getNumMeters();
    // Audio thread, mutex held, after process: meter `index` for the block just processed; 0 for
    // an index out of range. A meter that holds a peak until it is read starts again. Default 0.
    virtual float takeMeterValue(int index);

    // ---- What an editor reads (EditedPlugin). ----------------------------------------------------

    // Main thread. The meters as an editor shows them (EditedPlugin::readMeter). Default 0.
    float readMeter(int index) override;
    // Main thread. The editor's size kept in the state. Defaults: 0 by 0, and nothing kept, for an
    // effect without an editor.
    int getEditorWidth() override;
    int getEditorHeight() override;
    void setEditorSize(int width, int height) override;

    // ---- The lock. ------------------------------------------------------------------------------

    // Any thread. The plug-in's mutex (recursive), taken for each block.
    void lock() { mutex.lock(); }
    void unlock() { mutex.unlock(); }
    Mutex& getMutex() { return mutex; }

    // ---- Buses. Host thread, or the audio thread with the mutex held. ---------------------------

    int getNumAudioInputs() const { return audioInputs.getCount(); }
    int getNumAudioOutputs() const { return audioOutputs.getCount(); }
    int getNumEventInputs() const { return eventInputs.getCount(); }
    int getNumEventOutputs() const { return eventOutputs.getCount(); }
    // Unchecked index.
    AudioBus& getAudioInput(int index) { return *audioInputs[index]; }
    AudioBus& getAudioOutput(int index) { return *audioOutputs[index]; }
    EventBus& getEventInput(int index) { return *eventInputs[index]; }
    EventBus& getEventOutput(int index) { return *eventOutputs[index]; }

    // Host thread, once when an adapter starts: every audio bus that owns its channel buffers
    // frees them; from then on the adapter writes its own pointers before each block.
    void releaseChannelBuffers();
    // Audio thread (mutex held) or host thread. Zeroes `frames` samples of every owned channel of
    // the output (input) buses and empties the output (with clearEvents, input) event lists.
    void clearOutputs(int frames);
    void clearInputs(bool clearEvents, int frames);

    // The blockSize of the last prepare, 0 before the first.
    int getMaxBlockSize() const { return maxBlockSize; }

    // ---- Listeners and editors. ---------------------------------------------------------------

    // Host thread. Appends unless present; answers whether it was added. null is ignored.
    bool addListener(Listener* listener);
    // Host thread. Removes the first match, keeping the order of the others.
    void removeListener(Listener* listener);
    // Each walks the listeners in order and calls one operation.
    void notifyPluginChanged(int kind);
    void notifyGestureBegan(int index);
    void notifyValueChanged(float value, int index);
    void notifyGestureEnded(int index);

    // Main thread, from an editor's constructor and destructor; takes the mutex, as `process`
    // measures levels only while an editor is attached.
    void addEditor(PluginEditorView* editor) override;
    void removeEditor(PluginEditorView* editor) override;
    // With the mutex held: the number of attached editors.
    int getNumEditors() const { return editors.getCount(); }

    // Audio thread, mutex held: whether the host reads the meters after each block (an adapter
    // whose format has meter outputs that the host connected).
    void setHostReadsMeters(bool reads) { hostReadsMeters = reads; }
    // With the mutex held: whether anyone looks at the levels, an attached editor or the host.
    // An effect measures its levels only then.
    bool areLevelsShown() const { return editors.getCount() > 0 || hostReadsMeters; }

protected:
    // With the mutex held, on any thread: marks one or all stored values as changed for every
    // attached editor, which shows them again at its next idle step.
    void markEditors(int index);
    void markAllEditors();

    // Host thread, from configureStereo and configureMono: deletes the audio buses and adds one
    // input and one output of `channels` channels, named "Input" and "Output".
    void replaceAudioBuses(int channels);
    // Host thread, construction time: adds an event bus; the plug-in owns it.
    void addEventInput(const String& name);
    void addEventOutput(const String& name);

private:
    void deleteAudioBuses();

    Array<AudioBus*> audioInputs;
    Array<AudioBus*> audioOutputs;
    Array<EventBus*> eventInputs;
    Array<EventBus*> eventOutputs;
    Array<PluginEditorView*> editors;  // guarded by the mutex
    Array<Listener*> listeners;
    int maxBlockSize = 0;
    bool hostReadsMeters = false;  // guarded by the mutex
    Mutex mutex;
};

// Made by the effect: its plug-in, owned by the caller (the host adapter).
AudioPlugin* createAudioPlugin();

}  // namespace q1framework
