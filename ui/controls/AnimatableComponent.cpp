#include "ui/controls/AnimatableComponent.h"

#include "render/context/Texture.h"
#include "render/graphics/SoftwareGraphics.h"
#include "render/image/ImageScaling.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

AnimatableComponent::AnimatableComponent() = default;

AnimatableComponent::~AnimatableComponent()
{
    releaseTiles();
}

void AnimatableComponent::setImage(const Image& newStrip, int frameCount)
{
    releaseTiles();
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
        textureStrip = Image();
    }
    repaint();
}

void AnimatableComponent::setTextureStrip(RenderingContext& context, const Image& newStrip, int frameCount)
{
    releaseTiles();
    strip = Image();
    textureStrip = newStrip;
    frames = frameCount > 0 ? frameCount : 0;
    frameHeight = frames > 0 ? newStrip.getHeight() / frames : 0;
    if (frameHeight < 1 || newStrip.isEmpty())
        return;
    const int largest = context.getMaximumTextureSize();
    framesPerTile = largest > 0 ? std::max(largest / frameHeight, 1) : frames;
    const int tileCount = (frames + framesPerTile - 1) / framesPerTile;
    for (int tile = 0; tile < tileCount; ++tile)
    {
        const int first = tile * framesPerTile;
        const int rows = std::min(framesPerTile, frames - first) * frameHeight;
        const Image part = getSubImage(newStrip, Rectangle(0, first * frameHeight, newStrip.getWidth(), rows));
        Texture* texture = context.createTextureFromImage(part, 0, false);
        if (!texture)
        {
            // A strip with a hole would show wrong frames: none at all is the clearer failure.
            releaseTiles();
            return;
        }
        tiles.add(texture);
    }
    tileContext = &context;
    context.addListener(this);
}

void AnimatableComponent::drawFrameTexture(const double destination[4], float alpha, double angle, double centreX,
                                           double centreY)
{
    if (tiles.isEmpty() || framesPerTile < 1)
        return;
    const int frame = getFrameIndex();
    Texture* tile = tiles[std::min(frame / framesPerTile, tiles.getCount() - 1)];
    const double source[4] = {0.0, static_cast<double>((frame % framesPerTile) * frameHeight),
                              static_cast<double>(textureStrip.getWidth()), static_cast<double>(frameHeight)};
    tile->drawRotated(alpha, angle, centreX, centreY, source, destination);
}

void AnimatableComponent::renderingContextDeleted(RenderingContext*)
{
    // The context removes its listeners itself; the tiles are deleted while it still can.
    tileContext = nullptr;
    releaseTiles();
}

void AnimatableComponent::releaseTiles()
{
    if (tileContext)
        tileContext->removeListener(this);
    tileContext = nullptr;
    for (Texture* tile : tiles)
        delete tile;
    tiles.clear();
    framesPerTile = 0;
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
    if (repaintNow && tiles.isEmpty())
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
    if (frames < 1 || frameHeight < 1 || !tiles.isEmpty())
        return;
    const Rectangle frame(0, frameHeight * getFrameIndex(), strip.getWidth(), frameHeight);
    graphics.drawImagePart(strip, frame, Point(-imageOffset.x, -imageOffset.y), !isOpaque(), 255);
}

}  // namespace q1framework
