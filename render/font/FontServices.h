#pragma once

namespace q1framework
{

// Plugs the font engine into the framework's bring-up and take-down (FrameworkInitialiser): the
// bring-up makes the engine, the take-down deletes it if the shutdown of DeletedAtShutdown objects
// has not done so already.
//
// An explicit call rather than a load-time object: a static library's object file that nothing
// references is not linked into the plug-in, and its initialiser would silently never run. The
// plug-in's entry calls this once before it makes its FrameworkInitialiser; calling it again is
// harmless. Fonts work without it too, as the engine is also made on first use.
//
// Thread contract: main thread.
void registerFontServices();

}  // namespace q1framework
