#pragma once

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/urid/urid.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// The benchmarks' LV2 host, on lilv: a world with Kelvane's bundle of the build tree and the
// system's plug-ins (not the user's folders), and stereo effects made from any plug-in with one or
// two audio inputs and as many outputs. A mono plug-in runs as two instances, one per channel,
// as a host runs it on a stereo track. The other ports are connected as hosts connect them:
// control inputs at their defaults unless set, control outputs (the meters) and CV ports to
// scratch memory, atom inputs to an empty sequence and atom outputs to a buffer that is given its
// capacity again before each block.
//
// Thread contract: one thread.
class LV2BenchHost
{
public:
    // The bundle folders' parent of the build tree goes on the world's search path.
    explicit LV2BenchHost(const std::string& buildBundleFolder);
    ~LV2BenchHost();

    LV2BenchHost(const LV2BenchHost&) = delete;
    LV2BenchHost& operator=(const LV2BenchHost&) = delete;

    class Effect;

    // A stereo effect of the plug-in `uri`, which must not outlive this host, prepared for blocks
    // of at most maximumBlock frames at 44.1 kHz and activated, with the control inputs named in
    // `settings` (by symbol) set. With withMeters false the control outputs stay unconnected, as
    // LV2 allows, and a plug-in may skip what it reports there. Null, with `failure` set, when the
    // plug-in is not installed, cannot be made, or has another layout.
    std::unique_ptr<Effect> makeEffect(const std::string& uri, int maximumBlock,
                                       const std::vector<std::pair<std::string, float>>& settings,
                                       bool withMeters, std::string& failure);

    LV2_URID map(const char* uri);

private:
    LilvWorld* world;
    std::vector<std::string> uris;  // URID n is uris[n - 1]
    LV2_URID_Map mapFeature;
    LV2_Feature mapEntry;
    const LV2_Feature* features[2];
};

class LV2BenchHost::Effect
{
public:
    ~Effect();

    // One block of `frames` (at most the maximum) from the two inputs into the two outputs; the
    // buffers must not overlap.
    void process(const float* inLeft, const float* inRight, float* outLeft, float* outRight, int frames);

    const std::string& getName() const { return name; }

private:
    friend class LV2BenchHost;
    Effect() = default;

    // One instance with its port memory; a mono plug-in has two.
    struct Instance
    {
        LilvInstance* instance = nullptr;
        std::vector<uint32_t> audioInputs;
        std::vector<uint32_t> audioOutputs;
        std::vector<float> controls;                    // one per port
        std::vector<std::vector<float>> scratch;        // CV ports
        std::vector<std::vector<uint64_t>> atomInputs;  // empty sequences
        std::vector<std::vector<uint64_t>> atomOutputs;
    };

    std::string name;
    std::vector<Instance> instances;
    LV2_URID sequenceType = 0;
    LV2_URID chunkType = 0;
};
