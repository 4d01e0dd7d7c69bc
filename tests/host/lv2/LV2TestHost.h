#pragma once

#include <lilv/lilv.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <string>
#include <vector>

// The LV2 host side of the tests, built on lilv as LV2 hosts are: a world that knows the LV2
// vocabularies of the system and Kelvane's bundle in this build tree (KELVANE_LV2_BUNDLE), and
// not what is installed in the user's folders; a URID map; the plug-in as lilv describes it.
// One LV2TestHost at a time in a program.
class LV2TestHost
{
public:
    LV2TestHost();
    ~LV2TestHost();

    LV2TestHost(const LV2TestHost&) = delete;
    LV2TestHost& operator=(const LV2TestHost&) = delete;

    // The URID of a URI, the same for the same URI; the URI of a URID, null when unknown.
    LV2_URID map(const char* uri);
    const char* unmap(LV2_URID urid) const;
    // The features every instance gets: urid:map and urid:unmap. Null-terminated.
    const LV2_Feature* const* features() const { return featureList; }

    // The index of the plug-in's port with this symbol; the test fails when there is none.
    uint32_t portIndex(const std::string& symbol) const;
    // Every preset of the plug-in, by URI.
    std::vector<std::string> presetUris() const;

    LilvWorld* world = nullptr;
    const LilvPlugin* plugin = nullptr;  // null when the bundle does not describe the plug-in
    std::string uri;                     // the plug-in's URI, as PluginDescription gives it

private:
    std::vector<std::string> uris;  // URID n is uris[n - 1]
    LV2_URID_Map mapFeature;
    LV2_URID_Unmap unmapFeature;
    LV2_Feature mapEntry;
    LV2_Feature unmapEntry;
    const LV2_Feature* featureList[3];
};

// One instance of the plug-in, activated at construction, with each control and meter port
// connected to a float of its own (at the port's default) and the audio ports connected to the
// caller's buffers for each block.
class LV2TestInstance
{
public:
    // withFeatures false instantiates with no features at all.
    explicit LV2TestInstance(LV2TestHost& host, double sampleRate = 44100.0, bool withFeatures = true);
    // Deactivates and frees the instance.
    ~LV2TestInstance();

    LV2TestInstance(const LV2TestInstance&) = delete;
    LV2TestInstance& operator=(const LV2TestInstance&) = delete;

    // The float of a control or meter port, by symbol.
    float& port(const std::string& symbol);
    // Disconnects a port; it stays so until the next connect of that port.
    void disconnect(const std::string& symbol);

    // One block: the four audio ports on these buffers (any may be the same), then run.
    void process(float* inLeft, float* inRight, float* outLeft, float* outRight, int frames);
    // One block in place on two channels of equal length.
    void processStereo(std::vector<float>& left, std::vector<float>& right);

    // The state as lilv saves it (the ports' values and the plug-in's properties), as Turtle text,
    // and back: the plug-in's properties through the state extension, the ports' values into
    // this instance's controls.
    std::string saveState();
    void restoreState(const std::string& turtle);
    // A preset of the world, by URI, restored as lilv restores it.
    void applyPreset(const std::string& presetUri);

    // Through the plug-in's state interface alone, as a host with a store of its own: the
    // properties it saves (key URI to value), and a restore from a store that holds `value`
    // under the plug-in's state key with the type `typeUri`, or nothing when `typeUri` is null.
    // Each answers the plug-in's status.
    struct SavedProperty
    {
        std::string key;
        std::string type;
        std::string value;
        uint32_t flags;
    };
    LV2_State_Status saveProperties(std::vector<SavedProperty>& properties);
    LV2_State_Status restoreProperty(const std::string& value, const char* typeUri);
    // The state document alone: the value saved under the plug-in's URI and "#state".
    std::string saveDocument();

    // The plug-in's state interface, null when it gives none.
    const LV2_State_Interface* stateInterface() const;
    LV2_Handle handle() const;

    LilvInstance* instance = nullptr;

private:
    static const void* portValue(const char* symbol, void* self, uint32_t* size, uint32_t* type);
    static void setPortValue(const char* symbol, void* self, const void* value, uint32_t size, uint32_t type);

    LV2TestHost& host;
    std::vector<float> values;  // one per port; the control and meter ports' memory
};
