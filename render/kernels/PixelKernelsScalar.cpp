// The reference kernels: one pixel and one byte at a time, in plain integers.
#include "render/kernels/PixelArithmetic.h"
#include "render/kernels/PixelKernelSets.h"

namespace q1framework
{

namespace
{
void blendWord(uint8_t* pixels, int count, uint32_t word)
{
    uint8_t bytes[4];
    PixelArithmetic::wordToBytes(word, bytes);
    for (int index = 0; index < count; ++index)
        PixelArithmetic::blendOver(pixels + index * 4, bytes, bytes[3]);
}

void blendPixels(uint8_t* pixels, const uint8_t* source, int count, int opacity)
{
    for (int index = 0; index < count; ++index)
        PixelArithmetic::blendWithOpacity(pixels + index * 4, source + index * 4, opacity);
}

void filterLine(const uint8_t* sourceLine, uint8_t* output, int count, const int32_t* firstColumns,
                const int16_t* coefficients, int taps)
{
    for (int index = 0; index < count; ++index)
        PixelArithmetic::filterPixelAcross(sourceLine + static_cast<ptrdiff_t>(firstColumns[index]) * 4,
                                           output + index * 4, coefficients + index * taps * 4, taps);
}

void filterColumns(const uint8_t* firstLine, ptrdiff_t lineStride, uint8_t* output, int count,
                   const int16_t* coefficients, int taps)
{
    for (int index = 0; index < count; ++index)
        PixelArithmetic::filterPixelDown(firstLine + index * 4, lineStride, output + index * 4, coefficients, taps);
}
}

const PixelKernels PixelKernelSets::scalar = {blendWord, blendPixels, filterLine, filterColumns,
                                              PixelKernels::InstructionSet::scalar, "scalar"};

}  // namespace q1framework
