// VST2Wrapper: identity, capabilities, vendor calls and events.

#include "foundation/runtime/ScopedLock.h"
#include "host/VST2Wrapper.h"
#include "plugin/EventBus.h"
#include "plugin/PluginDescription.h"

#include <cstring>
#include <memory>

namespace q1framework
{

namespace
{
// The capabilities every plug-in of this adapter reports; anything else is answered with 0,
// "don't know", never with -1.
constexpr const char* capabilities[] = {
    "sendVstEvents", "receiveVstEvents", "sendVstMidiEvent", "receiveVstMidiEvent", "receiveVstTimeInfo",
};

// The identity is read from a fresh description on every query, as the effect may make it from
// anything it likes.
std::unique_ptr<PluginDescription> freshDescription()
{
    return std::unique_ptr<PluginDescription>(createPluginDescription());
}
}  // namespace

bool VST2Wrapper::getEffectName(char* name)
{
    freshDescription()->name.copyTo(name);
    return true;
}

bool VST2Wrapper::getVendorString(char* text)
{
    freshDescription()->vendor.copyTo(text);
    return true;
}

bool VST2Wrapper::getProductString(char* text)
{
    freshDescription()->name.copyTo(text);
    return true;
}

VstInt32 VST2Wrapper::getVendorVersion()
{
    return freshDescription()->getVersionNumber();
}

VstIntPtr VST2Wrapper::vendorSpecific(VstInt32 index, VstIntPtr value, void* pointer, float opt)
{
    return static_cast<VstIntPtr>(plugin->vendorSpecific(index, value, pointer, opt));
}

VstInt32 VST2Wrapper::canDo(char* text)
{
    for (const char* capability : capabilities)
        if (std::strcmp(text, capability) == 0)
            return 1;
    return 0;
}

bool VST2Wrapper::processEvents(VstEvents* events)
{
    if (plugin->getNumEventInputs() < 1 || events->numEvents < 1)
        return true;
    const ScopedLock lock(plugin->getMutex());
    AudioPlugin::EventBus& bus = plugin->getEventInput(0);
    for (VstInt32 index = 0; index < events->numEvents; ++index)
    {
        const VstEvent* event = events->events[index];
        if (event == nullptr || event->type != kVstMidiType)
            continue;
        const VstMidiEvent* midi = reinterpret_cast<const VstMidiEvent*>(event);
        const uint8_t bytes[3] = {static_cast<uint8_t>(midi->midiData[0]), static_cast<uint8_t>(midi->midiData[1]),
                                  static_cast<uint8_t>(midi->midiData[2])};
        bus.add(bytes, midi->deltaFrames);
    }
    return true;
}

}  // namespace q1framework
