// LV2Wrapper: construction and teardown, activation and the audio path.

#include "host/lv2/LV2Wrapper.h"

#include "foundation/runtime/Mutex.h"
#include "foundation/runtime/ScopedLock.h"
#include "host/FrameworkInstances.h"
#include "plugin/AudioBus.h"
#include "plugin/AudioPlugin.h"
#include "plugin/EventBus.h"
#include "plugin/PluginDescription.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace q1framework
{

namespace
{
// LV2 hosts need not tell a largest block, and the plug-in needs none: it processes the host's
// memory in place, whatever its length. Its preparation is told this many frames.
constexpr int nominalBlockSize = 4096;

bool sameBits(float first, float second)
{
    return std::memcmp(&first, &second, sizeof first) == 0;
}

// The adapters alive in this copy of the shared object (LV2Wrapper::findLive).
struct LiveWrappers
{
    Mutex lock;
    std::vector<LV2Wrapper*> wrappers;
};

LiveWrappers& liveWrappers()
{
    static LiveWrappers live;
    return live;
}
}  // namespace

LV2Wrapper* createLV2Instance(double sampleRate, const LV2_Feature* const* features)
{
    FrameworkInstances::add();
    PluginDescription* description = createPluginDescription();
    AudioPlugin* plugin = createAudioPlugin();
    LV2Wrapper* wrapper = new LV2Wrapper(plugin, *description, sampleRate, features);
    delete description;
    return wrapper;
}

LV2Wrapper::LV2Wrapper(AudioPlugin* ownedPlugin, const PluginDescription& description, double rate,
                       const LV2_Feature* const* features)
    : plugin(ownedPlugin),
      layout(description.numInputs, description.numOutputs, ownedPlugin->getNumParameters(),
             ownedPlugin->getNumMeters()),
      sampleRate(rate),
      ports(layout.getCount(), nullptr),
      stateKeyUri(std::string(description.uri.getCString()) + "#state")
{
    plugin->releaseChannelBuffers();
    for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
        lastControls.push_back(plugin->toPhysicalValue(static_cast<float>(plugin->getParameter(parameter)), parameter));
    mapStateUrids(features);
    LiveWrappers& live = liveWrappers();
    const ScopedLock lock(live.lock);
    live.wrappers.push_back(this);
}

LV2Wrapper::~LV2Wrapper()
{
    {
        LiveWrappers& live = liveWrappers();
        const ScopedLock lock(live.lock);
        live.wrappers.erase(std::find(live.wrappers.begin(), live.wrappers.end(), this));
    }
    delete plugin;
    plugin = nullptr;
    FrameworkInstances::remove();
}

LV2Wrapper* LV2Wrapper::findLive(const void* handle)
{
    LiveWrappers& live = liveWrappers();
    const ScopedLock lock(live.lock);
    for (LV2Wrapper* wrapper : live.wrappers)
        if (wrapper == handle)
            return wrapper;
    return nullptr;
}

void LV2Wrapper::connectPort(uint32_t port, void* data)
{
    if (port < ports.size())
        ports[port] = static_cast<float*>(data);
}

void LV2Wrapper::activate()
{
    plugin->prepare(nominalBlockSize, true, sampleRate);
    plugin->resume();
}

void LV2Wrapper::deactivate()
{
    plugin->suspend();
}

void LV2Wrapper::run(uint32_t frames)
{
    const ScopedLock lock(plugin->getMutex());
    applyChangedControls();
    // The audio ports lie first, inputs then outputs, so each bus takes its run of the array.
    if (plugin->getNumAudioInputs() > 0)
        plugin->getAudioInput(0).setChannelPointers(ports.data() + layout.getAudioInputPort(0),
                                                    layout.getNumAudioInputs());
    if (plugin->getNumAudioOutputs() > 0)
        plugin->getAudioOutput(0).setChannelPointers(ports.data() + layout.getAudioOutputPort(0),
                                                     layout.getNumAudioOutputs());
    plugin->setHostReadsMeters(isAnyMeterConnected());
    TimeInfo timeInfo;
    plugin->process(timeInfo, frames > INT_MAX ? INT_MAX : static_cast<int>(frames));
    writeMeters();
    for (int bus = 0; bus < plugin->getNumEventInputs(); ++bus)
        plugin->getEventInput(bus).clear();
}

void LV2Wrapper::applyChangedControls()
{
    for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
    {
        const float* port = ports[layout.getControlPort(parameter)];
        if (port == nullptr)
            continue;
        const float physical = *port;
        if (sameBits(physical, lastControls[static_cast<std::size_t>(parameter)]))
            continue;
        lastControls[static_cast<std::size_t>(parameter)] = physical;
        plugin->setParameter(plugin->fromPhysicalValue(physical, parameter), parameter);
    }
}

void LV2Wrapper::writeMeters()
{
    for (int meter = 0; meter < layout.getNumMeters(); ++meter)
        if (float* port = ports[layout.getMeterPort(meter)])
            *port = plugin->takeMeterValue(meter);
}

bool LV2Wrapper::isAnyMeterConnected() const
{
    for (int meter = 0; meter < layout.getNumMeters(); ++meter)
        if (ports[layout.getMeterPort(meter)] != nullptr)
            return true;
    return false;
}

}  // namespace q1framework
