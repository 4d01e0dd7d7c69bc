#include "editor/ComponentEx.h"

#include "native/window/Window.h"
#include "ui/layout/AdapterComponent.h"

using namespace q1framework;

ComponentEx::ComponentEx(AdapterComponent& scalingContainer) : container(scalingContainer)
{
    // Nothing of these components is painted in the tree, and a press on them goes to what lies
    // beneath.
    setHitTestable(false);
}

ComponentEx::~ComponentEx()
{
    if (context != nullptr)
        context->removeListener(this);
}

void ComponentEx::getScales(double& scaleX, double& scaleY) const
{
    double innerPerOuterX = 1.0, innerPerOuterY = 1.0;
    container.getScaleToInner(&innerPerOuterX, &innerPerOuterY);
    scaleX = innerPerOuterX > 0.0 ? 1.0 / innerPerOuterX : 1.0;
    scaleY = innerPerOuterY > 0.0 ? 1.0 / innerPerOuterY : 1.0;
}

double ComponentEx::toWindowX(double pictureX) const
{
    double scaleX = 1.0, scaleY = 1.0;
    getScales(scaleX, scaleY);
    return container.getAbsoluteBounds(false).x + pictureX * scaleX;
}

double ComponentEx::toWindowY(double pictureY) const
{
    double scaleX = 1.0, scaleY = 1.0;
    getScales(scaleX, scaleY);
    return container.getAbsoluteBounds(false).y + pictureY * scaleY;
}

RectangleF ComponentEx::getWindowArea() const
{
    const double left = toWindowX(getX()), top = toWindowY(getY());
    return RectangleF(left, top, toWindowX(getRight()) - left, toWindowY(getBottom()) - top);
}

void ComponentEx::attachTo(RenderingContext& newContext)
{
    if (context == &newContext)
        return;
    releaseTextures();
    if (context != nullptr)
        context->removeListener(this);
    context = &newContext;
    context->addListener(this);
}

void ComponentEx::overlayChanged()
{
    if (q1framework::Window* window = container.getWindow())
        window->invalidate(getWindowArea().toRectangle(1));
}

void ComponentEx::renderingContextDeleted(RenderingContext*)
{
    releaseTextures();
    context = nullptr;
}
