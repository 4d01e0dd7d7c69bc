#pragma once

#include "media/geometry/Point.h"
#include "ui/component/Component.h"
#include "ui/controls/ScrollBar.h"

namespace q1framework
{

class HolderComponent;

// Shows part of a component larger than itself, the viewed component, and scrolls it: with its
// scroll bars, the wheel, or by dragging. The viewed component sits in a HolderComponent, which
// clips it; scrolling moves it with Component::setPosition, so the container moves the pixels
// already painted and repaints only the strip that comes into view.
//
// The view position is the viewed component's point shown at the holder's top-left, limited so
// that the view stays inside the component. Scroll bars appear along an axis when the component
// is longer than the view along it, at scrollBarThickness pixels, the vertical one at the right,
// the horizontal one at the bottom.
//
// Dragging to scroll: a press on the viewport itself (beside the viewed component, or on a
// viewed component that is not hit-testable) grabs the content; the cursor is the open hand at
// rest and the closed hand while dragging, when there is anything to scroll.
//
// Thread contract: main thread only.
class Viewport : public Component, public ScrollBar::Listener
{
public:
    static constexpr int defaultScrollBarThickness = 10;

    Viewport();
    ~Viewport() override;

    // The viewed component, owned from now on (the previous one is deleted); null removes it.
    // It is shown from view position (0, 0).
    void setViewedComponent(Component* component);
    Component* getViewedComponent() const { return viewed; }
    // Scrolls so that position of the viewed component is at the top-left of the view, limited
    // to the component. Nothing when unchanged.
    void setViewPosition(const Point& position);
    Point getViewPosition() const;
    // The size of the area the viewed component is seen through.
    Point getViewSize() const;
    void setScrollBarThickness(int thickness);
    ScrollBar& getVerticalScrollBar() { return *verticalBar; }
    ScrollBar& getHorizontalScrollBar() { return *horizontalBar; }
    HolderComponent& getHolder() { return *holder; }

    // Lays out the holder and the scroll bars for the sizes of now, and brings the bars' ranges
    // and starts up to date. The holder calls it when the viewed component moves or resizes.
    void updateScrollBars();

    void resized() override;
    void scrollBarMoved(ScrollBar* bar, int newStart) override;
    // Scrolls vertically (horizontally when only that is possible) by the scroll bar's wheel
    // step; true, so the wheel stops here.
    bool mouseWheel(const MouseEvent& event) override;
    Mouse::Cursor getCursor() override;
    void mouseDown(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;

private:
    bool canScroll() const;

    // Children, owned as such.
    HolderComponent* holder;
    ScrollBar* verticalBar;
    ScrollBar* horizontalBar;
    Component* viewed = nullptr;  // owned by the holder
    int scrollBarThickness = defaultScrollBarThickness;
    bool dragging = false;
    Point dragStartPosition;  // view position at the press
    bool laying = false;      // inside updateScrollBars
};

}  // namespace q1framework
