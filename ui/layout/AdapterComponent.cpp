#include "ui/layout/AdapterComponent.h"

#include "render/graphics/SoftwareGraphics.h"

namespace q1framework
{

namespace
{
// The tap count of the scaled blit: from the scale, as a window's scaled frame uses.
constexpr int resamplingQuality = -1;
}

AdapterComponent::AdapterComponent() : innerContainer(nullptr)
{
    innerContainer.setListener(this);
}

AdapterComponent::~AdapterComponent()
{
    if (inner)
        inner->removeListener(this);
    innerContainer.setRootComponent(nullptr, true, false);
}

void AdapterComponent::setInnerComponent(Component* newInner)
{
    if (inner)
        inner->removeListener(this);
    inner = newInner;
    innerContainer.setRootComponent(newInner, true, true);
    if (inner)
    {
        innerContainer.setSize(inner->getSize());
        inner->addListener(this);
    }
    makeInnerImage();
    repaint();
}

void AdapterComponent::makeInnerImage()
{
    innerImage = inner ? Image(inner->getSize(), true) : Image();
    innerContainer.invalidateAll();
}

Point AdapterComponent::mapToInner(const Point& local) const
{
    double x = 1.0, y = 1.0;
    getScaleToInner(&x, &y);
    return Point(static_cast<int>(local.x * x), static_cast<int>(local.y * y));
}

Point AdapterComponent::mapFromInner(const Point& innerPosition) const
{
    double x = 1.0, y = 1.0;
    getScaleToInner(&x, &y);
    return Point(static_cast<int>(innerPosition.x / x), static_cast<int>(innerPosition.y / y));
}

void AdapterComponent::getScaleToInner(double* x, double* y) const
{
    const bool scalable = inner && getWidth() > 0 && getHeight() > 0;
    if (x)
        *x = scalable ? static_cast<double>(inner->getWidth()) / getWidth() : 1.0;
    if (y)
        *y = scalable ? static_cast<double>(inner->getHeight()) / getHeight() : 1.0;
}

RectangleF AdapterComponent::mapRectFromInner(const Rectangle& innerArea) const
{
    double x = 1.0, y = 1.0;
    getScaleToInner(&x, &y);
    const double left = innerArea.x / x;
    const double top = innerArea.y / y;
    return RectangleF(left, top, innerArea.getRight() / x - left, innerArea.getBottom() / y - top);
}

Mouse::Cursor AdapterComponent::getCursor()
{
    Component* under = innerContainer.getComponentAt(mousePosition);
    return under ? under->getCursor() : Mouse::Cursor(Mouse::arrowCursor);
}

void AdapterComponent::forward(int kind, const MouseEvent& event, int button)
{
    mousePosition = mapToInner(Point(event.x, event.y));
    // The inner tree's pixels are not the screen's: its events keep the outer event's screen
    // position, so that a drag measured on the screen is the same at every scale.
    const Point screen(event.screenX, event.screenY);
    innerContainer.sendMouseEvent(0, kind, mousePosition, button, event.clickCount, event.wheelX, event.wheelY,
                                  &screen);
}

void AdapterComponent::mouseMove(const MouseEvent& event)
{
    forward(ComponentsContainer::moveEvent, event, 0);
}

void AdapterComponent::mouseDrag(const MouseEvent& event)
{
    forward(ComponentsContainer::moveEvent, event, 0);
}

void AdapterComponent::mouseDown(const MouseEvent& event)
{
    forward(ComponentsContainer::pressEvent, event, static_cast<int>(event.button));
}

void AdapterComponent::mouseUp(const MouseEvent& event)
{
    // The event names the button of the last press, not the one released: every button the inner
    // record still holds and the outer one no longer does is released.
    SafePointer self(this);
    const uint32_t released = innerContainer.getPointer(0).heldButtons & ~event.heldButtons;
    for (uint32_t button = MouseEvent::leftButton; self && button <= MouseEvent::rightButton; button <<= 1)
        if ((released & button) != 0)
            forward(ComponentsContainer::releaseEvent, event, static_cast<int>(button));
}

void AdapterComponent::mouseEnter(const MouseEvent& event)
{
    forward(ComponentsContainer::enterEvent, event, 0);
}

void AdapterComponent::mouseExit(const MouseEvent&)
{
    mousePosition = Point(-1, -1);
    innerContainer.sendMouseEvent(0, ComponentsContainer::exitEvent, mousePosition, 0, 0, 0.0f, 0.0f);
}

bool AdapterComponent::mouseWheel(const MouseEvent& event)
{
    forward(ComponentsContainer::wheelEvent, event, 0);
    return true;
}

void AdapterComponent::tick()
{
    if (!inner)
        return;
    innerContainer.setWindow(getWindow());
    innerContainer.tick();
}

void AdapterComponent::paint(SoftwareGraphics& graphics)
{
    if (!inner || innerImage.isEmpty())
        return;
    innerContainer.paint(innerImage.getPixelPointer(0, 0), innerImage.getSize(), innerImage.getStride(), true);
    if (innerImage.getSize() == getSize())
    {
        graphics.drawImage(innerImage, Point(), true, 255);
        return;
    }
    if (scaledImage.getSize() != getSize())
        scaledImage = Image(getSize(), true);
    const Rectangle clip = graphics.getClip(true).getIntersection(scaledImage.getBounds());
    resampler.resample(innerImage, scaledImage, &clip, 1, resamplingQuality);
    graphics.drawImagePart(scaledImage, clip, clip.getPosition(), true, 255);
}

void AdapterComponent::areaInvalidated(const Rectangle& area)
{
    if (!inner)
        return;
    if (innerImage.getSize() == getSize())
    {
        repaint(area);
        return;
    }
    repaint(ImageResampler::getReachedArea(area, innerImage.getSize(), getSize(), resamplingQuality));
}

void AdapterComponent::areaMoved(const Rectangle& source, const Point& destination)
{
    innerImage.moveRect(source, destination);
}

void AdapterComponent::areaCopied(const Rectangle& source, const Point& destination)
{
    innerImage.moveRect(source, destination);
}

void AdapterComponent::componentResized(Component* component)
{
    if (component != inner)
        return;
    innerContainer.setSize(inner->getSize());
    makeInnerImage();
}

}  // namespace q1framework
