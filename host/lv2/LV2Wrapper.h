#pragma once

#include "host/lv2/LV2PortLayout.h"

#include <lv2/core/lv2.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <string>
#include <vector>

namespace q1framework
{

class AudioPlugin;
struct PluginDescription;

// The LV2 adapter: presents a format-independent AudioPlugin to an LV2 host as one plug-in
// instance, the sibling of VST2Wrapper. It owns the plug-in, reads the host's ports before each
// block and writes the meters after it, and keeps the plug-in's state document in the host's
// state through the state extension.
//
// Ports (LV2PortLayout): the audio channels, one input control port per parameter in the
// parameter's physical unit (AudioPlugin::fromPhysicalValue turns it into the 0..1 value the
// VST 2.4 side automates), and one output control port per meter.
//
// Controls follow the ports by change: a control port is applied when its value differs from the
// one it had at the last block, and before the first block it is compared with the physical
// value of the plug-in's own value, which is the bundle's port default. So the first block does
// not undo a state that the host restored before it, and a restored state holds until the host
// moves a port. A host that restores port values together with the state (as LV2 hosts save
// them) gets the ports' values, which is what it shows.
//
// The audio path copies nothing: the host's buffers go into the plug-in's first buses and are
// processed in place, whatever the host shares between ports.
//
// Threads, by LV2's classes. The constructor, the destructor, activate and deactivate: the host's
// instantiation thread. connectPort and run: the audio thread; run allocates nothing, makes no
// system call and takes no lock but the plug-in's mutex, which it holds for the block. save and
// restore: a host thread; restore parses outside the mutex and applies under it, so it is safe
// beside run as well.
class LV2Wrapper
{
public:
    // Instantiation thread. Takes ownership of `plugin`; copies what it needs of `description`.
    // The plug-in's channel buffers are freed: the host's take their place. `features` may be
    // null; without a URID map (urid:map) the state extension answers LV2_STATE_ERR_NO_FEATURE
    // unless save or restore bring one. The caller has counted one more framework instance
    // (FrameworkInstances::add), which the destructor gives back.
    LV2Wrapper(AudioPlugin* plugin, const PluginDescription& description, double sampleRate,
               const LV2_Feature* const* features);
    ~LV2Wrapper();

    LV2Wrapper(const LV2Wrapper&) = delete;
    LV2Wrapper& operator=(const LV2Wrapper&) = delete;

    // Audio thread. The host's memory for `port` (a float buffer or one float), null to
    // disconnect; a port beyond the layout is ignored. A port left unconnected is not read or
    // written; an unconnected audio port makes run leave the outputs alone.
    void connectPort(uint32_t port, void* data);

    // Instantiation thread. Prepares the plug-in at the instance's rate (its buffers cleared and
    // its program applied), then resumes it; deactivate suspends it.
    void activate();
    void deactivate();

    // Audio thread. One block of `frames`: the changed control ports into the plug-in, the audio
    // ports into its first buses, AudioPlugin::process, then the meters into the connected meter
    // ports (the plug-in measures its levels only while one is connected).
    void run(uint32_t frames);

    // Host thread. Stores the plug-in's state document (AudioPlugin::getState, the bytes of the
    // VST 2.4 chunk) as one portable atom:Chunk under the plug-in's URI and "#state".
    LV2_State_Status save(LV2_State_Store_Function store, LV2_State_Handle handle, const LV2_Feature* const* features);
    // Host thread. Hands that property to AudioPlugin::setState. A state without it (a preset of
    // port values) changes nothing and succeeds; a value of another type changes nothing and
    // answers LV2_STATE_ERR_BAD_TYPE; any bytes of the right type are taken as setState takes a
    // chunk, bad ones leaving the state as it was.
    LV2_State_Status restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                             const LV2_Feature* const* features);

    AudioPlugin* getPlugin() const { return plugin; }
    const LV2PortLayout& getLayout() const { return layout; }

    // Any thread. The live adapter that `handle` is (the LV2_Handle a host got from this shared
    // object's descriptor), or null. Only adapters that this copy of the shared object made and
    // has not deleted yet count, so a handle from elsewhere (another plug-in, or another copy of
    // this one loaded from another folder, whose classes may differ) is never taken for one. The
    // user interface asks this of the handle that instance access gives it.
    static LV2Wrapper* findLive(const void* handle);

private:
    // Instantiation or host thread: the URIDs of the state's key and type from a urid:map in
    // `features`, unless known already; false when there is none.
    bool mapStateUrids(const LV2_Feature* const* features);
    // Audio thread, mutex held.
    void applyChangedControls();
    void writeMeters();
    bool isAnyMeterConnected() const;

    AudioPlugin* plugin;  // owned
    LV2PortLayout layout;
    double sampleRate;
    std::vector<float*> ports;          // the host's memory of each port, null when unconnected
    std::vector<float> lastControls;    // each control port's value at the last block
    std::string stateKeyUri;            // the plug-in's URI and "#state"
    LV2_URID stateKey = 0;              // 0 until mapped
    LV2_URID chunkType = 0;
};

// Instantiation thread. One more framework instance, then the effect's description, its plug-in
// and the adapter around them; the description is deleted again. The host deletes the adapter
// through the descriptor's cleanup.
LV2Wrapper* createLV2Instance(double sampleRate, const LV2_Feature* const* features);

}  // namespace q1framework
