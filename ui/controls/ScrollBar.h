#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Point.h"
#include "ui/component/Component.h"

#include <cstdint>

namespace q1framework
{

// A bar that shows which part of a longer extent is visible and lets the user move it: a track
// as long as the bar and a thumb whose length is the visible share of the total. Dragging the
// thumb moves the start by the same share of the total as the pointer moves along the track; a
// press on the track beside the thumb pages one visible length towards the press; the wheel
// moves by wheelStep pixels a notch. Used by Viewport.
//
// Lengths and the start are pixels of the extent being scrolled, 0 <= start <= total - visible.
// Cursor: the pointing hand over the thumb, the arrow on the track.
//
// Thread contract: main thread only.
class ScrollBar : public Component
{
public:
    // Not owned.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // The start changed through the user or setStart with notify.
        virtual void scrollBarMoved(ScrollBar*, int /*newStart*/) {}
    };

    static constexpr int minimumThumbLength = 12;
    static constexpr int wheelStep = 48;

    explicit ScrollBar(bool vertical);

    bool isVertical() const { return vertical; }
    // The extent's total length and its visible part (pixels); the start is limited to match.
    // Repaints.
    void setRange(int total, int visible);
    int getTotal() const { return total; }
    int getVisible() const { return visible; }
    // Whether there is anything to scroll.
    bool isScrollable() const { return total > visible; }
    // Limited to 0..total - visible; nothing when unchanged. Repaints; with notify the listeners
    // hear of it.
    void setStart(int start, bool notify);
    int getStart() const { return start; }
    // The thumb in local coordinates; empty when there is nothing to scroll.
    Rectangle getThumbBounds() const;
    void addListener(Listener* listener);
    void removeListener(Listener* listener);

    Mouse::Cursor getCursor() override;
    void mouseMove(const MouseEvent& event) override;
    void mouseExit(const MouseEvent& event) override;
    void mouseDown(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;
    bool mouseWheel(const MouseEvent& event) override;
    void paint(SoftwareGraphics& graphics) override;

private:
    int getTrackLength() const { return vertical ? getHeight() : getWidth(); }
    int along(const MouseEvent& event) const { return vertical ? event.y : event.x; }
    bool isOverThumb(const Point& position) const { return getThumbBounds().contains(position); }

    const bool vertical;
    int total = 0;
    int visible = 0;
    int start = 0;
    bool dragging = false;
    int dragStartValue = 0;        // start when the thumb was pressed
    Point hoverPosition{-1, -1};   // local; (-1, -1) while the pointer is elsewhere
    Array<Listener*> scrollListeners;
};

}  // namespace q1framework
