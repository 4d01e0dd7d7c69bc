#pragma once

#include "media/geometry/RectangleList.h"
#include "media/image/Image.h"
#include "render/context/RenderingContext.h"

namespace q1framework
{

// A RenderingContext that draws in software into an Image, the target: the pixels that a window
// without GL puts on the screen. It gives the components that draw through a context (the meters)
// the same pictures on both presenters: its textures are SoftwareTextures, and everything is
// drawn as OpenGLContext draws it, with the same blend (the source alpha as factor: a channel
// becomes source * a + target * (1 - a), alpha included) and the same sampling of textures.
//
// The target's pixels are taken as the window shows them: blue, green, red bytes over black, the
// alpha byte kept by the blend above but not read by the window. A context draws nothing
// without a target.
//
// Coordinates: pixels of the target, y downwards; the pixel (x, y) covers the square from
// (x, y) to (x + 1, y + 1) and is drawn when its centre lies inside a shape.
//
// A frame: beginFrame forgets the areas drawn before and clips to the whole target, as the GL
// context's frame does; each primitive then adds its bounding rectangle, cut to the target and
// the clip, to getDrawnAreas, so that a window knows which of its pixels the frame covered.
//
// Thread contract: main thread, like every context. No locks.
class SoftwareContext : public RenderingContext
{
public:
    // Textures larger than this on a side are refused.
    static constexpr int maximumTextureSide = 16384;

    SoftwareContext();
    // Tells the listeners first, while its textures can still be deleted.
    ~SoftwareContext() override;

    // The pixels to draw into, shared with the caller (the Image handle is kept, not the pixels
    // copied); a null image stops all drawing. The size of the context follows the target.
    void setTarget(const Image& target);
    const Image& getTarget() const { return target; }
    // The bounding rectangles of what was drawn since beginFrame, cut to the target and the clip.
    const RectangleList& getDrawnAreas() const { return drawnAreas; }

    // RenderingContext. Textures are SoftwareTextures; mode is ignored. getNativeContext is null:
    // there is no platform object behind the context.
    Texture* createTexture(int width, int height, int mode, int kind) override;
    Rectangle getClip() override { return clip; }
    void setClip(const Rectangle& area) override;
    void drawGradientRect(const Rectangle& area, const Colour corners[4]) override;
    // Colours interpolated bilinearly between the corners at each pixel's centre.
    void fillGradientRect(const Rectangle& area, const Colour corners[4]) override;
    void drawLine(int x1, int y1, int x2, int y2, const Colour& colour) override;
    void fillCircle(const Rectangle& bounds, const Colour& colour) override;
    void setSize(int width, int height) override;
    Point getSize() override { return size; }
    void* getNativeContext() override { return nullptr; }
    // Forgets the areas drawn before and, as the GL context does, clips to the whole target.
    void beginFrame() override;
    void endFrame() override {}

    // ---- For SoftwareTexture ----

    // Where pixels may be written now: the target's area, cut to the clip when clipping is on.
    Rectangle getDrawableArea() const;
    // Blends a straight colour (channels 0..1) at opacity 0..1 into the target pixel (x, y),
    // which must lie in getDrawableArea.
    void blendPixel(int x, int y, float red, float green, float blue, float opacity);
    // Records area (already cut to getDrawableArea) as drawn in this frame.
    void addDrawnArea(const Rectangle& area);

private:
    // A channel of the outline and line colours: bytes of 128 and above count as 0, 127 is
    // full, as the signed colour call of the GL context takes them.
    static float signedChannel(uint8_t byte);
    // Blends colour at the centre of (x, y) if it lies in drawable; the four channels 0..1.
    void blendIfInside(int x, int y, const Rectangle& drawable, const float colour[4]);

    Image target;
    Point size;
    Rectangle clip;            // the last non-empty clip
    bool clipping = false;     // whether clip applies
    RectangleList drawnAreas;  // since beginFrame
};

}  // namespace q1framework
