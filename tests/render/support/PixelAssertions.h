#pragma once

#include "media/image/Image.h"

#include <cstdint>
#include <ostream>

// Pixel values for the renderer's exact checks, in the memory order of a pixel.
struct PixelValue
{
    int blue;
    int green;
    int red;
    int alpha;

    bool operator==(const PixelValue& other) const
    {
        return blue == other.blue && green == other.green && red == other.red && alpha == other.alpha;
    }
    bool operator!=(const PixelValue& other) const { return !(*this == other); }
};

inline std::ostream& operator<<(std::ostream& stream, const PixelValue& pixel)
{
    return stream << "(b " << pixel.blue << ", g " << pixel.green << ", r " << pixel.red << ", a " << pixel.alpha << ")";
}

const PixelValue opaqueBlack{0, 0, 0, 255};
const PixelValue opaqueWhite{255, 255, 255, 255};

// White at alpha (0 to 255) in the straight colour form over opaque black: colour
// 255 * alpha >> 8 on each channel, alpha (255 * (256 - alpha) >> 8) + alpha, which is 255.
inline PixelValue whiteOverBlack(int alpha)
{
    const int colour = 255 * alpha >> 8;
    return {colour, colour, colour, (255 * (256 - alpha) >> 8) + alpha};
}

inline PixelValue readPixel(const q1framework::Image& image, int x, int y)
{
    const uint8_t* pixel = image.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

// A picture of width by height, margin 16, every pixel (blue, green, red, alpha).
inline q1framework::Image makeCanvas(int width, int height, const PixelValue& fill)
{
    q1framework::Image image(width, height, true);
    image.fill(fill.red, fill.green, fill.blue, fill.alpha);
    return image;
}

// Whether every byte of the margin band around the picture is still 0.
inline bool marginIsClear(const q1framework::Image& image)
{
    const int margin = image.getMargin();
    for (int y = -margin; y < image.getHeight() + margin; ++y)
        for (int x = -margin; x < image.getWidth() + margin; ++x)
        {
            const bool inside = x >= 0 && y >= 0 && x < image.getWidth() && y < image.getHeight();
            if (!inside && readPixel(image, x, y) != PixelValue{0, 0, 0, 0})
                return false;
        }
    return true;
}
