#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleList.h"
#include "media/image/Image.h"

#include <cstdint>

namespace q1framework
{

class ImagePresenter;
class RenderingContext;

// The pixel buffer that a window's component tree is painted into by SoftwareGraphics. The
// subclasses differ in how the pixels reach the screen: MemorySurface keeps them for a later
// scaling step, TextureSurface and OpenGLSurface upload them into a Texture of a rendering
// context, ImageSurface puts them into the window through the window system.
//
// Pixels: 32 bits, in memory blue, green, red, alpha, premultiplied. Every surface here keeps a
// margin of zeroed pixels around its picture (getMargin).
//
// Thread contract: main thread only. A surface is owned by its window and replaced when the
// window's size changes.
class Surface
{
public:
    // What Surface::create makes.
    enum Kind
    {
        memoryKind = 0,    // MemorySurface: pixels in memory only, for the scaled window mode
        openGLKind = 1,    // OpenGLSurface over the window's rendering context
        imageKind = 2,     // ImageSurface over the window's image presenter
        openGLAltKind = 3  // OpenGLSurface as well
    };

    // A new surface of the given kind and size, owned by the caller. Kinds 1 and 3 need context
    // (an OpenGLSurface over an OpenGLContext, a TextureSurface over any other), kind 2 needs
    // presenter (the window's, Window::getImagePresenter); kind 0 needs neither. Null for any
    // other kind, or when what the kind needs is null.
    static Surface* create(RenderingContext* context, int kind, const Point& size, ImagePresenter* presenter = nullptr);

    explicit Surface(const Point& initialSize) : size(initialSize) {}
    virtual ~Surface() = default;

    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    // The address of pixel (0, 0); the bytes from one line to the next go to *stride (negative
    // when the lines run upwards in memory).
    virtual uint8_t* getPixels(int* stride) = 0;
    // Shows the dirty rectangles of the pixels (in surface pixels; parts outside are ignored).
    // The two native arguments are those of the platform's draw call; no surface here reads them.
    virtual void update(const RectangleList& dirty, void* nativeView, void* nativeDrawingArgument) = 0;
    // Moves the pixels of region to destination and shows them there.
    virtual void moveRegion(Rectangle& region, Point& destination) = 0;
    // Puts the whole surface on screen, as far as this kind of surface needs it at the end of a
    // frame.
    virtual void present() = 0;
    // Copies the pixels of source to destination on the device.
    virtual void copyRegion(void* ignored, const Rectangle& source, const Point& destination) = 0;
    // Zeroed pixels around the picture on every side.
    virtual int getMargin() const = 0;

    // Size in pixels.
    Point getSize() const { return size; }

    // An Image over the surface's own pixels (no copy) that reports the surface's margin, so that
    // readers past the picture's edge, such as the scaled blit, use the margin directly. Made on
    // the first call and kept, so later calls allocate nothing; valid while the surface lives.
    // The null image for a surface without pixels.
    const Image& getImage();

protected:
    Point size;

private:
    Image image;  // the wrapper of getImage, null until asked for
};

}  // namespace q1framework
