#include "render/context/RenderingContext.h"

#include "media/image/Image.h"
#include "render/context/Texture.h"

namespace q1framework
{

RenderingContext::~RenderingContext()
{
    notifyDeletion();
}

void RenderingContext::notifyDeletion()
{
    const int32_t count = listeners.getCount();
    for (int32_t index = count - 1; index >= 0; --index)
        listeners[index]->renderingContextDeleted(this);
    listeners.clear();
}

bool RenderingContext::addListener(Listener* listener)
{
    return listeners.addIfNotAlreadyThere(listener);
}

bool RenderingContext::removeListener(Listener* listener)
{
    return listeners.removeFirstMatching(listener);
}

Texture* RenderingContext::createTextureFromImage(const Image& image, Rectangle region, int kind, bool unpremultiply)
{
    const Rectangle part = region.getIntersection(image.getBounds());
    if (part.isEmpty())
        return nullptr;
    Texture* texture = createTexture(part.w, part.h, 0, kind);
    if (texture != nullptr)
        texture->uploadWhole(image, unpremultiply);
    return texture;
}

Texture* RenderingContext::createTextureFromImage(const Image& image, int kind, bool unpremultiply)
{
    return createTextureFromImage(image, image.getBounds(), kind, unpremultiply);
}

void RenderingContext::fillRect(const Rectangle& area, const Colour& colour)
{
    const Colour corners[4] = {colour, colour, colour, colour};
    fillGradientRect(area, corners);
}

void RenderingContext::drawRect(const Rectangle& area, const Colour& colour)
{
    const Colour corners[4] = {colour, colour, colour, colour};
    drawGradientRect(area, corners);
}

}  // namespace q1framework
