#include "host/PluginEntry.h"

#include "host/VST2Wrapper.h"

namespace q1framework
{

AEffect* createEffectForHost(audioMasterCallback host)
{
    if (host == nullptr || host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0)
        return nullptr;
    return createEffectInstance(host)->getAeffect();
}

}  // namespace q1framework
