#include "plugin/AudioPlugin.h"

#include "foundation/runtime/ScopedLock.h"
#include "plugin/AudioBus.h"
#include "plugin/EventBus.h"
#include "plugin/PluginEditorView.h"

namespace q1framework
{

AudioPlugin::AudioPlugin() = default;

AudioPlugin::~AudioPlugin()
{
    deleteAudioBuses();
    for (EventBus* bus : eventInputs)
        delete bus;
    for (EventBus* bus : eventOutputs)
        delete bus;
}

AudioPluginEditor* AudioPlugin::createEditor()
{
    return nullptr;
}

void AudioPlugin::editorCreated(AudioPluginEditor*)
{
}

int AudioPlugin::getNumParameters()
{
    return 0;
}

double AudioPlugin::getParameter(int)
{
    return 0.0;
}

String AudioPlugin::getParameterText(float, int)
{
    return String();
}

String AudioPlugin::getParameterName(int)
{
    return String();
}

float AudioPlugin::toPhysicalValue(float value, int)
{
    return value;
}

float AudioPlugin::fromPhysicalValue(float physical, int)
{
    return physical;
}

int AudioPlugin::getNumMeters()
{
    return 0;
}

float AudioPlugin::takeMeterValue(int)
{
    return 0.0f;
}

float AudioPlugin::readMeter(int)
{
    return 0.0f;
}

int AudioPlugin::getEditorWidth()
{
    return 0;
}

int AudioPlugin::getEditorHeight()
{
    return 0;
}

void AudioPlugin::setEditorSize(int, int)
{
}

void AudioPlugin::suspend()
{
}

void AudioPlugin::resume()
{
}

void AudioPlugin::prepare(int blockSize, bool clearBuffers, double)
{
    // The new arrays are made before the lock and the old ones freed after it: the audio thread
    // waits only for the swap, and never sees an array that is being freed.
    Array<AudioBus::ChannelArray> arrays;
    arrays.ensureCapacity(audioInputs.getCount() + audioOutputs.getCount());
    for (AudioBus* bus : audioInputs)
        arrays.add(bus->makeChannelArray(blockSize));
    for (AudioBus* bus : audioOutputs)
        arrays.add(bus->makeChannelArray(blockSize));
    {
        const ScopedLock lock(mutex);
        int next = 0;
        for (AudioBus* bus : audioInputs)
        {
            arrays[next] = bus->swapChannelArray(arrays[next]);
            ++next;
        }
        for (AudioBus* bus : audioOutputs)
        {
            arrays[next] = bus->swapChannelArray(arrays[next]);
            ++next;
        }
        maxBlockSize = blockSize;
        if (clearBuffers)
        {
            clearOutputs(blockSize);
            clearInputs(true, blockSize);
        }
    }
    for (const AudioBus::ChannelArray& old : arrays)
        AudioBus::freeChannelArray(old);
}

bool AudioPlugin::hasDoublePrecision()
{
    return false;
}

int AudioPlugin::getLatency()
{
    return 0;
}

bool AudioPlugin::configureStereo()
{
    return false;
}

bool AudioPlugin::configureMono()
{
    return false;
}

int64_t AudioPlugin::vendorSpecific(int32_t, int64_t, void*, float)
{
    return 0;
}

void AudioPlugin::releaseChannelBuffers()
{
    const ScopedLock lock(mutex);
    for (AudioBus* bus : audioInputs)
        bus->releaseBuffers();
    for (AudioBus* bus : audioOutputs)
        bus->releaseBuffers();
}

void AudioPlugin::clearOutputs(int frames)
{
    const ScopedLock lock(mutex);
    for (AudioBus* bus : audioOutputs)
        bus->clear(frames);
    for (EventBus* bus : eventOutputs)
        bus->clear();
}

void AudioPlugin::clearInputs(bool clearEvents, int frames)
{
    const ScopedLock lock(mutex);
    for (AudioBus* bus : audioInputs)
        bus->clear(frames);
    if (clearEvents)
        for (EventBus* bus : eventInputs)
            bus->clear();
}

bool AudioPlugin::addListener(Listener* listener)
{
    return listener != nullptr && listeners.addIfNotAlreadyThere(listener);
}

void AudioPlugin::removeListener(Listener* listener)
{
    listeners.removeFirstMatching(listener);
}

void AudioPlugin::notifyPluginChanged(int kind)
{
    for (int index = 0; index < listeners.getCount(); ++index)
        listeners[index]->pluginChanged(kind);
}

void AudioPlugin::notifyGestureBegan(int parameter)
{
    for (int index = 0; index < listeners.getCount(); ++index)
        listeners[index]->gestureBegan(this, parameter);
}

void AudioPlugin::notifyValueChanged(float value, int parameter)
{
    for (int index = 0; index < listeners.getCount(); ++index)
        listeners[index]->valueChanged(value, this, parameter);
}

void AudioPlugin::notifyGestureEnded(int parameter)
{
    for (int index = 0; index < listeners.getCount(); ++index)
        listeners[index]->gestureEnded(this, parameter);
}

void AudioPlugin::addEditor(PluginEditorView* editor)
{
    const ScopedLock lock(mutex);
    if (editor != nullptr)
        editors.addIfNotAlreadyThere(editor);
}

void AudioPlugin::removeEditor(PluginEditorView* editor)
{
    const ScopedLock lock(mutex);
    editors.removeFirstMatching(editor);
}

void AudioPlugin::markEditors(int index)
{
    for (PluginEditorView* editor : editors)
        editor->markChanged(index);
}

void AudioPlugin::markAllEditors()
{
    for (PluginEditorView* editor : editors)
        editor->markAllChanged();
}

void AudioPlugin::replaceAudioBuses(int channels)
{
    AudioBus* input = new AudioBus(*this, "Input", channels);
    AudioBus* output = new AudioBus(*this, "Output", channels);
    const ScopedLock lock(mutex);
    deleteAudioBuses();
    audioInputs.add(input);
    audioOutputs.add(output);
}

void AudioPlugin::addEventInput(const String& name)
{
    EventBus* bus = new EventBus(*this, name);
    const ScopedLock lock(mutex);
    eventInputs.add(bus);
}

void AudioPlugin::addEventOutput(const String& name)
{
    EventBus* bus = new EventBus(*this, name);
    const ScopedLock lock(mutex);
    eventOutputs.add(bus);
}

void AudioPlugin::deleteAudioBuses()
{
    for (AudioBus* bus : audioInputs)
        delete bus;
    for (AudioBus* bus : audioOutputs)
        delete bus;
    audioInputs.clear();
    audioOutputs.clear();
}

}  // namespace q1framework
