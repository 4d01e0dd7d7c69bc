// The kernels in AVX2: eight pixels a register, four of them in 16-bit lanes. This file alone is
// built with -mavx2; its table is used only where the processor reports AVX2.
#include "render/kernels/PixelKernelSets.h"
#include "render/kernels/arch/x86_64/PixelKernelLanes.h"

#include <immintrin.h>

namespace q1framework
{

namespace
{
// Unpacking and packing work within each 128-bit half, so the two undo each other and the bytes
// come back in their order.
struct Avx2Lanes
{
    using Vector = __m256i;
    static constexpr int bytes = 32;
    static constexpr int widenedPixels = 4;

    static Vector load(const uint8_t* source) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source)); }
    static void store(uint8_t* target, Vector value) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(target), value); }
    static Vector zero() { return _mm256_setzero_si256(); }
    static Vector splat16(int16_t value) { return _mm256_set1_epi16(value); }
    static Vector splat32(uint32_t value) { return _mm256_set1_epi32(static_cast<int>(value)); }

    static Vector unpackLow(Vector value) { return _mm256_unpacklo_epi8(value, _mm256_setzero_si256()); }
    static Vector unpackHigh(Vector value) { return _mm256_unpackhi_epi8(value, _mm256_setzero_si256()); }
    static Vector packUnsigned(Vector low, Vector high) { return _mm256_packus_epi16(low, high); }

    static Vector mulLow(Vector a, Vector b) { return _mm256_mullo_epi16(a, b); }
    static Vector mulHigh(Vector a, Vector b) { return _mm256_mulhi_epi16(a, b); }
    static Vector add(Vector a, Vector b) { return _mm256_add_epi16(a, b); }
    static Vector sub(Vector a, Vector b) { return _mm256_sub_epi16(a, b); }
    static Vector add8(Vector a, Vector b) { return _mm256_add_epi8(a, b); }
    static Vector shiftLeft(Vector value, int bits) { return _mm256_slli_epi16(value, bits); }
    static Vector shiftRight(Vector value, int bits) { return _mm256_srli_epi16(value, bits); }
    static Vector shiftRightArithmetic(Vector value, int bits) { return _mm256_srai_epi16(value, bits); }

    static Vector broadcastAlpha(Vector value)
    {
        const Vector low = _mm256_shufflelo_epi16(value, _MM_SHUFFLE(3, 3, 3, 3));
        return _mm256_shufflehi_epi16(low, _MM_SHUFFLE(3, 3, 3, 3));
    }

    static Vector clampColourToAlpha(Vector value)
    {
        const Vector alphaToEveryByte = _mm256_setr_epi8(3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15,
                                                         3, 3, 3, 3, 7, 7, 7, 7, 11, 11, 11, 11, 15, 15, 15, 15);
        return _mm256_min_epu8(value, _mm256_shuffle_epi8(value, alphaToEveryByte));
    }

    static bool isOpaque(Vector value)
    {
        const Vector alphaBytes = _mm256_set1_epi32(static_cast<int>(0xFF000000u));
        return _mm256_movemask_epi8(_mm256_cmpeq_epi8(_mm256_and_si256(value, alphaBytes), alphaBytes)) == -1;
    }

    static bool isZero(Vector value) { return _mm256_testz_si256(value, value) != 0; }

    static Vector loadWidened(const uint8_t* source)
    {
        return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(source)));
    }

    static Vector loadCoefficients(const int16_t* source)
    {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
    }

    static __m128i toEightLanes(Vector sums)
    {
        return _mm_add_epi16(_mm256_castsi256_si128(sums), _mm256_extracti128_si256(sums, 1));
    }
};
}

const PixelKernels PixelKernelSets::avx2 =
    PixelKernelLanes::makeTable<Avx2Lanes>(PixelKernels::InstructionSet::avx2, "AVX2");

}  // namespace q1framework
