#pragma once

#include "media/geometry/Point.h"
#include "media/geometry/Rectangle.h"

#include <cstdint>

namespace q1framework
{

class ImageDelta;
class Stream;
class String;

// The framework's bitmap: a handle of one pointer onto shared, reference-counted 32-bit pixels.
//
// Pixel format: 4 bytes a pixel, in memory blue, green, red, alpha (0xAARRGGBB as a little-endian
// word), colour premultiplied by alpha when it comes from a decoder. The pixel (x, y) covers the
// square from (x, y) to (x + 1, y + 1), y downwards.
//
// Around the picture lies a margin of zeroed pixels on all four sides (16 by default), so that
// filters may read a few pixels past the picture's edge without a bounds test. The block is
// (height + 2 * margin) * stride bytes, 16-byte aligned, stride = (width + 2 * margin) * 4.
//
// Copies share the pixels; == compares the shared object, never the pixels. Operations that
// change pixels in place are seen through every handle. The reference count is atomic; the pixels
// themselves are unprotected and belong to the main thread.
class Image
{
public:
    class InternalImage;

    static constexpr int defaultMargin = 16;
    // Flag of the wrapping constructor: the image uses the caller's memory instead of a copy.
    static constexpr int wrapPixels = 1;

    // The null handle.
    Image() = default;
    // Width and height both below 1 give the null handle. Otherwise a live image whose margin is
    // zeroed; its picture is zeroed too when clear is true, else undefined. When the block's size
    // is below 1 (a width of 0 with no margin) the image holds no memory; a block that cannot be
    // allocated (or exceeds 4 GB) leaves an empty image with no memory and a size of 0 by 0.
    Image(int width, int height, bool clear, int margin = defaultMargin);
    Image(const Point& size, bool clear, int margin = defaultMargin);
    // With wrapPixels in flags: an image over the caller's memory, which must outlive every
    // handle and is never freed by it. pixels is the picture's pixel (0, 0); margin says how many
    // zeroed pixels the caller's memory holds around the picture on every side (its lines are
    // still stride bytes apart), so that readers past the edge use them instead of copying the
    // picture into an image that has a margin. Without wrapPixels: a new image of margin 16
    // holding a copy of the width * 4 bytes of each line of pixels, and margin is ignored.
    Image(void* pixels, int width, int height, int stride, int flags, int margin = 0);
    Image(const Image& other);
    Image(Image&& other) noexcept : internal(other.internal) { other.internal = nullptr; }
    Image& operator=(const Image& other);
    Image& operator=(Image&& other) noexcept;
    ~Image();

    bool operator==(const Image& other) const { return internal == other.internal; }
    bool operator!=(const Image& other) const { return internal != other.internal; }

    bool isNull() const { return internal == nullptr; }
    // The null handle, or a width or height of 0.
    bool isEmpty() const;

    // Plain reads; 0 (a null pointer) for the null handle.
    int getWidth() const;
    int getHeight() const;
    Point getSize() const;
    Rectangle getBounds() const { return Rectangle(Point(), getSize()); }
    int getStride() const;
    int getMargin() const;
    static constexpr int getBytesPerPixel() { return 4; }
    // The start of the whole block, margins included.
    uint8_t* getData() const;

    // Unchecked addresses in the picture: line y, pixel (x, y). An image without pixels (the null
    // handle, or one whose block is empty) gives the same offsets from address zero, which must
    // not be read through.
    uint8_t* getLine(unsigned y) const;
    uint8_t* getPixelPointer(int x, int y) const;
    uint8_t* getPixelPointer(const Point& position) const { return getPixelPointer(position.x, position.y); }
    // As getPixelPointer, but the null handle gives the address of a static transparent pixel.
    const uint8_t* getPixelAt(const Point& position) const;

    // A new image with the same size and margin and a copy of the whole block.
    Image duplicate() const;
    // Replaces this handle's image by a copy with another margin; other handles keep the old one.
    void setMargin(int margin);

    // Every picture pixel becomes (blue, green, red, alpha) from the given channel values.
    void fill(int red, int green, int blue, int alpha);
    // Zeroes the part of area that lies inside the picture.
    void clearRect(const Rectangle& area);
    // Ors alpha into the alpha byte of every picture pixel (255 makes the picture opaque).
    void orAlpha(unsigned alpha);
    // Red, green and blue of each picture pixel become (channel * alpha) >> 8. The shift is
    // deliberate: it is not a division by 255, so 255 at alpha 255 gives 254.
    void premultiply();
    // Each pixel's four bytes become old[first], old[second], old[third], old[fourth].
    void permuteChannels(int first, int second, int third, int fourth);
    void reverseChannels() { permuteChannels(3, 2, 1, 0); }
    void rotateChannels() { permuteChannels(3, 0, 1, 2); }
    // Swaps lines y and height - 1 - y, stride bytes each.
    void flipVertical();
    // Moves the pixels of from to position to, within the picture (both areas are clipped to it);
    // overlapping areas move correctly.
    void moveRect(const Rectangle& from, const Point& to);

    // Half the width and half the height (rounded down), through a half-band filter of five taps
    // (-910, 9648, 17164, 9648, -910 at offsets -3, -1, 0, 1, 3) applied horizontally and then
    // vertically in 16-bit fixed point. New image of margin 16; the null handle for a picture
    // below 2 by 2.
    Image getHalfSize() const;

    // Whether any channel of the pixels at position differs from other's by more than tolerance.
    bool differsAt(const Image& other, const Point& position, int tolerance) const;
    // The pixels of other that differ from this image's by more than tolerance, line by line and
    // left to right; null when this is null or the sizes differ. The caller owns the record.
    ImageDelta* computeDelta(const Image& other, int tolerance) const;

    // The picture in a PNG or JPEG file, premultiplied; the null handle when the file cannot be
    // read whole or decoded.
    static Image loadFromFile(const String& path);
    // Decodes PNG (tried when the data starts with the PNG signature), then JPEG (when it starts
    // with 255, 216); the null handle for fewer than 11 bytes, for anything else, and for a
    // picture beyond 32768 pixels a side or 64 megapixels.
    static Image decode(const void* data, unsigned size);

    // The container "Q1IMG00": magic, width, height, stride, margin (32-bit), then a 64-bit byte
    // count and the whole block, present when the block's size is at least 1. The null handle is
    // written as four zeros after the magic, and a reader stops after width and height, so the
    // stride and margin zeros stay unread.
    //
    // readFrom: true when a container was read (possibly the null image). False for another magic
    // or for fields that do not describe a consistent block the stream still holds: then this
    // handle is left unchanged and nothing is allocated for the claimed size.
    bool readFrom(Stream& stream);
    // False when the stream did not take every byte.
    bool writeTo(Stream& stream) const;

    // In place on a raw buffer of opaque pixels: the top-left width / 2 by height / 2 pixels
    // become the 2 by 2 box average (sum >> 2) of red, green and blue, with alpha 255.
    static void boxHalve(uint8_t* pixels, int width, int height, int stride);
    // Nearest-neighbour copy of a source picture onto a target of another size. The source column
    // advances by the truncated 16.16 value of sourceWidth / targetWidth per pixel, the source
    // line by the ratio of heights per line.
    static void resampleNearest(const uint8_t* source, int sourceWidth, int sourceHeight, int sourceStride,
                                uint8_t* target, int targetWidth, int targetHeight, int targetStride);

private:
    explicit Image(InternalImage* adopted) : internal(adopted) {}

    InternalImage* internal = nullptr;
};

}  // namespace q1framework
