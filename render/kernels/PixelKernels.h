#pragma once

#include <cstddef>
#include <cstdint>

namespace q1framework
{

// The inner loops of the software renderer, built once per instruction set: the blends of
// SoftwareGraphics and the two passes of the resampler. Every entry of every table computes the
// same bytes as the scalar table, which is the reference (tests compare them on random pixels);
// the vector tables only do it faster. Pixels are 4 bytes, blue, green, red, alpha.
//
// Thread contract: the functions are pure and may run on any thread; the tables are made on
// first use.
struct PixelKernels
{
    enum class InstructionSet
    {
        scalar,
        sse2,
        avx2,
    };

    // Blends one premultiplied word (0xAARRGGBB) over count pixels: every byte d becomes
    // (d * (256 - word alpha) >> 8) + the word's byte, wrapped to 8 bits.
    void (*blendWord)(uint8_t* pixels, int count, uint32_t word);

    // Blends count premultiplied source pixels over count pixels at opacity o (0 to 255): with
    // k = o + 1 and sa = k * source alpha >> 8, every byte d becomes
    // (d * (256 - sa) >> 8) + (k * source byte >> 8), wrapped to 8 bits. At opacity 255 this is
    // (d * (256 - source alpha) >> 8) + source byte.
    void (*blendPixels)(uint8_t* pixels, const uint8_t* source, int count, int opacity);

    // One line of the resampler's horizontal pass: output pixel j is computed from the taps source
    // pixels that start at column firstColumns[j] of sourceLine (which may lie in the line's
    // margin), with the coefficients coefficients[(j * taps + i) * 4 + channel] (the same value
    // for the four channels of tap i). taps is a multiple of 4; padding taps have coefficient 0.
    // Per channel, in 16-bit arithmetic: the sum over the taps of ((byte << 4) * coefficient) >> 16,
    // shifted right by 3, limited to 0..255; then red, green and blue are limited to alpha.
    void (*filterLine)(const uint8_t* sourceLine, uint8_t* output, int count, const int32_t* firstColumns,
                       const int16_t* coefficients, int taps);

    // One line of the vertical pass: output pixel j is computed in the same way from the pixels in
    // column j of taps lines, lineStride bytes apart from firstLine, with coefficients[i] for line
    // i. Any tap count from 1.
    void (*filterColumns)(const uint8_t* firstLine, ptrdiff_t lineStride, uint8_t* output, int count,
                          const int16_t* coefficients, int taps);

    InstructionSet instructionSet;
    const char* name;

    // The widest table this build and this machine run.
    static const PixelKernels& getBest();
    static const PixelKernels& getScalar();
    // The table of an instruction set, or null where the build or the machine lacks it.
    static const PixelKernels* find(InstructionSet instructionSet);
};

}  // namespace q1framework
