#include "media/image/Image.h"

#include "foundation/runtime/AlignedAllocation.h"
#include "media/image/InternalImage.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

namespace q1framework
{

namespace
{
constexpr int blockAlignment = 16;

// The stride and block size of an image, or false when they do not fit the 32-bit fields and the
// allocator's 32-bit size.
bool computeLayout(int64_t width, int64_t height, int64_t margin, int32_t& stride, int64_t& byteCount)
{
    const int64_t wideStride = (width + 2 * margin) * 4;
    if (wideStride > std::numeric_limits<int32_t>::max())
        return false;
    byteCount = (height + 2 * margin) * wideStride;
    if (byteCount > std::numeric_limits<uint32_t>::max())
        return false;
    stride = static_cast<int32_t>(wideStride);
    return true;
}

// pixels + offset. Without a block the result is the offset from address zero, formed without
// arithmetic on a null pointer; nobody may read through it.
uint8_t* offsetInto(uint8_t* pixels, ptrdiff_t offset)
{
    return pixels != nullptr ? pixels + offset : reinterpret_cast<uint8_t*>(static_cast<uintptr_t>(offset));
}

// Zeroes the top and bottom bands and the left and right margin of every line.
void clearMargins(Image::InternalImage& image)
{
    const size_t topBand = static_cast<size_t>(image.margin) * static_cast<size_t>(image.stride);
    std::memset(image.data, 0, topBand);
    std::memset(image.data + static_cast<size_t>(image.margin + image.height) * image.stride, 0, topBand);
    const size_t side = static_cast<size_t>(image.margin) * 4;
    for (int32_t y = 0; y < image.height; ++y)
    {
        uint8_t* line = image.pixels + static_cast<size_t>(y) * image.stride;
        std::memset(line - side, 0, side);
        std::memset(line + static_cast<size_t>(image.width) * 4, 0, side);
    }
}

// The picture of from into to, line by line; both have the same width and height.
void copyPicture(const Image::InternalImage& from, Image::InternalImage& to)
{
    if (from.pixels == nullptr || to.pixels == nullptr)
        return;
    for (int32_t y = 0; y < from.height; ++y)
        std::memcpy(to.pixels + static_cast<size_t>(y) * to.stride, from.pixels + static_cast<size_t>(y) * from.stride,
                    static_cast<size_t>(from.width) * 4);
}
}

Image::InternalImage::InternalImage(int32_t newWidth, int32_t newHeight, int32_t newMargin, bool clear)
    : ReferenceCountedObject(true), width(newWidth), height(newHeight), margin(newMargin)
{
    int64_t byteCount = 0;
    if (!computeLayout(width, height, margin, stride, byteCount))
    {
        width = height = stride = 0;
        return;
    }
    if (byteCount < 1)
        return;
    data = static_cast<uint8_t*>(alignedMalloc(static_cast<unsigned>(byteCount), blockAlignment));
    if (data == nullptr)
    {
        width = height = stride = 0;
        return;
    }
    pixels = data + static_cast<size_t>(margin) * stride + static_cast<size_t>(margin) * 4;
    if (clear)
        std::memset(data, 0, static_cast<size_t>(byteCount));
    else
        clearMargins(*this);
}

Image::InternalImage::InternalImage(uint8_t* callerPixels, int32_t newWidth, int32_t newHeight, int32_t newStride)
    : ReferenceCountedObject(true), data(callerPixels), pixels(callerPixels), width(newWidth), height(newHeight),
      stride(newStride), margin(0), ownsData(false)
{
}

Image::InternalImage* Image::InternalImage::wrap(uint8_t* callerPixels, int32_t width, int32_t height,
                                                 int32_t stride, int32_t margin)
{
    auto* image = new InternalImage(callerPixels, width, height, stride);
    image->margin = margin;
    if (callerPixels != nullptr)
        image->data = callerPixels - static_cast<ptrdiff_t>(margin) * stride - static_cast<ptrdiff_t>(margin) * 4;
    return image;
}

Image::InternalImage::InternalImage(uint8_t* block, int32_t newWidth, int32_t newHeight, int32_t newStride,
                                    int32_t newMargin)
    : ReferenceCountedObject(true), data(block), width(newWidth), height(newHeight), stride(newStride),
      margin(newMargin)
{
    if (data != nullptr)
        pixels = data + static_cast<size_t>(margin) * stride + static_cast<size_t>(margin) * 4;
}

Image::InternalImage::~InternalImage()
{
    if (ownsData)
        alignedFree(data);
}

Image::Image(int width, int height, bool clear, int margin)
{
    if (width < 1 && height < 1)
        return;
    internal = new InternalImage(std::max(width, 0), std::max(height, 0), std::max(margin, 0), clear);
}

Image::Image(const Point& size, bool clear, int margin) : Image(size.x, size.y, clear, margin) {}

Image::Image(void* pixels, int width, int height, int stride, int flags, int margin)
{
    if (width < 1 && height < 1)
        return;
    width = std::max(width, 0);
    height = std::max(height, 0);
    if ((flags & wrapPixels) != 0)
    {
        internal = InternalImage::wrap(static_cast<uint8_t*>(pixels), width, height, stride, std::max(margin, 0));
        return;
    }
    internal = new InternalImage(width, height, defaultMargin, false);
    if (pixels != nullptr && internal->width == width)
        copyPicture(InternalImage(static_cast<uint8_t*>(pixels), width, height, stride), *internal);
}

Image::Image(const Image& other) : internal(other.internal)
{
    if (internal != nullptr)
        internal->incReferenceCount();
}

Image& Image::operator=(const Image& other)
{
    if (internal == other.internal)
        return *this;
    if (other.internal != nullptr)
        other.internal->incReferenceCount();
    if (internal != nullptr)
        internal->decReferenceCount();
    internal = other.internal;
    return *this;
}

Image& Image::operator=(Image&& other) noexcept
{
    if (this != &other)
    {
        if (internal != nullptr)
            internal->decReferenceCount();
        internal = other.internal;
        other.internal = nullptr;
    }
    return *this;
}

Image::~Image()
{
    if (internal != nullptr)
        internal->decReferenceCount();
}

bool Image::isEmpty() const
{
    return internal == nullptr || internal->width == 0 || internal->height == 0;
}

int Image::getWidth() const
{
    return internal != nullptr ? internal->width : 0;
}

int Image::getHeight() const
{
    return internal != nullptr ? internal->height : 0;
}

Point Image::getSize() const
{
    return Point(getWidth(), getHeight());
}

int Image::getStride() const
{
    return internal != nullptr ? internal->stride : 0;
}

int Image::getMargin() const
{
    return internal != nullptr ? internal->margin : 0;
}

uint8_t* Image::getData() const
{
    return internal != nullptr ? internal->data : nullptr;
}

uint8_t* Image::getLine(unsigned y) const
{
    if (internal == nullptr)
        return nullptr;  // no pixels and a stride of 0
    return offsetInto(internal->pixels, static_cast<ptrdiff_t>(y) * internal->stride);
}

uint8_t* Image::getPixelPointer(int x, int y) const
{
    const ptrdiff_t stride = internal != nullptr ? internal->stride : 0;
    return offsetInto(internal != nullptr ? internal->pixels : nullptr,
                      static_cast<ptrdiff_t>(y) * stride + static_cast<ptrdiff_t>(x) * 4);
}

const uint8_t* Image::getPixelAt(const Point& position) const
{
    static const uint8_t transparentPixel[4] = {0, 0, 0, 0};
    return internal != nullptr ? getPixelPointer(position) : transparentPixel;
}

Image Image::duplicate() const
{
    if (internal == nullptr)
        return Image();
    Image copy(new InternalImage(internal->width, internal->height, internal->margin, false));
    if (copy.internal->stride != internal->stride)
        copyPicture(*internal, *copy.internal);  // a wrapper's lines may lie further apart
    else if (copy.internal->data != nullptr && internal->data != nullptr)
        std::memcpy(copy.internal->data, internal->data, static_cast<size_t>(copy.internal->getByteCount()));
    return copy;
}

void Image::setMargin(int margin)
{
    if (internal == nullptr)
        return;
    Image copy(new InternalImage(internal->width, internal->height, std::max(margin, 0), false));
    copyPicture(*internal, *copy.internal);
    *this = std::move(copy);
}

}  // namespace q1framework
