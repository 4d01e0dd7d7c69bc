#include "ui/component/Component.h"

#include "ui/container/ComponentsContainer.h"
#include "ui/lookandfeel/LookAndFeel.h"

#include <cxxabi.h>
#include <cstdlib>
#include <typeinfo>

namespace q1framework
{

// ---- SafePointer ----

Component::SafePointer::SafePointer(Component* target)
{
    attach(target);
}

Component::SafePointer& Component::SafePointer::operator=(const SafePointer& other)
{
    return *this = other.component;
}

Component::SafePointer& Component::SafePointer::operator=(Component* other)
{
    if (other != component)
    {
        detach();
        attach(other);
    }
    return *this;
}

Component::SafePointer::~SafePointer()
{
    detach();
}

void Component::SafePointer::attach(Component* target)
{
    component = target;
    if (target)
    {
        next = target->safePointers;
        target->safePointers = this;
    }
}

void Component::SafePointer::detach()
{
    if (!component)
        return;
    for (SafePointer** link = &component->safePointers; *link; link = &(*link)->next)
        if (*link == this)
        {
            *link = next;
            break;
        }
    component = nullptr;
    next = nullptr;
}

// ---- Life ----

Component::Component() = default;

Component::~Component()
{
    // Whoever holds a SafePointer learns of the deletion before anything else runs.
    while (safePointers)
    {
        SafePointer* pointer = safePointers;
        safePointers = pointer->next;
        pointer->component = nullptr;
        pointer->next = nullptr;
    }
    for (int32_t index = 0; index < listeners.getCount(); ++index)
        listeners[index]->componentDeleted(this);
    if (parent)
        parent->removeChild(this, false);
    else
        forgetSubtree(this);
    for (int32_t index = 0; index < children.getCount(); ++index)
        forgetSubtree(children[index]);
    while (!children.isEmpty())
    {
        Component* child = children.getLast();
        children.removeAt(children.getCount() - 1);
        child->parent = nullptr;
        delete child;
    }
    delete attachment;
}

// ---- Virtual defaults ----

void Component::setValue(double, bool) {}
double Component::getValue() { return 0.0; }

void Component::refresh()
{
    tick();
    repaint();
}

void Component::setBounds(int x, int y, int width, int height, bool notify)
{
    setBounds(Rectangle(x, y, width, height), notify);
}

void Component::setBounds(const Rectangle& newBounds, bool notify)
{
    const bool wasMoved = newBounds.x != bounds.x || newBounds.y != bounds.y;
    const bool wasSized = newBounds.w != bounds.w || newBounds.h != bounds.h;
    if (!wasMoved && !wasSized)
        return;
    repaint();
    bounds = newBounds;
    SafePointer self(this);
    if (wasMoved && notify)
    {
        moved();
        if (self && parent)
            parent->childMoved(this);
    }
    if (!self)
        return;
    if (wasSized)
    {
        resized();
        if (!self)
            return;
        if (!notify)
        {
            repaint();
            return;
        }
        if (parent)
            parent->childResized(this);
        if (!self)
            return;
    }
    repaint();
    if (!notify)
        return;
    for (int32_t index = 0; wasSized && self && index < listeners.getCount(); ++index)
        listeners[index]->componentResized(this);
    for (int32_t index = 0; wasMoved && self && index < listeners.getCount(); ++index)
        listeners[index]->componentMoved(this);
}

Rectangle Component::getPaintBounds()
{
    return Rectangle(bounds.x - paintMargin, bounds.y - paintMargin, bounds.w + 2 * paintMargin,
                     bounds.h + 2 * paintMargin);
}

Mouse::Cursor Component::getCursor() { return cursor; }
void Component::mouseMove(const MouseEvent&) {}
void Component::mouseDrag(const MouseEvent&) {}
void Component::mouseDown(const MouseEvent&) {}
void Component::popupDismissed(Component*) {}
void Component::mouseUp(const MouseEvent&) {}
void Component::mouseEnter(const MouseEvent&) {}
void Component::mouseExit(const MouseEvent&) {}
bool Component::mouseWheel(const MouseEvent&) { return false; }

void Component::startDrag(void* data, const Mouse::Cursor& dragCursor)
{
    if (ComponentsContainer* owner = getContainer())
        owner->startDrag(this, data, dragCursor);
}

void Component::itemDropped(Component*, Component*, void*, Point) {}
bool Component::isInterestedInDrag(Component*, Component*, void*, Point) { return true; }
bool Component::filesDropped(Point, const Array<String>&) { return false; }
bool Component::isInterestedInFiles(Point, const Array<String>&) { return false; }
bool Component::isDragTarget() { return false; }

bool Component::keyPressed(const KeyEvent& key)
{
    if (key.code != KeyEvent::tab)
        return false;
    if (ComponentsContainer* owner = getContainer())
        owner->focusNext();
    return true;
}

bool Component::keyReleased(const KeyEvent&) { return false; }
bool Component::globalKeyPressed(const KeyEvent&) { return false; }
bool Component::globalKeyReleased(const KeyEvent&) { return false; }

void Component::grabFocus()
{
    ComponentsContainer* owner = getContainer();
    if (wantsFocus() && owner && owner->getFocusedComponent() != this)
        owner->setFocus(this);
}

void Component::focusGained() { repaint(); }
void Component::focusLost() { repaint(); }
bool Component::isPopup() { return false; }

void Component::setVisible(bool visible)
{
    if (visible == isVisible())
        return;
    setFlag(flagVisible, visible);
    SafePointer self(this);
    for (int32_t index = 0; self && index < listeners.getCount(); ++index)
        listeners[index]->componentVisibilityChanged(this);
    if (!self)
        return;
    // repaint refuses hidden components, and a component just hidden must still clear its area.
    flags |= flagVisible;
    repaint();
    setFlag(flagVisible, visible);
}

void Component::setOverlay(bool overlay)
{
    if (isOverlay() == overlay)
        return;
    flags = overlay ? (flags | flagOverlay) : (flags & flagOverlay);
    repaint();
}

bool Component::isOverlay() { return (flags & flagOverlay) != 0; }
void Component::tick() {}
void Component::paint(SoftwareGraphics&) {}
void Component::paintOverChildren(SoftwareGraphics&) {}
void Component::moved() {}
void Component::resized() {}

void Component::childValueChanged(Component* child)
{
    if (parent)
        parent->childValueChanged(child);
}

void Component::childMouseDown(Component* child, const MouseEvent& event)
{
    if (parent)
        parent->childMouseDown(child, event);
}

void Component::childMouseMove(Component* child, const MouseEvent& event)
{
    if (parent)
        parent->childMouseMove(child, event);
}

void Component::childMouseDrag(Component* child, const MouseEvent& event)
{
    if (parent)
        parent->childMouseDrag(child, event);
}

void Component::childMouseUp(Component* child, const MouseEvent& event)
{
    if (parent)
        parent->childMouseUp(child, event);
}

void Component::childMoved(Component*) {}
void Component::childResized(Component*) {}
void Component::childRemoved(Component*) {}
void Component::lookAndFeelChanged() {}
void Component::parentChanged() {}

String Component::getTypeName()
{
    const char* mangled = typeid(*this).name();
    int status = 0;
    char* readable = abi::__cxa_demangle(mangled, nullptr, nullptr, &status);
    String name(status == 0 && readable ? readable : mangled);
    std::free(readable);
    return name;
}

void Component::scaleChanged(double, double) {}
void Component::beginFrame() {}
void Component::endFrame() {}
void Component::afterRender(RenderingContext&) {}

// ---- Geometry ----

void Component::setX(int x) { setBounds(Rectangle(x, bounds.y, bounds.w, bounds.h), true); }
void Component::setY(int y) { setBounds(Rectangle(bounds.x, y, bounds.w, bounds.h), true); }
void Component::setWidth(int width) { setBounds(Rectangle(bounds.x, bounds.y, width, bounds.h), true); }
void Component::setHeight(int height) { setBounds(Rectangle(bounds.x, bounds.y, bounds.w, height), true); }
void Component::setSize(int width, int height) { setBounds(Rectangle(bounds.x, bounds.y, width, height), true); }

void Component::setPositionAndNotify(int x, int y, bool notify)
{
    setBounds(Rectangle(x, y, bounds.w, bounds.h), notify);
}

void Component::setPosition(const Point& position)
{
    if (position == bounds.getPosition())
        return;
    const Point change = position - bounds.getPosition();
    bounds.x = position.x;
    bounds.y = position.y;
    if (ComponentsContainer* owner = getContainer())
        owner->scrollArea(getAbsoluteBounds(true), change.x, change.y);
    SafePointer self(this);
    moved();
    for (int32_t index = 0; self && index < listeners.getCount(); ++index)
        listeners[index]->componentMoved(this);
}

Rectangle Component::getAbsoluteBounds(bool clipToAncestors)
{
    Rectangle area = bounds;
    for (Component* ancestor = parent; ancestor; ancestor = ancestor->parent)
    {
        if (clipToAncestors)
            area = area.getIntersection(Rectangle(0, 0, ancestor->bounds.w, ancestor->bounds.h));
        area = area.translated(ancestor->bounds.getPosition());
    }
    return area;
}

Rectangle Component::getAbsolutePaintBounds(bool clipToAncestors)
{
    Rectangle area = getPaintBounds();
    for (Component* ancestor = parent; ancestor; ancestor = ancestor->parent)
    {
        if (clipToAncestors)
            area = area.getIntersection(Rectangle(0, 0, ancestor->bounds.w, ancestor->bounds.h));
        area = area.translated(ancestor->bounds.getPosition());
    }
    return area;
}

Point Component::localToScreen(const Point& local)
{
    ComponentsContainer* owner = getContainer();
    if (!owner || !owner->getWindow())
        return Point();
    return getAbsoluteBounds(false).getPosition() + owner->getWindowScreenPosition() + local;
}

Point Component::screenToLocal(const Point& screen)
{
    return screen - localToScreen(Point());
}

Rectangle Component::getScreenBounds(const Rectangle& local)
{
    ComponentsContainer* owner = getContainer();
    if (!owner || !owner->getWindow())
        return local;
    return local.translated(getAbsoluteBounds(false).getPosition() + owner->getWindowScreenPosition());
}

// ---- State ----

void Component::setEnabled(bool enabled, bool repaintNow)
{
    if (enabled == isEnabled())
        return;
    setFlag(flagEnabled, enabled);
    if (repaintNow)
        repaint();
}

bool Component::isShowing() const
{
    return isVisible() && (!parent || parent->isVisible());
}

void Component::setRepaintTriggers(bool enterExit, bool move, bool press)
{
    repaintOnEnterExit = enterExit;
    repaintOnMove = move;
    repaintOnPress = press;
}

void Component::setCursor(const Mouse::Cursor& newCursor)
{
    cursor = newCursor;
    if (mouseOver)
        if (ComponentsContainer* owner = getContainer())
            owner->applyCursor(cursor);
}

void Component::setFlag(uint32_t flag, bool on)
{
    flags = on ? (flags | flag) : (flags & ~flag);
}

Colour Component::getColour(int id) const
{
    const Colour* colour = colours.find(id);
    return colour ? *colour : Colour(0, 0, 0, 255);
}

void Component::setAttachment(Attachment* newAttachment, uint64_t userData)
{
    if (newAttachment != attachment)
        delete attachment;
    attachment = newAttachment;
    attachmentData = userData;
}

void Component::addListener(Listener* listener)
{
    if (listener)
        listeners.addIfNotAlreadyThere(listener);
}

void Component::removeListener(Listener* listener)
{
    listeners.removeFirstMatching(listener);
}

// ---- Services through the root ----

ComponentsContainer* Component::getContainer()
{
    return getRootComponent()->container;
}

Window* Component::getWindow()
{
    ComponentsContainer* owner = getContainer();
    return owner ? owner->getWindow() : nullptr;
}

double Component::getScale()
{
    ComponentsContainer* owner = getContainer();
    return owner ? owner->getScale() : 1.0;
}

bool Component::hasFocus()
{
    ComponentsContainer* owner = getContainer();
    return owner && owner->getFocusedComponent() == this;
}

void Component::releaseFocus()
{
    ComponentsContainer* owner = getContainer();
    if (owner && owner->getFocusedComponent() == this)
        owner->setFocus(nullptr);
}

bool Component::isModifierKeyDown(int64_t keyCode)
{
    return getContainer() && ComponentsContainer::isKeyDown(keyCode);
}

bool Component::isAnyModifierDown()
{
    return isModifierKeyDown(KeyEvent::alt) || isModifierKeyDown(KeyEvent::control)
        || isModifierKeyDown(KeyEvent::shift);
}

void Component::lockMouse()
{
    if (ComponentsContainer* owner = getContainer())
        owner->setMouseLocked(true);
}

LookAndFeel* Component::getLookAndFeel()
{
    return lookAndFeel ? lookAndFeel : &LookAndFeel::getDefault();
}

}  // namespace q1framework
