#pragma once

#include "foundation/string/String.h"
#include "media/geometry/Colour.h"
#include "media/geometry/Rectangle.h"
#include "render/font/Font.h"

#include <cstdint>

namespace q1framework
{

class SoftwareGraphics;

// How the toolkit's controls look when they have no film strip: the default font, a palette, and
// the drawing of buttons, toggles, sliders, knobs, scroll bars and popup menus. A component uses
// its own look-and-feel if it has one, else the process's default (getDefault); there is no
// inheritance from the parent. Subclasses override the drawing operations they want to change.
//
// Every drawing operation paints into graphics with (0, 0) at the component's top-left and
// bounds given in those coordinates; it may be called once per dirty rectangle, with the clip
// already set, and draws the same pixels each time.
//
// Thread contract: main thread only.
class LookAndFeel
{
public:
    // Palette entries (setColour, getColour).
    enum ColourId
    {
        backgroundColourId,     // behind controls: panels, scroll-bar tracks, toggle boxes
        faceColourId,           // a button at rest
        faceHoverColourId,      // a button under the pointer
        faceDownColourId,       // a button held down
        outlineColourId,        // edges of buttons and boxes; slider and knob grooves
        textColourId,
        disabledTextColourId,
        accentColourId,         // the lit part: a toggle that is on, a slider's value
        thumbColourId,          // slider and scroll-bar thumbs
        thumbHoverColourId,
        popupBackgroundColourId,
        popupHighlightColourId, // the popup item under the pointer
        colourIdCount
    };

    LookAndFeel();
    virtual ~LookAndFeel();

    LookAndFeel(const LookAndFeel&) = delete;
    LookAndFeel& operator=(const LookAndFeel&) = delete;

    // The process's default: the one selected by setDefault, else the built-in one, made on
    // first use.
    static LookAndFeel& getDefault();
    // Selects the default (not owned); null returns to the built-in one.
    static void setDefault(LookAndFeel* lookAndFeel);
    // The framework's take-down: clears the selection / deletes the built-in default.
    static void clearDefaultSelection();
    static void deleteBuiltInDefault();
    // Plugs the bring-up (making the built-in default) and the two take-down steps into
    // FrameworkInitialiser's hooks; calling it again is harmless. Without it the built-in
    // default is made on first use and lives until the process ends.
    static void registerServices();

    // The font components paint text with, and its height in pixels at scale 1; the paint walk
    // sets this font, scaled by the container's scale, before every component's paint.
    virtual const Font& getDefaultFont();
    virtual double getDefaultFontHeight();

    void setColour(int id, const Colour& colour);
    // Transparent black for an id outside the palette.
    Colour getColour(int id) const;

    virtual void drawButtonBackground(SoftwareGraphics& graphics, const Rectangle& bounds, bool enabled,
                                      bool mouseOver, bool down);
    // font: the button's own; a null font means the painter's current one.
    virtual void drawButtonText(SoftwareGraphics& graphics, const Rectangle& bounds, const String& text,
                                const Font& font, bool enabled, bool mouseOver, bool down);
    // style 0: a box with a tick, text to its right; 1: a round radio mark, text to its right;
    // any other: a button that lights up when on, text centred.
    virtual void drawToggleButton(SoftwareGraphics& graphics, const Rectangle& bounds, bool enabled, bool mouseOver,
                                  bool on, const String& text, int style);
    // position 0 to 1 along the track (bottom to top when vertical); thumb in local coordinates.
    virtual void drawSlider(SoftwareGraphics& graphics, const Rectangle& bounds, const Rectangle& thumb,
                            double position, bool vertical, bool enabled, bool overThumb);
    // An arc over three quarters of a turn, from the lower left clockwise to the lower right,
    // lit up to position (0 to 1); a secondary position from 0 to 1 shows as a tick on the rim,
    // and a negative one shows nothing. A position that is not a number shows as 0.
    virtual void drawKnob(SoftwareGraphics& graphics, const Rectangle& bounds, double position,
                          double secondaryPosition, const Colour& colour, bool enabled);
    virtual void drawScrollBar(SoftwareGraphics& graphics, const Rectangle& bounds, const Rectangle& thumb,
                               bool vertical, bool overThumb, bool dragging);
    virtual void drawPopupMenuBackground(SoftwareGraphics& graphics, const Rectangle& bounds);
    virtual void drawPopupMenuItem(SoftwareGraphics& graphics, const Rectangle& bounds, const String& text,
                                   bool highlighted);
    // Height of one popup menu item, pixels.
    virtual int getPopupMenuItemHeight();

private:
    Colour colours[colourIdCount];
};

}  // namespace q1framework
