#pragma once

#include "plugin/AudioPlugin.h"

#include <cstdint>

namespace q1framework
{

// A MIDI connection of a plug-in: the short MIDI events of the next (or the last) block, in the
// order they arrived. The list has a fixed capacity, made with the bus, so adding an event never
// allocates; events beyond it are dropped. An adapter fills the input lists before a block and
// empties them after it.
//
// Thread contract: the owner's mutex serialises every use.
class AudioPlugin::EventBus : public AudioPlugin::Bus
{
public:
    struct MidiEvent
    {
        uint8_t bytes[3];     // status and two data bytes
        int32_t sampleOffset; // position in the block, in samples
    };

    static constexpr int capacity = 1024;

    // Host thread: a bus with room for `capacity` events.
    EventBus(AudioPlugin& owner, const String& name);
    ~EventBus() override;

    // Appends one event; answers false, and drops it, when the list is full.
    bool add(const uint8_t bytes[3], int32_t sampleOffset);
    void clear() { count = 0; }

    int getNumEvents() const { return count; }
    // Unchecked index below getNumEvents().
    const MidiEvent& getEvent(int index) const { return events[index]; }

private:
    MidiEvent* events;
    int count = 0;
};

}  // namespace q1framework
