#pragma once

#include "foundation/runtime/ReferenceCountedObject.h"
#include "media/image/Image.h"

#include <cstdint>

namespace q1framework
{

// The shared pixels behind Image handles; seen only by the image's own sources.
class Image::InternalImage : public ReferenceCountedObject
{
public:
    // An image of width by height with the given margin, margins zeroed; the picture zeroed too
    // when clear is set. width, height and margin must not be negative. A size of 0 bytes leaves
    // data null; a failed (or 4 GB or larger) allocation leaves data null and the size 0 by 0.
    InternalImage(int32_t width, int32_t height, int32_t margin, bool clear);
    // A wrapper over the caller's memory, margin 0, not owned.
    InternalImage(uint8_t* callerPixels, int32_t width, int32_t height, int32_t stride);
    // A wrapper over the caller's memory, not owned: callerPixels is pixel (0, 0), and the
    // caller's memory holds margin pixels around the picture.
    static InternalImage* wrap(uint8_t* callerPixels, int32_t width, int32_t height, int32_t stride, int32_t margin);
    // Takes a block from alignedMalloc with the given layout; the caller has checked it.
    InternalImage(uint8_t* block, int32_t width, int32_t height, int32_t stride, int32_t margin);
    ~InternalImage() override;

    // (height + 2 * margin) * stride, computed without overflow.
    int64_t getByteCount() const { return static_cast<int64_t>(height + 2 * margin) * stride; }

    uint8_t* data = nullptr;    // start of the block; the caller's memory for a wrapper
    uint8_t* pixels = nullptr;  // pixel (0, 0): data + margin * stride + margin * 4
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;         // bytes from one line to the next
    int32_t margin = 0;         // zeroed pixels on each side
    bool ownsData = true;       // frees data with alignedFree
};

}  // namespace q1framework
