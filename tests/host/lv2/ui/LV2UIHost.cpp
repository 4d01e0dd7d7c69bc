#include "LV2UIHost.h"

#include "editor/KLAudioPluginEditor.h"
#include "editor/MainComponent.h"
#include "host/KelvaneServices.h"
#include "host/lv2/LV2Descriptor.h"
#include "host/lv2/LV2Wrapper.h"
#include "host/lv2/ui/LV2UIDescriptor.h"
#include "host/lv2/ui/LV2UIWrapper.h"
#include "media/resource/ResourcePack.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/PluginDescription.h"

#include <lv2/instance-access/instance-access.h>

#include <chrono>
#include <cstring>
#include <memory>
#include <thread>

using namespace q1framework;

namespace
{
String packPath(const String& name)
{
    return String(KELVANE_LV2_BUNDLE "/") + name;
}

std::string pluginUri()
{
    const std::unique_ptr<PluginDescription> description(createPluginDescription());
    return description->uri.getCString();
}
}  // namespace

LV2UIHost::LV2UIHost(const Features& features)
    : layout(2, 2, KLParameters::count, KLMeters::count),
      pluginDescriptor(getLV2Descriptor()),
      uiDescriptor(getLV2UIDescriptor()),
      ports(layout.getCount(), 0.0f),
      offered(features),
      map{this, &LV2UIHost::mapUri},
      resize{this, &LV2UIHost::resizeHost},
      touch{this, &LV2UIHost::touchPort}
{
    KelvaneServices::registerAll();
    // The pack as the build makes it, whatever folder the test program runs from.
    ResourcePack::setResourcePathFunction(&packPath);
    const LV2_Feature mapFeature = {LV2_URID__map, &map};
    const LV2_Feature* const pluginFeatures[] = {&mapFeature, nullptr};
    plugin = pluginDescriptor->instantiate(pluginDescriptor, 44100.0, KELVANE_LV2_BUNDLE "/", pluginFeatures);
    for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
        ports[layout.getControlPort(parameter)] =
            KLParameters::toPhysical(KLParameters::getDefault(parameter), parameter);
    for (uint32_t index = layout.getControlPort(0); index < layout.getCount(); ++index)
        pluginDescriptor->connect_port(plugin, index, &ports[index]);
    pluginDescriptor->activate(plugin);
}

LV2UIHost::~LV2UIHost()
{
    close();
    pluginDescriptor->deactivate(plugin);
    pluginDescriptor->cleanup(plugin);
}

bool LV2UIHost::open(const Rectangle& hostBounds, const LV2_Feature* const* features)
{
    parent = display.makeHostWindow(hostBounds);
    featureRecords.clear();
    featureRecords.reserve(6);
    featureRecords.push_back({LV2_UI__parent, reinterpret_cast<void*>(static_cast<uintptr_t>(parent))});
    featureRecords.push_back({LV2_UI__idleInterface, nullptr});
    featureRecords.push_back({LV2_URID__map, &map});
    if (offered.resize)
        featureRecords.push_back({LV2_UI__resize, &resize});
    if (offered.touch)
        featureRecords.push_back({LV2_UI__touch, &touch});
    if (offered.instanceAccess)
        featureRecords.push_back({LV2_INSTANCE_ACCESS_URI, plugin});
    featureList.clear();
    for (const LV2_Feature& feature : featureRecords)
        featureList.push_back(&feature);
    featureList.push_back(nullptr);

    LV2UI_Widget widget = nullptr;
    ui = static_cast<LV2UIWrapper*>(uiDescriptor->instantiate(uiDescriptor, pluginUri().c_str(),
                                                              KELVANE_LV2_BUNDLE "/", &LV2UIHost::writePort, this,
                                                              &widget,
                                                              features != nullptr ? features : featureList.data()));
    return ui != nullptr && widget != nullptr;
}

void LV2UIHost::close()
{
    if (ui != nullptr)
        uiDescriptor->cleanup(ui);
    ui = nullptr;
}

void LV2UIHost::idle(int count)
{
    const auto* interface =
        static_cast<const LV2UI_Idle_Interface*>(uiDescriptor->extension_data(LV2_UI__idleInterface));
    for (int call = 0; call < count && ui != nullptr; ++call)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        interface->idle(ui);
    }
}

void LV2UIHost::notify(uint32_t index)
{
    uiDescriptor->port_event(ui, index, sizeof(float), 0, &ports[index]);
}

void LV2UIHost::notifyControls()
{
    for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
        notify(layout.getControlPort(parameter));
}

void LV2UIHost::notifyMeters()
{
    for (int meter = 0; meter < layout.getNumMeters(); ++meter)
        notify(layout.getMeterPort(meter));
}

void LV2UIHost::process(std::vector<float>& left, std::vector<float>& right)
{
    pluginDescriptor->connect_port(plugin, layout.getAudioInputPort(0), left.data());
    pluginDescriptor->connect_port(plugin, layout.getAudioInputPort(1), right.data());
    pluginDescriptor->connect_port(plugin, layout.getAudioOutputPort(0), left.data());
    pluginDescriptor->connect_port(plugin, layout.getAudioOutputPort(1), right.data());
    pluginDescriptor->run(plugin, static_cast<uint32_t>(left.size()));
}

std::vector<LV2UIHost::Write> LV2UIHost::takeWrites()
{
    std::vector<Write> taken;
    taken.swap(writes);
    return taken;
}

std::vector<LV2UIHost::Touch> LV2UIHost::takeTouches()
{
    std::vector<Touch> taken;
    taken.swap(touches);
    return taken;
}

std::vector<Point> LV2UIHost::takeResizes()
{
    std::vector<Point> taken;
    taken.swap(resizes);
    return taken;
}

KLAudioPlugin& LV2UIHost::getPlugin() const
{
    return *static_cast<KLAudioPlugin*>(static_cast<LV2Wrapper*>(plugin)->getPlugin());
}

MainComponent& LV2UIHost::getMainComponent() const
{
    return static_cast<KLAudioPluginEditor&>(ui->getEditor()).getMainComponent();
}

::Window LV2UIHost::getEditorWindow() const
{
    return ui != nullptr ? static_cast<::Window>(reinterpret_cast<uintptr_t>(ui->getWidget())) : 0;
}

Rectangle LV2UIHost::getGeometry(::Window window)
{
    display.settle();
    return display.getGeometry(window);
}

Image LV2UIHost::screenshot()
{
    display.settle();
    return display.capture(getEditorWindow());
}

uint32_t LV2UIHost::mapUri(LV2_URID_Map_Handle handle, const char* uri)
{
    std::vector<std::string>& uris = static_cast<LV2UIHost*>(handle)->uris;
    for (std::size_t index = 0; index < uris.size(); ++index)
        if (uris[index] == uri)
            return static_cast<uint32_t>(index + 1);
    uris.emplace_back(uri);
    return static_cast<uint32_t>(uris.size());
}

int LV2UIHost::resizeHost(LV2UI_Feature_Handle handle, int width, int height)
{
    LV2UIHost& host = *static_cast<LV2UIHost*>(handle);
    host.resizes.push_back(Point(width, height));
    if (!host.acceptsResize)
        return 1;
    XResizeWindow(host.display.get(), host.parent, static_cast<unsigned>(width), static_cast<unsigned>(height));
    XSync(host.display.get(), False);
    return 0;
}

void LV2UIHost::touchPort(LV2UI_Feature_Handle handle, uint32_t port, bool grabbed)
{
    static_cast<LV2UIHost*>(handle)->touches.push_back({port, grabbed});
}

void LV2UIHost::writePort(LV2UI_Controller controller, uint32_t port, uint32_t size, uint32_t protocol,
                          const void* buffer)
{
    LV2UIHost& host = *static_cast<LV2UIHost*>(controller);
    ASSERT_EQ(protocol, 0u);
    ASSERT_EQ(size, sizeof(float));
    ASSERT_LT(port, host.ports.size());
    std::memcpy(&host.ports[port], buffer, sizeof(float));
    host.writes.push_back({port, host.ports[port]});
}
