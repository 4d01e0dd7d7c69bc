#include "ui/layout/Viewport.h"

#include "ui/layout/HolderComponent.h"

#include <algorithm>

namespace q1framework
{

Viewport::Viewport()
    : holder(new HolderComponent(*this)), verticalBar(new ScrollBar(true)), horizontalBar(new ScrollBar(false))
{
    addAndMakeVisible(holder);
    addChild(verticalBar);
    addChild(horizontalBar);
    verticalBar->addListener(this);
    horizontalBar->addListener(this);
}

Viewport::~Viewport() = default;

void Viewport::setViewedComponent(Component* component)
{
    if (viewed)
        holder->removeChild(viewed, true);
    viewed = component;
    if (viewed)
    {
        viewed->setPositionAndNotify(0, 0, false);
        holder->addAndMakeVisible(viewed);
    }
    updateScrollBars();
}

Point Viewport::getViewPosition() const
{
    return viewed ? Point() - viewed->getPosition() : Point();
}

Point Viewport::getViewSize() const
{
    return holder->getSize();
}

void Viewport::setViewPosition(const Point& position)
{
    if (!viewed)
        return;
    const Point view = getViewSize();
    const Point limited(std::clamp(position.x, 0, std::max(viewed->getWidth() - view.x, 0)),
                        std::clamp(position.y, 0, std::max(viewed->getHeight() - view.y, 0)));
    if (limited == getViewPosition())
        return;
    viewed->setPosition(Point() - limited);
    verticalBar->setStart(limited.y, false);
    horizontalBar->setStart(limited.x, false);
}

void Viewport::setScrollBarThickness(int thickness)
{
    scrollBarThickness = std::max(thickness, 0);
    updateScrollBars();
}

void Viewport::updateScrollBars()
{
    if (laying)
        return;
    laying = true;
    const Point content = viewed ? viewed->getSize() : Point();
    const int thickness = scrollBarThickness;
    // A bar along one axis takes room from the other, which may call for its bar in turn.
    bool needsVertical = content.y > getHeight();
    const bool needsHorizontal = content.x > getWidth() - (needsVertical ? thickness : 0);
    needsVertical = content.y > getHeight() - (needsHorizontal ? thickness : 0);
    const int viewWidth = std::max(getWidth() - (needsVertical ? thickness : 0), 0);
    const int viewHeight = std::max(getHeight() - (needsHorizontal ? thickness : 0), 0);
    holder->setBounds(Rectangle(0, 0, viewWidth, viewHeight), false);
    verticalBar->setBounds(Rectangle(viewWidth, 0, thickness, viewHeight), false);
    horizontalBar->setBounds(Rectangle(0, viewHeight, viewWidth, thickness), false);
    verticalBar->setVisible(needsVertical);
    horizontalBar->setVisible(needsHorizontal);
    verticalBar->setRange(content.y, viewHeight);
    horizontalBar->setRange(content.x, viewWidth);
    // A view that the new sizes leave past the content's end comes back to it.
    const Point position = getViewPosition();
    laying = false;
    setViewPosition(position);
    verticalBar->setStart(getViewPosition().y, false);
    horizontalBar->setStart(getViewPosition().x, false);
}

void Viewport::resized()
{
    updateScrollBars();
}

void Viewport::scrollBarMoved(ScrollBar* bar, int newStart)
{
    const Point position = getViewPosition();
    setViewPosition(bar == verticalBar ? Point(position.x, newStart) : Point(newStart, position.y));
}

bool Viewport::mouseWheel(const MouseEvent& event)
{
    const bool across = !verticalBar->isScrollable() || (event.wheelY == 0.0f && event.wheelX != 0.0f);
    const float delta = across ? (event.wheelX != 0.0f ? event.wheelX : event.wheelY) : event.wheelY;
    if (delta == 0.0f)
        return true;
    const int step = delta > 0.0f ? -ScrollBar::wheelStep : ScrollBar::wheelStep;
    const Point position = getViewPosition();
    setViewPosition(across ? Point(position.x + step, position.y) : Point(position.x, position.y + step));
    return true;
}

bool Viewport::canScroll() const
{
    const Point view = getViewSize();
    return viewed && (viewed->getWidth() > view.x || viewed->getHeight() > view.y);
}

Mouse::Cursor Viewport::getCursor()
{
    if (!canScroll())
        return Mouse::Cursor(Mouse::arrowCursor);
    return Mouse::Cursor(dragging ? Mouse::closedHandCursor : Mouse::openHandCursor);
}

void Viewport::mouseDown(const MouseEvent&)
{
    if (!isEnabled() || !canScroll())
        return;
    dragging = true;
    dragStartPosition = getViewPosition();
}

void Viewport::mouseDrag(const MouseEvent& event)
{
    if (dragging)
        setViewPosition(dragStartPosition
                        - Point(event.getDistanceFromDragStartX(), event.getDistanceFromDragStartY()));
}

void Viewport::mouseUp(const MouseEvent&)
{
    dragging = false;
}

}  // namespace q1framework
