// Component: repaint requests and the walks that paint a tree.

#include "ui/component/Component.h"

#include "render/graphics/SoftwareGraphics.h"
#include "ui/component/PaintContext.h"
#include "ui/container/ComponentsContainer.h"
#include "ui/lookandfeel/LookAndFeel.h"

#include <cstdlib>

namespace q1framework
{

namespace
{
bool showRepaints = false;
}

// ---- PaintContext ----

PaintContext::PaintContext(SoftwareGraphics& graphicsToUse, const Region& dirtyRegion, Storage& storageToUse)
    : graphics(graphicsToUse), dirty(dirtyRegion), storage(storageToUse)
{
}

const Font& PaintContext::getDefaultFont(LookAndFeel& lookAndFeel)
{
    const Font& base = lookAndFeel.getDefaultFont();
    const double height = lookAndFeel.getDefaultFontHeight() * graphics.getScale();
    if (base != storage.baseFont || height != storage.sizedFontHeight)
    {
        storage.baseFont = base;
        storage.sizedFont = base;
        storage.sizedFont.setSize(height);
        storage.sizedFontHeight = height;
    }
    return storage.sizedFont;
}

// ---- Repaint requests ----

void Component::repaint()
{
    const Rectangle area = getPaintBounds();
    repaint(area.translated(Point() - bounds.getPosition()));
}

void Component::repaint(const Rectangle& area)
{
    bufferDirty = true;
    if (!isVisible() || (parent && !parent->isVisible()))
        return;
    Rectangle dirty = area;
    Component* level = this;
    for (;;)
    {
        const Point position = level->bounds.getPosition();
        dirty = dirty.getIntersection(level->getPaintBounds().translated(Point() - position)).translated(position);
        if (!level->parent)
            break;
        level = level->parent;
    }
    if (!dirty.isEmpty() && level->container)
        level->container->invalidate(dirty);
}

void Component::setShowRepaints(bool show)
{
    showRepaints = show;
}

// ---- The paint walks ----

void Component::paintTree(Component& root, PaintContext& context, const Rectangle& clip)
{
    if (context.getDirty().isEmpty())
        return;
    context.getOpaqueOrders().clear();
    context.getOpaqueComponents().clear();
    uint32_t counter = 0;
    prepare(root, context, Point(), clip, counter);
    paintPass(root, context, clip, 0);
    paintPass(root, context, clip, 1);
    if (!showRepaints)
        return;
    SoftwareGraphics& graphics = context.getGraphics();
    const Rectangle savedClip = graphics.getClip(false);
    const Point origin = graphics.getOrigin();
    graphics.translate(-origin.x, -origin.y);
    graphics.setClip(clip, false);
    Colour tint(std::rand() & 255, std::rand() & 255, std::rand() & 255, 128);
    context.getDirty().getRectangles(context.getRectangles());
    for (const Rectangle& rectangle : context.getRectangles())
        graphics.fillRect(rectangle, tint, true);
    graphics.translate(origin.x, origin.y);
    graphics.setClip(savedClip, false);
}

void Component::prepare(Component& component, PaintContext& context, const Point& offset, Rectangle clip,
                        uint32_t& counter)
{
    if (!component.isVisible())
        return;
    component.paintOrder = counter++;
    if (component.isOpaque())
    {
        context.getOpaqueOrders().add(component.paintOrder);
        context.getOpaqueComponents().add(&component);
    }
    if (component.clipsChildren())
        clip = clip.getIntersection(component.bounds.translated(offset));
    component.visibleClip = component.getPaintBounds().translated(offset).getIntersection(clip);
    const Point childOffset = offset + component.bounds.getPosition();
    for (int32_t index = 0; index < component.children.getCount(); ++index)
        prepare(*component.children[index], context, childOffset, clip, counter);
}

void Component::paintPass(Component& component, PaintContext& context, const Rectangle& clip, int pass)
{
    if (!component.isVisible())
        return;
    const Rectangle visible = component.visibleClip.getIntersection(clip);
    if (visible.isEmpty())
        return;
    SoftwareGraphics& graphics = context.getGraphics();
    graphics.translate(component.bounds.x, component.bounds.y);
    if ((component.isOverlay() ? 1 : 0) == pass)
    {
        Region& part = context.getScratch();
        context.getDirty().getIntersection(visible, part);
        if (!part.isEmpty())
        {
            // Opaque components later in the walk paint over this one: their areas are left out.
            const Array<uint32_t>& orders = context.getOpaqueOrders();
            const Array<Component*>& opaque = context.getOpaqueComponents();
            int32_t first = 0;
            while (first < orders.getCount() && orders[first] <= component.paintOrder)
                ++first;
            for (int32_t index = first; index < orders.getCount(); ++index)
                part.subtractRectangle(opaque[index]->visibleClip.getIntersection(clip));
            RectangleList& rectangles = context.getRectangles();
            part.getRectangles(rectangles);
            LookAndFeel& lookAndFeel = *component.getLookAndFeel();
            for (int32_t index = 0; index < rectangles.getCount(); ++index)
            {
                graphics.setClip(rectangles[index], false);
                graphics.setFont(context.getDefaultFont(lookAndFeel));
                component.paintBuffered(context);
            }
        }
        pass = 0;
    }
    const Rectangle childClip = component.clipsChildren() ? visible : clip;
    for (int32_t index = 0; index < component.children.getCount(); ++index)
        paintPass(*component.children[index], context, childClip, pass);
    graphics.translate(-component.bounds.x, -component.bounds.y);
}

void Component::paintBuffered(PaintContext& context)
{
    if (!isBuffered())
    {
        paint(context.getGraphics());
        return;
    }
    if (buffer.getSize() != bounds.getSize())
    {
        buffer = Image(bounds.w, bounds.h, true);
        bufferDirty = true;
    }
    if (bufferDirty)
    {
        SoftwareGraphics bufferGraphics(buffer);
        bufferGraphics.setFont(context.getGraphics().getFont());
        Colour transparent;
        bufferGraphics.fillAll(transparent, false);
        paint(bufferGraphics);
        bufferDirty = false;
    }
    context.getGraphics().drawImage(buffer, Point(), true, 255);
}

Image Component::getImageOfComponent()
{
    Image picture(bounds.w, bounds.h, true);
    if (picture.isEmpty())
        return Image();
    SoftwareGraphics graphics(picture);
    const Point position = bounds.getPosition();
    bounds.x = 0;
    bounds.y = 0;
    paint(graphics);
    bounds.x = position.x;
    bounds.y = position.y;
    return picture;
}

}  // namespace q1framework
