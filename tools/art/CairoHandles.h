#pragma once

#include <cairo.h>

#include <memory>

// Owning handles for cairo's reference-counted objects.
struct CairoSurfaceRelease
{
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct CairoContextRelease
{
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoSurfaceRelease>;
using CairoContext = std::unique_ptr<cairo_t, CairoContextRelease>;
