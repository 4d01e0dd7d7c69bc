#include "host/lv2/ui/LV2UIDescriptor.h"

#include "host/lv2/ui/LV2UIUri.h"
#include "host/lv2/ui/LV2UIWrapper.h"
#include "plugin/PluginDescription.h"

#include <cstring>
#include <memory>
#include <string>

namespace q1framework
{

namespace
{
LV2UIWrapper* wrapperOf(void* handle)
{
    return static_cast<LV2UIWrapper*>(handle);
}

// The bundle path is not needed: the editor finds its pictures beside the shared object.
LV2UI_Handle instantiate(const LV2UI_Descriptor*, const char* pluginUri, const char*, LV2UI_Write_Function write,
                         LV2UI_Controller controller, LV2UI_Widget* widget, const LV2_Feature* const* features)
{
    LV2UIWrapper* wrapper = LV2UIWrapper::create(pluginUri, write, controller, features);
    if (widget != nullptr)
        *widget = wrapper != nullptr ? wrapper->getWidget() : nullptr;
    return wrapper;
}

void cleanup(LV2UI_Handle handle)
{
    delete wrapperOf(handle);
}

void portEvent(LV2UI_Handle handle, uint32_t port, uint32_t size, uint32_t protocol, const void* buffer)
{
    wrapperOf(handle)->portEvent(port, size, protocol, buffer);
}

int idle(LV2UI_Handle handle)
{
    return wrapperOf(handle)->idle();
}

// As the interface's extension data, the host passes the interface's own handle.
int offerSize(LV2UI_Feature_Handle handle, int width, int height)
{
    return wrapperOf(handle)->offerSize(width, height);
}

const LV2UI_Idle_Interface idleInterface = {idle};
const LV2UI_Resize resizeInterface = {nullptr, offerSize};

const void* extensionData(const char* uri)
{
    if (uri == nullptr)
        return nullptr;
    if (std::strcmp(uri, LV2_UI__idleInterface) == 0)
        return &idleInterface;
    if (std::strcmp(uri, LV2_UI__resize) == 0)
        return &resizeInterface;
    return nullptr;
}

std::string uiUri()
{
    const std::unique_ptr<PluginDescription> description(createPluginDescription());
    return getLV2UIUri(description->uri.getCString());
}
}  // namespace

const LV2UI_Descriptor* getLV2UIDescriptor()
{
    static const std::string uri = uiUri();
    static const LV2UI_Descriptor descriptor = {uri.c_str(), instantiate, cleanup, portEvent, extensionData};
    return &descriptor;
}

}  // namespace q1framework
