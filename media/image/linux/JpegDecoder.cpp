// JPEG through libjpeg-turbo, which converts straight to blue, green, red, alpha lines. Errors
// arrive by longjmp, so the functions that set the jump buffer hold nothing that needs a
// destructor.
#include "media/image/NativeImageDecoder.h"
#include "media/image/linux/LibraryDecoders.h"

#include <csetjmp>
#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

namespace q1framework
{

namespace
{
// More scans than any real progressive file has; a hostile file with thousands of tiny scans
// would otherwise take minutes.
constexpr int maximumScans = 500;

struct ErrorHandler
{
    jpeg_error_mgr library;
    jmp_buf jump;
};

void stopOnError(j_common_ptr decoder)
{
    std::longjmp(reinterpret_cast<ErrorHandler*>(decoder->err)->jump, 1);
}

void ignoreMessage(j_common_ptr, int) {}

void limitScans(j_common_ptr decoder)
{
    const auto* decompressor = reinterpret_cast<j_decompress_ptr>(decoder);
    if (decompressor->input_scan_number > maximumScans)
        stopOnError(decoder);
}

// Reads the header and starts decompression to 4 bytes a pixel; false for a damaged file, a
// colour space that has no conversion to RGB, or a picture of a refused size.
bool start(jpeg_decompress_struct& decoder, ErrorHandler& errors)
{
    if (setjmp(errors.jump))
        return false;
    jpeg_read_header(&decoder, TRUE);
    if (!NativeImageDecoder::isAcceptedSize(decoder.image_width, decoder.image_height))
        return false;
    decoder.out_color_space = JCS_EXT_BGRA;
    jpeg_start_decompress(&decoder);
    return decoder.output_components == 4;
}

bool readLines(jpeg_decompress_struct& decoder, ErrorHandler& errors, uint8_t* firstLine, ptrdiff_t stride)
{
    if (setjmp(errors.jump))
        return false;
    while (decoder.output_scanline < decoder.output_height)
    {
        JSAMPROW line = firstLine + static_cast<ptrdiff_t>(decoder.output_scanline) * stride;
        if (jpeg_read_scanlines(&decoder, &line, 1) != 1)
            return false;
    }
    return true;
}
}

Image decodeJpegWithLibjpeg(const uint8_t* data, unsigned size)
{
    jpeg_decompress_struct decoder{};
    ErrorHandler errors{};
    decoder.err = jpeg_std_error(&errors.library);
    errors.library.error_exit = stopOnError;
    errors.library.emit_message = ignoreMessage;
    jpeg_progress_mgr progress{};
    progress.progress_monitor = limitScans;

    Image image;
    jpeg_create_decompress(&decoder);
    decoder.progress = &progress;
    jpeg_mem_src(&decoder, data, size);
    if (start(decoder, errors))
    {
        image = Image(static_cast<int>(decoder.output_width), static_cast<int>(decoder.output_height), false);
        if (image.isEmpty() || !readLines(decoder, errors, image.getLine(0), image.getStride()))
            image = Image();
    }
    // A JPEG has no alpha: its pixels are opaque and need no premultiplying.
    jpeg_destroy_decompress(&decoder);
    return image;
}

}  // namespace q1framework
