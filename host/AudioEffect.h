#pragma once

#include "host/AEffEditor.h"
#include "host/VstAbi.h"

namespace q1framework
{
// The plug-in side of the VST 2.4 interface, first level: owns the AEffect record the host sees,
// routes the record's C callbacks to this object's virtual operations, and turns the 2.0 opcodes
// of the dispatcher into virtual calls. An effect derives from AudioEffectX (which adds the 2.x
// opcodes) and overrides what it supports; the defaults are the conventional ones that hosts
// expect from an effect that says nothing: sample rate 44100 Hz, block size 1024, one input and
// two outputs, version 1, unique id 'NoEf', no flags, empty texts, no chunk.
//
// Lifetime: made by the plug-in's entry point; the host ends it with effClose, on which the
// dispatcher calls close() and deletes the object. The editor given to setEditor is owned and
// deleted with it.
//
// Threads: the host calls the dispatcher from one thread at a time, often its GUI thread but not
// always; processReplacing comes on the audio thread, concurrently with dispatcher calls;
// setParameter and getParameter may come on either.
class AudioEffect
{
public:
    // Main thread (the entry point). `host` may be null: calls towards the host are then skipped.
    AudioEffect(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount);
    virtual ~AudioEffect();

    AudioEffect(const AudioEffect&) = delete;
    AudioEffect& operator=(const AudioEffect&) = delete;

    // The record handed to the host; it lives as long as this object.
    AEffect* getAeffect() { return &cEffect; }

    // Dispatcher thread. One host opcode turned into a virtual call; answers the opcode's result,
    // 0 for an opcode that is unknown or whose required pointer is null. effClose deletes this.
    virtual VstIntPtr dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer,
                                 float opt);

    // Dispatcher thread. effOpen after construction, effClose before deletion. Default: nothing.
    virtual void open();
    virtual void close();
    // Dispatcher thread. effMainsChanged: suspend (0) before the host stops calling process and
    // changes the rate or block size, resume (1) before processing starts again. Default: nothing.
    virtual void suspend();
    virtual void resume();

    // Dispatcher thread. Store the rate in Hz and the largest block in frames; both are read by
    // getSampleRate and getBlockSize. Defaults until the host calls them: 44100 and 1024.
    virtual void setSampleRate(float rate);
    virtual void setBlockSize(VstInt32 frames);
    float getSampleRate() const { return sampleRate; }
    VstInt32 getBlockSize() const { return blockSize; }

    // Audio thread. One block: numInputs and numOutputs channel arrays of `frames` samples each,
    // the outputs to be overwritten. No allocation, no lock but the effect's own.
    virtual void processReplacing(float** inputs, float** outputs, VstInt32 frames) = 0;
    // Audio thread. The 64-bit path, used only with effFlagsCanDoubleReplacing. Default: nothing.
    virtual void processDoubleReplacing(double** inputs, double** outputs, VstInt32 frames);
    // Audio thread. The deprecated accumulating path, which adds into the outputs. Default:
    // nothing, so the outputs keep what the host put there.
    virtual void process(float** inputs, float** outputs, VstInt32 frames);

    // Any thread. Parameter `index` in 0..numParams-1, value 0..1. Defaults: ignore, and 0.
    virtual void setParameter(VstInt32 index, float value);
    virtual float getParameter(VstInt32 index);
    // Main thread. setParameter, then tells the host that the user changed it (audioMasterAutomate).
    virtual void setParameterAutomated(VstInt32 index, float value);

    // Dispatcher thread. Texts of parameter `index` written into the host's buffer, terminated:
    // unit ("dB"), value as text, name. Defaults: empty.
    virtual void getParameterLabel(VstInt32 index, char* label);
    virtual void getParameterDisplay(VstInt32 index, char* text);
    virtual void getParameterName(VstInt32 index, char* text);

    // Dispatcher thread. The current program. effSetProgram reaches setProgram only with an index
    // in 0..numPrograms-1; the default stores it, and getProgram answers the stored index.
    virtual VstInt32 getProgram();
    virtual void setProgram(VstInt32 program);
    // Dispatcher thread. Name of the current program. Defaults: ignore, and empty.
    virtual void setProgramName(char* name);
    virtual void getProgramName(char* name);

    // Dispatcher thread, only with effFlagsProgramChunks. getChunk stores the address of the state
    // in *data, owned by the effect and valid until the next getChunk, and answers its size in
    // bytes; setChunk applies `size` bytes that the host keeps. `isPreset`: one program rather
    // than the bank. Defaults: no chunk, 0.
    virtual VstInt32 getChunk(void** data, bool isPreset);
    virtual VstInt32 setChunk(void* data, VstInt32 size, bool isPreset);

    // Construction time. Fields of the AEffect record.
    void setUniqueID(VstInt32 id) { cEffect.uniqueID = id; }
    void setNumInputs(VstInt32 inputs) { cEffect.numInputs = inputs; }
    void setNumOutputs(VstInt32 outputs) { cEffect.numOutputs = outputs; }
    void canProcessReplacing(bool state = true) { setFlag(effFlagsCanReplacing, state); }
    void canDoubleReplacing(bool state = true) { setFlag(effFlagsCanDoubleReplacing, state); }
    void programsAreChunks(bool state = true) { setFlag(effFlagsProgramChunks, state); }
    // Any time; latency in samples. Only stores it: a host reads it again after ioChanged().
    void setInitialDelay(VstInt32 delay) { cEffect.initialDelay = delay; }

    // Construction time. Takes ownership of `editor` (null for none), deleting the previous one,
    // and sets or clears effFlagsHasEditor.
    void setEditor(AEffEditor* newEditor);
    AEffEditor* getEditor() const { return editor; }

    // Main thread. Calls towards the host; without a host callback they answer as stated.
    // The host's interface version; 1 when it does not say.
    VstInt32 getMasterVersion();
    // Unique id of the effect a shell plug-in is loading; 0 without a host.
    VstInt32 getCurrentUniqueId();
    // Asks the host for one idle round.
    void masterIdle();
    // A user gesture on parameter `index` begins or ends; true when the host took note.
    bool beginEdit(VstInt32 index);
    bool endEdit(VstInt32 index);

protected:
    // Whether `opcode` (of either level) reads or writes through its pointer argument: the
    // dispatchers answer 0 to such an opcode with a null pointer instead of passing it on.
    static bool needsPointer(VstInt32 opcode);
    // Calls the host callback with this effect; answers 0 when there is none.
    VstIntPtr callHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer, float opt);
    void setFlag(VstInt32 flag, bool state);

    audioMasterCallback audioMaster;  // the host, may be null
    AEffEditor* editor;               // owned, may be null
    float sampleRate;                 // Hz
    VstInt32 blockSize;               // frames
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 curProgram;
    AEffect cEffect;

private:
    // The C callbacks of the AEffect record: they find this object through AEffect.object.
    static AudioEffect* fromAeffect(AEffect* effect);
    static VstIntPtr dispatchEffect(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                    VstIntPtr value, void* pointer, float opt);
    static void processEffect(AEffect* effect, float** inputs, float** outputs, VstInt32 frames);
    static void processReplacingEffect(AEffect* effect, float** inputs, float** outputs,
                                       VstInt32 frames);
    static void processDoubleReplacingEffect(AEffect* effect, double** inputs, double** outputs,
                                             VstInt32 frames);
    static void setParameterEffect(AEffect* effect, VstInt32 index, float value);
    static float getParameterEffect(AEffect* effect, VstInt32 index);
};
}
