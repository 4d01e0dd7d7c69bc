#pragma once

// The order in which the framework's load-time objects come up when the plug-in's shared object
// is loaded, as priorities for `__attribute__((init_priority(...)))` (lower runs first; each
// object is destroyed in the reverse order at unload). Objects of different translation units
// have no defined order otherwise, and later ones rely on earlier ones being there.
namespace q1framework::StaticInitOrder
{
constexpr int vsyncWindows = 1001;        // the window list of the frame clock
constexpr int vsyncTimer = 1002;          // the frame clock itself, started at once
constexpr int nativeViews = 1003;         // the native view layer's pointer list
constexpr int emptyString = 1004;         // the static empty String
constexpr int fontLayer = 1005;           // the font layer's pointer list
constexpr int asyncCallbacks = 1006;      // the AsyncCallback registry
constexpr int deletedAtShutdown = 1007;   // the DeletedAtShutdown registry
constexpr int openGLLayer = 1008;         // the OpenGL layer's pointer list
}
