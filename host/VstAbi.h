#pragma once

// The VST 2.4 binary interface between a host and an effect plug-in: records, opcodes, flags and
// key codes with their published numeric values, declared by this framework for 64-bit Linux
// (LP64, the System V calling convention, which is the only one there). Records use natural
// alignment, which on LP64 gives the published layout; the static_asserts at the end check it.
//
// Everything here is plain data shared with code built elsewhere: never reorder a field or change
// a value. The effect side (AudioEffect) and the host side (kelvane-render) both include this.

#include "foundation/string/FourCharacterCode.h"

#include <cstddef>
#include <cstdint>

namespace q1framework
{
using VstInt16 = std::int16_t;
using VstInt32 = std::int32_t;
using VstIntPtr = std::intptr_t;  // pointer-sized: 64 bits here

struct AEffect;

// Function pointer types of the interface. They have C language linkage, as the interface is a C
// one; on x86-64 and AArch64 Linux there is a single calling convention, so no attribute is needed.
extern "C" {
// Host side, called by the effect: (effect, opcode, index, value, pointer, opt) -> answer.
typedef VstIntPtr (*audioMasterCallback)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                         VstIntPtr value, void* pointer, float opt);
// Effect side, called by the host with an `eff...` opcode; same argument order as above.
typedef VstIntPtr (*AEffectDispatcherProc)(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                           VstIntPtr value, void* pointer, float opt);
// One block of 32-bit audio: arrays of numInputs and numOutputs channel pointers, frames per channel.
typedef void (*AEffectProcessProc)(AEffect* effect, float** inputs, float** outputs, VstInt32 frames);
typedef void (*AEffectProcessDoubleProc)(AEffect* effect, double** inputs, double** outputs,
                                         VstInt32 frames);
typedef void (*AEffectSetParameterProc)(AEffect* effect, VstInt32 index, float value);
typedef float (*AEffectGetParameterProc)(AEffect* effect, VstInt32 index);
// The exported entry point, `VSTPluginMain` (older plug-ins: `main`): returns the effect or null.
typedef AEffect* (*VstPluginEntryProc)(audioMasterCallback host);
}

constexpr VstInt32 kEffectMagic = fourCharacterCode('V', 's', 't', 'P');  // AEffect.magic, "VstP"
constexpr VstInt32 kVstVersion = 2400;  // the interface version, answered to audioMasterVersion

// Longest texts, terminator included, that the interface defines for the buffers it passes.
constexpr int kVstMaxProgNameLen = 24;     // program name
constexpr int kVstMaxParamStrLen = 8;      // parameter name, label and display text
constexpr int kVstMaxVendorStrLen = 64;    // vendor string
constexpr int kVstMaxProductStrLen = 64;   // product string
constexpr int kVstMaxEffectNameLen = 32;   // effect name
constexpr int kVstMaxNameLen = 64;         // general name
constexpr int kVstMaxLabelLen = 64;        // pin or parameter property label
constexpr int kVstMaxShortLabelLen = 8;    // short label
constexpr int kVstMaxCategLabelLen = 24;   // parameter category label
constexpr int kVstMaxFileNameLen = 100;    // file name

// The effect's description of itself, owned by the effect; the host reads it and calls through it.
struct AEffect
{
    VstInt32 magic;                     // kEffectMagic
    AEffectDispatcherProc dispatcher;   // every `eff...` opcode
    AEffectProcessProc process;         // deprecated accumulating process: adds into outputs
    AEffectSetParameterProc setParameter;  // parameter value 0..1 by index
    AEffectGetParameterProc getParameter;
    VstInt32 numPrograms;
    VstInt32 numParams;
    VstInt32 numInputs;                 // audio input channels
    VstInt32 numOutputs;                // audio output channels
    VstInt32 flags;                     // effFlags... bits
    VstIntPtr resvd1;                   // reserved for the host; 0 from the effect
    VstIntPtr resvd2;                   // reserved for the host; 0 from the effect
    VstInt32 initialDelay;              // latency of the effect in samples
    VstInt32 realQualities;             // deprecated, 0
    VstInt32 offQualities;              // deprecated, 0
    float ioRatio;                      // deprecated, 1.0
    void* object;                       // the effect's own object (AudioEffect*)
    void* user;                         // free for the effect's own use
    VstInt32 uniqueID;                  // four-character code that identifies the effect
    VstInt32 version;                   // version of the effect
    AEffectProcessProc processReplacing;             // 32-bit process that overwrites the outputs
    AEffectProcessDoubleProc processDoubleReplacing;  // 64-bit process that overwrites the outputs
    char future[56];                    // reserved, zero
};

// AEffect.flags.
constexpr VstInt32 effFlagsHasEditor = 1 << 0;           // the effect has an editor
constexpr VstInt32 effFlagsHasClip = 1 << 1;             // deprecated
constexpr VstInt32 effFlagsHasVu = 1 << 2;               // deprecated
constexpr VstInt32 effFlagsCanMono = 1 << 3;             // deprecated
constexpr VstInt32 effFlagsCanReplacing = 1 << 4;        // processReplacing is supported (required)
constexpr VstInt32 effFlagsProgramChunks = 1 << 5;       // state travels as an opaque chunk
constexpr VstInt32 effFlagsIsSynth = 1 << 8;             // an instrument, not an effect
constexpr VstInt32 effFlagsNoSoundInStop = 1 << 9;       // silence in gives silence out: may skip
constexpr VstInt32 effFlagsExtIsAsync = 1 << 10;         // deprecated
constexpr VstInt32 effFlagsExtHasBuffer = 1 << 11;       // deprecated
constexpr VstInt32 effFlagsCanDoubleReplacing = 1 << 12; // processDoubleReplacing is supported

// Dispatcher opcodes, host to effect. Arguments: index, value, pointer, opt; "answer" is the return.
constexpr VstInt32 effOpen = 0;               // after creation, before anything else
constexpr VstInt32 effClose = 1;              // the effect deletes itself; the AEffect dies with it
constexpr VstInt32 effSetProgram = 2;         // value: program index
constexpr VstInt32 effGetProgram = 3;         // answer: current program index
constexpr VstInt32 effSetProgramName = 4;     // pointer: name of the current program
constexpr VstInt32 effGetProgramName = 5;     // pointer: buffer for the current program's name
constexpr VstInt32 effGetParamLabel = 6;      // index, pointer: buffer for the unit, as "dB"
constexpr VstInt32 effGetParamDisplay = 7;    // index, pointer: buffer for the value as text
constexpr VstInt32 effGetParamName = 8;       // index, pointer: buffer for the name
constexpr VstInt32 effGetVu = 9;              // deprecated
constexpr VstInt32 effSetSampleRate = 10;     // opt: sample rate in Hz
constexpr VstInt32 effSetBlockSize = 11;      // value: most frames of one process call
constexpr VstInt32 effMainsChanged = 12;      // value: 0 suspend, 1 resume
constexpr VstInt32 effEditGetRect = 13;       // pointer: ERect** to receive the editor's rectangle
constexpr VstInt32 effEditOpen = 14;          // pointer: the parent window (an X11 Window here)
constexpr VstInt32 effEditClose = 15;         // close the editor
constexpr VstInt32 effEditDraw = 16;          // deprecated
constexpr VstInt32 effEditMouse = 17;         // deprecated
constexpr VstInt32 effEditKey = 18;           // deprecated
constexpr VstInt32 effEditIdle = 19;          // periodic call from the host's GUI loop
constexpr VstInt32 effEditTop = 20;           // deprecated
constexpr VstInt32 effEditSleep = 21;         // deprecated
constexpr VstInt32 effIdentify = 22;          // deprecated
constexpr VstInt32 effGetChunk = 23;          // index: 1 preset, 0 bank; pointer: void** data; answer: size
constexpr VstInt32 effSetChunk = 24;          // index: 1 preset, 0 bank; value: size; pointer: data
constexpr VstInt32 effProcessEvents = 25;     // pointer: VstEvents* for the next block
constexpr VstInt32 effCanBeAutomated = 26;    // index; answer 1 when the parameter can be automated
constexpr VstInt32 effString2Parameter = 27;  // index, pointer: text to set the parameter from
constexpr VstInt32 effGetNumProgramCategories = 28;  // deprecated
constexpr VstInt32 effGetProgramNameIndexed = 29;    // index: program, value: category, pointer: buffer
constexpr VstInt32 effCopyProgram = 30;       // deprecated
constexpr VstInt32 effConnectInput = 31;      // deprecated
constexpr VstInt32 effConnectOutput = 32;     // deprecated
constexpr VstInt32 effGetInputProperties = 33;   // index: input, pointer: VstPinProperties*
constexpr VstInt32 effGetOutputProperties = 34;  // index: output, pointer: VstPinProperties*
constexpr VstInt32 effGetPlugCategory = 35;   // answer: a kPlugCateg... value
constexpr VstInt32 effGetCurrentPosition = 36;    // deprecated
constexpr VstInt32 effGetDestinationBuffer = 37;  // deprecated
constexpr VstInt32 effOfflineNotify = 38;     // offline processing interface
constexpr VstInt32 effOfflinePrepare = 39;    // offline processing interface
constexpr VstInt32 effOfflineRun = 40;        // offline processing interface
constexpr VstInt32 effProcessVarIo = 41;      // variable input/output ratio processing
constexpr VstInt32 effSetSpeakerArrangement = 42;  // value: input VstSpeakerArrangement*, pointer: output
constexpr VstInt32 effSetBlockSizeAndSampleRate = 43;  // deprecated
constexpr VstInt32 effSetBypass = 44;         // value: 1 bypass, 0 process; answer 1 when done by the effect
constexpr VstInt32 effGetEffectName = 45;     // pointer: buffer of kVstMaxEffectNameLen
constexpr VstInt32 effGetErrorText = 46;      // deprecated
constexpr VstInt32 effGetVendorString = 47;   // pointer: buffer of kVstMaxVendorStrLen
constexpr VstInt32 effGetProductString = 48;  // pointer: buffer of kVstMaxProductStrLen
constexpr VstInt32 effGetVendorVersion = 49;  // answer: the effect's version number
constexpr VstInt32 effVendorSpecific = 50;    // all arguments free for the vendor
constexpr VstInt32 effCanDo = 51;             // pointer: capability text; answer 1 yes, -1 no, 0 unknown
constexpr VstInt32 effGetTailSize = 52;       // answer: tail in samples, 0 default, 1 none
constexpr VstInt32 effIdle = 53;              // deprecated
constexpr VstInt32 effGetIcon = 54;           // deprecated
constexpr VstInt32 effSetViewPosition = 55;   // deprecated
constexpr VstInt32 effGetParameterProperties = 56;  // index, pointer: VstParameterProperties*
constexpr VstInt32 effKeysRequired = 57;      // deprecated
constexpr VstInt32 effGetVstVersion = 58;     // answer: kVstVersion
constexpr VstInt32 effEditKeyDown = 59;       // index: character, value: VKEY_..., opt: MODIFIER_... bits
constexpr VstInt32 effEditKeyUp = 60;         // as effEditKeyDown
constexpr VstInt32 effSetEditKnobMode = 61;   // value: 0 circular, 1 relative circular, 2 linear
constexpr VstInt32 effGetMidiProgramName = 62;      // instruments: MIDI program names
constexpr VstInt32 effGetCurrentMidiProgram = 63;   // instruments
constexpr VstInt32 effGetMidiProgramCategory = 64;  // instruments
constexpr VstInt32 effHasMidiProgramsChanged = 65;  // instruments
constexpr VstInt32 effGetMidiKeyName = 66;          // instruments
constexpr VstInt32 effBeginSetProgram = 67;   // a program change begins
constexpr VstInt32 effEndSetProgram = 68;     // a program change ends
constexpr VstInt32 effGetSpeakerArrangement = 69;  // value: VstSpeakerArrangement** input, pointer: output
constexpr VstInt32 effShellGetNextPlugin = 70;     // shells: pointer: name buffer; answer: next unique id
constexpr VstInt32 effStartProcess = 71;      // processing is about to start
constexpr VstInt32 effStopProcess = 72;       // processing has stopped
constexpr VstInt32 effSetTotalSampleToProcess = 73;  // value: frames an offline pass will process
constexpr VstInt32 effSetPanLaw = 74;         // value: kVstLinearPanLaw or kVstEqualPowerPanLaw, opt: gain
constexpr VstInt32 effBeginLoadBank = 75;     // pointer: VstPatchChunkInfo*; answer -1 to refuse
constexpr VstInt32 effBeginLoadProgram = 76;  // pointer: VstPatchChunkInfo*; answer -1 to refuse
constexpr VstInt32 effSetProcessPrecision = 77;      // value: kVstProcessPrecision32 or 64
constexpr VstInt32 effGetNumMidiInputChannels = 78;  // answer: MIDI input channels used, 0 to 16
constexpr VstInt32 effGetNumMidiOutputChannels = 79; // answer: MIDI output channels used, 0 to 16

// Host callback opcodes, effect to host.
constexpr VstInt32 audioMasterAutomate = 0;        // index: parameter, opt: new value (user changed it)
constexpr VstInt32 audioMasterVersion = 1;         // answer: the host's interface version, as 2400
constexpr VstInt32 audioMasterCurrentId = 2;       // answer: unique id of the effect a shell is loading
constexpr VstInt32 audioMasterIdle = 3;            // the effect asks for an idle round of the host
constexpr VstInt32 audioMasterPinConnected = 4;    // deprecated
constexpr VstInt32 audioMasterWantMidi = 6;        // deprecated; value: filter, the effect takes events
constexpr VstInt32 audioMasterGetTime = 7;         // value: kVst... filter; answer: VstTimeInfo* or 0
constexpr VstInt32 audioMasterProcessEvents = 8;   // pointer: VstEvents* the effect sends
constexpr VstInt32 audioMasterSetTime = 9;         // deprecated
constexpr VstInt32 audioMasterTempoAt = 10;        // deprecated
constexpr VstInt32 audioMasterGetNumAutomatableParameters = 11;  // deprecated
constexpr VstInt32 audioMasterGetParameterQuantization = 12;     // deprecated
constexpr VstInt32 audioMasterIOChanged = 13;      // numInputs, numOutputs or initialDelay changed
constexpr VstInt32 audioMasterNeedIdle = 14;       // deprecated
constexpr VstInt32 audioMasterSizeWindow = 15;     // index: width, value: height in pixels; answer 1 done
constexpr VstInt32 audioMasterGetSampleRate = 16;  // answer: the host's sample rate in Hz
constexpr VstInt32 audioMasterGetBlockSize = 17;   // answer: the host's block size
constexpr VstInt32 audioMasterGetInputLatency = 18;   // answer: input latency in samples
constexpr VstInt32 audioMasterGetOutputLatency = 19;  // answer: output latency in samples
constexpr VstInt32 audioMasterGetPreviousPlug = 20;   // deprecated
constexpr VstInt32 audioMasterGetNextPlug = 21;       // deprecated
constexpr VstInt32 audioMasterWillReplaceOrAccumulate = 22;  // deprecated
constexpr VstInt32 audioMasterGetCurrentProcessLevel = 23;   // answer: a kVstProcessLevel... value
constexpr VstInt32 audioMasterGetAutomationState = 24;       // answer: a kVstAutomation... value
constexpr VstInt32 audioMasterOfflineStart = 25;             // offline processing interface
constexpr VstInt32 audioMasterOfflineRead = 26;              // offline processing interface
constexpr VstInt32 audioMasterOfflineWrite = 27;             // offline processing interface
constexpr VstInt32 audioMasterOfflineGetCurrentPass = 28;    // offline processing interface
constexpr VstInt32 audioMasterOfflineGetCurrentMetaPass = 29;  // offline processing interface
constexpr VstInt32 audioMasterSetOutputSampleRate = 30;        // deprecated
constexpr VstInt32 audioMasterGetOutputSpeakerArrangement = 31;  // deprecated
constexpr VstInt32 audioMasterGetVendorString = 32;   // pointer: buffer of kVstMaxVendorStrLen
constexpr VstInt32 audioMasterGetProductString = 33;  // pointer: buffer of kVstMaxProductStrLen
constexpr VstInt32 audioMasterGetVendorVersion = 34;  // answer: the host's version number
constexpr VstInt32 audioMasterVendorSpecific = 35;    // all arguments free for the vendor
constexpr VstInt32 audioMasterSetIcon = 36;           // deprecated
constexpr VstInt32 audioMasterCanDo = 37;             // pointer: capability text; answer 1 yes, 0 no
constexpr VstInt32 audioMasterGetLanguage = 38;       // answer: a kVstLang... value
constexpr VstInt32 audioMasterOpenWindow = 39;        // deprecated
constexpr VstInt32 audioMasterCloseWindow = 40;       // deprecated
constexpr VstInt32 audioMasterGetDirectory = 41;      // answer: the effect's folder as text, or 0
constexpr VstInt32 audioMasterUpdateDisplay = 42;     // names or values changed: refresh them
constexpr VstInt32 audioMasterBeginEdit = 43;         // index: parameter; a user gesture begins
constexpr VstInt32 audioMasterEndEdit = 44;           // index: parameter; the gesture ends
constexpr VstInt32 audioMasterOpenFileSelector = 45;  // pointer: VstFileSelect*
constexpr VstInt32 audioMasterCloseFileSelector = 46; // pointer: VstFileSelect*
constexpr VstInt32 audioMasterEditFile = 47;          // deprecated
constexpr VstInt32 audioMasterGetChunkFile = 48;      // deprecated
constexpr VstInt32 audioMasterGetInputSpeakerArrangement = 49;  // deprecated

// Answers to audioMasterGetCurrentProcessLevel.
constexpr VstInt32 kVstProcessLevelUnknown = 0;   // not supported by the host
constexpr VstInt32 kVstProcessLevelUser = 1;      // user thread (GUI)
constexpr VstInt32 kVstProcessLevelRealtime = 2;  // audio thread, in real time
constexpr VstInt32 kVstProcessLevelPrefetch = 3;  // sequencer thread ahead of real time
constexpr VstInt32 kVstProcessLevelOffline = 4;   // offline processing, no time limit

// Answers to audioMasterGetAutomationState.
constexpr VstInt32 kVstAutomationUnsupported = 0;
constexpr VstInt32 kVstAutomationOff = 1;
constexpr VstInt32 kVstAutomationRead = 2;
constexpr VstInt32 kVstAutomationWrite = 3;
constexpr VstInt32 kVstAutomationReadWrite = 4;

// Answers to audioMasterGetLanguage.
constexpr VstInt32 kVstLangEnglish = 1;
constexpr VstInt32 kVstLangGerman = 2;
constexpr VstInt32 kVstLangFrench = 3;
constexpr VstInt32 kVstLangItalian = 4;
constexpr VstInt32 kVstLangSpanish = 5;
constexpr VstInt32 kVstLangJapanese = 6;

// Answers to effGetPlugCategory.
constexpr VstInt32 kPlugCategUnknown = 0;         // not told
constexpr VstInt32 kPlugCategEffect = 1;          // simple effect
constexpr VstInt32 kPlugCategSynth = 2;           // instrument
constexpr VstInt32 kPlugCategAnalysis = 3;        // scope, tuner and the like
constexpr VstInt32 kPlugCategMastering = 4;       // dynamics and mastering
constexpr VstInt32 kPlugCategSpacializer = 5;     // panner
constexpr VstInt32 kPlugCategRoomFx = 6;          // delay and reverb
constexpr VstInt32 kPlugCategSurroundFx = 7;      // dedicated surround processor
constexpr VstInt32 kPlugCategRestoration = 8;     // denoiser and the like
constexpr VstInt32 kPlugCategOfflineProcess = 9;  // offline process only
constexpr VstInt32 kPlugCategShell = 10;          // holds further effects
constexpr VstInt32 kPlugCategGenerator = 11;      // tone generator

// effSetProcessPrecision values.
constexpr VstInt32 kVstProcessPrecision32 = 0;  // processReplacing
constexpr VstInt32 kVstProcessPrecision64 = 1;  // processDoubleReplacing

// effSetPanLaw values.
constexpr VstInt32 kVstLinearPanLaw = 0;      // L = pan * M, R = (1 - pan) * M
constexpr VstInt32 kVstEqualPowerPanLaw = 1;  // L = pow(pan, 0.5) * M, R = pow(1 - pan, 0.5) * M

// The editor's rectangle in pixels, answered to effEditGetRect.
struct ERect
{
    VstInt16 top;
    VstInt16 left;
    VstInt16 bottom;  // exclusive: bottom - top is the height
    VstInt16 right;   // exclusive: right - left is the width
};

// A key for effEditKeyDown and effEditKeyUp, built by the effect from the opcode's arguments.
struct VstKeyCode
{
    VstInt32 character;      // ASCII character, 0 when virt names the key
    unsigned char virt;      // VKEY_... value, 0 for a plain character
    unsigned char modifier;  // MODIFIER_... bits
};

// VstKeyCode.virt.
constexpr unsigned char VKEY_BACK = 1;
constexpr unsigned char VKEY_TAB = 2;
constexpr unsigned char VKEY_CLEAR = 3;
constexpr unsigned char VKEY_RETURN = 4;
constexpr unsigned char VKEY_PAUSE = 5;
constexpr unsigned char VKEY_ESCAPE = 6;
constexpr unsigned char VKEY_SPACE = 7;
constexpr unsigned char VKEY_NEXT = 8;
constexpr unsigned char VKEY_END = 9;
constexpr unsigned char VKEY_HOME = 10;
constexpr unsigned char VKEY_LEFT = 11;
constexpr unsigned char VKEY_UP = 12;
constexpr unsigned char VKEY_RIGHT = 13;
constexpr unsigned char VKEY_DOWN = 14;
constexpr unsigned char VKEY_PAGEUP = 15;
constexpr unsigned char VKEY_PAGEDOWN = 16;
constexpr unsigned char VKEY_SELECT = 17;
constexpr unsigned char VKEY_PRINT = 18;
constexpr unsigned char VKEY_ENTER = 19;
constexpr unsigned char VKEY_SNAPSHOT = 20;
constexpr unsigned char VKEY_INSERT = 21;
constexpr unsigned char VKEY_DELETE = 22;
constexpr unsigned char VKEY_HELP = 23;
constexpr unsigned char VKEY_NUMPAD0 = 24;  // VKEY_NUMPAD0 + n is the keypad digit n, up to 9
constexpr unsigned char VKEY_NUMPAD9 = 33;
constexpr unsigned char VKEY_MULTIPLY = 34;
constexpr unsigned char VKEY_ADD = 35;
constexpr unsigned char VKEY_SEPARATOR = 36;
constexpr unsigned char VKEY_SUBTRACT = 37;
constexpr unsigned char VKEY_DECIMAL = 38;
constexpr unsigned char VKEY_DIVIDE = 39;
constexpr unsigned char VKEY_F1 = 40;       // VKEY_F1 + n - 1 is the function key Fn, up to F12
constexpr unsigned char VKEY_F12 = 51;
constexpr unsigned char VKEY_NUMLOCK = 52;
constexpr unsigned char VKEY_SCROLL = 53;
constexpr unsigned char VKEY_SHIFT = 54;
constexpr unsigned char VKEY_CONTROL = 55;
constexpr unsigned char VKEY_ALT = 56;
constexpr unsigned char VKEY_EQUALS = 57;

// VstKeyCode.modifier bits.
constexpr unsigned char MODIFIER_SHIFT = 1 << 0;
constexpr unsigned char MODIFIER_ALTERNATE = 1 << 1;  // Alt
constexpr unsigned char MODIFIER_COMMAND = 1 << 2;    // the platform's command key
constexpr unsigned char MODIFIER_CONTROL = 1 << 3;

// Event types, VstEvent.type.
constexpr VstInt32 kVstMidiType = 1;       // VstMidiEvent
constexpr VstInt32 kVstAudioType = 2;      // deprecated
constexpr VstInt32 kVstVideoType = 3;      // deprecated
constexpr VstInt32 kVstParameterType = 4;  // deprecated
constexpr VstInt32 kVstTriggerType = 5;    // deprecated
constexpr VstInt32 kVstSysExType = 6;      // VstMidiSysexEvent

// VstMidiEvent.flags.
constexpr VstInt32 kVstMidiEventIsRealtime = 1 << 0;  // played live, not from a track

// The common head of every event; `type` tells the full record.
struct VstEvent
{
    VstInt32 type;         // kVst...Type
    VstInt32 byteSize;     // size of the record after this field
    VstInt32 deltaFrames;  // offset of the event in the block, in samples
    VstInt32 flags;
    char data[16];         // depends on the type
};

// A list of events for one block. The record is variable in length: `events` holds numEvents
// pointers, of which the declaration shows two.
struct VstEvents
{
    VstInt32 numEvents;
    VstIntPtr reserved;     // 0
    VstEvent* events[2];
};

// One short MIDI message.
struct VstMidiEvent
{
    VstInt32 type;           // kVstMidiType
    VstInt32 byteSize;       // sizeof(VstMidiEvent)
    VstInt32 deltaFrames;    // offset in the block, in samples
    VstInt32 flags;          // kVstMidiEventIsRealtime
    VstInt32 noteLength;     // samples, 0 when unknown
    VstInt32 noteOffset;     // samples into the note when playback started
    char midiData[4];        // one to three MIDI bytes, the fourth is zero
    char detune;             // cents, -64 to +63
    char noteOffVelocity;
    char reserved1;
    char reserved2;
};

// One system-exclusive MIDI message.
struct VstMidiSysexEvent
{
    VstInt32 type;           // kVstSysExType
    VstInt32 byteSize;       // sizeof(VstMidiSysexEvent)
    VstInt32 deltaFrames;
    VstInt32 flags;
    VstInt32 dumpBytes;      // bytes at sysexDump
    VstIntPtr resvd1;        // 0
    char* sysexDump;         // owned by the sender
    VstIntPtr resvd2;        // 0
};

// VstTimeInfo.flags: what changed and which fields hold values.
constexpr VstInt32 kVstTransportChanged = 1 << 0;     // play, cycle or record state changed
constexpr VstInt32 kVstTransportPlaying = 1 << 1;
constexpr VstInt32 kVstTransportCycleActive = 1 << 2;
constexpr VstInt32 kVstTransportRecording = 1 << 3;
constexpr VstInt32 kVstAutomationWriting = 1 << 6;
constexpr VstInt32 kVstAutomationReading = 1 << 7;
constexpr VstInt32 kVstNanosValid = 1 << 8;           // nanoSeconds
constexpr VstInt32 kVstPpqPosValid = 1 << 9;          // ppqPos
constexpr VstInt32 kVstTempoValid = 1 << 10;          // tempo
constexpr VstInt32 kVstBarsValid = 1 << 11;           // barStartPos
constexpr VstInt32 kVstCyclePosValid = 1 << 12;       // cycleStartPos and cycleEndPos
constexpr VstInt32 kVstTimeSigValid = 1 << 13;        // timeSigNumerator and timeSigDenominator
constexpr VstInt32 kVstSmpteValid = 1 << 14;          // smpteOffset and smpteFrameRate
constexpr VstInt32 kVstClockValid = 1 << 15;          // samplesToNextClock

// VstTimeInfo.smpteFrameRate.
constexpr VstInt32 kVstSmpte24fps = 0;
constexpr VstInt32 kVstSmpte25fps = 1;
constexpr VstInt32 kVstSmpte2997fps = 2;
constexpr VstInt32 kVstSmpte30fps = 3;
constexpr VstInt32 kVstSmpte2997dfps = 4;
constexpr VstInt32 kVstSmpte30dfps = 5;
constexpr VstInt32 kVstSmpteFilm16mm = 6;
constexpr VstInt32 kVstSmpteFilm35mm = 7;
constexpr VstInt32 kVstSmpte239fps = 10;
constexpr VstInt32 kVstSmpte249fps = 11;
constexpr VstInt32 kVstSmpte599fps = 12;
constexpr VstInt32 kVstSmpte60fps = 13;

// The host's transport at the start of the current block, answered to audioMasterGetTime. Owned
// by the host and valid until the next call; only the fields that `flags` marks are meaningful.
struct VstTimeInfo
{
    double samplePos;       // samples since the start of the song, always valid
    double sampleRate;      // Hz, always valid
    double nanoSeconds;     // system time in nanoseconds
    double ppqPos;          // quarter notes since the start of the song
    double tempo;           // beats per minute
    double barStartPos;     // ppqPos of the start of the current bar
    double cycleStartPos;   // ppqPos of the loop start
    double cycleEndPos;     // ppqPos of the loop end
    VstInt32 timeSigNumerator;
    VstInt32 timeSigDenominator;
    VstInt32 smpteOffset;        // in SMPTE subframes, 80 to a frame
    VstInt32 smpteFrameRate;     // kVstSmpte... value
    VstInt32 samplesToNextClock; // to the next MIDI clock of 24 per quarter note
    VstInt32 flags;              // kVst... bits above
};

// VstPinProperties.flags.
constexpr VstInt32 kVstPinIsActive = 1 << 0;
constexpr VstInt32 kVstPinIsStereo = 1 << 1;    // the pin is the first of a stereo pair
constexpr VstInt32 kVstPinUseSpeaker = 1 << 2;  // arrangementType is valid

// Description of one audio input or output, for effGetInputProperties and effGetOutputProperties.
struct VstPinProperties
{
    char label[kVstMaxLabelLen];
    VstInt32 flags;                        // kVstPin... bits
    VstInt32 arrangementType;              // kSpeakerArr... value
    char shortLabel[kVstMaxShortLabelLen];
    char future[48];
};

// VstParameterProperties.flags.
constexpr VstInt32 kVstParameterIsSwitch = 1 << 0;
constexpr VstInt32 kVstParameterUsesIntegerMinMax = 1 << 1;
constexpr VstInt32 kVstParameterUsesFloatStep = 1 << 2;
constexpr VstInt32 kVstParameterUsesIntStep = 1 << 3;
constexpr VstInt32 kVstParameterSupportsDisplayIndex = 1 << 4;
constexpr VstInt32 kVstParameterSupportsDisplayCategory = 1 << 5;
constexpr VstInt32 kVstParameterCanRamp = 1 << 6;

// Extra description of a parameter, for effGetParameterProperties.
struct VstParameterProperties
{
    float stepFloat;
    float smallStepFloat;
    float largeStepFloat;
    char label[kVstMaxLabelLen];
    VstInt32 flags;             // kVstParameter... bits
    VstInt32 minInteger;
    VstInt32 maxInteger;
    VstInt32 stepInteger;
    VstInt32 largeStepInteger;
    char shortLabel[kVstMaxShortLabelLen];
    VstInt16 displayIndex;
    VstInt16 category;          // 1-based, 0 for none
    VstInt16 numParametersInCategory;
    VstInt16 reserved;
    char categoryLabel[kVstMaxCategLabelLen];
    char future[16];
};

// Speaker arrangement types, VstSpeakerArrangement.type (the surround layouts are not used here).
constexpr VstInt32 kSpeakerArrUserDefined = -2;
constexpr VstInt32 kSpeakerArrEmpty = -1;
constexpr VstInt32 kSpeakerArrMono = 0;
constexpr VstInt32 kSpeakerArrStereo = 1;

// Speaker types, VstSpeakerProperties.type (the surround speakers are not used here).
constexpr VstInt32 kSpeakerUndefined = 0x7fffffff;
constexpr VstInt32 kSpeakerM = 0;  // mono
constexpr VstInt32 kSpeakerL = 1;  // left
constexpr VstInt32 kSpeakerR = 2;  // right

// One speaker of an arrangement.
struct VstSpeakerProperties
{
    float azimuth;    // radians, -pi to pi; 10.0 for a speaker with no position (such as LFE)
    float elevation;  // radians, -pi/2 to pi/2
    float radius;     // metres
    float reserved;   // 0
    char name[kVstMaxNameLen];
    VstInt32 type;    // kSpeaker... value
    char future[28];
};

// A channel layout, for effSetSpeakerArrangement and effGetSpeakerArrangement. The record is
// variable in length: `speakers` holds numChannels entries, of which the declaration shows eight.
struct VstSpeakerArrangement
{
    VstInt32 type;         // kSpeakerArr... value
    VstInt32 numChannels;
    VstSpeakerProperties speakers[8];
};

// What a bank or program file about to be loaded holds, for effBeginLoadBank and effBeginLoadProgram.
struct VstPatchChunkInfo
{
    VstInt32 version;         // format version, 1
    VstInt32 pluginUniqueID;
    VstInt32 pluginVersion;
    VstInt32 numElements;     // programs in a bank, parameters in a program
    char future[48];
};

// The layouts above are the published ones on LP64; a slip in a field fails the build here.
static_assert(sizeof(void*) == 8, "this declaration is for 64-bit (LP64) targets");
static_assert(offsetof(AEffect, dispatcher) == 8);
static_assert(offsetof(AEffect, numPrograms) == 40);
static_assert(offsetof(AEffect, flags) == 56);
static_assert(offsetof(AEffect, resvd1) == 64);
static_assert(offsetof(AEffect, initialDelay) == 80);
static_assert(offsetof(AEffect, ioRatio) == 92);
static_assert(offsetof(AEffect, object) == 96);
static_assert(offsetof(AEffect, uniqueID) == 112);
static_assert(offsetof(AEffect, version) == 116);
static_assert(offsetof(AEffect, processReplacing) == 120);
static_assert(offsetof(AEffect, processDoubleReplacing) == 128);
static_assert(sizeof(AEffect) == 192);
static_assert(sizeof(ERect) == 8);
static_assert(sizeof(VstKeyCode) == 8 && offsetof(VstKeyCode, modifier) == 5);
static_assert(sizeof(VstEvent) == 32);
static_assert(offsetof(VstEvents, events) == 16 && sizeof(VstEvents) == 32);
static_assert(offsetof(VstMidiEvent, midiData) == 24 && sizeof(VstMidiEvent) == 32);
static_assert(offsetof(VstMidiSysexEvent, sysexDump) == 32 && sizeof(VstMidiSysexEvent) == 48);
static_assert(offsetof(VstTimeInfo, timeSigNumerator) == 64);
static_assert(offsetof(VstTimeInfo, flags) == 84 && sizeof(VstTimeInfo) == 88);
static_assert(offsetof(VstPinProperties, shortLabel) == 72 && sizeof(VstPinProperties) == 128);
static_assert(offsetof(VstParameterProperties, flags) == 76);
static_assert(offsetof(VstParameterProperties, displayIndex) == 104);
static_assert(sizeof(VstParameterProperties) == 152);
static_assert(sizeof(VstSpeakerProperties) == 112);
static_assert(offsetof(VstSpeakerArrangement, speakers) == 8 && sizeof(VstSpeakerArrangement) == 904);
static_assert(sizeof(VstPatchChunkInfo) == 64);
static_assert(kEffectMagic == 0x56737450);
}
