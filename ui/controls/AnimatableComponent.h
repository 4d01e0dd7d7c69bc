#pragma once

#include "media/geometry/Point.h"
#include "foundation/var/Array.h"
#include "media/image/Image.h"
#include "render/context/RenderingContext.h"
#include "ui/component/Component.h"

#include <cstdint>

namespace q1framework
{

class Texture;

// A component that shows one frame of a film strip: a picture whose frames, all as wide as the
// picture, are stacked vertically. There is no timer and no easing: a position from 0 to 1 picks
// the frame, and whoever owns the component moves the position.
//
// Frame for a position p with n frames: trunc((n - 1) * p + 0.5), in double (a position that is
// not a number shows frame 0). The frame is drawn with its top-left imageOffset up and left of
// the component's top-left, blended unless the component is opaque; the paint area is the frame's
// area there.
//
// The texture path keeps the strip as textures of a rendering context instead, as many frames to
// a tile as the device's largest texture holds. The component then paints nothing and does not
// repaint when its position moves: its owner draws the frame through the context in each frame
// (drawFrameTexture), after the surface's quad. The tiles go when the context goes.
//
// Thread contract: main thread only.
class AnimatableComponent : public Component, private RenderingContext::Listener
{
public:
    AnimatableComponent();
    // Deletes the tiles.
    ~AnimatableComponent() override;

    // The film strip, frames tall (frame height = picture height / frames, 0 for 0 frames).
    // A null image instead blanks the current strip's pixels and sets the frame count to 0: the
    // strip object stays, so hasImage() keeps its answer and nothing visible is drawn.
    void setImage(const Image& strip, int frames);
    // The texture path: the strip cut into tiles of whole frames, each a texture of context,
    // framesPerTile = the largest texture side / frame height frames to a tile (all frames in one
    // when the context has not reported its largest side). No tiles when the context refuses a
    // texture. The software strip is dropped.
    void setTextureStrip(RenderingContext& context, const Image& strip, int frames);
    int getTileCount() const { return tiles.getCount(); }
    int getFramesPerTile() const { return framesPerTile; }
    // Draws the present frame from its tile through the tile's context onto destination (x, y,
    // width, height in window pixels), turned by angle radians about (centreX, centreY), at alpha
    // 0 to 1 (see Texture::drawRotated). Nothing without tiles.
    void drawFrameTexture(const double destination[4], float alpha, double angle, double centreX, double centreY);

    // Whether there is a strip of at least 1 by 1 pixels.
    bool hasImage() const;
    int getFrameCount() const { return frames; }
    int getFrameHeight() const { return frameHeight; }
    const Image& getImage() const { return strip; }

    // Stores position limited to 0..1 and repaints when repaintNow is set, unless the strip is
    // kept as textures.
    void setPosition(float newPosition, bool repaintNow);
    using Component::setPosition;
    float getFramePosition() const { return position; }
    // The frame shown for the present position.
    int getFrameIndex() const;
    // How far the picture reaches up and left beyond the bounds; repaints.
    void setImageOffset(const Point& offset);
    const Point& getImageOffset() const { return imageOffset; }

    Rectangle getPaintBounds() override;
    void paint(SoftwareGraphics& graphics) override;

    // The frame for position with frameCount frames, limited to 0..frameCount - 1.
    static int computeFrameIndex(double position, int frameCount);

private:
    void renderingContextDeleted(RenderingContext* context) override;
    void releaseTiles();

    float position = 0.0f;
    Image strip;
    Image textureStrip;        // the picture behind the tiles
    int32_t frames = 0;
    int32_t frameHeight = 0;
    Point imageOffset;
    int32_t framesPerTile = 0;
    Array<Texture*> tiles;     // owned
    RenderingContext* tileContext = nullptr;  // the context of the tiles, listened to
};

}  // namespace q1framework
