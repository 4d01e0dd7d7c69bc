// PNG through libpng. libpng reports errors by longjmp, so the two functions that call into it
// with a jump buffer set hold nothing that needs a destructor; the image itself lives in the
// caller's frame.
#include "media/image/NativeImageDecoder.h"
#include "media/image/linux/LibraryDecoders.h"

#include <png.h>

#include <csetjmp>
#include <cstring>
#include <vector>

namespace q1framework
{

namespace
{
struct MemorySource
{
    const uint8_t* data;
    size_t size;
    size_t offset;
};

void readFromMemory(png_structp png, png_bytep destination, size_t count)
{
    auto* source = static_cast<MemorySource*>(png_get_io_ptr(png));
    if (count > source->size - source->offset)
        png_error(png, "truncated");
    std::memcpy(destination, source->data + source->offset, count);
    source->offset += count;
}

void stopOnError(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

// Reads the header and asks libpng for 8-bit blue, green, red, alpha lines whatever the file
// holds: palettes and grey expanded, transparency keys turned into alpha, 16-bit channels scaled
// with rounding, an opaque alpha added where the file has none.
bool readHeader(png_structp png, png_infop info, png_uint_32& width, png_uint_32& height)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_read_info(png, info);
    const int colourType = png_get_color_type(png, info);
    const bool hasAlpha = (colourType & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    png_set_expand(png);
    if (png_get_bit_depth(png, info) == 16)
        png_set_scale_16(png);
    if ((colourType & PNG_COLOR_MASK_COLOR) == 0)
        png_set_gray_to_rgb(png);
    png_set_bgr(png);
    if (!hasAlpha)
        png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
    width = png_get_image_width(png, info);
    height = png_get_image_height(png, info);
    return png_get_rowbytes(png, info) == static_cast<size_t>(width) * 4;
}

bool readLines(png_structp png, png_bytepp lines)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    // Chunks behind the picture data are not read: nothing there changes the pixels.
    png_read_image(png, lines);
    return true;
}
}

Image decodePngWithLibpng(const uint8_t* data, unsigned size)
{
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, stopOnError, ignoreWarning);
    if (png == nullptr)
        return Image();
    png_infop info = png_create_info_struct(png);
    if (info == nullptr)
    {
        png_destroy_read_struct(&png, nullptr, nullptr);
        return Image();
    }
    png_set_user_limits(png, NativeImageDecoder::maximumSide, NativeImageDecoder::maximumSide);
    MemorySource source{data, size, 0};
    png_set_read_fn(png, &source, readFromMemory);

    Image image;
    png_uint_32 width = 0;
    png_uint_32 height = 0;
    if (readHeader(png, info, width, height) && NativeImageDecoder::isAcceptedSize(width, height))
    {
        image = Image(static_cast<int>(width), static_cast<int>(height), false);
        std::vector<png_bytep> lines(height);
        for (png_uint_32 y = 0; y < height && !image.isEmpty(); ++y)
            lines[y] = image.getLine(y);
        if (image.isEmpty() || !readLines(png, lines.data()))
            image = Image();
        for (png_uint_32 y = 0; y < height && !image.isEmpty(); ++y)
            NativeImageDecoder::premultiplyLine(image.getLine(y), image.getWidth());
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return image;
}

}  // namespace q1framework
