#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/RectangleList.h"
#include "native/window/Window.h"
#include "render/image/ImageResampler.h"
#include "render/software/SoftwareContext.h"
#include "ui/container/ComponentsContainer.h"

namespace q1framework
{

class Component;
class Surface;

// A Window that shows a tree of Components: it owns the tree's container and the Surface the
// tree is painted into, turns the window's events into the container's, and paints the dirty
// part of the tree once per frame. Holder, a plug-in editor's window, derives from it.
//
// Style bits (WindowFlags) it reads:
//   openGL (8) or imageSurface (64): how the pixels reach the screen, through a texture of the
//     rendering context (Surface kind 1) or the window system's image put (kind 2); noContext
//     (128) alone takes kind 3; a window with none of these paints nothing.
//   paintEveryFrame (32): paints each frame, dirty or not.
//   rebuildOnResize (16): a resize makes a new surface and repaints everything.
//   scaledContent (1024): the tree keeps its own size and is painted into a surface of that size
//     in memory; each frame the changed part is resampled into the window's surface, whatever the
//     window's size. Positions of pointer events are scaled into the tree's coordinates.
//   copyForScroll (32768): scrolling copies on the device instead of moving in memory.
//
// Coordinates: window pixels (physical) here, tree pixels in the container; they differ only
// with scaledContent.
//
// Overlay drawing (setOverlayDrawing): the root draws over each shown frame in afterRender, as
// the editor's meters do. Through GL it draws with the window's context after the tree's quad.
// Over the image put the window keeps the tree's pixels apart from the shown ones: each frame
// the changed part of the tree and the areas the overlay covered last time are copied to the
// shown pixels, the root draws into those through a SoftwareContext, and everything that changed
// is put. An overlay that moves therefore repaints nothing of the tree.
//
// Thread contract: main thread (see native/window/UiThread.h). A component must not delete the
// window synchronously from inside an event handler, since the container is still dispatching
// that event; a Button with setAsync(true) posts its click through the message pump, which is
// the way to close a window from a button.
class ComponentsWindow : public Window, public ComponentsContainer::Listener
{
public:
    // A window as Window makes it (see Window's constructor), with an empty container.
    ComponentsWindow(const Rectangle& bounds, int flags, const String& title, void* parent);
    // Deletes the tree, the surfaces, then the native window.
    ~ComponentsWindow() override;

    // The tree's root (owned from now on; the previous one is deleted), made visible with
    // makeVisible. The window takes the root's size; with scaledContent so does the container.
    void setContent(Component* root, bool makeVisible);
    ComponentsContainer& getContainer() { return container; }
    // Window pixels to tree pixels: x times root width / window width, in double, truncated;
    // likewise y. Unchanged without a root or with an empty window.
    Point windowToRoot(const Point& position) const;
    // Tree pixels to window pixels, truncated or, with roundUp, rounded up.
    Point rootToWindow(const Point& position, bool roundUp) const;
    // Whether the root draws over each frame (see above); off at first. The surfaces are made
    // anew at the next frame.
    void setOverlayDrawing(bool drawsOverlay);
    bool isOverlayDrawing() const { return overlayDrawing; }

    // ---- Window ----

    void backingScaleChanged() override;
    bool isInterestedInFiles(const Point& position, const Array<String>& paths) override;
    void filesDropped(const Point& position, const Array<String>& paths) override;
    void mouseEvent(int type, Point position, int button, int clickCount, float deltaX, float deltaY) override;
    // Both release every button at their position (-1, -1 for the lost activation), so that a
    // window that loses the pointer cannot leave a button held.
    void mouseLeft(Point position) override;
    void activeChanged(bool active) override;
    void resized() override;
    void frameTick() override;
    void paint() override;
    bool keyPressed(int key, int nativeKeyCode) override;
    bool keyReleased(int key, int nativeKeyCode) override;
    // Deletes the surfaces (they may hold textures of the rendering context), then closes.
    void destroyNative() override;

    // ---- ComponentsContainer::Listener ----

    // The tree's area, scaled to window pixels and rounded outward, is invalidated in the window.
    void areaInvalidated(const Rectangle& area) override;
    // The tree's pixels move (or are copied) within the buffer the tree is painted into.
    void areaMoved(const Rectangle& source, const Point& destination) override;
    void areaCopied(const Rectangle& source, const Point& destination) override;

    // The Surface kind for a window's style: 1 for openGL, else 2 for imageSurface, else 3 for
    // noContext, else 4, which makes no surface.
    static int getSurfaceKind(int flags);

private:
    bool hasStyle(int style) const { return (getFlags() & style) != 0; }
    // Whether the overlay is drawn in software over a second buffer (image put, overlay on).
    bool composesOverlay() const;
    // The frame's software part: the tree painted, its changed rectangles shown.
    void paintSoftware();
    // Paint the dirty part of the tree into target (window-sized) and leave the window
    // rectangles to show in presented; false when nothing was painted.
    bool paintUnscaled(Surface& target);
    bool paintScaled(Surface& target, bool surfaceIsNew);
    // The image put's frame with an overlay: see the class comment.
    void showWithOverlay(bool painted, bool surfaceIsNew);
    void releaseButtons(const Point& windowPosition);
    void deleteSurfaces();
    void deleteWindowSurfaces();

    ComponentsContainer container;
    Surface* surface = nullptr;        // owned; the window's pixels, at its client size
    Surface* treeSurface = nullptr;    // owned; the tree's window-sized pixels under a composed overlay
    Surface* scaledSurface = nullptr;  // owned; the tree's pixels, at its size (scaledContent)
    ImageResampler resampler;          // the scaled blit's working memory
    RectangleList presented;           // the window rectangles to show in a frame
    bool overlayDrawing = false;
    SoftwareContext overlayContext;    // the overlay's context over the image put
    RectangleList overlayAreas;        // what the overlay covered in the last frame
};

}  // namespace q1framework
