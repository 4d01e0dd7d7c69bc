#include "image/TestPictures.h"

#include <png.h>

#include <cstdlib>
#include <fstream>

#include <jpeglib.h>

namespace TestPictures
{

namespace
{
void appendToString(png_structp png, png_bytep data, size_t count)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), count);
}

void flushNothing(png_structp) {}
}

std::string encodePng(const PngPicture& picture)
{
    std::string bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)))
    {
        png_destroy_write_struct(&png, &info);
        return {};
    }
    png_set_write_fn(png, &bytes, appendToString, flushNothing);
    png_set_IHDR(png, info, picture.width, picture.height, picture.bitDepth, picture.colourType,
                 picture.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette;
    for (size_t index = 0; index + 2 < picture.palette.size(); index += 3)
        palette.push_back(png_color{picture.palette[index], picture.palette[index + 1], picture.palette[index + 2]});
    if (!palette.empty())
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    if (picture.colourType == PNG_COLOR_TYPE_PALETTE && !picture.transparency.empty())
        png_set_tRNS(png, info, picture.transparency.data(), static_cast<int>(picture.transparency.size()), nullptr);
    else if (picture.transparency.size() >= 2)
    {
        png_color_16 key{};
        key.gray = static_cast<png_uint_16>(picture.transparency[0] << 8 | picture.transparency[1]);
        png_set_tRNS(png, info, nullptr, 0, &key);
    }
    png_write_info(png, info);
    std::vector<png_bytep> rows;
    for (const auto& line : picture.lines)
        rows.push_back(const_cast<png_bytep>(line.data()));
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

std::string encodeJpeg(int width, int height, int components, const std::vector<uint8_t>& samples)
{
    jpeg_compress_struct encoder{};
    jpeg_error_mgr errors{};
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&encoder, &buffer, &size);
    encoder.image_width = static_cast<JDIMENSION>(width);
    encoder.image_height = static_cast<JDIMENSION>(height);
    encoder.input_components = components;
    encoder.in_color_space = components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&encoder);
    jpeg_set_quality(&encoder, 100, TRUE);
    // No chroma subsampling, so flat colour areas come back within a step or two.
    for (int component = 0; component < encoder.num_components; ++component)
        encoder.comp_info[component].h_samp_factor = encoder.comp_info[component].v_samp_factor = 1;
    jpeg_start_compress(&encoder, TRUE);
    while (encoder.next_scanline < encoder.image_height)
    {
        JSAMPROW line = const_cast<JSAMPROW>(samples.data() + encoder.next_scanline * width * components);
        jpeg_write_scanlines(&encoder, &line, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    std::string bytes(reinterpret_cast<const char*>(buffer), size);
    std::free(buffer);
    return bytes;
}

bool writeFile(const std::string& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    return static_cast<bool>(file);
}

}  // namespace TestPictures
