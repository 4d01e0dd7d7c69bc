#pragma once

#include "ui/controls/Slider.h"

#include <cstdint>

namespace q1framework
{

// A rotary control: a Slider dragged up and down. The value follows
//   dragStartValue + (dragOrigin - (y - downY)) * sensitivity   (a tenth of it with Shift)
// so with the default sensitivity of 0.01 the pointer's travel upwards over 100 pixels spans 1.0.
// Pressing or releasing Shift during a drag re-anchors it where the value stands, so the value
// does not jump. A double click (reset mode bit 1) or a Control-click (bit 2) resets to the
// default value. The wheel steps as a Slider's does. No listener hears of the start or the end of
// a knob's drag.
//
// With steps above 0 the knob shows its value snapped to that many steps (one step shows the
// minimum); the value itself is never snapped. Without a film strip the LookAndFeel draws it, in
// colour id 0 if set, else cyan.
//
// Thread contract: main thread only.
class Knob : public Slider
{
public:
    static constexpr int resetOnDoubleClick = 1;
    static constexpr int resetOnControlClick = 2;
    static constexpr int knobColourId = 0;

    Knob();

    void setResetMode(int mode) { resetMode = mode; }
    int getResetMode() const { return resetMode; }
    void setSteps(int count) { steps = count; }
    int getSteps() const { return steps; }
    // Value per pixel of travel.
    void setSensitivity(double valuePerPixel) { sensitivity = valuePerPixel; }
    double getSensitivity() const { return sensitivity; }
    // A second value shown on the rim (in the knob's units); negative shows none. Repaints on a
    // change.
    void setSecondaryValue(double secondary);
    double getSecondaryValue() const { return secondaryValue; }

    void mouseMove(const MouseEvent& event) override;
    void mouseDown(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;
    void paint(SoftwareGraphics& graphics) override;

    // The value as shown with steps, from a proportion 0..1 of the range.
    static double snapProportion(double proportion, int steps);

private:
    int32_t resetMode = resetOnDoubleClick;
    int32_t steps = 0;
    double sensitivity = 0.01;
    bool fineMode = false;
    int32_t dragOrigin = 0;
    double secondaryValue = -1.0;
};

}  // namespace q1framework
