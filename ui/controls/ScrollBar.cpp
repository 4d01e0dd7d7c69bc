#include "ui/controls/ScrollBar.h"

#include "ui/lookandfeel/LookAndFeel.h"

#include <algorithm>

namespace q1framework
{

ScrollBar::ScrollBar(bool isVerticalBar) : vertical(isVerticalBar) {}

void ScrollBar::setRange(int newTotal, int newVisible)
{
    total = std::max(newTotal, 0);
    visible = std::clamp(newVisible, 0, total);
    start = std::clamp(start, 0, total - visible);
    repaint();
}

void ScrollBar::setStart(int newStart, bool notify)
{
    newStart = std::clamp(newStart, 0, total - visible);
    if (newStart == start)
        return;
    start = newStart;
    repaint();
    SafePointer self(this);
    for (int32_t index = 0; notify && self && index < scrollListeners.getCount(); ++index)
        scrollListeners[index]->scrollBarMoved(this, start);
}

Rectangle ScrollBar::getThumbBounds() const
{
    const int track = getTrackLength();
    if (!isScrollable() || track < 1)
        return Rectangle();
    const int length = std::min(track, std::max(minimumThumbLength, static_cast<int>(int64_t(track) * visible / total)));
    const int offset = static_cast<int>(int64_t(track - length) * start / (total - visible));
    return vertical ? Rectangle(0, offset, getWidth(), length) : Rectangle(offset, 0, length, getHeight());
}

void ScrollBar::addListener(Listener* listener)
{
    if (listener)
        scrollListeners.addIfNotAlreadyThere(listener);
}

void ScrollBar::removeListener(Listener* listener)
{
    scrollListeners.removeFirstMatching(listener);
}

Mouse::Cursor ScrollBar::getCursor()
{
    return Mouse::Cursor(dragging || isOverThumb(hoverPosition) ? Mouse::pointingHandCursor : Mouse::arrowCursor);
}

void ScrollBar::mouseMove(const MouseEvent& event)
{
    const bool wasOver = isOverThumb(hoverPosition);
    hoverPosition = Point(event.x, event.y);
    if (isOverThumb(hoverPosition) != wasOver)
        repaint();
}

void ScrollBar::mouseExit(const MouseEvent&)
{
    hoverPosition = Point(-1, -1);
    repaint();
}

void ScrollBar::mouseDown(const MouseEvent& event)
{
    if (!isEnabled() || !isScrollable())
        return;
    const Rectangle thumb = getThumbBounds();
    if (thumb.contains(Point(event.x, event.y)))
    {
        dragging = true;
        dragStartValue = start;
        repaint();
        return;
    }
    const int thumbStart = vertical ? thumb.y : thumb.x;
    setStart(start + (along(event) < thumbStart ? -visible : visible), true);
}

void ScrollBar::mouseDrag(const MouseEvent& event)
{
    if (!dragging)
        return;
    const int travel = vertical ? event.getDistanceFromDragStartY() : event.getDistanceFromDragStartX();
    const int track = getTrackLength() - (vertical ? getThumbBounds().h : getThumbBounds().w);
    if (track < 1)
        return;
    setStart(dragStartValue + static_cast<int>(int64_t(travel) * (total - visible) / track), true);
}

void ScrollBar::mouseUp(const MouseEvent&)
{
    if (!dragging)
        return;
    dragging = false;
    repaint();
}

bool ScrollBar::mouseWheel(const MouseEvent& event)
{
    const float delta = vertical || event.wheelX == 0.0f ? event.wheelY : event.wheelX;
    if (delta != 0.0f && isEnabled())
        setStart(start + (delta > 0.0f ? -wheelStep : wheelStep), true);
    return true;
}

void ScrollBar::paint(SoftwareGraphics& graphics)
{
    getLookAndFeel()->drawScrollBar(graphics, Rectangle(0, 0, getWidth(), getHeight()), getThumbBounds(), vertical,
                                    isOverThumb(hoverPosition), dragging);
}

}  // namespace q1framework
