// The kernels in SSE2, part of every x86-64 processor: four pixels a register, two of them in
// 16-bit lanes. Built with the baseline flags.
#include "render/kernels/PixelKernelSets.h"
#include "render/kernels/arch/x86_64/PixelKernelLanes.h"

#include <emmintrin.h>

namespace q1framework
{

namespace
{
struct Sse2Lanes
{
    using Vector = __m128i;
    static constexpr int bytes = 16;
    static constexpr int widenedPixels = 2;

    static Vector load(const uint8_t* source) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(source)); }
    static void store(uint8_t* target, Vector value) { _mm_storeu_si128(reinterpret_cast<__m128i*>(target), value); }
    static Vector zero() { return _mm_setzero_si128(); }
    static Vector splat16(int16_t value) { return _mm_set1_epi16(value); }
    static Vector splat32(uint32_t value) { return _mm_set1_epi32(static_cast<int>(value)); }

    static Vector unpackLow(Vector value) { return _mm_unpacklo_epi8(value, _mm_setzero_si128()); }
    static Vector unpackHigh(Vector value) { return _mm_unpackhi_epi8(value, _mm_setzero_si128()); }
    static Vector packUnsigned(Vector low, Vector high) { return _mm_packus_epi16(low, high); }

    static Vector mulLow(Vector a, Vector b) { return _mm_mullo_epi16(a, b); }
    static Vector mulHigh(Vector a, Vector b) { return _mm_mulhi_epi16(a, b); }
    static Vector add(Vector a, Vector b) { return _mm_add_epi16(a, b); }
    static Vector sub(Vector a, Vector b) { return _mm_sub_epi16(a, b); }
    static Vector add8(Vector a, Vector b) { return _mm_add_epi8(a, b); }
    static Vector shiftLeft(Vector value, int bits) { return _mm_slli_epi16(value, bits); }
    static Vector shiftRight(Vector value, int bits) { return _mm_srli_epi16(value, bits); }
    static Vector shiftRightArithmetic(Vector value, int bits) { return _mm_srai_epi16(value, bits); }

    static Vector broadcastAlpha(Vector value)
    {
        const Vector low = _mm_shufflelo_epi16(value, _MM_SHUFFLE(3, 3, 3, 3));
        return _mm_shufflehi_epi16(low, _MM_SHUFFLE(3, 3, 3, 3));
    }

    static Vector clampColourToAlpha(Vector value)
    {
        Vector alpha = _mm_srli_epi32(value, 24);
        alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 8));
        alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
        return _mm_min_epu8(value, alpha);
    }

    static bool isOpaque(Vector value)
    {
        const Vector alphaBytes = _mm_set1_epi32(static_cast<int>(0xFF000000u));
        return _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(value, alphaBytes), alphaBytes)) == 0xFFFF;
    }

    static bool isZero(Vector value) { return _mm_movemask_epi8(_mm_cmpeq_epi8(value, _mm_setzero_si128())) == 0xFFFF; }

    static Vector loadWidened(const uint8_t* source)
    {
        return unpackLow(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(source)));
    }

    static Vector loadCoefficients(const int16_t* source)
    {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
    }

    static __m128i toEightLanes(Vector sums) { return sums; }
};
}

const PixelKernels PixelKernelSets::sse2 =
    PixelKernelLanes::makeTable<Sse2Lanes>(PixelKernels::InstructionSet::sse2, "SSE2");

}  // namespace q1framework
