#include "plugin/KLAudioPlugin.h"

#include "foundation/runtime/ScopedLock.h"
#include "plugin/AudioBus.h"
#include "plugin/KLStateDocument.h"
#include "plugin/SharedResourcePack.h"

#include <algorithm>
#include <cmath>

using q1framework::ScopedLock;
using q1framework::String;

namespace
{
constexpr char programNamePrefix[] = "init";
// A level meter falls by this much linear level per second.
constexpr double meterFallPerSecond = 0.25;
KLAudioPlugin::EditorFactory editorFactory = nullptr;
}  // namespace

namespace q1framework
{
AudioPlugin* createAudioPlugin()
{
    return new KLAudioPlugin;
}
}  // namespace q1framework

KLAudioPlugin::KLAudioPlugin()
    : uiWidthNew(KLStateDocument::defaultEditorWidth),
      uiHeightNew(KLStateDocument::defaultEditorHeight),
      uiWidth(0),
      uiHeight(0),
      currentProgram(0)
{
    // The meters start at 0 with a fall of 0.1 per sample, the processor at its own defaults and
    // the program at the table's defaults (member initialisers). The first instance of the process
    // opens the resource pack that every editor draws from.
    q1framework::SharedResourcePack::acquire(resourceFileName);
    inputLevel.store(0.0f, std::memory_order_relaxed);
    outputLevel.store(0.0f, std::memory_order_relaxed);
    configureStereo();
    program.name = String(programNamePrefix) + String(0);
    applyProgram();
}

KLAudioPlugin::~KLAudioPlugin()
{
    q1framework::SharedResourcePack::release();
}

void KLAudioPlugin::setEditorFactory(EditorFactory factory)
{
    editorFactory = factory;
}

q1framework::AudioPluginEditor* KLAudioPlugin::createEditor()
{
    return editorFactory != nullptr ? editorFactory(*this) : nullptr;
}

void KLAudioPlugin::setParameter(float value, int index)
{
    // Values outside 0..1 are kept as they stand, as the state keeps them; infinity and NaN are
    // no value at all, and a host asking for the parameter must never be answered with one.
    if (index < 0 || index >= KLParameters::count || !std::isfinite(value))
        return;
    const ScopedLock lock(getMutex());
    program.setValue(index, value);
    applyParameter(index, value);
    markEditors(index);
}

double KLAudioPlugin::getParameter(int index)
{
    if (index < 0 || index >= KLParameters::count)
        return 0.0;
    return program.getValue(index);
}

String KLAudioPlugin::getParameterText(float value, int index)
{
    return KLParameters::getText(value, index);
}

String KLAudioPlugin::getParameterName(int index)
{
    return KLParameters::getName(index);
}

void KLAudioPlugin::prepare(int blockSize, bool clearBuffers, double sampleRate)
{
    AudioPlugin::prepare(blockSize, clearBuffers, sampleRate);
    // A rate below 1 Hz (or NaN) is no rate: the meters keep their fall.
    if (sampleRate >= 1.0)
    {
        const float decay = static_cast<float>(meterFallPerSecond / sampleRate);
        const ScopedLock lock(getMutex());
        inputPeak.decayPerSample = decay;
        outputPeak.decayPerSample = decay;
    }
    applyProgram();
}

void KLAudioPlugin::process(q1framework::TimeInfo&, int frames)
{
    const ScopedLock lock(getMutex());
    if (getNumAudioInputs() < 1 || getNumAudioOutputs() < 1)
        return;
    const AudioBus& input = getAudioInput(0);
    const AudioBus& output = getAudioOutput(0);
    const int channels = input.getNumChannels();
    if (channels < 1 || channels > 2 || channels != output.getNumChannels())
        return;
    float* const* in = input.getChannels();
    float* const* out = output.getChannels();
    for (int channel = 0; channel < channels; ++channel)
        if (in[channel] == nullptr || out[channel] == nullptr)
            return;

    // Levels are measured only for an editor or a host that shows them: a closed editor costs the
    // audio thread nothing. The input is measured before the block, which may overwrite it in place.
    const bool measuring = areLevelsShown();
    if (measuring)
        inputLevel.store(inputPeak.measure(in, channels, frames), std::memory_order_relaxed);
    if (channels == 1)
        processor.processMono(in[0], out[0], frames, false);
    else
        processor.processStereo(in[0], in[1], out[0], out[1], frames, false);
    if (measuring)
        outputLevel.store(outputPeak.measure(out, channels, frames), std::memory_order_relaxed);
}

float KLAudioPlugin::toPhysicalValue(float value, int index)
{
    return KLParameters::toPhysical(value, index);
}

float KLAudioPlugin::fromPhysicalValue(float physical, int index)
{
    return KLParameters::fromPhysical(physical, index);
}

float KLAudioPlugin::takeMeterValue(int index)
{
    switch (index)
    {
    case KLMeters::inputLevel:
        return getInputLevel();
    case KLMeters::outputLevel:
        return getOutputLevel();
    case KLMeters::driveLevel:
    {
        const float peak = processor.takeDrivePeak();
        if (getNumEditors() > 0)
            editorDrivePeak = std::max(editorDrivePeak, peak);
        return peak;
    }
    default:
        return 0.0f;
    }
}

float KLAudioPlugin::readMeter(int index)
{
    switch (index)
    {
    case KLMeters::inputLevel:
        return getInputLevel();
    case KLMeters::outputLevel:
        return getOutputLevel();
    case KLMeters::driveLevel:
        return takeDriveLevel();
    default:
        return 0.0f;
    }
}

bool KLAudioPlugin::configureStereo()
{
    replaceAudioBuses(2);
    return true;
}

bool KLAudioPlugin::configureMono()
{
    replaceAudioBuses(1);
    return true;
}

void KLAudioPlugin::applyProgram()
{
    const ScopedLock lock(getMutex());
    markAllEditors();
    for (int index = 0; index < KLParameters::count; ++index)
        activeValues[index] = program.getValue(index);
    for (int index = 0; index < getNumParameters(); ++index)
        applyParameter(index, activeValues[index]);
}

void KLAudioPlugin::applyParameter(int index, float value)
{
    if (index < 0 || index >= KLParameters::count)
        return;
    activeValues[index] = value;
    switch (index)
    {
    case KLParameters::attack:
        processor.setAttack(value);
        break;
    case KLParameters::release:
        processor.setRelease(value);
        break;
    case KLParameters::bypass:
        processor.setBypass(KLParameters::isOn(value));
        break;
    case KLParameters::gain:
        processor.setGain(value);
        break;
    case KLParameters::attackTime:
        processor.setAttackTime(KLParameters::getTimeFactor(value));
        break;
    case KLParameters::releaseTime:
        processor.setReleaseTime(KLParameters::getTimeFactor(value));
        break;
    case KLParameters::drive:
        processor.setDrive(value);
        break;
    default:
        break;
    }
}

float KLAudioPlugin::takeDriveLevel()
{
    const ScopedLock lock(getMutex());
    const float peak = std::max(editorDrivePeak, processor.takeDrivePeak());
    editorDrivePeak = 0.0f;
    return peak;
}

int KLAudioPlugin::getEditorWidth()
{
    const ScopedLock lock(getMutex());
    return uiWidthNew;
}

int KLAudioPlugin::getEditorHeight()
{
    const ScopedLock lock(getMutex());
    return uiHeightNew;
}

void KLAudioPlugin::setEditorSize(int width, int height)
{
    const ScopedLock lock(getMutex());
    uiWidthNew = width;
    uiHeightNew = height;
}
