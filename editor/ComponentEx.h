#pragma once

#include "media/geometry/RectangleF.h"
#include "render/context/RenderingContext.h"
#include "ui/component/Component.h"

namespace q1framework
{
class AdapterComponent;
}

// The base of the editor's components that draw themselves through the window's rendering
// context, over the painted frame (LevelMeter, DriveLed), rather than painting in the tree. They
// sit in the picture's coordinates inside the scaling container (an AdapterComponent) and work
// out for themselves where they are in the window: the container's position in the window plus
// their bounds times the container's scale.
//
// The context is the GL context of the window or, over the image put, the window's software
// context; a component listens to the one it last drew through and drops its textures when that
// context goes, making them again at its next draw.
//
// Thread contract: main thread only.
class ComponentEx : public q1framework::Component, protected q1framework::RenderingContext::Listener
{
public:
    // container: the scaling container that holds the editor's picture, not owned.
    explicit ComponentEx(q1framework::AdapterComponent& container);
    // Drops the textures and stops listening to the context.
    ~ComponentEx() override;

    // Window pixels per picture pixel, across and down; 1 when the container shows nothing.
    void getScales(double& scaleX, double& scaleY) const;
    // The component's bounds in window pixels.
    q1framework::RectangleF getWindowArea() const;
    // Window pixels of a picture position (picture pixels, unrounded).
    double toWindowX(double pictureX) const;
    double toWindowY(double pictureY) const;

    // Draws the component through context (the editor's overlay step).
    virtual void drawResource(q1framework::RenderingContext& context) = 0;

protected:
    // Listens to context from now on; a different context than before first costs the textures.
    void attachTo(q1framework::RenderingContext& context);
    // Deletes the textures made from the context.
    virtual void releaseTextures() = 0;
    // What was drawn must be drawn again: asks the window for a frame over the component's area
    // (a window with a rendering context draws every frame anyway).
    void overlayChanged();

    q1framework::AdapterComponent& container;

private:
    void renderingContextDeleted(q1framework::RenderingContext* context) override;

    q1framework::RenderingContext* context = nullptr;  // listened to; not owned
};
