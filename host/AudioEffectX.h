#pragma once

#include "host/AudioEffect.h"

namespace q1framework
{
// The plug-in side of the VST 2.4 interface, second level: the 2.x opcodes (events, pins,
// names, can-do, speaker arrangement, editor keys, process start and stop, ...) as virtual calls,
// and the 2.x calls towards the host (time info, window size, I/O change, host identity).
// The defaults are the conventional answers of an effect that supports none of it:
// canParameterBeAutomated true, every other query false, 0 or empty, getVstVersion 2400,
// getPlugCategory unknown (synth with effFlagsIsSynth). Threads: as AudioEffect.
class AudioEffectX : public AudioEffect
{
public:
    // Main thread (the entry point). See AudioEffect.
    AudioEffectX(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount);
    ~AudioEffectX() override;

    // Dispatcher thread. The 2.x opcodes here, the rest through AudioEffect::dispatcher.
    VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer,
                         float opt) override;

    // Dispatcher thread, before the next processReplacing. `events` belongs to the host and is
    // valid until that block ends. Answers true when the effect took them. Default: false.
    virtual bool processEvents(VstEvents* events);

    // Dispatcher thread. Whether the host may automate parameter `index`. Default: true.
    virtual bool canParameterBeAutomated(VstInt32 index);
    // Dispatcher thread. Sets parameter `index` from its text. Default: false, not supported.
    virtual bool string2parameter(VstInt32 index, char* text);
    // Dispatcher thread. Name of program `index` in `category` (-1: any) into `text`. Default: false.
    virtual bool getProgramNameIndexed(VstInt32 category, VstInt32 index, char* text);
    // Dispatcher thread. Extra description of parameter `index`. Default: false.
    virtual bool getParameterProperties(VstInt32 index, VstParameterProperties* properties);

    // Dispatcher thread. Description of audio input or output `index`. Default: false, the host
    // uses its own.
    virtual bool getInputProperties(VstInt32 index, VstPinProperties* properties);
    virtual bool getOutputProperties(VstInt32 index, VstPinProperties* properties);
    // Dispatcher thread. The host proposes channel layouts; answers true when the effect adopts
    // them. Default: false, the layout stays numInputs by numOutputs.
    virtual bool setSpeakerArrangement(VstSpeakerArrangement* input, VstSpeakerArrangement* output);
    // Dispatcher thread. Stores the effect's layouts, owned by the effect. Default: stores null in
    // both and answers false.
    virtual bool getSpeakerArrangement(VstSpeakerArrangement** input, VstSpeakerArrangement** output);

    // Dispatcher thread. Host-side bypass; true when the effect does it itself (then it keeps
    // processing and passes audio through). Default: false, the host must bypass.
    virtual bool setBypass(bool bypass);
    // Dispatcher thread. Answer category, a kPlugCateg... value.
    virtual VstInt32 getPlugCategory();
    // Dispatcher thread. Identity texts into the host's buffer; true when written. Default: false.
    virtual bool getEffectName(char* name);
    virtual bool getVendorString(char* text);
    virtual bool getProductString(char* text);
    // Dispatcher thread. The effect's own version number. Default: 0.
    virtual VstInt32 getVendorVersion();
    // Dispatcher thread. All arguments free for the vendor. Default: 0.
    virtual VstIntPtr vendorSpecific(VstInt32 index, VstIntPtr value, void* pointer, float opt);
    // Dispatcher thread. Capability query: 1 yes, -1 no, 0 unknown. Default: 0.
    virtual VstInt32 canDo(char* text);
    // Dispatcher thread. Samples of sound after the input stops: 0 default length, 1 none.
    // Default: 0.
    virtual VstInt32 getTailSize();
    // Dispatcher thread. The interface version this effect implements: kVstVersion.
    virtual VstInt32 getVstVersion();

    // Dispatcher thread. Processing starts and stops (around a run of process calls). Default: 0.
    virtual VstInt32 startProcess();
    virtual VstInt32 stopProcess();
    // Dispatcher thread. kVstProcessPrecision32 or 64. Default: false.
    virtual bool setProcessPrecision(VstInt32 precision);
    // Dispatcher thread. Frames an offline pass will process; answers the frames the effect
    // needs. Default: `frames`.
    virtual VstInt32 setTotalSampleToProcess(VstInt32 frames);
    // Dispatcher thread. A program change begins and ends. Default: false.
    virtual bool beginSetProgram();
    virtual bool endSetProgram();
    // Dispatcher thread. A bank or program file is about to be loaded; -1 refuses. Default: 0.
    virtual VstInt32 beginLoadBank(VstPatchChunkInfo* info);
    virtual VstInt32 beginLoadProgram(VstPatchChunkInfo* info);
    // Dispatcher thread. MIDI channels the effect reads and writes, 0 to 16. Default: 0.
    virtual VstInt32 getNumMidiInputChannels();
    virtual VstInt32 getNumMidiOutputChannels();

    // Construction time. Marks the effect an instrument (effFlagsIsSynth).
    void isSynth(bool state = true) { setFlag(effFlagsIsSynth, state); }
    // Construction time. Marks that silence in gives silence out (effFlagsNoSoundInStop).
    void noTail(bool state = true) { setFlag(effFlagsNoSoundInStop, state); }

    // Calls towards the host. Without a host callback they answer false, 0, null or empty.
    // Audio thread or main thread. The host's transport for the current block, owned by the host;
    // `filter` is the kVst... bits the effect needs. Null when the host gives none.
    VstTimeInfo* getTimeInfo(VstInt32 filter);
    // Main thread. numInputs, numOutputs or initialDelay changed; true when the host took note.
    bool ioChanged();
    // Main thread. Asks the host to resize the editor's window to width by height pixels; true
    // when the host did.
    bool sizeWindow(VstInt32 width, VstInt32 height);
    // Main thread. Tells the host the effect takes MIDI events (deprecated but still honoured).
    void wantEvents(VstInt32 filter = 1);
    // Any thread. Events for the host; true when it took them.
    bool sendVstEventsToHost(VstEvents* events);
    // Main thread. The host's rate and block size, stored as this effect's when the host answers.
    float updateSampleRate();
    VstInt32 updateBlockSize();
    // Any thread. What the host is doing now: a kVstProcessLevel... value.
    VstInt32 getCurrentProcessLevel();
    // Main thread. A kVstAutomation... value.
    VstInt32 getAutomationState();
    // Main thread. Host identity into `text` (kVstMaxVendorStrLen and kVstMaxProductStrLen bytes).
    bool getHostVendorString(char* text);
    bool getHostProductString(char* text);
    VstInt32 getHostVendorVersion();
    // Main thread. Whether the host can do `text` ("sizeWindow", "sendVstTimeInfo", ...).
    bool canHostDo(const char* text);
    // Main thread. Parameter names, values or programs changed: the host refreshes its display.
    bool updateDisplay();
};
}
