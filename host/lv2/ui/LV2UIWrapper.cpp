#include "host/lv2/ui/LV2UIWrapper.h"

#include "host/FrameworkInstances.h"
#include "host/lv2/LV2Features.h"
#include "host/lv2/LV2Wrapper.h"
#include "host/lv2/ui/LV2EditedPlugin.h"
#include "host/lv2/ui/LV2UIEffect.h"
#include "native/window/UiThread.h"
#include "plugin/PluginDescription.h"
#include "plugin/SharedResourcePack.h"

#include <lv2/instance-access/instance-access.h>

#include <cstring>
#include <memory>

namespace q1framework
{

// What the effect's description and the host's features give the interface.
struct LV2UIWrapper::Features
{
    LV2PortLayout layout{0, 0, 0, 0};      // the plug-in's ports
    int windowFlags = 0;                   // the holder's style (PluginDescription::windowFlags)
    void* parent = nullptr;                // ui:parent: the host's X window id
    bool idle = false;                     // ui:idleInterface: the host calls idle
    const LV2UI_Resize* resize = nullptr;  // ui:resize
    const LV2UI_Touch* touch = nullptr;    // ui:touch
    AudioPlugin* plugin = nullptr;         // instance access, when the handle is a live adapter's
    const LV2_URID_Map* map = nullptr;     // urid:map
};

LV2UIWrapper* LV2UIWrapper::create(const char* pluginUri, LV2UI_Write_Function write, LV2UI_Controller controller,
                                   const LV2_Feature* const* features)
{
    UiThread::enter();
    const LV2UIEffect& effect = getLV2UIEffect();
    const std::unique_ptr<PluginDescription> description(createPluginDescription());
    if (pluginUri == nullptr || std::strcmp(description->uri.getCString(), pluginUri) != 0)
        return nullptr;
    Features offered;
    offered.layout = LV2PortLayout(description->numInputs, description->numOutputs, effect.numParameters,
                                   effect.numMeters);
    offered.windowFlags = description->windowFlags;
    offered.parent = LV2Features::findData(features, LV2_UI__parent);
    offered.idle = LV2Features::find(features, LV2_UI__idleInterface) != nullptr;
    if (offered.parent == nullptr || !offered.idle)
        return nullptr;
    offered.resize = static_cast<const LV2UI_Resize*>(LV2Features::findData(features, LV2_UI__resize));
    offered.touch = static_cast<const LV2UI_Touch*>(LV2Features::findData(features, LV2_UI__touch));
    offered.map = static_cast<const LV2_URID_Map*>(LV2Features::findData(features, LV2_URID__map));
    if (LV2Wrapper* wrapper = LV2Wrapper::findLive(LV2Features::findData(features, LV2_INSTANCE_ACCESS_URI)))
        offered.plugin = wrapper->getPlugin();

    auto* wrapper = new LV2UIWrapper(offered, write, controller);
    if (wrapper->holder == nullptr || !wrapper->holder->isOpen())
    {
        delete wrapper;
        return nullptr;
    }
    return wrapper;
}

LV2UIWrapper::LV2UIWrapper(const Features& features, LV2UI_Write_Function writeFunction,
                           LV2UI_Controller hostController)
    : effect(getLV2UIEffect()),
      layout(features.layout),
      write(writeFunction),
      controller(hostController),
      hostResize(features.resize),
      hostTouch(features.touch)
{
    // The interface may live in a process without the plug-in: it holds the framework and the
    // editor's pictures for itself.
    FrameworkInstances::add();
    SharedResourcePack::acquire(effect.resourceFileName);
    if (features.map != nullptr && features.map->map != nullptr)
        floatProtocol = features.map->map(features.map->handle, LV2_UI__floatProtocol);

    edited = new LV2EditedPlugin(layout, effect, features.plugin);
    AudioPluginEditor* editor = effect.createEditor(*edited);
    if (editor == nullptr)
        return;
    holder = new Holder(*this, features.parent, editor, features.windowFlags);
    if (!holder->isOpen())
        return;
    const Point size = editor->getSize();
    holder->setBounds(Rectangle(Point(), size));
    editor->addListener(this);
    resizeHostWindow(size);
}

LV2UIWrapper::~LV2UIWrapper()
{
    UiThread::enter();
    if (holder != nullptr)
    {
        holder->getEditor()->removeListener(this);
        delete holder;
    }
    delete edited;
    SharedResourcePack::release();
    FrameworkInstances::remove();
}

LV2UI_Widget LV2UIWrapper::getWidget() const
{
    return holder->getNativeView();
}

void LV2UIWrapper::portEvent(uint32_t port, uint32_t size, uint32_t protocol, const void* buffer)
{
    UiThread::enter();
    const bool floats = protocol == 0 || (floatProtocol != 0 && protocol == floatProtocol);
    if (!floats || size != sizeof(float) || buffer == nullptr)
        return;
    float value = 0.0f;
    std::memcpy(&value, buffer, sizeof value);
    edited->portChanged(port, value);
}

int LV2UIWrapper::idle()
{
    UiThread::idle();
    getEditor().refreshChangedControls();
    return 0;
}

int LV2UIWrapper::offerSize(int width, int height)
{
    UiThread::enter();
    getEditor().offerSize(Point(width, height));
    return 0;
}

bool LV2UIWrapper::resizeHostWindow(const Point& size)
{
    return hostResize != nullptr && hostResize->ui_resize != nullptr
           && hostResize->ui_resize(hostResize->handle, size.x, size.y) == 0;
}

void LV2UIWrapper::gestureBegan(AudioPluginEditor*, int index)
{
    touch(index, true);
}

void LV2UIWrapper::valueChanged(float value, AudioPluginEditor*, int index)
{
    if (index < 0 || index >= layout.getNumParameters())
        return;
    edited->userChanged(index, value);
    if (write == nullptr)
        return;
    const float physical = effect.toPhysical(value, index);
    write(controller, layout.getControlPort(index), sizeof physical, 0, &physical);
}

void LV2UIWrapper::gestureEnded(AudioPluginEditor*, int index)
{
    touch(index, false);
}

void LV2UIWrapper::touch(int index, bool grabbed)
{
    if (hostTouch != nullptr && hostTouch->touch != nullptr && index >= 0 && index < layout.getNumParameters())
        hostTouch->touch(hostTouch->handle, layout.getControlPort(index), grabbed);
}

}  // namespace q1framework
