#include "editor/MultiStateButton.h"

#include "ui/input/MouseEvent.h"

#include <algorithm>
#include <cmath>

using namespace q1framework;

MultiStateButton::MultiStateButton()
{
    setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
}

void MultiStateButton::setNumStates(int count)
{
    numStates = std::max(count, 1);
    showState();
}

void MultiStateButton::setStateRule(StateRule rule)
{
    stateRule = rule;
    showState();
}

int MultiStateButton::getState() const
{
    if (!std::isfinite(value))
        return 0;
    const int state = stateRule != nullptr ? stateRule(value) : static_cast<int>(value * numStates);
    return std::clamp(state, 0, numStates - 1);
}

void MultiStateButton::showState()
{
    const float position = numStates > 1 ? static_cast<float>(getState()) / (numStates - 1) : 0.0f;
    setPosition(position, true);
}

void MultiStateButton::setValue(double newValue, bool notify)
{
    const bool changed = newValue != value;
    value = newValue;
    showState();
    if (notify && changed)
        if (Component* parent = getParent())
            parent->childValueChanged(this);
}

void MultiStateButton::setFromPointer(const MouseEvent& event)
{
    if (getWidth() < 1)
        return;
    setValue(std::clamp(static_cast<double>(event.x) / getWidth(), 0.0, 1.0), true);
}

void MultiStateButton::mouseDown(const MouseEvent& event)
{
    setFromPointer(event);
}

void MultiStateButton::mouseDrag(const MouseEvent& event)
{
    setFromPointer(event);
}
