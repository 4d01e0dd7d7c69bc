#pragma once

#include "media/geometry/Point.h"
#include "media/image/Image.h"
#include "ui/component/Component.h"

#include <cstdint>

namespace q1framework
{

// A component that shows one frame of a film strip: a picture whose frames, all as wide as the
// picture, are stacked vertically. There is no timer and no easing: a position from 0 to 1 picks
// the frame, and whoever owns the component moves the position.
//
// Frame for a position p with n frames: trunc((n - 1) * p + 0.5), in double (a position that is
// not a number shows frame 0). The frame is drawn with its top-left imageOffset up and left of
// the component's top-left, blended unless the component is opaque; the paint area is the frame's
// area there.
//
// Thread contract: main thread only.
class AnimatableComponent : public Component
{
public:
    AnimatableComponent();
    ~AnimatableComponent() override;

    // The film strip, frames tall (frame height = picture height / frames, 0 for 0 frames).
    // A null image instead blanks the current strip's pixels and sets the frame count to 0: the
    // strip object stays, so hasImage() keeps its answer and nothing visible is drawn.
    void setImage(const Image& strip, int frames);
    // Whether there is a strip of at least 1 by 1 pixels.
    bool hasImage() const;
    int getFrameCount() const { return frames; }
    int getFrameHeight() const { return frameHeight; }
    const Image& getImage() const { return strip; }

    // Stores position limited to 0..1 and repaints when repaintNow is set.
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
    float position = 0.0f;
    Image strip;
    int32_t frames = 0;
    int32_t frameHeight = 0;
    Point imageOffset;
};

}  // namespace q1framework
