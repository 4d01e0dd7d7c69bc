#include "render/font/FontServices.h"

#include "foundation/runtime/FrameworkInitialiser.h"
#include "render/font/FontEngine.h"

namespace q1framework
{

namespace
{
void createFontLibrary() { FontEngine::getInstance(); }
void destroyFontLibrary() { FontEngine::deleteInstance(); }
}  // namespace

void registerFontServices()
{
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createFontLibrary, createFontLibrary);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyFontLibrary, destroyFontLibrary);
}

}  // namespace q1framework
