#include "host/AudioEffect.h"

#include <cstring>

namespace q1framework
{
namespace
{
constexpr float defaultSampleRate = 44100.0f;
constexpr VstInt32 defaultBlockSize = 1024;
constexpr VstInt32 defaultUniqueId = fourCharacterCode('N', 'o', 'E', 'f');
constexpr VstInt32 defaultVersion = 1;
}

AudioEffect::AudioEffect(audioMasterCallback host, VstInt32 programCount, VstInt32 parameterCount)
    : audioMaster(host),
      editor(nullptr),
      sampleRate(defaultSampleRate),
      blockSize(defaultBlockSize),
      numPrograms(programCount),
      numParams(parameterCount),
      curProgram(0)
{
    std::memset(&cEffect, 0, sizeof cEffect);
    cEffect.magic = kEffectMagic;
    cEffect.dispatcher = dispatchEffect;
    cEffect.process = processEffect;
    cEffect.setParameter = setParameterEffect;
    cEffect.getParameter = getParameterEffect;
    cEffect.numPrograms = programCount;
    cEffect.numParams = parameterCount;
    cEffect.numInputs = 1;
    cEffect.numOutputs = 2;
    cEffect.ioRatio = 1.0f;
    cEffect.object = this;
    cEffect.uniqueID = defaultUniqueId;
    cEffect.version = defaultVersion;
    cEffect.processReplacing = processReplacingEffect;
    cEffect.processDoubleReplacing = processDoubleReplacingEffect;
}

AudioEffect::~AudioEffect()
{
    delete editor;
}

bool AudioEffect::needsPointer(VstInt32 opcode)
{
    switch (opcode)
    {
    case effSetProgramName:
    case effGetProgramName:
    case effGetParamLabel:
    case effGetParamDisplay:
    case effGetParamName:
    case effEditGetRect:
    case effGetChunk:
    case effSetChunk:
    case effProcessEvents:
    case effString2Parameter:
    case effGetProgramNameIndexed:
    case effGetInputProperties:
    case effGetOutputProperties:
    case effGetEffectName:
    case effGetVendorString:
    case effGetProductString:
    case effCanDo:
    case effGetParameterProperties:
    case effGetSpeakerArrangement:
    case effSetSpeakerArrangement:
    case effBeginLoadBank:
    case effBeginLoadProgram:
        return true;
    default:
        return false;
    }
}

VstIntPtr AudioEffect::dispatcher(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer,
                                  float opt)
{
    if (pointer == nullptr && needsPointer(opcode))
        return 0;
    char* const text = static_cast<char*>(pointer);
    switch (opcode)
    {
    case effOpen:
        open();
        return 0;
    case effClose:
        close();
        delete this;
        return 1;
    case effSetProgram:
        if (value >= 0 && value < numPrograms)
            setProgram(static_cast<VstInt32>(value));
        return 0;
    case effGetProgram:
        return getProgram();
    case effSetProgramName:
        setProgramName(text);
        return 0;
    case effGetProgramName:
        getProgramName(text);
        return 0;
    case effGetParamLabel:
        getParameterLabel(index, text);
        return 0;
    case effGetParamDisplay:
        getParameterDisplay(index, text);
        return 0;
    case effGetParamName:
        getParameterName(index, text);
        return 0;
    case effSetSampleRate:
        setSampleRate(opt);
        return 0;
    case effSetBlockSize:
        setBlockSize(static_cast<VstInt32>(value));
        return 0;
    case effMainsChanged:
        if (value == 0)
            suspend();
        else
            resume();
        return 0;
    case effEditGetRect:
        return editor != nullptr && editor->getRect(static_cast<ERect**>(pointer)) ? 1 : 0;
    case effEditOpen:
        return editor != nullptr && editor->open(pointer) ? 1 : 0;
    case effEditClose:
        if (editor != nullptr)
            editor->close();
        return 0;
    case effEditIdle:
        if (editor != nullptr)
            editor->idle();
        return 0;
    case effGetChunk:
        return getChunk(static_cast<void**>(pointer), index != 0);
    case effSetChunk:
        if (value < 0)
            return 0;
        return setChunk(pointer, static_cast<VstInt32>(value), index != 0);
    default:
        return 0;
    }
}

void AudioEffect::open()
{
}

void AudioEffect::close()
{
}

void AudioEffect::suspend()
{
}

void AudioEffect::resume()
{
}

void AudioEffect::setSampleRate(float rate)
{
    sampleRate = rate;
}

void AudioEffect::setBlockSize(VstInt32 frames)
{
    blockSize = frames;
}

void AudioEffect::processDoubleReplacing(double**, double**, VstInt32)
{
}

void AudioEffect::process(float**, float**, VstInt32)
{
}

void AudioEffect::setParameter(VstInt32, float)
{
}

float AudioEffect::getParameter(VstInt32)
{
    return 0.0f;
}

void AudioEffect::setParameterAutomated(VstInt32 index, float value)
{
    setParameter(index, value);
    callHost(audioMasterAutomate, index, 0, nullptr, value);
}

void AudioEffect::getParameterLabel(VstInt32, char* label)
{
    *label = '\0';
}

void AudioEffect::getParameterDisplay(VstInt32, char* text)
{
    *text = '\0';
}

void AudioEffect::getParameterName(VstInt32, char* text)
{
    *text = '\0';
}

VstInt32 AudioEffect::getProgram()
{
    return curProgram;
}

void AudioEffect::setProgram(VstInt32 program)
{
    curProgram = program;
}

void AudioEffect::setProgramName(char*)
{
}

void AudioEffect::getProgramName(char* name)
{
    *name = '\0';
}

VstInt32 AudioEffect::getChunk(void**, bool)
{
    return 0;
}

VstInt32 AudioEffect::setChunk(void*, VstInt32, bool)
{
    return 0;
}

void AudioEffect::setEditor(AEffEditor* newEditor)
{
    if (newEditor != editor)
        delete editor;
    editor = newEditor;
    setFlag(effFlagsHasEditor, editor != nullptr);
}

VstInt32 AudioEffect::getMasterVersion()
{
    const VstIntPtr version = callHost(audioMasterVersion, 0, 0, nullptr, 0.0f);
    return version != 0 ? static_cast<VstInt32>(version) : 1;
}

VstInt32 AudioEffect::getCurrentUniqueId()
{
    return static_cast<VstInt32>(callHost(audioMasterCurrentId, 0, 0, nullptr, 0.0f));
}

void AudioEffect::masterIdle()
{
    callHost(audioMasterIdle, 0, 0, nullptr, 0.0f);
}

bool AudioEffect::beginEdit(VstInt32 index)
{
    return callHost(audioMasterBeginEdit, index, 0, nullptr, 0.0f) != 0;
}

bool AudioEffect::endEdit(VstInt32 index)
{
    return callHost(audioMasterEndEdit, index, 0, nullptr, 0.0f) != 0;
}

VstIntPtr AudioEffect::callHost(VstInt32 opcode, VstInt32 index, VstIntPtr value, void* pointer,
                                float opt)
{
    if (audioMaster == nullptr)
        return 0;
    return audioMaster(&cEffect, opcode, index, value, pointer, opt);
}

void AudioEffect::setFlag(VstInt32 flag, bool state)
{
    if (state)
        cEffect.flags |= flag;
    else
        cEffect.flags &= ~flag;
}

AudioEffect* AudioEffect::fromAeffect(AEffect* effect)
{
    return effect != nullptr ? static_cast<AudioEffect*>(effect->object) : nullptr;
}

VstIntPtr AudioEffect::dispatchEffect(AEffect* effect, VstInt32 opcode, VstInt32 index,
                                      VstIntPtr value, void* pointer, float opt)
{
    AudioEffect* const self = fromAeffect(effect);
    return self != nullptr ? self->dispatcher(opcode, index, value, pointer, opt) : 0;
}

void AudioEffect::processEffect(AEffect* effect, float** inputs, float** outputs, VstInt32 frames)
{
    if (AudioEffect* const self = fromAeffect(effect))
        self->process(inputs, outputs, frames);
}

void AudioEffect::processReplacingEffect(AEffect* effect, float** inputs, float** outputs,
                                         VstInt32 frames)
{
    if (AudioEffect* const self = fromAeffect(effect))
        self->processReplacing(inputs, outputs, frames);
}

void AudioEffect::processDoubleReplacingEffect(AEffect* effect, double** inputs, double** outputs,
                                               VstInt32 frames)
{
    if (AudioEffect* const self = fromAeffect(effect))
        self->processDoubleReplacing(inputs, outputs, frames);
}

void AudioEffect::setParameterEffect(AEffect* effect, VstInt32 index, float value)
{
    if (AudioEffect* const self = fromAeffect(effect))
        self->setParameter(index, value);
}

float AudioEffect::getParameterEffect(AEffect* effect, VstInt32 index)
{
    AudioEffect* const self = fromAeffect(effect);
    return self != nullptr ? self->getParameter(index) : 0.0f;
}
}
