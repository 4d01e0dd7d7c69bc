#pragma once

#include "media/geometry/Colour.h"
#include "media/geometry/Rectangle.h"

#include <array>
#include <cstddef>

namespace q1framework
{

class Image;

// The picture the image effects compute in: four float channels a pixel, in the order of a 32-bit
// pixel's bytes (blue, green, red, alpha), 0 to 1 where a byte runs from 0 to 255, colour
// premultiplied by alpha like the 32-bit pixels. Sums and kernels may leave that range; the
// conversion back to an Image limits every value to it.
//
// Around the picture lies a margin of zeroed pixels on all four sides, as around an Image, so
// that filters may read past the picture's edge without a test. The pixel (x, y) covers the
// square from (x, y) to (x + 1, y + 1), y downwards; getPixel reaches from -margin to
// width + margin - 1 (height likewise). Lines are getStride() floats apart; the block is 16-byte
// aligned and comes from alignedCalloc.
//
// One owner: a FloatImage moves but cannot be copied; setMargin is the one operation that copies
// the picture, into a block that then replaces the old one.
//
// Thread contract: main thread, like all image work.
class FloatImage
{
public:
    static constexpr int channels = 4;
    using Pixel = std::array<float, channels>;

    // The empty image.
    FloatImage() = default;
    // A zeroed picture of width by height with margin pixels on each side. A width or height
    // below 1, a negative margin, or a block that cannot be allocated (or reaches 4 GB) gives the
    // empty image.
    FloatImage(int width, int height, int margin);
    FloatImage(FloatImage&& other) noexcept;
    FloatImage& operator=(FloatImage&& other) noexcept;
    FloatImage(const FloatImage&) = delete;
    FloatImage& operator=(const FloatImage&) = delete;
    ~FloatImage();

    // The picture of image with each byte divided by 255, and the given margin (below 0 counts
    // as 0). Empty for an empty image or one without pixels.
    static FloatImage fromImage(const Image& image, int margin);
    // A new Image of the same size, margin 16: each channel limited to 0..1 and scaled to the
    // nearest byte, then each colour byte limited to the alpha byte, so that the pixels are
    // premultiplied whatever this image holds. The null image for an empty one.
    Image toImage() const;

    // The colour premultiplied by its alpha, in this image's channel order, 0 to 1; unlike
    // Colour::premultiply it keeps the fraction.
    static Pixel premultiplied(const Colour& colour);

    bool isEmpty() const { return block == nullptr; }
    int getWidth() const { return width; }
    int getHeight() const { return height; }
    Rectangle getBounds() const { return Rectangle(0, 0, width, height); }
    int getMargin() const { return margin; }
    // Floats from one line to the next: (width + 2 * margin) * 4.
    int getStride() const { return stride; }

    // The first of the four channels of pixel (x, y); unchecked, and meaningless for the empty
    // image.
    float* getPixel(int x, int y) { return origin + static_cast<ptrdiff_t>(y) * stride + x * channels; }
    const float* getPixel(int x, int y) const { return origin + static_cast<ptrdiff_t>(y) * stride + x * channels; }

    // Replaces the image by a copy of its picture with another margin (below 0 counts as 0).
    // False, with the image unchanged, when the copy cannot be allocated; true for an empty image.
    bool setMargin(int newMargin);

    // Every pixel becomes itself over background: each channel c + b * (1 - alpha), where b is
    // the background's premultiplied channel.
    void placeOver(const Colour& background);
    // Every pixel becomes top's pixel over it: each channel t + c * (1 - top alpha). A top of
    // another size, or an empty one, changes nothing.
    void placeUnder(const FloatImage& top);
    // Each pixel limited to a premultiplied colour: a pixel whose alpha is above 1 is first divided
    // by its alpha (all four channels, which keeps its colour), then alpha is limited to 0..1 and
    // each colour to 0..alpha.
    void limitToPremultiplied();

private:
    float* block = nullptr;   // the whole allocation, margins included
    float* origin = nullptr;  // channel 0 of pixel (0, 0)
    int width = 0;
    int height = 0;
    int margin = 0;
    int stride = 0;  // floats
};

}  // namespace q1framework
