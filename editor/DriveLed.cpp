#include "editor/DriveLed.h"

#include "render/context/Texture.h"

#include <algorithm>

using namespace q1framework;

DriveLed::DriveLed(AdapterComponent& scalingContainer) : ComponentEx(scalingContainer) {}

DriveLed::~DriveLed()
{
    releaseTextures();
}

void DriveLed::setImage(const Image& strip, int frames)
{
    releaseTextures();
    image = strip;
    numFrames = std::max(frames, 0);
    overlayChanged();
}

void DriveLed::setValue(double newValue, bool)
{
    newValue = std::clamp(newValue, 0.0, 1.0);
    const int before = getFrameIndex();
    value = newValue;
    if (getFrameIndex() != before)
        overlayChanged();
}

int DriveLed::getFrameIndex() const
{
    return numFrames > 0 ? static_cast<int>(value * (numFrames - 1)) : 0;
}

void DriveLed::releaseTextures()
{
    delete texture;
    texture = nullptr;
}

void DriveLed::drawResource(RenderingContext& context)
{
    attachTo(context);
    if (numFrames <= 0 || image.isEmpty())
        return;
    // The strip's colours go up divided by alpha: the context blends with the texel's alpha as
    // factor, as for straight colour.
    if (texture == nullptr || !texture->isValid())
    {
        releaseTextures();
        texture = context.createTextureFromImage(image, 1, true);
    }
    if (texture == nullptr)
        return;
    const int frameHeight = image.getHeight() / numFrames;
    const double source[4] = {0.0, static_cast<double>(getFrameIndex() * frameHeight),
                              static_cast<double>(image.getWidth()), static_cast<double>(frameHeight)};
    const RectangleF area = getWindowArea();
    const double destination[4] = {area.x, area.y, area.w, area.h};
    texture->drawRotated(1.0f, 0.0, 0.0, 0.0, source, destination);
}
