// The exported entry points of the Kelvane shared object, and the services it sets up when it is
// loaded. Only the three entry points are visible outside the shared object (Kelvane.map), so two
// plug-ins built on the framework share a host process without sharing a symbol.

#include "host/PluginEntry.h"
#include "media/resource/ResourcePack.h"
#include "native/bundle/BundlePaths.h"
#include "plugin/SharedResourcePack.h"
#include "render/font/FontServices.h"

#define KELVANE_ENTRY extern "C" __attribute__((visibility("default")))

namespace
{
q1framework::ResourcePack* loadResourcePack(const char* fileName)
{
    return q1framework::ResourcePack::loadResourcePack(fileName);
}

void deleteResourcePack(q1framework::ResourcePack* pack)
{
    delete pack;
}

// At load time, before any entry point runs: resource files are found in the bundle, the folder
// of this shared object, and the plug-in's shared pack is read from there; the font engine comes
// up and goes down with the framework.
const bool servicesRegistered = [] {
    q1framework::registerFontServices();
    q1framework::ResourcePack::setResourcePathFunction(&q1framework::BundlePaths::getResourcePath);
    q1framework::SharedResourcePack::setFunctions(&loadResourcePack, &deleteResourcePack);
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
