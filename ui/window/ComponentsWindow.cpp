#include "ui/window/ComponentsWindow.h"

#include "media/geometry/RectangleF.h"
#include "native/window/WindowFlags.h"
#include "render/context/RenderingContext.h"
#include "render/surface/Surface.h"
#include "ui/component/Component.h"

#include <cmath>
#include <cstring>

namespace q1framework
{

namespace
{
// The tap count of the scaled blit: from the scale.
constexpr int resamplingQuality = -1;
// A surface kind that makes no surface.
constexpr int noSurfaceKind = 4;

// area scaled by (scaleX, scaleY), the far edges scaled as well, in double.
RectangleF scaleArea(const Rectangle& area, double scaleX, double scaleY)
{
    const double left = area.x * scaleX;
    const double top = area.y * scaleY;
    return RectangleF(left, top, area.getRight() * scaleX - left, area.getBottom() * scaleY - top);
}
}

ComponentsWindow::ComponentsWindow(const Rectangle& bounds, int flags, const String& title, void* parent)
    : Window(bounds, flags, title, parent), container(this)
{
    container.setCopyForScroll(hasStyle(WindowFlags::copyForScroll));
    container.setListener(this);
    container.setScale(getBackingScale());
}

ComponentsWindow::~ComponentsWindow()
{
    container.setListener(nullptr);
    container.setRootComponent(nullptr, true, false);
    destroyNative();
}

void ComponentsWindow::setContent(Component* root, bool makeVisible)
{
    container.setRootComponent(root, true, makeVisible);
    if (!root)
        return;
    if (hasStyle(WindowFlags::scaledContent))
        container.setSize(root->getSize());
    setSize(root->getSize());
    // A window made at the root's size does not resize here, so resized() did not size the
    // container to it.
    if (!hasStyle(WindowFlags::scaledContent))
        container.setSize(getClientSize());
}

Point ComponentsWindow::windowToRoot(const Point& position) const
{
    const Component* root = container.getRootComponent();
    const Point window = getClientSize();
    if (!root || window.x < 1 || window.y < 1)
        return position;
    return Point(static_cast<int>(position.x * static_cast<double>(root->getWidth()) / window.x),
                 static_cast<int>(position.y * static_cast<double>(root->getHeight()) / window.y));
}

Point ComponentsWindow::rootToWindow(const Point& position, bool roundUp) const
{
    const Component* root = container.getRootComponent();
    if (!root || root->getWidth() < 1 || root->getHeight() < 1)
        return position;
    const Point window = getClientSize();
    const double x = position.x * static_cast<double>(window.x) / root->getWidth();
    const double y = position.y * static_cast<double>(window.y) / root->getHeight();
    return roundUp ? Point(static_cast<int>(std::ceil(x)), static_cast<int>(std::ceil(y)))
                   : Point(static_cast<int>(x), static_cast<int>(y));
}

void ComponentsWindow::setOverlayDrawing(bool drawsOverlay)
{
    if (overlayDrawing == drawsOverlay)
        return;
    overlayDrawing = drawsOverlay;
    deleteWindowSurfaces();
    container.invalidateAll();
}

bool ComponentsWindow::composesOverlay() const
{
    return overlayDrawing && getSurfaceKind(getFlags()) == Surface::imageKind;
}

int ComponentsWindow::getSurfaceKind(int flags)
{
    if (flags & WindowFlags::openGL)
        return Surface::openGLKind;
    if (flags & WindowFlags::imageSurface)
        return Surface::imageKind;
    if (flags & WindowFlags::noContext)
        return Surface::openGLAltKind;
    return noSurfaceKind;
}

// ---- Events ----

void ComponentsWindow::backingScaleChanged()
{
    container.setScale(getBackingScale());
}

bool ComponentsWindow::isInterestedInFiles(const Point& position, const Array<String>& paths)
{
    return container.isInterestedInFiles(windowToRoot(position), paths);
}

void ComponentsWindow::filesDropped(const Point& position, const Array<String>& paths)
{
    container.filesDropped(windowToRoot(position), paths);
}

void ComponentsWindow::mouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY)
{
    container.sendMouseEvent(0, type, windowToRoot(position), button, clickCount, deltaX, deltaY);
}

void ComponentsWindow::releaseButtons(const Point& rootPosition)
{
    for (const uint32_t button : {MouseEvent::leftButton, MouseEvent::otherButton, MouseEvent::rightButton})
        container.sendMouseEvent(0, ComponentsContainer::releaseEvent, rootPosition, static_cast<int>(button), 1, 0.0f,
                                 0.0f);
}

void ComponentsWindow::mouseLeft(Point position)
{
    releaseButtons(windowToRoot(position));
}

void ComponentsWindow::activeChanged(bool active)
{
    if (!active)
        releaseButtons(Point(-1, -1));
}

bool ComponentsWindow::keyPressed(int key, int nativeKeyCode)
{
    return container.keyDown(key, static_cast<uint32_t>(nativeKeyCode));
}

bool ComponentsWindow::keyReleased(int key, int nativeKeyCode)
{
    return container.keyUp(key, static_cast<uint32_t>(nativeKeyCode));
}

void ComponentsWindow::frameTick()
{
    container.tick();
}

void ComponentsWindow::resized()
{
    const Component* root = container.getRootComponent();
    if (hasStyle(WindowFlags::scaledContent))
    {
        if (root)
            container.setSize(root->getSize());
    }
    else
        container.setSize(getClientSize());
    if (!hasStyle(WindowFlags::rebuildOnResize))
        return;
    if (!hasStyle(WindowFlags::scaledContent))
        container.invalidateAll();
    delete surface;
    surface = nullptr;
}

void ComponentsWindow::destroyNative()
{
    deleteSurfaces();
    Window::destroyNative();
}

void ComponentsWindow::deleteSurfaces()
{
    deleteWindowSurfaces();
    delete scaledSurface;
    scaledSurface = nullptr;
}

void ComponentsWindow::deleteWindowSurfaces()
{
    overlayContext.setTarget(Image());
    overlayAreas.clear();
    delete surface;
    surface = nullptr;
    delete treeSurface;
    treeSurface = nullptr;
}

// ---- Repaint requests from the tree ----

void ComponentsWindow::areaInvalidated(const Rectangle& area)
{
    const Component* root = container.getRootComponent();
    if (!root || root->getWidth() < 1 || root->getHeight() < 1)
        return;
    const Point window = getClientSize();
    const double scaleX = static_cast<double>(window.x) / root->getWidth();
    const double scaleY = static_cast<double>(window.y) / root->getHeight();
    invalidate(scaleArea(area, scaleX, scaleY).toRectangle(0));
}

void ComponentsWindow::areaMoved(const Rectangle& source, const Point& destination)
{
    if (hasStyle(WindowFlags::scaledContent))
    {
        // The tree's pixels are those of the scaled surface; the window's follow in the blit.
        if (scaledSurface)
            Image(scaledSurface->getImage()).moveRect(source, destination);
        return;
    }
    if (treeSurface)
    {
        // The shown pixels follow in the next frame: the scroll put the area into presentDirty.
        Image(treeSurface->getImage()).moveRect(source, destination);
        return;
    }
    if (surface)
    {
        Rectangle region = source;
        Point target = destination;
        surface->moveRegion(region, target);
    }
}

void ComponentsWindow::areaCopied(const Rectangle& source, const Point& destination)
{
    if (hasStyle(WindowFlags::scaledContent) || treeSurface)
    {
        areaMoved(source, destination);
        return;
    }
    if (surface)
        surface->copyRegion(nullptr, source, destination);
}

// ---- Painting a frame ----

void ComponentsWindow::paint()
{
    if (!hasStyle(WindowFlags::openGL) && !hasStyle(WindowFlags::imageSurface))
        return;
    RenderingContext* context = hasStyle(WindowFlags::openGL) ? getRenderingContext() : nullptr;
    if (context)
        context->beginFrame();
    paintSoftware();
    if (context)
    {
        Component* root = container.getRootComponent();
        if (overlayDrawing && surface && root)
            root->afterRender(*context);
        context->endFrame();
    }
}

void ComponentsWindow::paintSoftware()
{
    container.beginFrame();
    const Point size = getClientSize();
    bool surfaceIsNew = false;
    if (!surface || (size.x != 0 && size.y != 0 && size != surface->getSize()))
    {
        deleteWindowSurfaces();
        surface = Surface::create(getRenderingContext(), getSurfaceKind(getFlags()), size, getImagePresenter());
        if (surface && composesOverlay())
            treeSurface = Surface::create(nullptr, Surface::memoryKind, size);
        surfaceIsNew = true;
    }
    if (surface)
    {
        Surface& treePixels = treeSurface ? *treeSurface : *surface;
        const bool scaled = hasStyle(WindowFlags::scaledContent);
        const bool painted = scaled ? paintScaled(treePixels, surfaceIsNew) : paintUnscaled(treePixels);
        if (treeSurface)
            showWithOverlay(painted, surfaceIsNew);
        else if (painted)
            surface->update(presented, getNativeView(), nullptr);
        // A texture surface draws its quad here, on a frame that the rendering context began
        // anew. An image surface puts what the window system lost; a scaled frame has put that
        // with its rectangles already.
        if (!scaled || (getRenderingContext() && hasStyle(WindowFlags::openGL)))
            surface->present();
    }
    container.clearDirty();
    container.endFrame();
}

bool ComponentsWindow::paintUnscaled(Surface& target)
{
    if (!hasStyle(WindowFlags::paintEveryFrame) && container.getDirtyRegion().isEmpty()
        && container.getPresentRegion().isEmpty())
    {
        presented.clear();
        return false;
    }
    int stride = 0;
    uint8_t* pixels = target.getPixels(&stride);
    container.paint(pixels, target.getSize(), stride, false);
    container.getPresentRegion().getRectangles(presented);
    return true;
}

bool ComponentsWindow::paintScaled(Surface& target, bool surfaceIsNew)
{
    const Point treeSize = container.getSize();
    if (!scaledSurface || scaledSurface->getSize() != treeSize)
    {
        delete scaledSurface;
        scaledSurface = Surface::create(nullptr, Surface::memoryKind, treeSize);
        container.invalidateAll();
    }
    int stride = 0;
    uint8_t* pixels = scaledSurface->getPixels(&stride);
    container.paint(pixels, treeSize, stride, false);

    const Point windowSize = target.getSize();
    const Rectangle whole(Point(), windowSize);
    // The present region is taken on every frame, also when a new surface is shown whole, so
    // that its scratch storage has grown by the second frame and later frames allocate nothing.
    container.getPresentRegion().getRectangles(presented);
    if (surfaceIsNew || treeSize.x < 1 || treeSize.y < 1)
    {
        presented.clear();
        presented.add(whole);
    }
    else
    {
        const double scaleX = static_cast<double>(windowSize.x) / treeSize.x;
        const double scaleY = static_cast<double>(windowSize.y) / treeSize.y;
        for (Rectangle& area : presented)
            area = scaleArea(area, scaleX, scaleY).toRectangle(1).getIntersection(whole);
    }
    Image destination = target.getImage();
    resampler.resample(scaledSurface->getImage(), destination, presented.begin(), presented.getCount(),
                       resamplingQuality);
    return true;
}

void ComponentsWindow::showWithOverlay(bool painted, bool surfaceIsNew)
{
    const Image& tree = treeSurface->getImage();
    const Image& shown = surface->getImage();
    const Rectangle whole = shown.getBounds();
    if (!painted)
        presented.clear();
    if (surfaceIsNew)
    {
        presented.clear();
        presented.add(whole);
        overlayAreas.clear();
    }
    // What the overlay covered last time shows the tree again, before the overlay is drawn anew.
    for (const Rectangle& area : overlayAreas)
        presented.add(area);
    for (const Rectangle& area : presented)
    {
        const Rectangle part = area.getIntersection(whole);
        for (int y = part.y; y < part.getBottom(); ++y)
            std::memcpy(shown.getPixelPointer(part.x, y), tree.getPixelPointer(part.x, y),
                        static_cast<size_t>(part.w) * 4);
    }
    overlayAreas.clear();
    if (Component* root = container.getRootComponent())
    {
        overlayContext.setTarget(shown);
        overlayContext.beginFrame();
        root->afterRender(overlayContext);
        for (const Rectangle& area : overlayContext.getDrawnAreas())
        {
            overlayAreas.add(area);
            presented.add(area);
        }
    }
    surface->update(presented, getNativeView(), nullptr);
}

}  // namespace q1framework
