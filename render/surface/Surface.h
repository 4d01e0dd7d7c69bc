#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"
#include "media/geometry/RectangleList.h"

#include <cstdint>

namespace q1framework
{

// The pixel buffer that a window's component tree is painted into by SoftwareGraphics. The
// subclasses differ in how the pixels reach the screen: MemorySurface keeps them for a later
// scaling step; the window-system surfaces upload or show them.
//
// Pixels: 32 bits, in memory blue, green, red, alpha, premultiplied.
//
// Thread contract: main thread only. A surface is owned by its window and replaced when the
// window's size changes.
class Surface
{
public:
    explicit Surface(const Point& initialSize) : size(initialSize) {}
    virtual ~Surface() = default;

    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    // The address of pixel (0, 0); the bytes from one line to the next go to *stride (negative
    // when the lines run upwards in memory).
    virtual uint8_t* getPixels(int* stride) = 0;
    // Shows the dirty rectangles of the pixels in the native view.
    virtual void update(const RectangleList& dirty, void* nativeView, void* nativeDrawingArgument) = 0;
    // Moves the pixels of region to destination and shows them there.
    virtual void moveRegion(Rectangle& region, Point& destination) = 0;
    // Puts the whole surface on screen.
    virtual void present() = 0;
    // Copies the pixels of source to destination on the device.
    virtual void copyRegion(void* ignored, const Rectangle& source, const Point& destination) = 0;

    // Size in pixels.
    Point getSize() const { return size; }

protected:
    Point size;
};

}  // namespace q1framework
