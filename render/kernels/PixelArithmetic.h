#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

// The per-pixel formulas of the blends and the resampler, as plain integer code. They are the
// reference that every vector path must match, and they serve the vector paths' tail pixels.
//
// The vector paths include this file into sources built for other instruction sets, so
// everything here has internal linkage: a copy compiled for AVX2 must never stand in for the
// baseline one.
namespace
{
namespace PixelArithmetic
{
// (d * (256 - alpha) >> 8) + addend on each of the four bytes, wrapped to 8 bits.
inline void blendOver(uint8_t* pixel, const uint8_t addend[4], int alpha)
{
    const int inverse = 256 - alpha;
    for (int channel = 0; channel < 4; ++channel)
        pixel[channel] = static_cast<uint8_t>((pixel[channel] * inverse >> 8) + addend[channel]);
}

// The opacity form: k = opacity + 1 scales the source pixel before the blend.
inline void blendWithOpacity(uint8_t* pixel, const uint8_t* source, int opacity)
{
    const int k = opacity + 1;
    const uint8_t scaled[4] = {static_cast<uint8_t>(k * source[0] >> 8), static_cast<uint8_t>(k * source[1] >> 8),
                               static_cast<uint8_t>(k * source[2] >> 8), static_cast<uint8_t>(k * source[3] >> 8)};
    blendOver(pixel, scaled, (k * source[3] >> 8) & 255);
}

// One tap of the resampler in 16-bit lanes: the byte scaled by 16, times the coefficient,
// keeping the high half of the 32-bit product (rounding towards minus infinity).
inline int16_t weighTap(uint8_t value, int16_t coefficient)
{
    return static_cast<int16_t>((static_cast<int32_t>(value << 4) * coefficient) >> 16);
}

inline int16_t addWrapped(int16_t sum, int16_t term)
{
    return static_cast<int16_t>(static_cast<uint16_t>(sum) + static_cast<uint16_t>(term));
}

// A filtered pixel from its four 16-bit sums: shifted right by 3, limited to 0..255, colour
// limited to alpha so that the pixel stays premultiplied.
inline void storeFiltered(uint8_t* pixel, const int16_t sums[4])
{
    uint8_t channels[4];
    for (int channel = 0; channel < 4; ++channel)
        channels[channel] = static_cast<uint8_t>(std::clamp(sums[channel] >> 3, 0, 255));
    for (int channel = 0; channel < 3; ++channel)
        pixel[channel] = std::min(channels[channel], channels[3]);
    pixel[3] = channels[3];
}

// Output pixel of the horizontal pass from taps consecutive source pixels.
inline void filterPixelAcross(const uint8_t* source, uint8_t* output, const int16_t* coefficients, int taps)
{
    int16_t sums[4] = {0, 0, 0, 0};
    for (int tap = 0; tap < taps; ++tap)
        for (int channel = 0; channel < 4; ++channel)
            sums[channel] = addWrapped(sums[channel], weighTap(source[tap * 4 + channel], coefficients[tap * 4 + channel]));
    storeFiltered(output, sums);
}

// Output pixel of the vertical pass from one pixel in each of taps lines.
inline void filterPixelDown(const uint8_t* source, ptrdiff_t lineStride, uint8_t* output, const int16_t* coefficients,
                            int taps)
{
    int16_t sums[4] = {0, 0, 0, 0};
    for (int tap = 0; tap < taps; ++tap)
        for (int channel = 0; channel < 4; ++channel)
            sums[channel] = addWrapped(sums[channel], weighTap(source[tap * lineStride + channel], coefficients[tap]));
    storeFiltered(output, sums);
}

inline void wordToBytes(uint32_t word, uint8_t bytes[4])
{
    bytes[0] = static_cast<uint8_t>(word);
    bytes[1] = static_cast<uint8_t>(word >> 8);
    bytes[2] = static_cast<uint8_t>(word >> 16);
    bytes[3] = static_cast<uint8_t>(word >> 24);
}
}
}
