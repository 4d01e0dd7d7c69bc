#include "LV2BenchHost.h"

#include <cmath>

namespace
{
constexpr double sampleRate = 44100.0;
constexpr std::size_t atomBufferBytes = 8192;

LV2_URID mapUri(LV2_URID_Map_Handle host, const char* uri)
{
    return static_cast<LV2BenchHost*>(host)->map(uri);
}

// A node of the world for the length of a scope.
struct Node
{
    Node(LilvWorld* world, const char* uri) : node(lilv_new_uri(world, uri)) {}
    ~Node() { lilv_node_free(node); }
    LilvNode* node;
};
}  // namespace

LV2BenchHost::LV2BenchHost(const std::string& buildBundleFolder)
    : world(lilv_world_new()),
      mapFeature{this, mapUri},
      mapEntry{LV2_URID__map, &mapFeature},
      features{&mapEntry, nullptr}
{
    LilvNode* path = lilv_new_string(world, (buildBundleFolder + ":/usr/lib/lv2").c_str());
    lilv_world_set_option(world, LILV_OPTION_LV2_PATH, path);
    lilv_node_free(path);
    lilv_world_load_all(world);
}

LV2BenchHost::~LV2BenchHost()
{
    lilv_world_free(world);
}

LV2_URID LV2BenchHost::map(const char* uri)
{
    for (std::size_t index = 0; index < uris.size(); ++index)
        if (uris[index] == uri)
            return static_cast<LV2_URID>(index + 1);
    uris.emplace_back(uri);
    return static_cast<LV2_URID>(uris.size());
}

std::unique_ptr<LV2BenchHost::Effect> LV2BenchHost::makeEffect(
    const std::string& uri, int maximumBlock, const std::vector<std::pair<std::string, float>>& settings,
    bool withMeters, std::string& failure)
{
    const Node pluginUri(world, uri.c_str());
    const LilvPlugin* plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), pluginUri.node);
    if (plugin == nullptr)
    {
        failure = "not installed";
        return nullptr;
    }
    const Node audio(world, LV2_CORE__AudioPort), control(world, LV2_CORE__ControlPort), cv(world, LV2_CORE__CVPort),
        atom(world, LV2_ATOM__AtomPort), input(world, LV2_CORE__InputPort), output(world, LV2_CORE__OutputPort);
    const uint32_t inputs = lilv_plugin_get_num_ports_of_class(plugin, audio.node, input.node, nullptr);
    const uint32_t outputs = lilv_plugin_get_num_ports_of_class(plugin, audio.node, output.node, nullptr);
    if (inputs != outputs || inputs < 1 || inputs > 2)
    {
        failure = std::to_string(inputs) + " audio inputs and " + std::to_string(outputs) + " outputs";
        return nullptr;
    }

    std::unique_ptr<Effect> effect(new Effect);
    LilvNode* name = lilv_plugin_get_name(plugin);
    effect->name = lilv_node_as_string(name);
    lilv_node_free(name);
    effect->sequenceType = map(LV2_ATOM__Sequence);
    effect->chunkType = map(LV2_ATOM__Chunk);
    const uint32_t portCount = lilv_plugin_get_num_ports(plugin);
    std::vector<float> defaults(portCount), minimum(portCount);
    lilv_plugin_get_port_ranges_float(plugin, minimum.data(), nullptr, defaults.data());

    effect->instances.resize(inputs == 1 ? 2 : 1);
    for (Effect::Instance& instance : effect->instances)
    {
        instance.instance = lilv_plugin_instantiate(plugin, sampleRate, features);
        if (instance.instance == nullptr)
        {
            failure = "instantiation failed";
            return nullptr;
        }
        instance.controls.assign(portCount, 0.0f);
        for (uint32_t index = 0; index < portCount; ++index)
        {
            const LilvPort* port = lilv_plugin_get_port_by_index(plugin, index);
            if (lilv_port_is_a(plugin, port, audio.node))
            {
                auto& ports = lilv_port_is_a(plugin, port, input.node) ? instance.audioInputs : instance.audioOutputs;
                ports.push_back(index);
            }
            else if (lilv_port_is_a(plugin, port, control.node))
            {
                if (!withMeters && lilv_port_is_a(plugin, port, output.node))
                    continue;
                const float value = std::isnan(defaults[index]) ? minimum[index] : defaults[index];
                instance.controls[index] = std::isnan(value) ? 0.0f : value;
                for (const auto& [symbol, setting] : settings)
                    if (symbol == lilv_node_as_string(lilv_port_get_symbol(plugin, port)))
                        instance.controls[index] = setting;
                lilv_instance_connect_port(instance.instance, index, &instance.controls[index]);
            }
            else if (lilv_port_is_a(plugin, port, atom.node))
            {
                auto& buffers = lilv_port_is_a(plugin, port, input.node) ? instance.atomInputs : instance.atomOutputs;
                buffers.emplace_back(atomBufferBytes / sizeof(uint64_t), 0);
                auto* sequence = reinterpret_cast<LV2_Atom_Sequence*>(buffers.back().data());
                sequence->atom.size = sizeof(LV2_Atom_Sequence_Body);
                sequence->atom.type = effect->sequenceType;
                lilv_instance_connect_port(instance.instance, index, sequence);
            }
            else
            {
                // CV ports and anything else: memory for a block of floats.
                instance.scratch.emplace_back(static_cast<std::size_t>(maximumBlock), 0.0f);
                lilv_instance_connect_port(instance.instance, index, instance.scratch.back().data());
            }
        }
        lilv_instance_activate(instance.instance);
    }
    return effect;
}

LV2BenchHost::Effect::~Effect()
{
    for (Instance& instance : instances)
        if (instance.instance != nullptr)
        {
            lilv_instance_deactivate(instance.instance);
            lilv_instance_free(instance.instance);
        }
}

void LV2BenchHost::Effect::process(const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                                   int frames)
{
    const float* ins[2] = {inLeft, inRight};
    float* outs[2] = {outLeft, outRight};
    for (std::size_t number = 0; number < instances.size(); ++number)
    {
        Instance& instance = instances[number];
        // A mono plug-in's instances take one channel each; a stereo one takes both.
        for (std::size_t channel = 0; channel < instance.audioInputs.size(); ++channel)
        {
            lilv_instance_connect_port(instance.instance, instance.audioInputs[channel],
                                       const_cast<float*>(ins[number + channel]));
            lilv_instance_connect_port(instance.instance, instance.audioOutputs[channel], outs[number + channel]);
        }
        for (std::vector<uint64_t>& buffer : instance.atomOutputs)
        {
            auto* sequence = reinterpret_cast<LV2_Atom_Sequence*>(buffer.data());
            sequence->atom.size = static_cast<uint32_t>(atomBufferBytes - sizeof(LV2_Atom));
            sequence->atom.type = chunkType;
        }
        lilv_instance_run(instance.instance, static_cast<uint32_t>(frames));
    }
}
