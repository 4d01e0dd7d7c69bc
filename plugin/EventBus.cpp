#include "plugin/EventBus.h"

#include <cstdlib>

namespace q1framework
{

AudioPlugin::EventBus::EventBus(AudioPlugin& owner, const String& name)
    : Bus(owner, name), events(static_cast<MidiEvent*>(std::calloc(capacity, sizeof(MidiEvent))))
{
}

AudioPlugin::EventBus::~EventBus()
{
    std::free(events);
}

bool AudioPlugin::EventBus::add(const uint8_t bytes[3], int32_t sampleOffset)
{
    if (events == nullptr || count >= capacity)
        return false;
    MidiEvent& event = events[count++];
    event.bytes[0] = bytes[0];
    event.bytes[1] = bytes[1];
    event.bytes[2] = bytes[2];
    event.sampleOffset = sampleOffset;
    return true;
}

}  // namespace q1framework
