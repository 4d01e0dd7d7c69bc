// The services the Kelvane shared objects (the VST 2.4 and the LV2 one) set up when they are
// loaded, before any entry point runs: resource files are found in the bundle, the folder of the
// shared object, and the plug-in's shared pack is read from there; the font engine comes up and
// goes down with the framework. Each shared object compiles this file into itself.

#include "media/resource/ResourcePack.h"
#include "native/bundle/BundlePaths.h"
#include "plugin/SharedResourcePack.h"
#include "render/font/FontServices.h"

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

const bool servicesRegistered = [] {
    q1framework::registerFontServices();
    q1framework::ResourcePack::setResourcePathFunction(&q1framework::BundlePaths::getResourcePath);
    q1framework::SharedResourcePack::setFunctions(&loadResourcePack, &deleteResourcePack);
    return true;
}();
}  // namespace
