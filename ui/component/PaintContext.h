#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/RectangleList.h"
#include "render/font/Font.h"
#include "render/region/Region.h"

#include <cstdint>

namespace q1framework
{

class Component;
class LookAndFeel;
class SoftwareGraphics;

// What one paint of a tree works with: the painter, the region still to be painted, and the
// scratch storage of the walks. Made afresh for each paint; the scratch storage (a Storage) is
// kept by the container from frame to frame, so that a tree in steady use paints without
// allocating.
class PaintContext
{
public:
    // The walks' reusable storage.
    class Storage
    {
    public:
        Storage() : scratch(10) {}

    private:
        friend class PaintContext;
        Region scratch;                      // one component's visible dirty part
        RectangleList rectangles;            // the same as rectangles
        Array<uint32_t> opaqueOrders;        // paintOrder of each opaque component, in walk order
        Array<Component*> opaqueComponents;  // the opaque components themselves
        Font baseFont;                       // the font that sizedFont was made from
        double sizedFontHeight = -1.0;
        Font sizedFont;                      // baseFont at sizedFontHeight
    };

    // graphics and dirty (in the painter's buffer coordinates) must outlive the context.
    PaintContext(SoftwareGraphics& graphics, const Region& dirty, Storage& storage);

    SoftwareGraphics& getGraphics() { return graphics; }
    const Region& getDirty() const { return dirty; }
    Region& getScratch() { return storage.scratch; }
    RectangleList& getRectangles() { return storage.rectangles; }
    Array<uint32_t>& getOpaqueOrders() { return storage.opaqueOrders; }
    Array<Component*>& getOpaqueComponents() { return storage.opaqueComponents; }

    // The look-and-feel's default font at its default height times the painter's scale. Made
    // only when the font or the height changes, so that setting it for each painted rectangle
    // costs a reference count.
    const Font& getDefaultFont(LookAndFeel& lookAndFeel);

private:
    SoftwareGraphics& graphics;
    const Region& dirty;
    Storage& storage;
};

}  // namespace q1framework
