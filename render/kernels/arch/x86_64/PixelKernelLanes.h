#pragma once

#include "render/kernels/PixelArithmetic.h"
#include "render/kernels/PixelKernels.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

// The vector kernels, written once over a lane traits type and compiled once per instruction set
// (PixelKernelsSse2.cpp, PixelKernelsAvx2.cpp). A traits type wraps one register of Lanes::bytes
// bytes:
//   load, store, zero; splat16 (a 16-bit value in every lane), splat32 (a word in every pixel);
//   unpackLow, unpackHigh: bytes zero-extended to 16-bit lanes, and packUnsigned, their inverse
//   with saturation to 0..255 (unpack and pack pair up the same bytes whatever the register
//   layout); 16-bit lane arithmetic mulLow, mulHigh (signed high half), add, sub, shifts; add8;
//   broadcastAlpha: in 16-bit lanes, each pixel's alpha lane copied to its four lanes;
//   clampColourToAlpha: on bytes, each colour byte limited to its pixel's alpha;
//   isOpaque, isZero: every pixel of a register opaque, every byte 0;
//   loadWidened, loadCoefficients: widenedPixels pixels in 16-bit lanes, and as many coefficient
//   groups of four; finishPixel: the sum of the pixels of a widened register, shifted right by 3,
//   limited to 0..255 and colour-clamped, as one pixel's four bytes.
//
// Everything has internal linkage, so that no copy built for one instruction set stands in for
// another's.
namespace
{
namespace PixelKernelLanes
{
template <class Lanes>
constexpr int pixelsPerRegister = Lanes::bytes / 4;

// ((d * inverse) >> 8) on the 16-bit lanes of a register's bytes, packed back.
template <class Lanes>
typename Lanes::Vector scaleBytes(typename Lanes::Vector bytes, typename Lanes::Vector inverseLow,
                                  typename Lanes::Vector inverseHigh)
{
    const auto low = Lanes::shiftRight(Lanes::mulLow(Lanes::unpackLow(bytes), inverseLow), 8);
    const auto high = Lanes::shiftRight(Lanes::mulLow(Lanes::unpackHigh(bytes), inverseHigh), 8);
    return Lanes::packUnsigned(low, high);
}

template <class Lanes>
void blendWord(uint8_t* pixels, int count, uint32_t word)
{
    const auto addend = Lanes::splat32(word);
    const auto inverse = Lanes::splat16(static_cast<int16_t>(256 - (word >> 24)));
    int index = 0;
    for (; index + pixelsPerRegister<Lanes> <= count; index += pixelsPerRegister<Lanes>)
    {
        uint8_t* target = pixels + index * 4;
        Lanes::store(target, Lanes::add8(scaleBytes<Lanes>(Lanes::load(target), inverse, inverse), addend));
    }
    uint8_t bytes[4];
    PixelArithmetic::wordToBytes(word, bytes);
    for (; index < count; ++index)
        PixelArithmetic::blendOver(pixels + index * 4, bytes, bytes[3]);
}

// At full opacity: opaque groups are copied and empty ones skipped, which gives the blend's bytes.
template <class Lanes>
void blendPixelsOpaque(uint8_t* pixels, const uint8_t* source, int count)
{
    const auto full = Lanes::splat16(256);
    int index = 0;
    for (; index + pixelsPerRegister<Lanes> <= count; index += pixelsPerRegister<Lanes>)
    {
        const auto from = Lanes::load(source + index * 4);
        uint8_t* target = pixels + index * 4;
        if (Lanes::isOpaque(from))
        {
            Lanes::store(target, from);
            continue;
        }
        if (Lanes::isZero(from))
            continue;
        const auto inverseLow = Lanes::sub(full, Lanes::broadcastAlpha(Lanes::unpackLow(from)));
        const auto inverseHigh = Lanes::sub(full, Lanes::broadcastAlpha(Lanes::unpackHigh(from)));
        Lanes::store(target, Lanes::add8(scaleBytes<Lanes>(Lanes::load(target), inverseLow, inverseHigh), from));
    }
    for (; index < count; ++index)
        PixelArithmetic::blendWithOpacity(pixels + index * 4, source + index * 4, 255);
}

template <class Lanes>
void blendPixels(uint8_t* pixels, const uint8_t* source, int count, int opacity)
{
    if (opacity == 255)
    {
        blendPixelsOpaque<Lanes>(pixels, source, count);
        return;
    }
    const auto k = Lanes::splat16(static_cast<int16_t>(opacity + 1));
    const auto full = Lanes::splat16(256);
    int index = 0;
    for (; index + pixelsPerRegister<Lanes> <= count; index += pixelsPerRegister<Lanes>)
    {
        const auto from = Lanes::load(source + index * 4);
        const auto scaledLow = Lanes::shiftRight(Lanes::mulLow(Lanes::unpackLow(from), k), 8);
        const auto scaledHigh = Lanes::shiftRight(Lanes::mulLow(Lanes::unpackHigh(from), k), 8);
        const auto inverseLow = Lanes::sub(full, Lanes::broadcastAlpha(scaledLow));
        const auto inverseHigh = Lanes::sub(full, Lanes::broadcastAlpha(scaledHigh));
        uint8_t* target = pixels + index * 4;
        Lanes::store(target, Lanes::add8(scaleBytes<Lanes>(Lanes::load(target), inverseLow, inverseHigh),
                                         Lanes::packUnsigned(scaledLow, scaledHigh)));
    }
    for (; index < count; ++index)
        PixelArithmetic::blendWithOpacity(pixels + index * 4, source + index * 4, opacity);
}

template <class Lanes>
void filterLine(const uint8_t* sourceLine, uint8_t* output, int count, const int32_t* firstColumns,
                const int16_t* coefficients, int taps)
{
    constexpr int group = Lanes::widenedPixels;
    for (int index = 0; index < count; ++index)
    {
        const uint8_t* source = sourceLine + static_cast<ptrdiff_t>(firstColumns[index]) * 4;
        const int16_t* weights = coefficients + index * taps * 4;
        auto sums = Lanes::zero();
        for (int tap = 0; tap < taps; tap += group)
        {
            const auto values = Lanes::shiftLeft(Lanes::loadWidened(source + tap * 4), 4);
            sums = Lanes::add(sums, Lanes::mulHigh(values, Lanes::loadCoefficients(weights + tap * 4)));
        }
        const uint32_t pixel = Lanes::finishPixel(sums);
        std::memcpy(output + index * 4, &pixel, 4);
    }
}

template <class Lanes>
void filterColumns(const uint8_t* firstLine, ptrdiff_t lineStride, uint8_t* output, int count,
                   const int16_t* coefficients, int taps)
{
    int index = 0;
    for (; index + pixelsPerRegister<Lanes> <= count; index += pixelsPerRegister<Lanes>)
    {
        const uint8_t* source = firstLine + index * 4;
        auto low = Lanes::zero();
        auto high = Lanes::zero();
        for (int tap = 0; tap < taps; ++tap, source += lineStride)
        {
            const auto weight = Lanes::splat16(coefficients[tap]);
            const auto values = Lanes::load(source);
            low = Lanes::add(low, Lanes::mulHigh(Lanes::shiftLeft(Lanes::unpackLow(values), 4), weight));
            high = Lanes::add(high, Lanes::mulHigh(Lanes::shiftLeft(Lanes::unpackHigh(values), 4), weight));
        }
        const auto bytes = Lanes::packUnsigned(Lanes::shiftRightArithmetic(low, 3), Lanes::shiftRightArithmetic(high, 3));
        Lanes::store(output + index * 4, Lanes::clampColourToAlpha(bytes));
    }
    for (; index < count; ++index)
        PixelArithmetic::filterPixelDown(firstLine + index * 4, lineStride, output + index * 4, coefficients, taps);
}

// The table of one instruction set.
template <class Lanes>
constexpr q1framework::PixelKernels makeTable(q1framework::PixelKernels::InstructionSet instructionSet,
                                              const char* name)
{
    return {blendWord<Lanes>, blendPixels<Lanes>, filterLine<Lanes>, filterColumns<Lanes>, instructionSet, name};
}
}
}
