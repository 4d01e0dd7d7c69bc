#include "media/geometry/Colour.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/memory/Stream.h"
#include "foundation/string/String.h"

#include <algorithm>
#include <cstring>

namespace q1framework
{

namespace
{
// Limited while still a float: a product beyond the range of int has no int value to clamp.
uint8_t truncatedChannel(float value)
{
    if (!(value > 0.0f))
        return 0;
    return value >= 255.0f ? 255 : static_cast<uint8_t>(value);
}

bool isPaddingCharacter(char character)
{
    return character == '#' || character == ' ';
}
}

Colour::Colour(uint32_t argb)
    : alpha(static_cast<uint8_t>(argb >> 24)), red(static_cast<uint8_t>(argb >> 16)),
      green(static_cast<uint8_t>(argb >> 8)), blue(static_cast<uint8_t>(argb))
{
}

Colour::Colour(int redValue, int greenValue, int blueValue, int alphaValue)
    : alpha(static_cast<uint8_t>(alphaValue)), red(static_cast<uint8_t>(redValue)),
      green(static_cast<uint8_t>(greenValue)), blue(static_cast<uint8_t>(blueValue))
{
}

Colour::Colour(const String& text)
{
    const char* bytes = text.getCString();
    size_t start = 0;
    size_t end = std::strlen(bytes);
    while (start < end && isPaddingCharacter(bytes[start]))
        ++start;
    while (end > start && isPaddingCharacter(bytes[end - 1]))
        --end;
    const MemoryBlock block = String(bytes, static_cast<int>(start), static_cast<unsigned>(end - start)).parseHexBlock();
    if (block.getSize() != 4)
        return;
    const auto* channels = static_cast<const uint8_t*>(block.getData());
    alpha = channels[0];
    red = channels[1];
    green = channels[2];
    blue = channels[3];
}

String Colour::toString() const
{
    return String("#") + String::toHexString(static_cast<int>(getARGB()));
}

uint32_t Colour::getARGB() const
{
    return static_cast<uint32_t>(alpha) << 24 | static_cast<uint32_t>(red) << 16 | static_cast<uint32_t>(green) << 8 | blue;
}

void Colour::getHSV(double& hue, double& saturation, double& value) const
{
    const int largest = std::max({red, green, blue});
    const int smallest = std::min({red, green, blue});
    const double range = largest - smallest;
    value = largest / 255.0;
    saturation = largest > 0 ? range / largest : 0.0;
    if (range == 0.0)
    {
        hue = 0.0;
        return;
    }
    double sector;
    if (largest == red)
        sector = (green - blue) / range;
    else if (largest == green)
        sector = 2.0 + (blue - red) / range;
    else
        sector = 4.0 + (red - green) / range;
    hue = sector / 6.0;
    if (hue < 0.0)
        hue += 1.0;
}

Colour Colour::fromHSV(double hue, double saturation, double value)
{
    if (hue >= 1.0)
        hue = 0.0;
    const int sector = static_cast<int>(hue * 6.0);
    const double fraction = hue * 6.0 - sector;
    const double lowest = value * (1.0 - saturation);
    const double falling = value * (1.0 - saturation * fraction);
    const double rising = value * (1.0 - saturation * (1.0 - fraction));
    double channels[3];
    switch (sector)
    {
        case 0: channels[0] = value; channels[1] = rising; channels[2] = lowest; break;
        case 1: channels[0] = falling; channels[1] = value; channels[2] = lowest; break;
        case 2: channels[0] = lowest; channels[1] = value; channels[2] = rising; break;
        case 3: channels[0] = lowest; channels[1] = falling; channels[2] = value; break;
        case 4: channels[0] = rising; channels[1] = lowest; channels[2] = value; break;
        default: channels[0] = value; channels[1] = lowest; channels[2] = falling; break;
    }
    return Colour(static_cast<int>(channels[0] * 255.0), static_cast<int>(channels[1] * 255.0),
                  static_cast<int>(channels[2] * 255.0), 255);
}

Colour Colour::brighter(float factor) const
{
    Colour result(*this);
    result.red = truncatedChannel(red * factor);
    result.green = truncatedChannel(green * factor);
    result.blue = truncatedChannel(blue * factor);
    return result;
}

Colour Colour::interpolatedWith(const Colour& other, float t) const
{
    const auto mix = [t](uint8_t own, uint8_t others) { return static_cast<int>(others * t + own * (1.0f - t)); };
    return Colour(mix(red, other.red), mix(green, other.green), mix(blue, other.blue), mix(alpha, other.alpha));
}

Colour Colour::withAlpha(int newAlpha) const
{
    Colour result(*this);
    result.alpha = static_cast<uint8_t>(newAlpha);
    return result;
}

Colour Colour::withMultipliedAlpha(float factor) const
{
    Colour result(*this);
    result.alpha = truncatedChannel(alpha * factor);
    return result;
}

void Colour::premultiply()
{
    red = static_cast<uint8_t>(red * alpha / 255);
    green = static_cast<uint8_t>(green * alpha / 255);
    blue = static_cast<uint8_t>(blue * alpha / 255);
}

void Colour::readFrom(Stream& stream)
{
    stream.readByte();
    alpha = stream.readByte();
    red = stream.readByte();
    green = stream.readByte();
    blue = stream.readByte();
}

void Colour::writeTo(Stream& stream) const
{
    const uint8_t bytes[5] = {0, alpha, red, green, blue};
    stream.write(bytes, sizeof bytes);
}

}  // namespace q1framework
