#include "ui/controls/AnimatableComponent.h"

#include "render/graphics/SoftwareGraphics.h"

#include <cmath>

namespace q1framework
{

AnimatableComponent::AnimatableComponent() = default;

AnimatableComponent::~AnimatableComponent() = default;

void AnimatableComponent::setImage(const Image& newStrip, int frameCount)
{
    if (newStrip.isNull())
    {
        frames = 0;
        strip.clearRect(strip.getBounds());
    }
    else
    {
        frames = frameCount > 0 ? frameCount : 0;
        frameHeight = frames > 0 ? newStrip.getHeight() / frames : 0;
        strip = newStrip;
    }
    repaint();
}

bool AnimatableComponent::hasImage() const
{
    return strip.getWidth() >= 1 && strip.getHeight() >= 1;
}

void AnimatableComponent::setPosition(float newPosition, bool repaintNow)
{
    if (newPosition > 1.0f)
        newPosition = 1.0f;
    if (newPosition < 0.0f)
        newPosition = 0.0f;
    position = newPosition;
    if (repaintNow)
        repaint();
}

int AnimatableComponent::computeFrameIndex(double framePosition, int frameCount)
{
    if (frameCount < 1 || !std::isfinite(framePosition))
        return 0;
    const double frame = std::trunc((frameCount - 1) * framePosition + 0.5);
    return frame < 0.0 ? 0 : frame > frameCount - 1 ? frameCount - 1 : static_cast<int>(frame);
}

int AnimatableComponent::getFrameIndex() const
{
    return computeFrameIndex(position, frames);
}

void AnimatableComponent::setImageOffset(const Point& offset)
{
    imageOffset = offset;
    repaint();
}

Rectangle AnimatableComponent::getPaintBounds()
{
    if (frames < 1)
        return Component::getPaintBounds();
    return Rectangle(getX() - imageOffset.x, getY() - imageOffset.y, strip.getWidth(), frameHeight);
}

void AnimatableComponent::paint(SoftwareGraphics& graphics)
{
    if (frames < 1 || frameHeight < 1)
        return;
    const Rectangle frame(0, frameHeight * getFrameIndex(), strip.getWidth(), frameHeight);
    graphics.drawImagePart(strip, frame, Point(-imageOffset.x, -imageOffset.y), !isOpaque(), 255);
}

}  // namespace q1framework
