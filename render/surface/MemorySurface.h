#pragma once

#include "render/surface/Surface.h"

namespace q1framework
{

// A surface that only keeps its pixels in memory, for the scaled window mode: the component tree
// is painted into it at its own size and then resampled onto the window's surface.
//
// The pixels are zeroed on creation and have a margin of 16 zeroed pixels on every side, so that
// drawing and filtering may run slightly past the picture without a test. Showing does nothing.
class MemorySurface : public Surface
{
public:
    static constexpr int margin = 16;

    // width by height pixels (negative sizes count as 0). When the memory cannot be had the
    // surface has size 0 by 0 and no pixels.
    MemorySurface(int width, int height);
    ~MemorySurface() override;

    // Stride (width + 2 * margin) * 4; the address of the pixel after margin lines and margin
    // pixels. Null for a surface without memory.
    uint8_t* getPixels(int* stride) override;
    void update(const RectangleList& dirty, void* nativeView, void* nativeDrawingArgument) override;
    void moveRegion(Rectangle& region, Point& destination) override;
    void present() override;
    void copyRegion(void* ignored, const Rectangle& source, const Point& destination) override;

    int getMargin() const override { return margin; }

private:
    uint8_t* block = nullptr;  // calloc'ed, (width + 2 * margin) * (height + 2 * margin) pixels
};

}  // namespace q1framework
