// SharedResourcePack: the first instance loads, the last one deletes, in between it is shared.

#include "plugin/KLAudioPlugin.h"
#include "plugin/SharedResourcePack.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace q1framework;

namespace
{
std::vector<std::string> events;
// Any address serves: the pack is only handed around, never read, here.
int packStandIn;

ResourcePack* load(const char* fileName)
{
    events.push_back(std::string("load ") + fileName);
    return reinterpret_cast<ResourcePack*>(&packStandIn);
}

void unload(ResourcePack* pack)
{
    events.push_back(pack == reinterpret_cast<ResourcePack*>(&packStandIn) ? "unload" : "unload of another");
}
}  // namespace

TEST(SharedResourcePack, FirstPluginInstanceLoadsTheBundlesPackAndTheLastDeletesIt)
{
    events.clear();
    SharedResourcePack::setFunctions(load, unload);
    {
        KLAudioPlugin first;
        EXPECT_EQ(SharedResourcePack::get(), reinterpret_cast<ResourcePack*>(&packStandIn));
        {
            KLAudioPlugin second;
            EXPECT_EQ(SharedResourcePack::getInstanceCount(), 2);
        }
        EXPECT_EQ(SharedResourcePack::get(), reinterpret_cast<ResourcePack*>(&packStandIn));
    }
    EXPECT_EQ(SharedResourcePack::get(), nullptr);
    {
        KLAudioPlugin again;
    }
    SharedResourcePack::release();  // unbalanced: nothing happens
    SharedResourcePack::setFunctions(nullptr, nullptr);
    {
        KLAudioPlugin withoutLoader;
        EXPECT_EQ(SharedResourcePack::get(), nullptr);
    }
    EXPECT_EQ(events, (std::vector<std::string>{"load resources.bin", "unload", "load resources.bin", "unload"}));
}
