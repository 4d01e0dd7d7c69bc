#include "foundation/runtime/FrameworkInitialiser.h"

#include "foundation/runtime/DeletedAtShutdown.h"
#include "foundation/runtime/MessagePump.h"

namespace q1framework
{

namespace
{
// Plain function pointers, all null before any code runs, so that the layers may install their
// hooks from their own load-time initialisers in any order.
FrameworkInitialiser::HookFunction hooks[static_cast<int>(FrameworkInitialiser::Hook::count)];

void runHook(FrameworkInitialiser::Hook hook)
{
    if (FrameworkInitialiser::HookFunction function = FrameworkInitialiser::getHook(hook))
        function();
}
}  // namespace

void FrameworkInitialiser::setHook(Hook hook, HookFunction function)
{
    if (hook >= Hook::platformSetUp && hook < Hook::count)
        hooks[static_cast<int>(hook)] = function;
}

FrameworkInitialiser::HookFunction FrameworkInitialiser::getHook(Hook hook)
{
    return hook >= Hook::platformSetUp && hook < Hook::count ? hooks[static_cast<int>(hook)] : nullptr;
}

FrameworkInitialiser::FrameworkInitialiser()
{
    MessagePump::adoptCurrentThread();
    runHook(Hook::platformSetUp);
    runHook(Hook::createFontLibrary);
    runHook(Hook::createDefaultLookAndFeel);
}

FrameworkInitialiser::~FrameworkInitialiser()
{
    runHook(Hook::clearDefaultLookAndFeelSelection);
    DeletedAtShutdown::deleteAll();
    runHook(Hook::destroyDefaultLookAndFeel);
    runHook(Hook::destroyFontLibrary);
    runHook(Hook::releaseComponentStatics);
}

}  // namespace q1framework
