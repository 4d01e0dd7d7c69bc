#pragma once

#include <cstdint>

// The style bits of a Window, given at creation (Window::getFlags reports them as they are in
// effect). The native layer reads those marked "native"; the others belong to the toolkit's
// ComponentsWindow and are listed here so that the bits stay apart.
namespace q1framework::WindowFlags
{
// native: draws through OpenGL. Creation makes a rendering context, and the frame loop paints
// the window on every frame. When no context can be made, the window drops this bit and takes
// imageSurface instead.
constexpr int32_t openGL = 8;
// toolkit: a resize deletes the surface and repaints everything.
constexpr int32_t rebuildOnResize = 16;
// toolkit and native: the window paints on every frame, dirty or not.
constexpr int32_t paintEveryFrame = 32;
// toolkit: shows its pixels through the window system's image put (Surface kind 2).
constexpr int32_t imageSurface = 64;
// native: tested at creation when openGL is clear; the window gets no rendering context, as
// without it. toolkit: Surface kind 3.
constexpr int32_t noContext = 128;
// native: high resolution; mouse positions are scaled by the backing scale.
constexpr int32_t highResolution = 256;
// native: a swap interval of 0 instead of 1 (frames do not wait for the vertical blank).
constexpr int32_t swapIntervalZero = 512;
// toolkit: the component tree keeps its own size and the window shows it scaled.
constexpr int32_t scaledContent = 1024;
// toolkit: the window holds a plug-in's editor inside a host's window.
constexpr int32_t hostedEditor = 0x1000;
// toolkit: scrolling copies on the device instead of moving in memory.
constexpr int32_t copyForScroll = 32768;
}  // namespace q1framework::WindowFlags
