// ComponentsContainer: how pointer events travel to components, drag and drop inside the tree,
// and files dragged in from outside.
//
// A record is hovering while no button is held: its hover component follows the component under
// the pointer, with exit and enter around every change. A press captures it: the hover component
// is kept until the release that frees the last button, so it receives every drag and that
// release, wherever the pointer is. Handlers may delete components, their own included; the
// records are cleared by forgetComponent, and whatever this code holds across a call out is held
// by a SafePointer.

#include "ui/component/Component.h"
#include "ui/container/ComponentsContainer.h"

namespace q1framework
{

namespace
{
bool hasButtons(const ComponentsContainer::PointerState& state)
{
    return state.heldButtons != 0;
}

// A position relative to the root, made local to component. The same as going through the
// screen (screenToLocal of the event's screen position) when there is a window, and right
// without one too.
Point localTo(Component& component, const Point& position)
{
    return position - component.getAbsoluteBounds(false).getPosition();
}
}

void ComponentsContainer::sendMouseEvent(int pointer, int kind, const Point& position, int button, int clickCount,
                                         float wheelX, float wheelY, const Point* screenPosition)
{
    if (pointer < 0 || pointer >= pointerCount)
        return;
    PointerState& state = pointers[pointer];
    if (kind == exitEvent)
    {
        for (PointerState& record : pointers)
            if (record.hoverComponent && (!hasButtons(record) || !record.pressedComponent))
            {
                record.otherComponent = nullptr;
                record.hoverComponent->internalMouseExit(record);
                record.hoverComponent = nullptr;
            }
        return;
    }

    Component::SafePointer hit(getComponentAt(position));
    if (!allowedComponents.isEmpty() && !allowedComponents.contains(hit.get()))
    {
        applyCursor(Mouse::Cursor(Mouse::dragRefusedCursor));
        return;
    }
    Component* anchor = hasButtons(state) && state.pressedComponent ? state.pressedComponent : hit.get();
    const Point origin = anchor ? anchor->getAbsoluteBounds(false).getPosition() : Point();
    const Point screen = screenPosition ? *screenPosition : root ? root->localToScreen(position) : Point();
    state.deltaX = kind == pressEvent ? 0 : screen.x - state.screenX;
    state.deltaY = kind == pressEvent ? 0 : screen.y - state.screenY;
    state.screenX = screen.x;
    state.screenY = screen.y;
    state.x = position.x - origin.x;
    state.y = position.y - origin.y;
    if (kind == pressEvent)
    {
        state.clickCount = clickCount;
        state.button = static_cast<uint32_t>(button);
    }
    state.wheelX = wheelX;
    state.wheelY = wheelY;
    if (!hasButtons(state))
    {
        if (state.hoverComponent != hit.get())
            changeHover(state, hit.get());
        state.downX = state.x;
        state.downY = state.y;
        state.downScreenX = state.screenX;
        state.downScreenY = state.screenY;
    }

    switch (kind)
    {
    case wheelEvent:
        for (Component::SafePointer target(state.hoverComponent); target;)
        {
            if (target->mouseWheel(state) || !target)
                break;
            state.x += target->getX();
            state.y += target->getY();
            target = target->getParent();
        }
        break;
    case pressEvent:
        if (pendingPopup)
        {
            Component* popup = pendingPopup;
            pendingPopup = nullptr;
            popup->popupDismissed(hit.get());
        }
        if (!hasButtons(state))
            state.pressedComponent = hit.get();
        if ((state.heldButtons & state.button) == 0 || clickCount > 1)
        {
            state.heldButtons |= state.button;
            if (state.hoverComponent)
                state.hoverComponent->internalMouseDown(state);
        }
        break;
    case moveEvent:
        if (dragSource)
        {
            Component* target = findDragTarget(hit.get());
            const bool accepted = target && target->isInterestedInDrag(dragSource, hit.get(), dragData,
                                                                      localTo(*target, position));
            applyCursor(Mouse::Cursor(accepted ? Mouse::dragCopyCursor : Mouse::dragRefusedCursor));
        }
        if (state.hoverComponent)
        {
            if (hasButtons(state))
                state.hoverComponent->internalMouseDrag(state);
            else
                state.hoverComponent->internalMouseMove(state);
        }
        break;
    case releaseEvent:
        if ((state.heldButtons & static_cast<uint32_t>(button)) != 0)
        {
            state.heldButtons &= ~static_cast<uint32_t>(button);
            if (state.hoverComponent)
                state.hoverComponent->internalMouseUp(state);
            if (!hasButtons(state))
            {
                // The window ends the pointer lock with the release of the last button.
                mouseLockRequested = false;
                // The release ends the capture: the pointer may be over something else by now.
                hit = getComponentAt(position);
                if (hit.get() != state.hoverComponent)
                    changeHover(state, hit.get());
            }
        }
        if (!hasButtons(state) && dragSource)
            dropDraggedItem(hit.get(), position);
        break;
    default:
        break;
    }

    if (state.hoverComponent && !dragSource)
        applyCursor(state.hoverComponent->getCursor());
}

void ComponentsContainer::changeHover(PointerState& state, Component* entered)
{
    Component::SafePointer next(entered);
    Component::SafePointer previous(state.hoverComponent);
    state.otherComponent = entered;
    if (previous)
        previous->internalMouseExit(state);
    state.otherComponent = previous.get();
    state.hoverComponent = next.get();
    if (next)
        next->internalMouseEnter(state);
}

Component* ComponentsContainer::findDragTarget(Component* component)
{
    while (component && !component->isDragTarget())
        component = component->getParent();
    return component;
}

void ComponentsContainer::dropDraggedItem(Component* hit, const Point& position)
{
    if (!hit)
    {
        dragSource = nullptr;
        return;
    }
    Component* source = dragSource;
    dragSource = nullptr;
    Component::SafePointer dropped(hit);
    if (Component* target = findDragTarget(hit))
    {
        const Point local = localTo(*target, position);
        Component::SafePointer receiver(target);
        if (target->isInterestedInDrag(source, hit, dragData, local) && receiver)
            receiver->itemDropped(source, hit, dragData, local);
    }
    dragSource = nullptr;
    if (dropped)
        applyCursor(dropped->cursor);
}

Component* ComponentsContainer::getMouseComponent(bool pressed) const
{
    const PointerState& state = pointers[0];
    if (!pressed)
        return state.hoverComponent;
    return hasButtons(state) ? state.pressedComponent : nullptr;
}

bool ComponentsContainer::startDrag(Component* source, void* data, const Mouse::Cursor& cursor)
{
    if (dragSource || !source)
        return false;
    dragSource = source;
    dragData = data;
    dragCursor = cursor;
    applyCursor(cursor);
    return true;
}

bool ComponentsContainer::isInterestedInFiles(const Point& position, const Array<String>& files)
{
    for (Component::SafePointer target(getComponentAt(position)); target;)
    {
        if (target->isInterestedInFiles(localTo(*target, position), files))
            return true;
        target = target ? target->getParent() : nullptr;
    }
    return false;
}

bool ComponentsContainer::filesDropped(const Point& position, const Array<String>& files)
{
    for (Component::SafePointer target(getComponentAt(position)); target;)
    {
        const Point local = localTo(*target, position);
        if (target->isInterestedInFiles(local, files) && target && target->filesDropped(local, files))
            return true;
        target = target ? target->getParent() : nullptr;
    }
    return false;
}

}  // namespace q1framework
