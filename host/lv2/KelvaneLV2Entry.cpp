// The exported entry points of Kelvane's LV2 shared object, Kelvane.lv2/Kelvane.so: the plug-in
// and its user interface, which live in the one shared object, so that an interface given the
// plug-in's instance (instance access) meets it on the same classes and the same framework. Only
// the entry points are visible outside it (KelvaneLV2.map); the services it sets up when it is
// loaded are those of the VST 2.4 shared object (KelvaneServices).

#include "host/KelvaneServices.h"
#include "host/lv2/LV2Descriptor.h"
#include "host/lv2/ui/LV2UIDescriptor.h"

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

// Any thread. The bundle's one user interface at index 0, null past it.
KELVANE_LV2_ENTRY const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index)
{
    return index == 0 ? q1framework::getLV2UIDescriptor() : nullptr;
}
