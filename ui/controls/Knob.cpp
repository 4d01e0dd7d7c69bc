#include "ui/controls/Knob.h"

#include "ui/lookandfeel/LookAndFeel.h"

#include <cmath>

namespace q1framework
{

namespace
{
constexpr double fineFactor = 0.1;
}

Knob::Knob()
{
    setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
}

void Knob::setSecondaryValue(double secondary)
{
    if (secondary == secondaryValue)
        return;
    secondaryValue = secondary;
    repaint();
}

void Knob::mouseMove(const MouseEvent&)
{
    // The whole knob is the handle: its cursor does not follow a thumb.
}

void Knob::mouseDown(const MouseEvent& event)
{
    if (!isEnabled())
        return;
    dragOrigin = 0;
    fineMode = isShiftDown();
    const bool doubleClickReset = event.clickCount == 2 && (resetMode & resetOnDoubleClick) != 0;
    const bool controlClickReset = event.clickCount == 1 && (resetMode & resetOnControlClick) != 0
        && isModifierKeyDown(KeyEvent::control);
    SafePointer self(this);
    if (doubleClickReset || controlClickReset)
        setValue(defaultValue, true);
    if (!self)
        return;
    lockMouse();
    dragStartValue = getValue();
}

void Knob::mouseDrag(const MouseEvent& event)
{
    if (!isEnabled())
        return;
    const int travel = event.y - event.downY;
    if (isShiftDown() != fineMode)
    {
        fineMode = !fineMode;
        dragStartValue = getValue();
        dragOrigin = travel;
        return;
    }
    double change = (dragOrigin - travel) * sensitivity;
    if (fineMode)
        change *= fineFactor;
    setValue(dragStartValue + change, !silentDrag);
}

void Knob::mouseUp(const MouseEvent&) {}

double Knob::snapProportion(double proportion, int steps)
{
    if (steps < 1)
        return proportion;
    if (steps == 1)
        return 0.0;
    return std::trunc((steps - 1) * proportion + 0.5) / (steps - 1);
}

void Knob::paint(SoftwareGraphics& graphics)
{
    const Colour colour = hasColour(knobColourId) ? getColour(knobColourId) : Colour(128, 245, 255, 255);
    const double proportion = snapProportion(getFramePosition(), steps);
    if (hasImage())
    {
        // The shown frame follows the snapped position for this paint only.
        const float stored = getFramePosition();
        setPosition(static_cast<float>(proportion), false);
        AnimatableComponent::paint(graphics);
        setPosition(stored, false);
        return;
    }
    const double secondary = secondaryValue < 0.0 ? -1.0 : getProportion(secondaryValue);
    getLookAndFeel()->drawKnob(graphics, Rectangle(0, 0, getWidth(), getHeight()), proportion, secondary, colour,
                               isEnabled());
}

}  // namespace q1framework
