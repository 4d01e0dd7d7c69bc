#include "host/AudioEffectX.h"

namespace q1framework
{
namespace
{
// The key of effEditKeyDown and effEditKeyUp: character in index, virtual key in value,
// modifier bits in opt.
VstKeyCode keyFromArguments(VstInt32 index, VstIntPtr value, float opt)
{
    VstKeyCode key{};
    key.character = index;
    key.virt = static_cast<unsigned char>(value);
    key.modifier = static_cast<unsigned char>(static_cast<int>(opt));
    return key;
}
}

AudioEffectX::AudioEffectX(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount)
    : AudioEffect(host, programCount, parameterCount)
{
}

AudioEffectX::~AudioEffectX() = default;

VstIntPtr AudioEffectX::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer,
                                   float opt)
{
    if (pointer == nullptr && needsPointer(opcode))
        return 0;
    char* const text = static_cast<char*>(pointer);
    switch (opcode)
    {
    case effProcessEvents:
        return processEvents(static_cast<VstEvents*>(pointer)) ? 1 : 0;
    case effCanBeAutomated:
        return canParameterBeAutomated(index) ? 1 : 0;
    case effString2Parameter:
        return string2parameter(index, text) ? 1 : 0;
    case effGetProgramNameIndexed:
        return getProgramNameIndexed(static_cast<VstInt32>(value), index, text) ? 1 : 0;
    case effGetInputProperties:
        return getInputProperties(index, static_cast<VstPinProperties*>(pointer)) ? 1 : 0;
    case effGetOutputProperties:
        return getOutputProperties(index, static_cast<VstPinProperties*>(pointer)) ? 1 : 0;
    case effGetPlugCategory:
        return getPlugCategory();
    case effSetSpeakerArrangement:
        if (value == 0)
            return 0;
        return setSpeakerArrangement(reinterpret_cast<VstSpeakerArrangement*>(value),
                                     static_cast<VstSpeakerArrangement*>(pointer)) ? 1 : 0;
    case effGetSpeakerArrangement:
        if (value == 0)
            return 0;
        return getSpeakerArrangement(reinterpret_cast<VstSpeakerArrangement**>(value),
                                     static_cast<VstSpeakerArrangement**>(pointer)) ? 1 : 0;
    case effSetBypass:
        return setBypass(value != 0) ? 1 : 0;
    case effGetEffectName:
        return getEffectName(text) ? 1 : 0;
    case effGetVendorString:
        return getVendorString(text) ? 1 : 0;
    case effGetProductString:
        return getProductString(text) ? 1 : 0;
    case effGetVendorVersion:
        return getVendorVersion();
    case effVendorSpecific:
        return vendorSpecific(index, value, pointer, opt);
    case effCanDo:
        return canDo(text);
    case effGetTailSize:
        return getTailSize();
    case effGetParameterProperties:
        return getParameterProperties(index, static_cast<VstParameterProperties*>(pointer)) ? 1 : 0;
    case effGetVstVersion:
        return getVstVersion();
    case effEditKeyDown:
        if (editor == nullptr)
            return 0;
        {
            VstKeyCode key = keyFromArguments(index, value, opt);
            return editor->onKeyDown(key) ? 1 : 0;
        }
    case effEditKeyUp:
        if (editor == nullptr)
            return 0;
        {
            VstKeyCode key = keyFromArguments(index, value, opt);
            return editor->onKeyUp(key) ? 1 : 0;
        }
    case effSetEditKnobMode:
        return editor != nullptr && editor->setKnobMode(static_cast<VstInt32>(value)) ? 1 : 0;
    case effBeginSetProgram:
        return beginSetProgram() ? 1 : 0;
    case effEndSetProgram:
        return endSetProgram() ? 1 : 0;
    case effStartProcess:
        return startProcess();
    case effStopProcess:
        return stopProcess();
    case effSetTotalSampleToProcess:
        return setTotalSampleToProcess(static_cast<VstInt32>(value));
    case effBeginLoadBank:
        return beginLoadBank(static_cast<VstPatchChunkInfo*>(pointer));
    case effBeginLoadProgram:
        return beginLoadProgram(static_cast<VstPatchChunkInfo*>(pointer));
    case effSetProcessPrecision:
        return setProcessPrecision(static_cast<VstInt32>(value)) ? 1 : 0;
    case effGetNumMidiInputChannels:
        return getNumMidiInputChannels();
    case effGetNumMidiOutputChannels:
        return getNumMidiOutputChannels();
    default:
        return AudioEffect::dispatcher(opcode, index, value, pointer, opt);
    }
}

bool AudioEffectX::processEvents(VstEvents*)
{
    return false;
}

bool AudioEffectX::canParameterBeAutomated(VstInt32)
{
    return true;
}

bool AudioEffectX::string2parameter(VstInt32, char*)
{
    return false;
}

bool AudioEffectX::getProgramNameIndexed(VstInt32, VstInt32, char*)
{
    return false;
}

bool AudioEffectX::getParameterProperties(VstInt32, VstParameterProperties*)
{
    return false;
}

bool AudioEffectX::getInputProperties(VstInt32, VstPinProperties*)
{
    return false;
}

bool AudioEffectX::getOutputProperties(VstInt32, VstPinProperties*)
{
    return false;
}

bool AudioEffectX::setSpeakerArrangement(VstSpeakerArrangement*, VstSpeakerArrangement*)
{
    return false;
}

bool AudioEffectX::getSpeakerArrangement(VstSpeakerArrangement** input, VstSpeakerArrangement** output)
{
    *input = nullptr;
    *output = nullptr;
    return false;
}

bool AudioEffectX::setBypass(bool)
{
    return false;
}

VstInt32 AudioEffectX::getPlugCategory()
{
    return (cEffect.flags & effFlagsIsSynth) != 0 ? kPlugCategSynth : kPlugCategUnknown;
}

bool AudioEffectX::getEffectName(char*)
{
    return false;
}

bool AudioEffectX::getVendorString(char*)
{
    return false;
}

bool AudioEffectX::getProductString(char*)
{
    return false;
}

VstInt32 AudioEffectX::getVendorVersion()
{
    return 0;
}

VstIntPtr AudioEffectX::vendorSpecific(VstInt32, VstIntPtr, void*, float)
{
    return 0;
}

VstInt32 AudioEffectX::canDo(char*)
{
    return 0;
}

VstInt32 AudioEffectX::getTailSize()
{
    return 0;
}

VstInt32 AudioEffectX::getVstVersion()
{
    return kVstVersion;
}

VstInt32 AudioEffectX::startProcess()
{
    return 0;
}

VstInt32 AudioEffectX::stopProcess()
{
    return 0;
}

bool AudioEffectX::setProcessPrecision(VstInt32)
{
    return false;
}

VstInt32 AudioEffectX::setTotalSampleToProcess(VstInt32 frames)
{
    return frames;
}

bool AudioEffectX::beginSetProgram()
{
    return false;
}

bool AudioEffectX::endSetProgram()
{
    return false;
}

VstInt32 AudioEffectX::beginLoadBank(VstPatchChunkInfo*)
{
    return 0;
}

VstInt32 AudioEffectX::beginLoadProgram(VstPatchChunkInfo*)
{
    return 0;
}

VstInt32 AudioEffectX::getNumMidiInputChannels()
{
    return 0;
}

VstInt32 AudioEffectX::getNumMidiOutputChannels()
{
    return 0;
}

VstTimeInfo* AudioEffectX::getTimeInfo(VstInt32 filter)
{
    return reinterpret_cast<VstTimeInfo*>(callHost(audioMasterGetTime, 0, filter, nullptr, 0.0f));
}

bool AudioEffectX::ioChanged()
{
    return callHost(audioMasterIOChanged, 0, 0, nullptr, 0.0f) != 0;
}

bool AudioEffectX::sizeWindow(VstInt32 width, VstInt32 height)
{
    return callHost(audioMasterSizeWindow, width, height, nullptr, 0.0f) != 0;
}

void AudioEffectX::wantEvents(VstInt32 filter)
{
    callHost(audioMasterWantMidi, 0, filter, nullptr, 0.0f);
}

bool AudioEffectX::sendVstEventsToHost(VstEvents* events)
{
    return callHost(audioMasterProcessEvents, 0, 0, events, 0.0f) == 1;
}

float AudioEffectX::updateSampleRate()
{
    const VstIntPtr rate = callHost(audioMasterGetSampleRate, 0, 0, nullptr, 0.0f);
    if (rate > 0)
        sampleRate = static_cast<float>(rate);
    return sampleRate;
}

VstInt32 AudioEffectX::updateBlockSize()
{
    const VstIntPtr frames = callHost(audioMasterGetBlockSize, 0, 0, nullptr, 0.0f);
    if (frames > 0)
        blockSize = static_cast<VstInt32>(frames);
    return blockSize;
}

VstInt32 AudioEffectX::getCurrentProcessLevel()
{
    return static_cast<VstInt32>(callHost(audioMasterGetCurrentProcessLevel, 0, 0, nullptr, 0.0f));
}

VstInt32 AudioEffectX::getAutomationState()
{
    return static_cast<VstInt32>(callHost(audioMasterGetAutomationState, 0, 0, nullptr, 0.0f));
}

bool AudioEffectX::getHostVendorString(char* text)
{
    *text = '\0';
    return callHost(audioMasterGetVendorString, 0, 0, text, 0.0f) != 0;
}

bool AudioEffectX::getHostProductString(char* text)
{
    *text = '\0';
    return callHost(audioMasterGetProductString, 0, 0, text, 0.0f) != 0;
}

VstInt32 AudioEffectX::getHostVendorVersion()
{
    return static_cast<VstInt32>(callHost(audioMasterGetVendorVersion, 0, 0, nullptr, 0.0f));
}

bool AudioEffectX::canHostDo(const char* text)
{
    return callHost(audioMasterCanDo, 0, 0, const_cast<char*>(text), 0.0f) != 0;
}

bool AudioEffectX::updateDisplay()
{
    return callHost(audioMasterUpdateDisplay, 0, 0, nullptr, 0.0f) != 0;
}
}
