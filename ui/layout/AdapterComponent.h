#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/RectangleF.h"
#include "media/image/Image.h"
#include "render/image/ImageResampler.h"
#include "ui/component/Component.h"
#include "ui/container/ComponentsContainer.h"

namespace q1framework
{

// Shows a tree of its own, the inner tree, inside itself, scaled to its own size. The inner tree
// lives in a second container that has no window of its own (it borrows the outer one's for
// cursors and the pointer lock) and has this component as its listener: the inner tree paints
// into a picture of its own size, which this component draws, resampled when the sizes differ;
// pointer events are mapped into the inner tree's coordinates and sent on to its container.
//
// Coordinates: inner x = outer local x * inner width / own width, truncated; likewise y. Screen
// positions stay the screen's: the inner tree's events carry those of the outer events.
//
// A change of the inner tree repaints the part of this component that the resampler's taps
// reach from it (see ImageResampler::getReachedArea), so that no output pixel is left stale.
//
// Thread contract: main thread only. Painting allocates nothing once the sizes are set.
class AdapterComponent : public Component, public ComponentsContainer::Listener, public Component::Listener
{
public:
    AdapterComponent();
    // Deletes the inner container with the inner tree.
    ~AdapterComponent() override;

    // The inner tree's root (owned from now on; the previous one is deleted), made visible and
    // given a picture of its size. Null removes the inner tree.
    void setInnerComponent(Component* inner);
    Component* getInnerComponent() const { return inner; }
    ComponentsContainer& getInnerContainer() { return innerContainer; }

    // Local position to inner coordinates and back, truncated.
    Point mapToInner(const Point& local) const;
    Point mapFromInner(const Point& innerPosition) const;
    // Inner pixels per own pixel, in x and y; 1 without an inner tree.
    void getScaleToInner(double* x, double* y) const;
    // An inner rectangle in local coordinates, in double precision.
    RectangleF mapRectFromInner(const Rectangle& innerArea) const;

    Mouse::Cursor getCursor() override;
    void mouseMove(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseDown(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;
    void mouseEnter(const MouseEvent& event) override;
    void mouseExit(const MouseEvent& event) override;
    // Always true: the inner tree has the wheel.
    bool mouseWheel(const MouseEvent& event) override;
    // Lends the inner container this tree's window, then ticks the inner tree.
    void tick() override;
    void paint(SoftwareGraphics& graphics) override;

    // ComponentsContainer::Listener, from the inner container.
    void areaInvalidated(const Rectangle& area) override;
    // The inner picture's pixels move with the scroll.
    void areaMoved(const Rectangle& source, const Point& destination) override;
    void areaCopied(const Rectangle& source, const Point& destination) override;

    // Component::Listener, from the inner root: a new size gives a new picture.
    void componentResized(Component* component) override;

private:
    // The event's position mapped inwards and sent on as kind.
    void forward(int kind, const MouseEvent& event, int button);
    void makeInnerImage();

    Image scaledImage;                    // the inner picture at this component's size
    Point mousePosition{-1, -1};          // inner coordinates; (-1, -1) while the pointer is outside
    Image innerImage;                     // the inner tree's pixels, at its size
    Component* inner = nullptr;           // owned by innerContainer
    ComponentsContainer innerContainer;
    ImageResampler resampler;
};

}  // namespace q1framework
