// The run function of Kelvane's LV2 build allocates nothing after its first block, also while the
// host automates every control, varies the block length and reads the meters. The shared object
// is driven through its descriptor alone, as the simplest host does.

#include "AllocationCounter.h"

#include "host/lv2/LV2PortLayout.h"

#include <lv2/core/lv2.h>
#include <lv2/urid/urid.h>

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

using q1framework::LV2PortLayout;

namespace
{
// A URID map of a fixed capacity, so that the host side allocates nothing while it counts.
struct FixedMap
{
    static constexpr int capacity = 64;
    const char* uris[capacity] = {};
    int count = 0;

    static LV2_URID map(LV2_URID_Map_Handle handle, const char* uri)
    {
        FixedMap& self = *static_cast<FixedMap*>(handle);
        for (int index = 0; index < self.count; ++index)
            if (std::strcmp(self.uris[index], uri) == 0)
                return static_cast<LV2_URID>(index + 1);
        if (self.count == capacity)
            return 0;
        self.uris[self.count] = uri;
        return static_cast<LV2_URID>(++self.count);
    }
};
}  // namespace

TEST(KelvaneLV2Allocation, InstantiateAllocatesAndRunThenAllocatesNothing)
{
    const std::string path = std::string(KELVANE_LV2_BUNDLE) + "/Kelvane.so";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto entry = reinterpret_cast<LV2_Descriptor_Function>(dlsym(library, "lv2_descriptor"));
    ASSERT_NE(entry, nullptr);
    const LV2_Descriptor* descriptor = entry(0);
    ASSERT_NE(descriptor, nullptr);

    FixedMap uris;
    LV2_URID_Map map{&uris, FixedMap::map};
    const LV2_Feature mapFeature{LV2_URID__map, &map};
    const LV2_Feature* features[] = {&mapFeature, nullptr};
    // The counter sees the plug-in's own allocations: making an instance is one.
    AllocationCounter::start();
    LV2_Handle instance = descriptor->instantiate(descriptor, 48000.0, KELVANE_LV2_BUNDLE, features);
    EXPECT_GT(AllocationCounter::stop(), 0);
    ASSERT_NE(instance, nullptr);

    const LV2PortLayout layout(2, 2, 7, 3);
    std::vector<float> ports(layout.getCount(), 0.0f);
    std::vector<float> left(2048), right(2048);
    for (uint32_t port = 0; port < layout.getCount(); ++port)
        descriptor->connect_port(instance, port, &ports[port]);
    // Two audio ports in place, two separate: a mono track's way and a stereo bus's.
    descriptor->connect_port(instance, layout.getAudioInputPort(0), left.data());
    descriptor->connect_port(instance, layout.getAudioOutputPort(0), left.data());
    descriptor->connect_port(instance, layout.getAudioInputPort(1), right.data());
    descriptor->connect_port(instance, layout.getAudioOutputPort(1), right.data());
    descriptor->activate(instance);
    descriptor->run(instance, 512);

    AllocationCounter::start();
    for (int block = 0; block < 200; ++block)
    {
        for (std::size_t frame = 0; frame < left.size(); ++frame)
        {
            const float time = 0.01f * static_cast<float>(block * 2048 + static_cast<int>(frame));
            left[frame] = right[frame] = 0.5f * std::sin(time);
        }
        // Every control moves on every block, through its whole range and beyond it.
        for (int parameter = 0; parameter < layout.getNumParameters(); ++parameter)
            ports[layout.getControlPort(parameter)] = static_cast<float>((block + parameter) % 11) * 25.0f - 120.0f;
        descriptor->run(instance, block % 2 == 0 ? 512 : 2048);
    }
    EXPECT_EQ(AllocationCounter::stop(), 0);

    descriptor->deactivate(instance);
    descriptor->cleanup(instance);
    dlclose(library);
}
