#pragma once

#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "ui/controls/AnimatableComponent.h"

#include <cstdint>

namespace q1framework
{

// A button that is on or off, shown by its film strip (frame 0 off, the last frame on) or, without
// one, by the LookAndFeel in one of its styles. A press flips it. Toggle buttons of one parent
// that share a radio group (0 or more) form a set in which one is on: turning one on turns the
// others off silently, and pressing the one that is on changes nothing.
//
// Shows the pointing-hand cursor and repaints on enter and exit. Ignores the mouse while disabled.
//
// Thread contract: main thread only.
class ToggleButton : public AnimatableComponent
{
public:
    // Not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // The state changed through setOn with notify (a press is one).
        virtual void toggleStateChanged(ToggleButton*) {}
    };

    explicit ToggleButton(const String& text);

    // The LookAndFeel's style when there is no film strip; repaints on a change.
    void setStyle(int newStyle);
    int getStyle() const { return style; }
    // A negative group means none.
    void setRadioGroup(int group) { radioGroup = group; }
    int getRadioGroup() const { return radioGroup; }
    bool isOn() const { return on; }
    // Nothing when unchanged. Turning on turns off the others of the radio group among the
    // siblings, without telling anyone. With notify the listeners, then the parent's
    // childValueChanged, hear of it. The film-strip position follows (1 on, 0 off).
    void setOn(bool on, bool notify);
    const String& getText() const { return text; }
    void setText(const String& newText);
    // A listener already present is refused.
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    // setOn(value >= 0.5, notify); 1 when on, else 0.
    void setValue(double value, bool notify) override;
    double getValue() override;
    void mouseDown(const MouseEvent& event) override;
    void paint(SoftwareGraphics& graphics) override;

private:
    int32_t style = 0;
    int32_t radioGroup = -1;
    bool on = false;
    String text;
    Array<Listener*> toggleListeners;
};

}  // namespace q1framework
