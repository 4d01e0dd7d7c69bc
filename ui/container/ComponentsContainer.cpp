#include "ui/container/ComponentsContainer.h"

#include "render/graphics/SoftwareGraphics.h"
#include "ui/component/Component.h"

namespace q1framework
{

ComponentsContainer::ComponentsContainer(Window* windowToUse) : window(windowToUse) {}

ComponentsContainer::~ComponentsContainer()
{
    if (!root)
        return;
    root->container = nullptr;
    delete root;
}

// ---- The tree ----

void ComponentsContainer::setRootComponent(Component* newRoot, bool deleteOld, bool makeVisible)
{
    if (root)
    {
        Component* old = root;
        // The records must not outlive the tree they point into.
        old->forgetSubtree(old);
        old->container = nullptr;
        root = nullptr;
        if (deleteOld)
            delete old;
    }
    root = newRoot;
    if (!root)
        return;
    root->container = this;
    if (makeVisible)
        root->setVisible(true);
    if (scale != 1.0)
        root->scaleChanged(scale, 1.0);
}

Point ComponentsContainer::getSize() const
{
    return root ? root->getSize() : Point();
}

void ComponentsContainer::setSize(const Point& newSize)
{
    if (newSize == size)
        return;
    size = newSize;
    if (root)
        root->setSize(newSize);
    invalidateAll();
}

void ComponentsContainer::setScale(double newScale)
{
    if (newScale == scale)
        return;
    const double oldScale = scale;
    scale = newScale;
    if (root)
        root->scaleChanged(newScale, oldScale);
}

// ---- Repainting ----

void ComponentsContainer::invalidate(const Rectangle& area)
{
    const Rectangle inside = area.getIntersection(Rectangle(Point(), size));
    if (!inside.isEmpty())
    {
        dirty.addRectangle(inside);
        presentDirty.addRectangle(inside);
    }
    if (listener)
        listener->areaInvalidated(area);
}

void ComponentsContainer::invalidateAll()
{
    invalidate(Rectangle(Point(), size));
}

void ComponentsContainer::scrollArea(const Rectangle& area, int dx, int dy)
{
    dirty.moveRectangle(area, dx, dy);
    const Rectangle destination = area.getIntersection(area.translated(Point(dx, dy)));
    const Rectangle source = destination.translated(Point(-dx, -dy));
    scrollScratch.clear();
    scrollScratch.addRectangle(area);
    scrollScratch.subtractRectangle(destination);
    scrollScratch.getRectangles(rectangles);
    if (copyForScroll)
    {
        if (listener && !destination.isEmpty())
            listener->areaCopied(source, destination.getPosition());
        for (const Rectangle& strip : rectangles)
            invalidate(strip);
        return;
    }
    for (const Rectangle& strip : rectangles)
        invalidate(strip);
    if (listener)
    {
        if (!destination.isEmpty())
            listener->areaMoved(source, destination.getPosition());
        listener->areaInvalidated(area);
    }
    presentDirty.addRectangle(area);
}

bool ComponentsContainer::paint(void* pixels, const Point& bufferSize, int stride, bool clearAfterwards)
{
    if (dirty.isEmpty())
        return false;
    if (root && pixels)
    {
        SoftwareGraphics graphics(static_cast<uint8_t*>(pixels), bufferSize.x, bufferSize.y, stride);
        graphics.setScale(scale);
        PaintContext context(graphics, dirty, paintStorage);
        Component::paintTree(*root, context, Rectangle(Point(), bufferSize));
    }
    if (clearAfterwards)
        clearDirty();
    return true;
}

void ComponentsContainer::clearDirty()
{
    dirty.clear();
    presentDirty.clear();
}

const Region& ComponentsContainer::getPresentRegion()
{
    presentDirty.getIntersection(Rectangle(Point(), getSize()), scrollScratch);
    return scrollScratch;
}

// ---- Frames ----

void ComponentsContainer::tick()
{
    if (root)
        tickWalk(*root);
}

void ComponentsContainer::tickWalk(Component& component)
{
    if (!component.isVisible())
        return;
    Component::SafePointer alive(&component);
    component.tick();
    // A tick may add, remove or delete children: the count is read afresh each time, and a child
    // that left its place leaves the next one there.
    for (int32_t index = 0; alive && index < component.children.getCount();)
    {
        Component* child = component.children[index];
        tickWalk(*child);
        if (alive && index < component.children.getCount() && component.children[index] == child)
            ++index;
    }
}

void ComponentsContainer::beginFrame()
{
    if (root)
        root->beginFrame();
}

void ComponentsContainer::endFrame()
{
    if (root)
        root->endFrame();
}

// ---- Hit testing, references, focus and keys ----

Component* ComponentsContainer::getComponentAt(const Point& position)
{
    if (!root || position.x < 0 || position.y < 0)
        return nullptr;
    return root->getComponentAt(position);
}

void ComponentsContainer::forgetComponent(Component* component)
{
    if (pendingPopup == component)
        pendingPopup = nullptr;
    if (focused == component)
        focused = nullptr;
    for (PointerState& state : pointers)
    {
        if (state.hoverComponent == component)
            state.hoverComponent = nullptr;
        if (state.pressedComponent == component)
            state.pressedComponent = nullptr;
        if (state.otherComponent == component)
            state.otherComponent = nullptr;
    }
    // A drag whose source goes away ends; its data belonged to the source.
    if (dragSource == component)
        dragSource = nullptr;
    allowedComponents.removeFirstMatching(component);
}

namespace
{
// The keys held now, in every container of the process.
Array<int64_t>& heldKeys()
{
    static Array<int64_t> keys;
    return keys;
}
}

bool ComponentsContainer::keyDown(int64_t code, uint32_t nativeCode)
{
    heldKeys().addIfNotAlreadyThere(code);
    KeyEvent key;
    key.code = code;
    key.nativeCode = nativeCode;
    if (root && root->globalKeyPressed(key))
        return true;
    for (Component::SafePointer target(focused ? focused : root); target;)
    {
        if (target->keyPressed(key))
            return true;
        target = target ? target->getParent() : nullptr;
    }
    return false;
}

bool ComponentsContainer::keyUp(int64_t code, uint32_t nativeCode)
{
    heldKeys().removeFirstMatching(code);
    KeyEvent key;
    key.code = code;
    key.nativeCode = nativeCode;
    if (root && root->globalKeyReleased(key))
        return true;
    for (Component::SafePointer target(focused ? focused : root); target;)
    {
        if (target->keyReleased(key))
            return true;
        target = target ? target->getParent() : nullptr;
    }
    return false;
}

bool ComponentsContainer::isKeyDown(int64_t code)
{
    return heldKeys().contains(code);
}

void ComponentsContainer::setFocus(Component* component)
{
    if (component == focused)
        return;
    Component::SafePointer old(focused);
    Component::SafePointer next(component);
    focused = component;
    if (old)
    {
        old->focusLost();
        for (int32_t index = 0; old && index < old->listeners.getCount(); ++index)
            old->listeners[index]->componentFocusLost(old.get(), next.get());
    }
    if (next)
        next->focusGained();
}

Component* ComponentsContainer::focusNext()
{
    if (!root)
        return nullptr;
    focusOrder.clear();
    root->collectDescendants(focusOrder);
    const int32_t current = focused ? focusOrder.getFirstIndexOf(focused) : -1;
    const int32_t start = current < 0 ? 0 : current;
    Component* found = nullptr;
    for (int32_t index = start + 1; !found && index < focusOrder.getCount(); ++index)
        if (focusOrder[index]->wantsFocus())
            found = focusOrder[index];
    for (int32_t index = 0; !found && index < start; ++index)
        if (focusOrder[index]->wantsFocus())
            found = focusOrder[index];
    if (found)
        found->grabFocus();
    return found;
}

}  // namespace q1framework
