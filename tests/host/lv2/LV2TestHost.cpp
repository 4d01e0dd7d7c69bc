#include "LV2TestHost.h"

#include "plugin/PluginDescription.h"

#include <lv2/atom/atom.h>
#include <lv2/presets/presets.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

namespace
{
LV2_URID mapUri(LV2_URID_Map_Handle host, const char* uri)
{
    return static_cast<LV2TestHost*>(host)->map(uri);
}

const char* unmapUrid(LV2_URID_Unmap_Handle host, LV2_URID urid)
{
    return static_cast<LV2TestHost*>(host)->unmap(urid);
}

struct PropertyStore
{
    LV2TestHost* host;
    std::vector<LV2TestInstance::SavedProperty>* saved;  // when saving
    LV2_URID key;                                       // when restoring: what the store holds
    LV2_URID type;
    const std::string* value;
};

LV2_State_Status storeProperty(LV2_State_Handle handle, uint32_t key, const void* value, size_t size, uint32_t type,
                               uint32_t flags)
{
    PropertyStore& store = *static_cast<PropertyStore*>(handle);
    store.saved->push_back({store.host->unmap(key), store.host->unmap(type),
                            std::string(static_cast<const char*>(value), size), flags});
    return LV2_STATE_SUCCESS;
}

const void* retrieveProperty(LV2_State_Handle handle, uint32_t key, size_t* size, uint32_t* type, uint32_t* flags)
{
    const PropertyStore& store = *static_cast<const PropertyStore*>(handle);
    if (store.key == 0 || key != store.key)
        return nullptr;
    *size = store.value->size();
    *type = store.type;
    *flags = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;
    return store.value->data();
}

// The node list of lilv as a vector of URIs, freeing the list.
std::vector<std::string> urisOf(LilvNodes* nodes)
{
    std::vector<std::string> result;
    LILV_FOREACH(nodes, iterator, nodes)
        result.push_back(lilv_node_as_uri(lilv_nodes_get(nodes, iterator)));
    lilv_nodes_free(nodes);
    return result;
}
}  // namespace

LV2TestHost::LV2TestHost()
    : mapFeature{this, mapUri},
      unmapFeature{this, unmapUrid},
      mapEntry{LV2_URID__map, &mapFeature},
      unmapEntry{LV2_URID__unmap, &unmapFeature},
      featureList{&mapEntry, &unmapEntry, nullptr}
{
    const std::unique_ptr<q1framework::PluginDescription> description(q1framework::createPluginDescription());
    uri = description->uri.getCString();

    // The build tree's bundle, and the system's LV2 vocabularies and plug-ins, but nothing that an
    // installation put into the user's folders.
    world = lilv_world_new();
    const std::string bundle = KELVANE_LV2_BUNDLE;
    LilvNode* path = lilv_new_string(world, (bundle.substr(0, bundle.rfind('/')) + ":/usr/lib/lv2").c_str());
    lilv_world_set_option(world, LILV_OPTION_LV2_PATH, path);
    lilv_node_free(path);
    lilv_world_load_all(world);
    LilvNode* pluginUri = lilv_new_uri(world, uri.c_str());
    plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), pluginUri);
    lilv_node_free(pluginUri);
}

LV2TestHost::~LV2TestHost()
{
    lilv_world_free(world);
}

LV2_URID LV2TestHost::map(const char* text)
{
    for (std::size_t index = 0; index < uris.size(); ++index)
        if (uris[index] == text)
            return static_cast<LV2_URID>(index + 1);
    uris.emplace_back(text);
    return static_cast<LV2_URID>(uris.size());
}

const char* LV2TestHost::unmap(LV2_URID urid) const
{
    return urid >= 1 && urid <= uris.size() ? uris[urid - 1].c_str() : nullptr;
}

uint32_t LV2TestHost::portIndex(const std::string& symbol) const
{
    LilvNode* node = lilv_new_string(world, symbol.c_str());
    const LilvPort* port = lilv_plugin_get_port_by_symbol(plugin, node);
    lilv_node_free(node);
    EXPECT_NE(port, nullptr) << "no port " << symbol;
    return port != nullptr ? lilv_port_get_index(plugin, port) : 0;
}

std::vector<std::string> LV2TestHost::presetUris() const
{
    LilvNode* presetClass = lilv_new_uri(world, LV2_PRESETS__Preset);
    std::vector<std::string> presets = urisOf(lilv_plugin_get_related(plugin, presetClass));
    lilv_node_free(presetClass);
    return presets;
}

LV2TestInstance::LV2TestInstance(LV2TestHost& testHost, double sampleRate, bool withFeatures)
    : host(testHost)
{
    const uint32_t count = lilv_plugin_get_num_ports(host.plugin);
    values.assign(count, 0.0f);
    std::vector<float> defaults(count, 0.0f);
    lilv_plugin_get_port_ranges_float(host.plugin, nullptr, nullptr, defaults.data());
    instance = lilv_plugin_instantiate(host.plugin, sampleRate, withFeatures ? host.features() : nullptr);
    if (instance == nullptr)
        return;
    LilvNode* controlClass = lilv_new_uri(host.world, LV2_CORE__ControlPort);
    for (uint32_t index = 0; index < count; ++index)
        if (lilv_port_is_a(host.plugin, lilv_plugin_get_port_by_index(host.plugin, index), controlClass))
        {
            values[index] = std::isnan(defaults[index]) ? 0.0f : defaults[index];
            lilv_instance_connect_port(instance, index, &values[index]);
        }
    lilv_node_free(controlClass);
    lilv_instance_activate(instance);
}

LV2TestInstance::~LV2TestInstance()
{
    if (instance == nullptr)
        return;
    lilv_instance_deactivate(instance);
    lilv_instance_free(instance);
}

float& LV2TestInstance::port(const std::string& symbol)
{
    return values[host.portIndex(symbol)];
}

void LV2TestInstance::disconnect(const std::string& symbol)
{
    lilv_instance_connect_port(instance, host.portIndex(symbol), nullptr);
}

void LV2TestInstance::process(float* inLeft, float* inRight, float* outLeft, float* outRight, int frames)
{
    lilv_instance_connect_port(instance, host.portIndex("in_left"), inLeft);
    lilv_instance_connect_port(instance, host.portIndex("in_right"), inRight);
    lilv_instance_connect_port(instance, host.portIndex("out_left"), outLeft);
    lilv_instance_connect_port(instance, host.portIndex("out_right"), outRight);
    lilv_instance_run(instance, static_cast<uint32_t>(frames));
}

void LV2TestInstance::processStereo(std::vector<float>& left, std::vector<float>& right)
{
    process(left.data(), right.data(), left.data(), right.data(), static_cast<int>(left.size()));
}

const void* LV2TestInstance::portValue(const char* symbol, void* self, uint32_t* size, uint32_t* type)
{
    LV2TestInstance& instance = *static_cast<LV2TestInstance*>(self);
    *size = sizeof(float);
    *type = instance.host.map(LV2_ATOM__Float);
    return &instance.port(symbol);
}

void LV2TestInstance::setPortValue(const char* symbol, void* self, const void* value, uint32_t size, uint32_t type)
{
    LV2TestInstance& instance = *static_cast<LV2TestInstance*>(self);
    ASSERT_EQ(size, sizeof(float));
    ASSERT_EQ(type, instance.host.map(LV2_ATOM__Float));
    std::memcpy(&instance.port(symbol), value, sizeof(float));
}

std::string LV2TestInstance::saveState()
{
    LV2_URID_Map* map = static_cast<LV2_URID_Map*>(host.features()[0]->data);
    LV2_URID_Unmap* unmap = static_cast<LV2_URID_Unmap*>(host.features()[1]->data);
    LilvState* state = lilv_state_new_from_instance(host.plugin, instance, map, nullptr, nullptr, nullptr, nullptr,
                                                    portValue, this, 0, host.features());
    if (state == nullptr)
        return std::string();
    char* text = lilv_state_to_string(host.world, map, unmap, state, "urn:kelvane-test:state", nullptr);
    std::string turtle = text != nullptr ? text : "";
    lilv_free(text);
    lilv_state_free(state);
    return turtle;
}

void LV2TestInstance::restoreState(const std::string& turtle)
{
    LV2_URID_Map* map = static_cast<LV2_URID_Map*>(host.features()[0]->data);
    LilvState* state = lilv_state_new_from_string(host.world, map, turtle.c_str());
    ASSERT_NE(state, nullptr) << turtle;
    lilv_state_restore(state, instance, setPortValue, this, 0, host.features());
    lilv_state_free(state);
}

void LV2TestInstance::applyPreset(const std::string& presetUri)
{
    LV2_URID_Map* map = static_cast<LV2_URID_Map*>(host.features()[0]->data);
    LilvNode* preset = lilv_new_uri(host.world, presetUri.c_str());
    lilv_world_load_resource(host.world, preset);
    LilvState* state = lilv_state_new_from_world(host.world, map, preset);
    lilv_node_free(preset);
    ASSERT_NE(state, nullptr) << presetUri;
    lilv_state_restore(state, instance, setPortValue, this, 0, host.features());
    lilv_state_free(state);
}

LV2_State_Status LV2TestInstance::saveProperties(std::vector<SavedProperty>& properties)
{
    PropertyStore store{&host, &properties, 0, 0, nullptr};
    return stateInterface()->save(handle(), storeProperty, &store, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE,
                                  host.features());
}

LV2_State_Status LV2TestInstance::restoreProperty(const std::string& value, const char* typeUri)
{
    // A store without a type holds nothing at all.
    const LV2_URID key = typeUri != nullptr ? host.map((host.uri + "#state").c_str()) : 0;
    PropertyStore store{&host, nullptr, key, typeUri != nullptr ? host.map(typeUri) : 0, &value};
    return stateInterface()->restore(handle(), retrieveProperty, &store, 0, host.features());
}

std::string LV2TestInstance::saveDocument()
{
    std::vector<SavedProperty> properties;
    saveProperties(properties);
    for (const SavedProperty& property : properties)
        if (property.key == host.uri + "#state")
            return property.value;
    return std::string();
}

const LV2_State_Interface* LV2TestInstance::stateInterface() const
{
    return static_cast<const LV2_State_Interface*>(lilv_instance_get_extension_data(instance, LV2_STATE__interface));
}

LV2_Handle LV2TestInstance::handle() const
{
    return lilv_instance_get_handle(instance);
}
