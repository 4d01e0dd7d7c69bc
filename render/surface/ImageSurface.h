#pragma once

#include "render/surface/MemorySurface.h"

namespace q1framework
{

class ImagePresenter;

// The surface of a window that draws without a rendering context: its pixels live in memory,
// like a MemorySurface's (margin 16, zeroed at creation), and reach the window through the
// window's ImagePresenter, which puts rectangles of them into the window (on X11 with MIT-SHM,
// or a plain image put on a display without it). Only the rectangles handed to update cross to
// the window system, plus whatever the window system reports lost.
//
// Thread contract: main thread only. The presenter is the window's and must outlive the surface
// (the window deletes its surfaces before its native side).
class ImageSurface : public MemorySurface
{
public:
    // width by height pixels, shown through presenter (not owned, not null).
    ImageSurface(ImagePresenter& presenter, int width, int height);

    // Puts the dirty rectangles into the window; the native arguments are not read.
    void update(const RectangleList& dirty, void* nativeView, void* nativeDrawingArgument) override;
    // Moves the pixels of region to destination within the picture, and puts the moved
    // rectangle. Parts that would land outside the picture are dropped.
    void moveRegion(Rectangle& region, Point& destination) override;
    // Puts what the window system lost since the last put (exposed areas), and nothing else.
    void present() override;
    // The same as moveRegion: the device of this surface is the window, so a copy on the device
    // is a move of the pixels that are put there.
    void copyRegion(void* ignored, const Rectangle& source, const Point& destination) override;

private:
    ImagePresenter& presenter;
};

}  // namespace q1framework
