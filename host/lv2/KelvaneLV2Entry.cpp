// The exported entry point of Kelvane's LV2 shared object, Kelvane.lv2/Kelvane.so. Only the
// entry point is visible outside it (KelvaneLV2.map); the services it sets up when it is loaded
// are those of the VST 2.4 shared object (KelvaneServices).

#include "host/KelvaneServices.h"
#include "host/lv2/LV2Descriptor.h"

#define KELVANE_LV2_ENTRY extern "C" __attribute__((visibility("default")))

namespace
{
// At load time, before any entry point runs.
const bool servicesRegistered = [] {
    KelvaneServices::registerAll();
    return true;
}();
}  // namespace

// Any thread. The bundle's one plug-in at index 0, null past it.
KELVANE_LV2_ENTRY const LV2_Descriptor* lv2_descriptor(uint32_t index)
{
    return index == 0 ? q1framework::getLV2Descriptor() : nullptr;
}
