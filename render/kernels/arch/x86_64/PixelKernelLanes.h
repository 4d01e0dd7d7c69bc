#pragma once

#include "render/kernels/PixelArithmetic.h"
#include "render/kernels/PixelKernels.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <emmintrin.h>

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
//   groups of four; toEightLanes: a widened register's pixels added pairwise into the eight
//   16-bit lanes of an SSE register (two partial sums of one pixel).
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

// Each colour byte of four pixels limited to its pixel's alpha.
inline __m128i clampColourToAlpha(__m128i pixels)
{
    __m128i alpha = _mm_srli_epi32(pixels, 24);
    alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 8));
    alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
    return _mm_min_epu8(pixels, alpha);
}

// Four pixels from their partial sums (each register: two halves to be added), shifted right by
// 3, limited to 0..255 and colour-clamped.
inline __m128i finishFourPixels(__m128i first, __m128i second, __m128i third, __m128i fourth)
{
    const __m128i firstPair = _mm_add_epi16(_mm_unpacklo_epi64(first, second), _mm_unpackhi_epi64(first, second));
    const __m128i secondPair = _mm_add_epi16(_mm_unpacklo_epi64(third, fourth), _mm_unpackhi_epi64(third, fourth));
    return clampColourToAlpha(_mm_packus_epi16(_mm_srai_epi16(firstPair, 3), _mm_srai_epi16(secondPair, 3)));
}

// The partial sums of one output pixel of the horizontal pass.
template <class Lanes>
__m128i sumAcross(const uint8_t* source, const int16_t* weights, int taps)
{
    auto sums = Lanes::zero();
    for (int tap = 0; tap < taps; tap += Lanes::widenedPixels)
    {
        const auto values = Lanes::shiftLeft(Lanes::loadWidened(source + tap * 4), 4);
        sums = Lanes::add(sums, Lanes::mulHigh(values, Lanes::loadCoefficients(weights + tap * 4)));
    }
    return Lanes::toEightLanes(sums);
}

template <class Lanes>
void filterLine(const uint8_t* sourceLine, uint8_t* output, int count, const int32_t* firstColumns,
                const int16_t* coefficients, int taps)
{
    const auto sumAt = [&](int index) {
        return sumAcross<Lanes>(sourceLine + static_cast<ptrdiff_t>(firstColumns[index]) * 4,
                                coefficients + static_cast<ptrdiff_t>(index) * taps * 4, taps);
    };
    int index = 0;
    for (; index + 4 <= count; index += 4)
    {
        const __m128i pixels = finishFourPixels(sumAt(index), sumAt(index + 1), sumAt(index + 2), sumAt(index + 3));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(output + index * 4), pixels);
    }
    for (; index < count; ++index)
    {
        const __m128i sums = sumAt(index);
        const auto pixel = static_cast<uint32_t>(_mm_cvtsi128_si32(finishFourPixels(sums, sums, sums, sums)));
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
