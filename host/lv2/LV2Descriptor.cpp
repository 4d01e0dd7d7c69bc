#include "host/lv2/LV2Descriptor.h"

#include "host/lv2/LV2Wrapper.h"
#include "plugin/PluginDescription.h"

#include <cstring>
#include <string>

namespace q1framework
{

namespace
{
LV2Wrapper* wrapperOf(LV2_Handle instance)
{
    return static_cast<LV2Wrapper*>(instance);
}

// The bundle path is not needed: the plug-in finds its resources beside its own shared object.
LV2_Handle instantiate(const LV2_Descriptor*, double sampleRate, const char*, const LV2_Feature* const* features)
{
    return createLV2Instance(sampleRate, features);
}

void connectPort(LV2_Handle instance, uint32_t port, void* data)
{
    wrapperOf(instance)->connectPort(port, data);
}

void activate(LV2_Handle instance)
{
    wrapperOf(instance)->activate();
}

void run(LV2_Handle instance, uint32_t frames)
{
    wrapperOf(instance)->run(frames);
}

void deactivate(LV2_Handle instance)
{
    wrapperOf(instance)->deactivate();
}

void cleanup(LV2_Handle instance)
{
    delete wrapperOf(instance);
}

LV2_State_Status save(LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle, uint32_t,
                      const LV2_Feature* const* features)
{
    return wrapperOf(instance)->save(store, handle, features);
}

LV2_State_Status restore(LV2_Handle instance, LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                         uint32_t, const LV2_Feature* const* features)
{
    return wrapperOf(instance)->restore(retrieve, handle, features);
}

const LV2_State_Interface stateInterface = {save, restore};

const void* extensionData(const char* uri)
{
    if (uri != nullptr && std::strcmp(uri, LV2_STATE__interface) == 0)
        return &stateInterface;
    return nullptr;
}

std::string pluginUri()
{
    const PluginDescription* description = createPluginDescription();
    std::string uri = description->uri.getCString();
    delete description;
    return uri;
}
}  // namespace

const LV2_Descriptor* getLV2Descriptor()
{
    static const std::string uri = pluginUri();
    static const LV2_Descriptor descriptor = {uri.c_str(), instantiate, connectPort, activate,
                                              run,         deactivate,  cleanup,     extensionData};
    return &descriptor;
}

}  // namespace q1framework
