#pragma once

#include "ui/controls/AnimatableComponent.h"

// A selector of a few states by where it is clicked: a press (or a drag) at x sets the value to
// x / width, limited to 0..1, as it stands, and tells the parent. The value is the parameter's
// value, so the parameter decides the state by its own rule (see setStateRule).
//
// Its picture is a film strip with one frame per state. The frame shown is always the one of the
// state the value is in, by the same rule: the strip's frame is not picked from the value itself
// (frame = round(value * (frames - 1)) would light "mid" for a click at 0.3, which the parameter
// still counts as "sharp"), but from the state, at position state / (numStates - 1).
//
// The button sends no gesture of its own; the press and the release reach the parent as for any
// component. Its cursor is the pointing hand.
//
// Thread contract: main thread only.
class MultiStateButton : public q1framework::AnimatableComponent
{
public:
    // The state (0..numStates - 1) of a value.
    using StateRule = int (*)(double value);

    // 4 states by the even rule, until told otherwise.
    MultiStateButton();

    void setNumStates(int count);
    int getNumStates() const { return numStates; }
    // The parameter's rule; null returns to the even rule, state = trunc(value * numStates),
    // limited to the states.
    void setStateRule(StateRule rule);
    int getState() const;

    // Stores value and shows its state's frame; with notify and a new value, the parent hears
    // childValueChanged.
    void setValue(double value, bool notify) override;
    double getValue() override { return value; }

    void mouseDown(const q1framework::MouseEvent& event) override;
    void mouseDrag(const q1framework::MouseEvent& event) override;

private:
    void setFromPointer(const q1framework::MouseEvent& event);
    void showState();

    double value = 0.0;
    int numStates = 4;
    StateRule stateRule = nullptr;
};
