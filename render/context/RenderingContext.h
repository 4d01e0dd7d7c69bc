#pragma once

#include "foundation/var/Array.h"
#include "media/geometry/Colour.h"
#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

class Image;
class Texture;

// The hardware drawing target of one window: it hands out Textures, keeps one rectangular clip
// and draws a very small set of primitives. All widget painting is done in software into a
// Surface; a RenderingContext puts that surface on the screen (one textured quad), and a few
// components (the meters) draw animated textured quads on top of it. OpenGLContext draws through
// the window's GL; SoftwareContext draws the same primitives in software into the pixels that a
// window without GL shows, so that those components look the same on both presenters.
//
// Coordinates: pixels of the window, origin at the top-left corner, y growing downwards. There
// is no transform and no state stack: a caller that changes the clip reads the old one first and
// puts it back itself.
//
// Colours are straight (not premultiplied); blending is source-over with the source alpha as
// factor. Textures are drawn with the same blend and a constant alpha.
//
// A frame: beginFrame, then the surface's present and any direct drawing, then endFrame.
//
// Thread contract: main thread, that is whichever host thread is calling into the user
// interface at the moment (see native/window/UiThread.h). No locks.
class RenderingContext
{
public:
    // Told when a context goes away. Held unowned; remove it before it is destroyed.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // The context is being destroyed: release every Texture made from it and forget it. The
        // context is still able to delete textures during this call. A listener must not add
        // listeners from here.
        virtual void renderingContextDeleted(RenderingContext* context) { (void)context; }
    };

    RenderingContext() = default;
    // Tells the listeners that are still registered, last added first (see notifyDeletion).
    virtual ~RenderingContext();

    RenderingContext(const RenderingContext&) = delete;
    RenderingContext& operator=(const RenderingContext&) = delete;

    // A new texture of width by height texels, owned by the caller, or null when the device
    // refuses. mode is accepted and ignored (callers pass 0 or 1); kind is kept in the texture
    // and returned by Texture::getKind (1 for surfaces).
    virtual Texture* createTexture(int width, int height, int mode, int kind) = 0;
    // Cuts region to the image; null when nothing is left. Otherwise a texture of the cut size,
    // from createTexture(w, h, 0, kind), holding the image's pixels from its top-left corner: the
    // position of region plays no part in the copy, only its size (callers pass regions that
    // start at (0, 0)). With unpremultiply the colour is divided by alpha on the way.
    virtual Texture* createTextureFromImage(const Image& image, Rectangle region, int kind, bool unpremultiply);
    // The clip, as last set (see setClip).
    virtual Rectangle getClip() = 0;
    // Drawing is limited to area. An empty area (width or height below 1) turns clipping off
    // altogether; getClip then still reports the last non-empty clip.
    virtual void setClip(const Rectangle& area) = 0;
    // The outline of area: corners top-left, top-right, bottom-right, bottom-left, the colour
    // blended along the edges. The outline runs through the pixel centres from (x, y) to
    // (x + w - 1, y + h - 1). Colour channels of 128 and above count as 0 and 127 is full
    // intensity: a property of the signed colour call the outline is drawn with.
    virtual void drawGradientRect(const Rectangle& area, const Colour corners[4]) = 0;
    // Fills area, colours as drawGradientRect, interpolated across the area; no channel limit.
    virtual void fillGradientRect(const Rectangle& area, const Colour corners[4]) = 0;
    // A line one pixel wide from (x1, y1) to (x2, y2); the channel limit of drawGradientRect.
    virtual void drawLine(int x1, int y1, int x2, int y2, const Colour& colour) = 0;
    // A filled circle of diameter bounds.w, centred in bounds, its edge faded over one pixel; a
    // box taller than wide is clipped to the box.
    virtual void fillCircle(const Rectangle& bounds, const Colour& colour) = 0;
    // The drawable size in pixels; the window sets it whenever its size changes.
    virtual void setSize(int width, int height) = 0;
    virtual Point getSize() = 0;
    // The platform's handle of the context (opaque); null for a context without one.
    virtual void* getNativeContext() = 0;
    // Starts a frame on the calling thread over the whole drawable (getSize). A GL context binds
    // itself, sets up the projection and state, and clears to opaque black: its whole frame is
    // drawn anew every time. A software context draws over the pixels its target holds.
    virtual void beginFrame() = 0;
    // Ends the frame: puts it on screen and unbinds the context from the calling thread.
    virtual void endFrame() = 0;

    // Appends listener unless it is already listed; answers whether it was added.
    bool addListener(Listener* listener);
    // Removes the first equal entry, keeping the order; answers whether one was found.
    bool removeListener(Listener* listener);
    int32_t getListenerCount() const { return listeners.getCount(); }
    int32_t getListenerCapacity() const { return listeners.getCapacity(); }

    // createTextureFromImage over the whole image.
    Texture* createTextureFromImage(const Image& image, int kind, bool unpremultiply);
    // fillGradientRect and drawGradientRect with one colour at all four corners.
    void fillRect(const Rectangle& area, const Colour& colour);
    void drawRect(const Rectangle& area, const Colour& colour);

    // The largest texture side the device accepts, as it reported it; 0 before it did.
    int getMaximumTextureSize() const { return maximumTextureSize; }

protected:
    // Calls renderingContextDeleted(this) on each listener, last to first, with the count read
    // before the first call, then empties the list. The base destructor runs it; a subclass
    // whose textures need the device to be deleted runs it first in its own destructor.
    void notifyDeletion();

    int32_t maximumTextureSize = 0;

private:
    Array<Listener*> listeners;  // not owned, in the order added
};

}  // namespace q1framework
