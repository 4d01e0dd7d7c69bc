// The exported entry points of the Kelvane shared object. Only the three entry points are visible
// outside the shared object (Kelvane.map), so two plug-ins built on the framework share a host
// process without sharing a symbol. The services it sets up when it is loaded are in
// KelvaneServices.cpp.

#include "host/KelvaneServices.h"
#include "host/PluginEntry.h"

#define KELVANE_ENTRY extern "C" __attribute__((visibility("default")))

namespace
{
// At load time, before any entry point runs.
const bool servicesRegistered = [] {
    KelvaneServices::registerAll();
    return true;
}();
}  // namespace

KELVANE_ENTRY q1framework::AEffect* VSTPluginMain(q1framework::audioMasterCallback host)
{
    return q1framework::createEffectForHost(host);
}

// The entry name of older Mac hosts, kept for hosts that look for it on every platform.
KELVANE_ENTRY q1framework::AEffect* main_macho(q1framework::audioMasterCallback host)
{
    return q1framework::createEffectForHost(host);
}

KELVANE_ENTRY q1framework::AEffect* CreateEngine(q1framework::audioMasterCallback host)
{
    return q1framework::createEffectForHost(host);
}
