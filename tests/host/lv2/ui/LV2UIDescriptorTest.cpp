// The LV2 user interface as a host finds it: through lilv's discovery in the build tree's bundle,
// and through the entry point of the bundle's shared object.

#include "LV2TestHost.h"

#include "host/lv2/ui/LV2UIUri.h"

#include <lv2/ui/ui.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <string>

namespace
{
using UIDescriptorFunction = const LV2UI_Descriptor* (*)(uint32_t index);

// The bundle's shared object, loaded as a host loads a user interface's binary.
class BundleObject
{
public:
    BundleObject() : handle(dlopen(KELVANE_LV2_BUNDLE "/Kelvane.so", RTLD_NOW | RTLD_LOCAL)) {}
    ~BundleObject()
    {
        if (handle != nullptr)
            dlclose(handle);
    }

    const LV2UI_Descriptor* descriptor(uint32_t index) const
    {
        auto entry = reinterpret_cast<UIDescriptorFunction>(handle != nullptr ? dlsym(handle, "lv2ui_descriptor")
                                                                              : nullptr);
        EXPECT_NE(entry, nullptr) << "no lv2ui_descriptor in the bundle's shared object";
        return entry != nullptr ? entry(index) : nullptr;
    }

private:
    void* handle;
};
}  // namespace

TEST(LV2UIDescriptor, LilvFindsTheInterfaceAsAnX11UIInThePluginsSharedObject)
{
    LV2TestHost host;
    ASSERT_NE(host.plugin, nullptr);
    LilvUIs* uis = lilv_plugin_get_uis(host.plugin);
    ASSERT_EQ(lilv_uis_size(uis), 1u);
    const LilvUI* ui = lilv_uis_get(uis, lilv_uis_begin(uis));
    EXPECT_EQ(std::string(lilv_node_as_uri(lilv_ui_get_uri(ui))), q1framework::getLV2UIUri(host.uri));
    LilvNode* x11 = lilv_new_uri(host.world, LV2_UI__X11UI);
    EXPECT_TRUE(lilv_ui_is_a(ui, x11));
    lilv_node_free(x11);
    char* binary = lilv_file_uri_parse(lilv_node_as_uri(lilv_ui_get_binary_uri(ui)), nullptr);
    EXPECT_EQ(std::string(binary), std::string(KELVANE_LV2_BUNDLE "/Kelvane.so"));
    lilv_free(binary);
    lilv_uis_free(uis);
}

TEST(LV2UIDescriptor, TheSharedObjectHandsOutTheInterfaceAtIndexZeroOnly)
{
    LV2TestHost host;
    BundleObject object;
    const LV2UI_Descriptor* descriptor = object.descriptor(0);
    ASSERT_NE(descriptor, nullptr);
    EXPECT_EQ(std::string(descriptor->URI), q1framework::getLV2UIUri(host.uri));
    EXPECT_EQ(object.descriptor(1), nullptr);
}

TEST(LV2UIDescriptor, ExtensionDataIsTheIdleInterfaceAndTheResize)
{
    BundleObject object;
    const LV2UI_Descriptor* descriptor = object.descriptor(0);
    ASSERT_NE(descriptor, nullptr);
    const auto* idle = static_cast<const LV2UI_Idle_Interface*>(descriptor->extension_data(LV2_UI__idleInterface));
    ASSERT_NE(idle, nullptr);
    EXPECT_NE(idle->idle, nullptr);
    const auto* resize = static_cast<const LV2UI_Resize*>(descriptor->extension_data(LV2_UI__resize));
    ASSERT_NE(resize, nullptr);
    EXPECT_NE(resize->ui_resize, nullptr);
    EXPECT_EQ(descriptor->extension_data(LV2_UI__showInterface), nullptr);
    EXPECT_EQ(descriptor->extension_data(nullptr), nullptr);
}

TEST(LV2UIDescriptor, AHostThatOffersNoFeatureGetsNoInterface)
{
    LV2TestHost host;
    BundleObject object;
    const LV2UI_Descriptor* descriptor = object.descriptor(0);
    ASSERT_NE(descriptor, nullptr);
    LV2UI_Widget widget = &widget;
    EXPECT_EQ(descriptor->instantiate(descriptor, host.uri.c_str(), KELVANE_LV2_BUNDLE "/", nullptr, nullptr, &widget,
                                      nullptr),
              nullptr);
    EXPECT_EQ(widget, nullptr);
}
