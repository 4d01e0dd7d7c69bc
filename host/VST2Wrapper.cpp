// VST2Wrapper: construction and teardown, preparation and the audio path.

#include "host/VST2Wrapper.h"

#include "foundation/runtime/ScopedLock.h"
#include "host/FrameworkInstances.h"
#include "host/VST2Editor.h"
#include "plugin/AudioBus.h"
#include "plugin/EventBus.h"
#include "plugin/PluginDescription.h"

namespace q1framework
{

namespace
{
// What a block asks of the host's transport: positions, tempo, bars, cycle and time signature.
constexpr VstInt32 timeInfoRequest = kVstPpqPosValid | kVstTempoValid | kVstBarsValid | kVstCyclePosValid
                                     | kVstTimeSigValid;
constexpr int programCount = 1;
}  // namespace

AudioEffect* createEffectInstance(audioMasterCallback host)
{
    FrameworkInstances::add();
    PluginDescription* description = createPluginDescription();
    AudioPlugin* plugin = createAudioPlugin();
    VST2Wrapper* wrapper = new VST2Wrapper(host, plugin, *description);
    delete description;
    return wrapper;
}

VST2Wrapper::VST2Wrapper(audioMasterCallback host, AudioPlugin* ownedPlugin, const PluginDescription& description)
    : AudioEffectX(host, programCount, ownedPlugin->getNumParameters()),
      plugin(ownedPlugin)
{
    setInitialDelay(plugin->getLatency());
    plugin->addListener(this);
    plugin->releaseChannelBuffers();

    canProcessReplacing();
    programsAreChunks();
    isSynth((description.flags & PluginDescription::isSynthFlag) != 0);
    if (plugin->hasEditor())
        setFlag(effFlagsHasEditor, true);
    canDoubleReplacing(plugin->hasDoublePrecision());
    noTail(plugin->hasNoSoundInStop());
    setNumInputs(description.numInputs);
    setNumOutputs(description.numOutputs);
    setUniqueID(description.uniqueId);
    // The host always sees an editor: it asks for the rectangle before it opens one.
    setEditor(new VST2Editor(this, plugin, &editorListener));
}

VST2Wrapper::~VST2Wrapper()
{
    // The editor goes first, while the plug-in it shows still exists; the base class would delete
    // it only after this destructor, with the plug-in gone.
    setEditor(nullptr);
    plugin->removeListener(this);
    delete plugin;
    plugin = nullptr;
    FrameworkInstances::remove();
}

void VST2Wrapper::suspend()
{
    plugin->suspend();
}

void VST2Wrapper::resume()
{
    plugin->resume();
    char receivesMidi[] = "receiveVstMidiEvent";
    if ((cEffect.flags & effFlagsIsSynth) != 0 || canDo(receivesMidi) == 1)
        wantEvents(1);
}

void VST2Wrapper::setSampleRate(float rate)
{
    AudioEffectX::setSampleRate(rate);
    plugin->prepare(blockSize, true, rate);
}

void VST2Wrapper::setBlockSize(VstInt32 frames)
{
    AudioEffectX::setBlockSize(frames);
    plugin->prepare(frames, true, sampleRate);
}

void VST2Wrapper::processReplacing(float** inputs, float** outputs, VstInt32 frames)
{
    TimeInfo timeInfo;
    // Asked before the lock: the host is never called with the plug-in's mutex held.
    if (const VstTimeInfo* time = getTimeInfo(timeInfoRequest))
    {
        timeInfo.ppqPosition = time->ppqPos;
        timeInfo.tempo = time->tempo;
    }
    // The pointers go into the buses under the mutex: prepare may replace the buses' channel
    // arrays from a host thread at any time, and does so under the same mutex.
    const ScopedLock lock(plugin->getMutex());
    if (plugin->getNumAudioInputs() > 0)
        plugin->getAudioInput(0).setChannelPointers(inputs, cEffect.numInputs);
    if (plugin->getNumAudioOutputs() > 0)
        plugin->getAudioOutput(0).setChannelPointers(outputs, cEffect.numOutputs);
    plugin->process(timeInfo, frames);
    for (int bus = 0; bus < plugin->getNumEventInputs(); ++bus)
        plugin->getEventInput(bus).clear();
}

void VST2Wrapper::pluginChanged(int kind)
{
    if (kind != AudioPlugin::Listener::latencyChanged)
        return;
    setInitialDelay(plugin->getLatency());
    ioChanged();
}

}  // namespace q1framework
