#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "ui/controls/AnimatableComponent.h"

namespace q1framework
{

// A control that holds a double value between a minimum and a maximum and shows it through the
// film-strip position (value - minimum) / (maximum - minimum), or through the LookAndFeel as a
// track with a square thumb. It is vertical when taller than wide.
//
// The mouse:
//   - a press on the thumb starts a drag; a press elsewhere first jumps the value to
//     (x - height / 2) / (width - height), measured along x even on a vertical slider;
//   - a drag adds the pointer's travel since the press, as a share of the height (upwards, when
//     vertical) or of the width, a tenth of it with Shift held; the pointer is locked meanwhile,
//     so the drag can go past the screen's edge;
//   - a press with Control held, or Control pressed during a press, resets to the default value;
//   - the wheel adds or subtracts the wheel step (a tenth of it with Shift) per event, whatever
//     the size of the wheel's delta.
// Listeners hear of drags and values; with silentDrag a drag changes the value quietly and the
// listeners hear of it once, at the release.
//
// Ignores the mouse while disabled. Takes the keyboard focus when asked.
//
// Thread contract: main thread only.
class Slider : public AnimatableComponent
{
public:
    // Not owned. Empty defaults.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void dragStarted(Slider*) {}
        virtual void valueChanged(Slider*) {}
        virtual void dragEnded(Slider*) {}
    };

    Slider();

    // Limits value to the range (a value that is not a number is ignored). Nothing when
    // unchanged. Otherwise stores it and moves the film-strip position, which repaints; with
    // notify the listeners' valueChanged, then the parent's childValueChanged, follow.
    void setValue(double value, bool notify) override;
    double getValue() override { return value; }
    // Stores both ends, then sets the value again (limited to the new range) and moves the
    // position to match.
    void setRange(double minimum, double maximum, bool notify);
    double getMinimum() const { return minimum; }
    double getMaximum() const { return maximum; }
    void setDefaultValue(double newDefault) { defaultValue = newDefault; }
    double getDefaultValue() const { return defaultValue; }
    void setWheelStep(float step) { wheelStep = step; }
    float getWheelStep() const { return wheelStep; }
    void setSilentDrag(bool silent) { silentDrag = silent; }
    bool isSilentDrag() const { return silentDrag; }
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    // Taller than wide.
    virtual bool isVertical();
    // Whether the last pointer position seen lies on the thumb.
    virtual bool isThumbHit();
    // The thumb in local coordinates: a square as wide as a vertical slider (as tall as a
    // horizontal one), placed along the track by the position.
    Rectangle getThumbBounds();

    void mouseMove(const MouseEvent& event) override;
    void mouseExit(const MouseEvent& event) override;
    void mouseDown(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;
    bool mouseWheel(const MouseEvent& event) override;
    bool keyPressed(const KeyEvent& key) override;
    void paint(SoftwareGraphics& graphics) override;

protected:
    // (value - minimum) / (maximum - minimum).
    double getProportion(double forValue) const;
    // The listeners' valueChanged, then the parent's childValueChanged.
    void notifyValueChanged();
    bool isShiftDown() { return isModifierKeyDown(KeyEvent::shift); }

    Array<Listener*> sliderListeners;
    double minimum = 0.0;
    double maximum = 1.0;
    double value = 0.0;
    double defaultValue = 0.0;
    float wheelStep = 0.001f;
    bool dragActive = false;
    bool silentDrag = false;
    Point hoverPosition{-1, -1};  // local; (-1, -1) while the pointer is elsewhere
    double dragStartValue = 0.0;
};

}  // namespace q1framework
