// Component: the pointer handlers that the container runs around the public ones. Each step may
// delete the component (a parent's child handler, the handler itself, a listener), so each step
// after a call out first checks that the component is still there.

#include "ui/component/Component.h"

namespace q1framework
{

void Component::internalMouseEnter(const MouseEvent& event)
{
    mouseOver = true;
    if (repaintOnEnterExit)
        repaint();
    mouseEnter(event);
}

void Component::internalMouseExit(const MouseEvent& event)
{
    mouseOver = false;
    if (repaintOnEnterExit)
        repaint();
    mouseExit(event);
}

void Component::internalMouseMove(const MouseEvent& event)
{
    SafePointer self(this);
    if (parent)
        parent->childMouseMove(this, event);
    if (!self)
        return;
    if (repaintOnMove)
        repaint();
    mouseMove(event);
}

void Component::internalMouseDrag(const MouseEvent& event)
{
    SafePointer self(this);
    if (parent)
        parent->childMouseDrag(this, event);
    if (!self)
        return;
    if (repaintOnMove)
        repaint();
    mouseDrag(event);
}

void Component::internalMouseDown(const MouseEvent& event)
{
    SafePointer self(this);
    ++pressCount;
    if (parent)
        parent->childMouseDown(this, event);
    if (!self)
        return;
    if (repaintOnPress)
        repaint();
    mouseDown(event);
    for (int32_t index = 0; self && index < listeners.getCount(); ++index)
        listeners[index]->componentMouseDown(this, event);
}

void Component::internalMouseUp(const MouseEvent& event)
{
    SafePointer self(this);
    --pressCount;
    if (repaintOnPress)
        repaint();
    for (int32_t index = 0; self && index < listeners.getCount(); ++index)
        listeners[index]->componentMouseUp(this, event);
    if (self && parent)
        parent->childMouseUp(this, event);
    if (self)
        mouseUp(event);
}

}  // namespace q1framework
