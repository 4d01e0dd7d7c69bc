#pragma once

#include <cstdint>

namespace q1framework
{

class Stream;
class String;

// A colour with alpha, not premultiplied: four bytes in memory in the order alpha, red, green,
// blue, which as a value is 0xAARRGGBB. That is the reverse of a pixel's byte order (blue, green,
// red, alpha). A Var holds a Colour as its value 0xAARRGGBB (getARGB and the constructor from
// that value).
class Colour
{
public:
    Colour() = default;
    // From the value 0xAARRGGBB.
    explicit Colour(uint32_t argb);
    // Each channel's low byte.
    Colour(int red, int green, int blue, int alpha);
    // Text such as "#FF8000C0": blanks and '#' at either end are dropped, the rest is read as
    // hexadecimal bytes. Exactly four bytes give alpha, red, green and blue in that order; any
    // other count gives the transparent black of Colour().
    explicit Colour(const String& text);

    // "#" and the eight upper-case digits of getARGB().
    String toString() const;
    uint32_t getARGB() const;

    uint8_t getAlpha() const { return alpha; }
    uint8_t getRed() const { return red; }
    uint8_t getGreen() const { return green; }
    uint8_t getBlue() const { return blue; }

    bool operator==(const Colour& other) const { return getARGB() == other.getARGB(); }
    bool operator!=(const Colour& other) const { return !(*this == other); }

    // Hue and saturation from 0 to 1 (hue 0 for greys), value the largest channel / 255.
    void getHSV(double& hue, double& saturation, double& value) const;
    // An opaque colour; hue, saturation and value from 0 to 1, a hue of 1 or above counting as
    // 0. Channels are truncated, not rounded.
    static Colour fromHSV(double hue, double saturation, double value);

    // Red, green and blue times factor, truncated and limited to 0..255; alpha kept.
    Colour brighter(float factor) const;
    // other * t + this * (1 - t) on all four channels, truncated.
    Colour interpolatedWith(const Colour& other, float t) const;
    Colour withAlpha(int newAlpha) const;
    // Alpha times factor, truncated and limited to 0..255.
    Colour withMultipliedAlpha(float factor) const;
    // In place: red, green and blue become channel * alpha / 255 (integer division).
    void premultiply();

    // Wire form, five bytes: a byte that is written as 0 and ignored on reading, then alpha, red,
    // green and blue.
    void readFrom(Stream& stream);
    void writeTo(Stream& stream) const;

private:
    uint8_t alpha = 0;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
};

}  // namespace q1framework
