#include "ui/controls/ToggleButton.h"

#include "ui/lookandfeel/LookAndFeel.h"

namespace q1framework
{

ToggleButton::ToggleButton(const String& buttonText) : text(buttonText)
{
    setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
    setRepaintTriggers(true, false, false);
}

void ToggleButton::setStyle(int newStyle)
{
    if (newStyle == style)
        return;
    style = newStyle;
    repaint();
}

void ToggleButton::setOn(bool value, bool notify)
{
    if (value == on)
        return;
    on = value;
    Component* parent = getParent();
    if (on && parent && radioGroup >= 0)
        for (int index = 0; index < parent->getNumChildren(); ++index)
        {
            auto* sibling = dynamic_cast<ToggleButton*>(parent->getChild(index));
            if (sibling && sibling != this && sibling->radioGroup == radioGroup && sibling->on)
            {
                sibling->on = false;
                sibling->setPosition(0.0f, true);
            }
        }
    SafePointer self(this);
    if (notify)
    {
        for (int32_t index = 0; self && index < toggleListeners.getCount(); ++index)
            toggleListeners[index]->toggleStateChanged(this);
        if (self && getParent())
            getParent()->childValueChanged(this);
    }
    if (self)
        setPosition(on ? 1.0f : 0.0f, true);
}

void ToggleButton::setText(const String& newText)
{
    text = newText;
    repaint();
}

void ToggleButton::addListener(Listener* listener)
{
    if (listener)
        toggleListeners.addIfNotAlreadyThere(listener);
}

void ToggleButton::removeListener(Listener* listener)
{
    toggleListeners.removeFirstMatching(listener);
}

void ToggleButton::setValue(double value, bool notify)
{
    setOn(value >= 0.5, notify);
}

double ToggleButton::getValue()
{
    return on ? 1.0 : 0.0;
}

void ToggleButton::mouseDown(const MouseEvent&)
{
    if (!isEnabled())
        return;
    if (on && radioGroup >= 0)
        return;
    setOn(!on, true);
}

void ToggleButton::paint(SoftwareGraphics& graphics)
{
    if (hasImage())
    {
        AnimatableComponent::paint(graphics);
        return;
    }
    getLookAndFeel()->drawToggleButton(graphics, Rectangle(0, 0, getWidth(), getHeight()), isEnabled(),
                                       isMouseOver(), on, text, style);
}

}  // namespace q1framework
