#include "ui/controls/Slider.h"

#include "ui/lookandfeel/LookAndFeel.h"

#include <cmath>

namespace q1framework
{

namespace
{
constexpr double fineFactor = 0.1;
}

Slider::Slider()
{
    setWantsFocus(true);
}

void Slider::setValue(double newValue, bool notify)
{
    if (std::isnan(newValue))
        return;
    newValue = newValue < minimum ? minimum : newValue > maximum ? maximum : newValue;
    if (newValue == value)
        return;
    value = newValue;
    setPosition(static_cast<float>(getProportion(value)), true);
    if (notify)
        notifyValueChanged();
}

void Slider::setRange(double newMinimum, double newMaximum, bool notify)
{
    minimum = newMinimum;
    maximum = newMaximum;
    SafePointer self(this);
    setValue(value, notify);
    if (self)
        setPosition(static_cast<float>(getProportion(value)), true);
}

double Slider::getProportion(double forValue) const
{
    return (forValue - minimum) / (maximum - minimum);
}

void Slider::notifyValueChanged()
{
    SafePointer self(this);
    for (int32_t index = 0; self && index < sliderListeners.getCount(); ++index)
        sliderListeners[index]->valueChanged(this);
    if (self && getParent())
        getParent()->childValueChanged(this);
}

void Slider::addListener(Listener* listener)
{
    if (listener)
        sliderListeners.addIfNotAlreadyThere(listener);
}

void Slider::removeListener(Listener* listener)
{
    sliderListeners.removeFirstMatching(listener);
}

bool Slider::isVertical()
{
    return getHeight() > getWidth();
}

Rectangle Slider::getThumbBounds()
{
    const double proportion = getFramePosition();
    if (isVertical())
        return Rectangle(0, static_cast<int>((1.0 - proportion) * (getHeight() - getWidth())), getWidth(), getWidth());
    return Rectangle(static_cast<int>((getWidth() - getHeight()) * proportion), 0, getHeight(), getHeight());
}

bool Slider::isThumbHit()
{
    return getThumbBounds().contains(hoverPosition);
}

void Slider::mouseMove(const MouseEvent& event)
{
    hoverPosition = Point(event.x, event.y);
    const Mouse::Cursor wanted(isThumbHit() ? Mouse::pointingHandCursor : Mouse::arrowCursor);
    if (wanted == getCursor())
        return;
    setCursor(wanted);
    repaint();
}

void Slider::mouseExit(const MouseEvent&)
{
    hoverPosition = Point(-1, -1);
    repaint();
}

void Slider::mouseDown(const MouseEvent& event)
{
    if (!isEnabled())
        return;
    SafePointer self(this);
    if (isModifierKeyDown(KeyEvent::control))
    {
        setValue(defaultValue, true);
        return;
    }
    dragActive = isThumbHit();
    if (!dragActive)
    {
        setValue((event.x - getHeight() * 0.5) / (getWidth() - getHeight()), true);
        if (!self)
            return;
        dragActive = true;
    }
    dragStartValue = getValue();
    hoverPosition = Point(event.x, event.y);
    lockMouse();
    for (int32_t index = 0; self && index < sliderListeners.getCount(); ++index)
        sliderListeners[index]->dragStarted(this);
    if (self)
        repaint();
}

void Slider::mouseDrag(const MouseEvent& event)
{
    if (!isEnabled() || !dragActive)
        return;
    double change = isVertical() ? -static_cast<double>(event.y - event.downY) / getHeight()
                                 : static_cast<double>(event.x - event.downX) / getWidth();
    if (isShiftDown())
        change *= fineFactor;
    setValue(dragStartValue + change, !silentDrag);
}

void Slider::mouseUp(const MouseEvent&)
{
    // A drag that has begun ends, even if the slider was disabled meanwhile.
    if (!dragActive)
        return;
    SafePointer self(this);
    for (int32_t index = 0; silentDrag && self && index < sliderListeners.getCount(); ++index)
        sliderListeners[index]->valueChanged(this);
    for (int32_t index = 0; self && index < sliderListeners.getCount(); ++index)
        sliderListeners[index]->dragEnded(this);
    if (self)
        repaint();
}

bool Slider::mouseWheel(const MouseEvent& event)
{
    if (!isEnabled())
        return false;
    if (event.wheelY == 0.0f)
        return true;
    double step = wheelStep;
    if (isShiftDown())
        step *= fineFactor;
    setValue(getValue() + (event.wheelY > 0.0f ? step : -step), true);
    return true;
}

bool Slider::keyPressed(const KeyEvent& key)
{
    if (key.code == KeyEvent::control && isPressed())
    {
        setValue(defaultValue, true);
        return true;
    }
    return AnimatableComponent::keyPressed(key);
}

void Slider::paint(SoftwareGraphics& graphics)
{
    if (hasImage())
    {
        AnimatableComponent::paint(graphics);
        return;
    }
    getLookAndFeel()->drawSlider(graphics, Rectangle(0, 0, getWidth(), getHeight()), getThumbBounds(),
                                 getFramePosition(), isVertical(), isEnabled(), isMouseOver() && isThumbHit());
}

}  // namespace q1framework
