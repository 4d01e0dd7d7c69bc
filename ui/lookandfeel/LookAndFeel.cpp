#include "ui/lookandfeel/LookAndFeel.h"

#include "foundation/runtime/FrameworkInitialiser.h"
#include "render/graphics/SoftwareGraphics.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

namespace
{
LookAndFeel* builtInDefault = nullptr;
LookAndFeel* selectedDefault = nullptr;

constexpr double pi = 3.14159265358979323846;
// The knob's arc: from the lower left (angle 7/4 pi, where angles grow clockwise from the left)
// over three quarters of a turn to the lower right.
constexpr double knobStartAngle = 1.75 * pi;
constexpr double knobSweep = 1.5 * pi;

constexpr int buttonRadius = 4;
constexpr int toggleMarkSide = 14;
constexpr int toggleTextGap = 6;
constexpr int trackThickness = 4;
constexpr int popupTextIndent = 8;

Rectangle inset(const Rectangle& area, int amount)
{
    return Rectangle(area.x + amount, area.y + amount, area.w - 2 * amount, area.h - 2 * amount);
}

// A rounded rectangle with a one-pixel outline: the outline colour over the whole area, the
// fill inside it.
void fillOutlined(SoftwareGraphics& graphics, const Rectangle& area, int radius, const Colour& outline,
                  const Colour& fill)
{
    graphics.fillRoundedRect(area, radius, outline);
    graphics.fillRoundedRect(inset(area, 1), std::max(radius - 1, 0), fill);
}

// A point on a circle at angle (radians, clockwise from the left, as drawArc measures it).
double pointX(double centreX, double angle, double radius)
{
    return centreX - std::cos(angle) * radius;
}

double pointY(double centreY, double angle, double radius)
{
    return centreY - std::sin(angle) * radius;
}

// A value for drawing: 0 to 1, with anything that is not a number taken as 0.
double drawable(double position)
{
    return std::isfinite(position) ? std::clamp(position, 0.0, 1.0) : 0.0;
}
}

LookAndFeel::LookAndFeel()
{
    colours[backgroundColourId] = Colour(32, 35, 40, 255);
    colours[faceColourId] = Colour(62, 68, 76, 255);
    colours[faceHoverColourId] = Colour(76, 83, 92, 255);
    colours[faceDownColourId] = Colour(44, 49, 55, 255);
    colours[outlineColourId] = Colour(18, 20, 23, 255);
    colours[textColourId] = Colour(230, 232, 235, 255);
    colours[disabledTextColourId] = Colour(118, 122, 128, 255);
    colours[accentColourId] = Colour(128, 245, 255, 255);
    colours[thumbColourId] = Colour(196, 202, 210, 255);
    colours[thumbHoverColourId] = Colour(236, 239, 243, 255);
    colours[popupBackgroundColourId] = Colour(48, 52, 58, 255);
    colours[popupHighlightColourId] = Colour(66, 108, 138, 255);
}

LookAndFeel::~LookAndFeel()
{
    if (selectedDefault == this)
        selectedDefault = nullptr;
    if (builtInDefault == this)
        builtInDefault = nullptr;
}

LookAndFeel& LookAndFeel::getDefault()
{
    if (selectedDefault)
        return *selectedDefault;
    if (!builtInDefault)
        builtInDefault = new LookAndFeel();
    return *builtInDefault;
}

void LookAndFeel::setDefault(LookAndFeel* lookAndFeel)
{
    selectedDefault = lookAndFeel;
}

void LookAndFeel::clearDefaultSelection()
{
    selectedDefault = nullptr;
}

void LookAndFeel::deleteBuiltInDefault()
{
    delete builtInDefault;
    builtInDefault = nullptr;
}

void LookAndFeel::registerServices()
{
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::createDefaultLookAndFeel, [] { getDefault(); });
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::clearDefaultLookAndFeelSelection,
                                  &LookAndFeel::clearDefaultSelection);
    FrameworkInitialiser::setHook(FrameworkInitialiser::Hook::destroyDefaultLookAndFeel,
                                  &LookAndFeel::deleteBuiltInDefault);
}

const Font& LookAndFeel::getDefaultFont()
{
    return Font::getFallback();
}

double LookAndFeel::getDefaultFontHeight()
{
    return getDefaultFont().getSize();
}

void LookAndFeel::setColour(int id, const Colour& colour)
{
    if (id >= 0 && id < colourIdCount)
        colours[id] = colour;
}

Colour LookAndFeel::getColour(int id) const
{
    return id >= 0 && id < colourIdCount ? colours[id] : Colour();
}

void LookAndFeel::drawButtonBackground(SoftwareGraphics& graphics, const Rectangle& bounds, bool enabled,
                                       bool mouseOver, bool down)
{
    const int face = !enabled ? faceDownColourId : down ? faceDownColourId : mouseOver ? faceHoverColourId : faceColourId;
    fillOutlined(graphics, bounds, buttonRadius, colours[outlineColourId], colours[face]);
}

void LookAndFeel::drawButtonText(SoftwareGraphics& graphics, const Rectangle& bounds, const String& text,
                                 const Font& font, bool enabled, bool, bool down)
{
    const Font painterFont = graphics.getFont();
    if (!font.isNull())
        graphics.setFont(font);
    // A button held down shows its text one pixel lower, as if pressed into the panel.
    const Rectangle area = bounds.translated(Point(0, down ? 1 : 0));
    graphics.drawText(area, text.getCString(), colours[enabled ? textColourId : disabledTextColourId],
                      Alignment::Centre);
    graphics.setFont(painterFont);
}

void LookAndFeel::drawToggleButton(SoftwareGraphics& graphics, const Rectangle& bounds, bool enabled, bool mouseOver,
                                   bool on, const String& text, int style)
{
    const Colour textColour = colours[enabled ? textColourId : disabledTextColourId];
    const Colour accent = enabled ? colours[accentColourId] : colours[accentColourId].withMultipliedAlpha(0.4f);
    if (style != 0 && style != 1)
    {
        drawButtonBackground(graphics, bounds, enabled, mouseOver, false);
        if (on)
            graphics.fillRoundedRect(inset(bounds, 2), buttonRadius - 2, accent.withAlpha(accent.getAlpha() / 3));
        graphics.drawText(bounds, text.getCString(), on ? accent : textColour, Alignment::Centre);
        return;
    }
    const int side = std::min(toggleMarkSide, bounds.h);
    const Rectangle mark(bounds.x, bounds.y + (bounds.h - side) / 2, side, side);
    const Colour rim = colours[mouseOver && enabled ? thumbColourId : outlineColourId];
    if (style == 0)
    {
        fillOutlined(graphics, mark, 2, rim, colours[backgroundColourId]);
        if (on)
            graphics.fillRoundedRect(inset(mark, 3), 1, accent);
    }
    else
    {
        const float centreX = static_cast<float>(mark.x) + static_cast<float>(side - 1) * 0.5f;
        const float centreY = static_cast<float>(mark.y) + static_cast<float>(side - 1) * 0.5f;
        const float radius = static_cast<float>(side) * 0.5f;
        graphics.fillCircle(rim, centreX, centreY, radius);
        graphics.fillCircle(colours[backgroundColourId], centreX, centreY, radius - 1.0f);
        if (on)
            graphics.fillCircle(accent, centreX, centreY, radius - 3.5f);
    }
    const Rectangle label(mark.getRight() + toggleTextGap, bounds.y, bounds.w - side - toggleTextGap, bounds.h);
    graphics.drawText(label, text.getCString(), textColour, Alignment::CentreLeft);
}

void LookAndFeel::drawSlider(SoftwareGraphics& graphics, const Rectangle& bounds, const Rectangle& thumb,
                             double position, bool vertical, bool enabled, bool overThumb)
{
    const Colour accent = enabled ? colours[accentColourId] : colours[accentColourId].withMultipliedAlpha(0.4f);
    const double value = drawable(position);
    Rectangle track, lit;
    if (vertical)
    {
        const int length = bounds.h - thumb.h;
        track = Rectangle(bounds.x + (bounds.w - trackThickness) / 2, bounds.y + thumb.h / 2, trackThickness, length);
        const int litLength = static_cast<int>(value * length);
        lit = Rectangle(track.x, track.getBottom() - litLength, trackThickness, litLength);
    }
    else
    {
        const int length = bounds.w - thumb.w;
        track = Rectangle(bounds.x + thumb.w / 2, bounds.y + (bounds.h - trackThickness) / 2, length, trackThickness);
        lit = Rectangle(track.x, track.y, static_cast<int>(value * length), trackThickness);
    }
    graphics.fillRoundedRect(track, trackThickness / 2, colours[outlineColourId]);
    graphics.fillRoundedRect(lit, trackThickness / 2, accent);
    const int thumbColour = overThumb && enabled ? thumbHoverColourId : thumbColourId;
    fillOutlined(graphics, inset(thumb, 1), buttonRadius - 1, colours[outlineColourId], colours[thumbColour]);
}

void LookAndFeel::drawKnob(SoftwareGraphics& graphics, const Rectangle& bounds, double position,
                           double secondaryPosition, const Colour& colour, bool enabled)
{
    const int side = std::min(bounds.w, bounds.h);
    if (side < 4)
        return;
    const Colour lit = enabled ? colour : colour.withMultipliedAlpha(0.4f);
    const double centreX = bounds.x + (bounds.w - 1) * 0.5;
    const double centreY = bounds.y + (bounds.h - 1) * 0.5;
    const double radius = side * 0.5 - 1.0;
    const float arcRadius = static_cast<float>(radius - 2.0);
    const float cx = static_cast<float>(centreX);
    const float cy = static_cast<float>(centreY);
    const double value = drawable(position);
    const double angle = knobStartAngle + value * knobSweep;

    graphics.fillCircle(colours[outlineColourId], cx, cy, static_cast<float>(radius * 0.72));
    graphics.fillCircle(colours[faceColourId], cx, cy, static_cast<float>(radius * 0.72 - 1.0));
    graphics.drawArc(colours[outlineColourId], cx, cy, arcRadius, 2.0f, static_cast<float>(knobStartAngle),
                     static_cast<float>(knobStartAngle + knobSweep));
    if (value > 0.0)
        graphics.drawArc(lit, cx, cy, arcRadius, 2.0f, static_cast<float>(knobStartAngle), static_cast<float>(angle));
    const double pointerRadius = radius * 0.45;
    graphics.fillCircle(lit, static_cast<float>(pointX(centreX, angle, pointerRadius)),
                        static_cast<float>(pointY(centreY, angle, pointerRadius)),
                        static_cast<float>(std::max(1.5, radius * 0.12)));
    if (secondaryPosition >= 0.0 && std::isfinite(secondaryPosition))
    {
        const double secondaryAngle = knobStartAngle + drawable(secondaryPosition) * knobSweep;
        graphics.fillCircle(colours[textColourId], static_cast<float>(pointX(centreX, secondaryAngle, arcRadius)),
                            static_cast<float>(pointY(centreY, secondaryAngle, arcRadius)), 2.0f);
    }
}

void LookAndFeel::drawScrollBar(SoftwareGraphics& graphics, const Rectangle& bounds, const Rectangle& thumb, bool,
                                bool overThumb, bool dragging)
{
    Colour track = colours[backgroundColourId];
    graphics.fillRect(bounds, track, false);
    const int thumbColour = overThumb || dragging ? thumbHoverColourId : thumbColourId;
    graphics.fillRoundedRect(inset(thumb, 2), 2, colours[thumbColour]);
}

void LookAndFeel::drawPopupMenuBackground(SoftwareGraphics& graphics, const Rectangle& bounds)
{
    Colour background = colours[popupBackgroundColourId];
    graphics.fillRect(bounds, background, false);
    graphics.drawRect(bounds, colours[outlineColourId]);
}

void LookAndFeel::drawPopupMenuItem(SoftwareGraphics& graphics, const Rectangle& bounds, const String& text,
                                    bool highlighted)
{
    if (highlighted)
    {
        Colour highlight = colours[popupHighlightColourId];
        graphics.fillRect(bounds, highlight, true);
    }
    const Rectangle label(bounds.x + popupTextIndent, bounds.y, bounds.w - 2 * popupTextIndent, bounds.h);
    graphics.drawText(label, text.getCString(), colours[textColourId], Alignment::CentreLeft);
}

int LookAndFeel::getPopupMenuItemHeight()
{
    return 20;
}

}  // namespace q1framework
